// What becomes of the failures of a component, and of answers that nobody understands.
#include "tests/apoio/falhas.h"
#include "tests/windows/componente_duplo.h"

using namespace orvex;
using namespace orvex::platform::automacao;
using namespace orvex::testes;
using base::Variante;
using testing::AllOf;
using testing::HasSubstr;

namespace {

Duplo::Resposta responde(HRESULT numero) {
    return [=](Duplo::Chamada&) { return numero; };
}

Duplo::Resposta excepcao(HRESULT numero, const char* descricao, const char* origem, WORD codigo = 0) {
    return [=](Duplo::Chamada& chamada) {
        chamada.excepcao->scode = numero;
        chamada.excepcao->wCode = codigo;
        if (descricao != nullptr) chamada.excepcao->bstrDescription = Texto(descricao).larga();
        if (origem != nullptr) chamada.excepcao->bstrSource = Texto(origem).larga();
        return DISP_E_EXCEPTION;
    };
}

HRESULT STDAPICALLTYPE diz_mais_tarde(EXCEPINFO* excepcao) {
    excepcao->bstrDescription = Texto("dito mais tarde").larga();
    return S_OK;
}

} // namespace

TEST_F(SobreUmDuplo, UmaFalhaDizAOperacaoEOQueOComponenteDisseOuOQueOSistemaDiz) {
    const auto diz = [&](const Duplo::Resposta& resposta) {
        estado->respostas["PreparaDocStock"] = resposta;
        return falha_de([&] { sessao->PreparaDocStock(true); });
    };
    EXPECT_STREQ(diz(excepcao(E_FAIL, " Sem stock.\r\n", "ERP")).what(), "PreparaDocStock: Sem stock. (ERP)");
    EXPECT_EQ(diz(excepcao(E_ACCESSDENIED, "x", nullptr)).numero(), E_ACCESSDENIED);
    EXPECT_THAT(diz(excepcao(E_ACCESSDENIED, nullptr, "ERP")).what(),
                AllOf(testing::StartsWith("PreparaDocStock: "), testing::EndsWith(" (0x80070005)")));
    EXPECT_THAT(diz(excepcao(0, "", nullptr, 13)).what(), HasSubstr("(0x800A000D)"));
    EXPECT_THAT(diz(excepcao(0, nullptr, nullptr)).what(), HasSubstr("(0x80020009)"));
    EXPECT_STREQ(diz([](Duplo::Chamada& chamada) {
                     chamada.excepcao->pfnDeferredFillIn = diz_mais_tarde;
                     return DISP_E_EXCEPTION;
                 }).what(),
                 "PreparaDocStock: dito mais tarde");
    EXPECT_THAT(diz([](Duplo::Chamada& chamada) {
                    *chamada.argumento = 0;
                    return DISP_E_TYPEMISMATCH;
                }).what(),
                testing::StartsWith("PreparaDocStock, argumento 1: "));
    EXPECT_EQ(falha([&] { sessao->AnulaDocumento(1, uma_chave); }),
              "AnulaDocumento: o componente do ERP não conhece este nome.");
    EXPECT_EQ(falha([&] { documento()->obtem("Cab").objecto->poe("Nada", 1); }),
              "Cab.Nada: o componente do ERP não conhece este nome.");
}

TEST_F(SobreUmDuplo, UmaRespostaQueNaoSePercebeEUmaFalhaQueDizDeQuem) {
    estado->respostas["CriaDocStock"] = [](Duplo::Chamada& chamada) {
        deixa(chamada.argumentos[18], variant_de("GR/1/7"));
        return S_OK;
    };
    EXPECT_THAT(falha([&] { sessao->CriaDocStock(um_pedido); }),
                AllOf(HasSubstr("CriaDocStock: "), HasSubstr("GR/1/7")));
    estado->respostas["CriaDocStock"] = {}; // no key was left: no document, as far as this one tells
    EXPECT_EQ(sessao->CriaDocStock(um_pedido), startup::ChaveDocumento{});
    const auto doc = documento();
    for (const char* membro :
         {"Liga", "SubmeteDocumento", "Ano", "Quantidade", "Cab", "CriaObjecto", "Empresa"})
        estado->respostas[membro] = da("talvez");
    EXPECT_THAT(falha([&] { sessao->Liga({}); }), HasSubstr("Liga: «talvez»"));
    EXPECT_THAT(falha([&] { sessao->SubmeteDocumento(3, doc); }), HasSubstr("SubmeteDocumento: «talvez»"));
    EXPECT_THAT(falha([&] { sessao->CriaObjecto("X.Y"); }), HasSubstr("CriaObjecto «X.Y»: "));
    EXPECT_THAT(falha([&] { sessao->Empresa(); }), HasSubstr("Empresa: "));
    for (const char* membro : {"Ano", "Quantidade", "Cab"})
        EXPECT_THAT(falha([&] { doc->obtem(membro); }), HasSubstr(std::string("Documento.") + membro + ": "));
    estado->respostas["Terceiro"] = estado->respostas["Validar"] = objecto();
    EXPECT_EQ(falha([&] { doc->obtem("Terceiro"); }),
              "Documento.Terceiro: Veio um objecto onde se esperava um valor.");
    EXPECT_EQ(falha([&] { doc->chama("Validar", {}); }), ""); // what it gives is not looked at
    for (const char* membro : {"Liga", "DocumentoSubmetido", "ResultadoUltimo", "Empresa"})
        estado->respostas[membro] = {};
    EXPECT_THROW(sessao->Liga({}), base::Falha);
    EXPECT_THROW(sessao->DocumentoSubmetido(), base::Falha);
    EXPECT_THROW(sessao->ResultadoUltimo(), base::Falha);
    EXPECT_EQ(sessao->Empresa(), nullptr);
    EXPECT_THROW(sessao->SubmeteDocumento(3, nullptr), base::Falha);
}

TEST_F(SobreUmDuplo, OComponenteQueTerminaDizSeUmaVezENaoSeLhePedeMaisNada) {
    sessao->Liga({});
    const auto doc = documento();
    estado->respostas["Ano"] = responde(static_cast<HRESULT>(0x800706BE));
    const std::string terminou = "O componente do ERP terminou a meio da operação «Documento.Ano».";
    EXPECT_EQ(falha([&] { doc->obtem("Ano"); }), terminou);
    pedidos();
    EXPECT_EQ(falha([&] { sessao->AnulaDocumento(1, uma_chave); }), terminou);
    EXPECT_EQ(falha([&] { doc->poe("Serie", 1); }), terminou);
    EXPECT_EQ(falha([&] { sessao->CriaObjecto("X"); }), terminou);
    EXPECT_EQ(sessao->Empresa(), nullptr);
    sessao->Desliga();
    sessao.reset();
    EXPECT_EQ(pedidos(), "");
    EXPECT_EQ(estado->vivos, 0);
    for (const char* operacao : {"Empresa", "Desliga"}) { // it ended while nothing was asked
        abre();
        estado->respostas[operacao] = responde(RPC_E_DISCONNECTED);
        EXPECT_EQ(operacao[0] == 'E' ? sessao->Empresa() : nullptr, nullptr);
        EXPECT_NO_THROW(sessao->Desliga());
    }
}

// A class in one of the two registers, until it goes.
class Registado {
  public:
    Registado(const wchar_t* numero, const wchar_t* ficheiro, REGSAM vista)
        : chave_(std::wstring(L"Software\\Classes\\CLSID\\") + numero), vista_(vista) {
        HKEY aberta = nullptr;
        ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, (chave_ + L"\\InprocServer32").c_str(), 0, nullptr, 0,
                          KEY_WRITE | vista, nullptr, &aberta, nullptr);
        ::RegSetValueExW(aberta, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(ficheiro),
                         static_cast<DWORD>(sizeof(wchar_t) * (std::wcslen(ficheiro) + 1)));
        ::RegCloseKey(aberta);
    }
    Registado(const Registado&) = delete;
    Registado& operator=(const Registado&) = delete;
    ~Registado() {
        ::RegDeleteKeyExW(HKEY_LOCAL_MACHINE, (chave_ + L"\\InprocServer32").c_str(), vista_, 0);
        ::RegDeleteKeyExW(HKEY_LOCAL_MACHINE, chave_.c_str(), vista_, 0);
    }

  private:
    std::wstring chave_;
    REGSAM vista_;
};

TEST(Componente, OQueNaoSePodeCarregarDizSePeloNomeEPorque) {
    constexpr bool de_64 = sizeof(void*) == 8;
    const std::string numero = "{5A0F8C1E-7D43-4B1B-9C59-2E6A3B1D0C77}";
    const auto diz = [](const std::string& nome) { return falha([&] { SessaoERPAutomacao{nome}; }); };
    for (const std::string nome : {"Orvex.NaoExiste", numero.c_str(), "{mal", ""})
        EXPECT_EQ(diz(nome), "O componente do ERP «" + nome + "» não está registado nesta máquina.");
    const std::wstring letras = utf16_de(numero);
    const Registado na_outra(letras.c_str(), L"nada.dll", de_64 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY);
    EXPECT_EQ(diz(numero), "O componente do ERP «" + numero + "» só está registado para programas de " +
                               (de_64 ? "32 bits; este é de 64 bits." : "64 bits; este é de 32 bits."));
}
