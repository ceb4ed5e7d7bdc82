// What a component is asked by the session and its objects, type by type, and how both come to their end.
#include "platform/automacao/chaves.h"
#include "tests/apoio/falhas.h"
#include "tests/windows/componente_duplo.h"

#include <thread>

using namespace orvex;
using namespace orvex::platform::automacao;
using namespace orvex::testes;
using base::Variante;
using platform::espera::Acabou, platform::espera::Motivo;

TEST_F(SobreUmDuplo, CadaOperacaoMandaOsSeusTipos) {
    sessao->ModoLigacao(2);
    EXPECT_TRUE(sessao->Liga({"E", "", "u", "s", "b"}));
    sessao->PreparaDocStock(true);
    EXPECT_EQ(pedidos(),
              "ModoLigacao= I2:2; Liga BSTR:E BSTR: BSTR:u BSTR:s BSTR:b; PreparaDocStock BOOL:-1; ");

    estado->respostas["CriaDocStock"] = [](Duplo::Chamada& chamada) {
        deixa(chamada.argumentos[18], lista_da_chave(uma_chave));
        return S_OK;
    };
    EXPECT_EQ(sessao->CriaDocStock(um_pedido), uma_chave);
    EXPECT_EQ(pedidos(),
              "CriaDocStock I2:1 I2:6 BSTR:SB BSTR:S I2:2 BSTR:D BSTR:P BSTR: BSTR:01-02-2024 BSTR: BSTR:A "
              "I2:0 BSTR: BSTR[0..1]||REEL1 BSTR[0..1]|| R8[0..1]|0|2.5 R8[0..1]|0|100 BSTR[0..1]|| "
              "&VARIANT &VARIANT; ");

    for (const auto& [membro, valor] : std::initializer_list<std::pair<const char*, Variante>>{
             {"Ano", 2024}, {"TipoDocumento", "GR"}, {"Serie", 1.0}, {"NossoNoDocumento", "7"}})
        estado->respostas[membro] = da(valor);
    estado->respostas["CriaDocStock"] = [fraco = std::weak_ptr(estado)](Duplo::Chamada& chamada) {
        deixa(chamada.argumentos[18], variant_do_objecto(Duplo::novo(fraco.lock())));
        return S_OK;
    };
    estado->primeiro = 1000; // there are new names: all have new numbers
    EXPECT_EQ(sessao->CriaDocStock(um_pedido), uma_chave);
    EXPECT_THAT(pedidos(), testing::EndsWith("; Ano?; TipoDocumento?; Serie?; NossoNoDocumento?; "));

    estado->respostas["AnulaDocumento"] = [](Duplo::Chamada& chamada) {
        deixa(chamada.argumentos[2], variant_de(5));
        chamada.resultado = variant_de(-1, VT_I2);
        return S_OK;
    };
    const startup::ResultadoERP anulado = sessao->AnulaDocumento(1, uma_chave);
    EXPECT_TRUE(anulado.sucesso && anulado.mensagem.empty()); // a number is no message
    EXPECT_EQ(sessao->ResultadoUltimo().mensagem, "recusado");
    EXPECT_EQ(pedidos(), "AnulaDocumento I2:1 VARIANT[0..4]|Empty|I2:2024|BSTR:GR|I2:1|I4:7 &VARIANT; "
                         "ResultadoUltimo &VARIANT; ");

    const auto criado = sessao->CriaObjecto("Erp.Documento");
    EXPECT_EQ(sessao->SubmeteDocumento(3, criado), 0);
    EXPECT_TRUE(sessao->DocumentoSubmetido() && sessao->Empresa());
    sessao->Desliga();
    EXPECT_EQ(pedidos(),
              "CriaObjecto BSTR:Erp.Documento; SubmeteDocumento I2:3 OBJ; DocumentoSubmetido?; Empresa?; "
              "Desliga; ");
}

TEST_F(SobreUmDuplo, OsMembrosVaoComOsTiposDaTabelaEOsPorReferenciaVoltam) {
    const auto doc = documento();
    const auto Cab = doc->obtem("Cab").objecto;
    Cab->poe("Ano", 2024);
    Cab->poe("Terceiro", "C1");
    doc->poe("Cab", Cab);
    doc->chama("SugereValoresLin", {Cab, true, false});
    EXPECT_EQ(pedidos(),
              "Cab?; Ano= I2:2024; Terceiro= BSTR:C1; Cab:= OBJ; SugereValoresLin? OBJ BOOL:-1 BOOL:0; ");

    estado->respostas["Finalizar"] = [](Duplo::Chamada& chamada) {
        deixa(chamada.argumentos[2], variant_de("GX"));
        deixa(chamada.argumentos[3], variant_de(2025));
        chamada.resultado = variant_de(0, VT_I2);
        return S_OK;
    };
    startup::ObjectoERP::Argumentos argumentos{7, 0, "GR", 2024};
    EXPECT_EQ(doc->chama("Finalizar", argumentos).valor, Variante(0));
    EXPECT_EQ(pedidos(), "Finalizar? I4:7 I2:0 &BSTR:GR &I2:2024; ");
    EXPECT_EQ(argumentos[0].valor, Variante(7));
    EXPECT_EQ(argumentos[2].valor, Variante("GX"));
    EXPECT_EQ(argumentos[3].valor, Variante(2025));

    estado->respostas["Ler"] = [](Duplo::Chamada&) { return E_ACCESSDENIED; };
    startup::ObjectoERP::Argumentos chave{2024, 1, 7, "GR"};
    EXPECT_EQ(numero_da_falha([&] { doc->chama("Ler", chave); }), E_ACCESSDENIED);
    EXPECT_EQ(pedidos(), "Ler? &I2:2024 &I2:1 &I4:7 &BSTR:GR; ");
}

TEST_F(SobreUmDuplo, UmNomePerguntaSeUmaVezPorEspecieDeObjecto) {
    const auto um = documento(), outro = documento();
    um->poe("Serie", 1);
    const int antes = estado->nomes;
    outro->poe("Serie", 2);
    EXPECT_EQ(estado->nomes, antes);
    estado->primeiro = 100; // objects that number their names anew
    outro->poe("Serie", 3);
    EXPECT_EQ(estado->nomes, antes + 1);
    outro->obtem("Cab").objecto->poe("Ano", 1);
    EXPECT_EQ(pedidos(), "Serie= I2:1; Serie= I2:2; Serie= I2:3; Cab?; Ano= I2:1; ");
}

TEST_F(SobreUmDuplo, UmaPropriedadeQueSoEMetodoEUmObjectoQueSoSePoePorValorSaoTentadosAssim) {
    estado->respostas["ModoLigacao"] = [this, primeira = true](Duplo::Chamada&) mutable {
        return std::exchange(primeira, false) ? DISP_E_MEMBERNOTFOUND : S_OK;
    };
    sessao->ModoLigacao(2);
    EXPECT_EQ(pedidos(), "ModoLigacao= I2:2; ModoLigacao I2:2; ");
    const auto doc = documento();
    const auto Cab = doc->obtem("Cab").objecto;
    estado->respostas["Cab"] = estado->respostas["ModoLigacao"] = [primeira = true](Duplo::Chamada&) mutable {
        return std::exchange(primeira, false) ? DISP_E_MEMBERNOTFOUND : S_OK;
    };
    pedidos();
    doc->poe("Cab", Cab);
    EXPECT_EQ(pedidos(), "Cab:= OBJ; Cab= OBJ; ");
}

TEST_F(SobreUmDuplo, ASessaoDesligaSeNoFimComOsObjectosJaLargadosMesmoOsQueAlguemGuarda) {
    const auto guardado = documento();
    sessao->Liga({});
    estado->respostas["Desliga"] = [fraco = std::weak_ptr(estado)](Duplo::Chamada&) {
        fraco.lock()->pedidos += std::to_string(fraco.lock()->vivos);
        return E_FAIL;
    };
    pedidos();
    sessao.reset();
    EXPECT_EQ(pedidos(), "Desliga; 1");
    EXPECT_EQ(estado->vivos, 0);
    EXPECT_EQ(falha([&] { guardado->obtem("Ano"); }), "A sessão do ERP já foi fechada.");

    for (const bool aceite : {true, false}) { // logged off by hand, and never logged in
        abre();
        estado->respostas["Liga"] = da(aceite);
        estado->respostas["Desliga"] = {};
        sessao->Liga({});
        if (aceite) sessao->Desliga();
        pedidos();
        sessao.reset();
        EXPECT_EQ(pedidos(), "");
    }
}

TEST_F(SobreUmDuplo, QuemChamaEsperaComoQuerETudoCorreNumSoFioQueNaoEOSeu) {
    std::atomic<int> voltas = 0;
    std::thread::id do_componente;
    std::atomic<bool> pode = false;
    abre([&](Motivo, const Acabou& acabou) {
        while (!acabou(std::chrono::milliseconds(5)))
            if (++voltas == 3) pode = true;
        throw std::runtime_error("a janela não se deixou pintar");
    });
    estado->respostas["PreparaDocStock"] = [&](Duplo::Chamada&) {
        while (!pode)
            std::this_thread::yield();
        const auto fio = std::this_thread::get_id();
        EXPECT_TRUE(do_componente == std::thread::id() || do_componente == fio);
        do_componente = fio;
        return S_OK;
    };
    voltas = 0;
    sessao->PreparaDocStock(true);
    EXPECT_GE(voltas, 3);
    sessao->PreparaDocStock(true);
    EXPECT_NE(do_componente, std::this_thread::get_id());
}

TEST_F(SobreUmDuplo, UmComponenteQueViveNoFioDeQuemChamaEServidoAteAoFimMesmoQueAJanelaFalhe) {
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    IStream* ate_la = nullptr;
    ::CoMarshalInterThreadInterfaceInStream(IID_IDispatch, Duplo::novo(estado).Get(), &ate_la);
    const auto cria = [&] {
        Referencia<IDispatch> de_la;
        ::CoGetInterfaceAndReleaseStream(ate_la, IID_PPV_ARGS(de_la.GetAddressOf()));
        return de_la;
    };
    sessao = std::make_unique<SessaoERPAutomacao>(std::make_shared<Ligacao>(
        cria, [](Motivo, const Acabou&) { throw std::runtime_error("não se pinta"); }));
    EXPECT_TRUE(sessao->Liga({}));
    sessao.reset();
    EXPECT_TRUE(estado->vivos == 0 && pedidos().ends_with("Desliga; "));
    ::CoUninitialize();
}

TEST_F(SobreUmDuplo, UmComponenteQueNaoAcabaDeSairFicaParaTrasEOsFeitosDepoisAindaCorrem) {
    std::atomic<bool> pode = false, fechou = false;
    estado->respostas["Desliga"] = [&](Duplo::Chamada&) {
        while (!pode)
            std::this_thread::yield();
        fechou = true;
        return S_OK;
    };
    auto ligacao = std::make_shared<Ligacao>([this] { return Duplo::novo(estado); }, Espera());
    ligacao->pede([](Componente& componente) { componente.define_ligada(true); });
    ligacao->fecha(std::chrono::milliseconds(20));
    ligacao.reset();
    EXPECT_FALSE(fechou);
    pode = true;
    for (int i = 0; i < 500 && estado->vivos > 1; ++i) // the fixture's own session is the one left
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_TRUE(fechou && estado->vivos == 1);
}
