// The component where it is really used: in a program of its own, started by the system, and as a library.
#include "platform/automacao/componente.h"
#include "tests/apoio/documentos_perdidos.h"
#include "tests/apoio/falhas.h"
#include "tests/apoio/fluxos.h"
#include "tests/windows/morte.h"
#include "tools/componente/sessao.h"

#include <chrono>
#include <thread>
#include <tlhelp32.h>

namespace orvex::testes {
namespace {

using componente::Modo;

std::wstring ao_lado(const wchar_t* nome) {
    std::wstring este(MAX_PATH, L'\0');
    este.resize(::GetModuleFileNameW(nullptr, este.data(), MAX_PATH));
    return (std::filesystem::path(este).parent_path() / nome).wstring();
}

// Registered while the test lasts, and what the fixtures' ERP is.
class Registado {
  public:
    Registado(const componente::Classe& classe, Modo modo, const std::wstring& ficheiro)
        : classe_(classe), modo_(modo) {
        componente::regista(classe_, modo_, ficheiro);
        pede(platform::automacao::utf8_de(classe.nome));
    }
    Registado(const Registado&) = delete;
    ~Registado() {
        pede("");
        componente::retira(classe_, modo_);
    }
    static void pede(const std::string& erp) {
        static std::string posto; // the environment keeps the text itself
        posto = "ORVEX_TESTE_ERP=" + erp;
        putenv(posto.data());
    }

  private:
    const componente::Classe& classe_;
    Modo modo_;
};

CLSID nova_classe() {
    CLSID numero{};
    ::CoCreateGuid(&numero);
    return numero;
}

Registado em_programa() {
    return {componente::classe_da_emulacao, Modo::programa, L'"' + ao_lado(L"orvex-componente.exe") + L'"'};
}

int a_correr(const wchar_t* programa) {
    const HANDLE todos = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W este{};
    este.dwSize = sizeof este;
    int quantos = 0;
    for (BOOL ha = ::Process32FirstW(todos, &este); ha != FALSE; ha = ::Process32NextW(todos, &este))
        quantos += programa == std::wstring_view(este.szExeFile) ? 1 : 0;
    ::CloseHandle(todos);
    return quantos;
}

bool acaba(const wchar_t* programa) {
    for (int i = 0; i < 200 && a_correr(programa) > 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    return a_correr(programa) == 0;
}

// What is asked of both sessions, what is shown, and what stays.
template <typename TBancada>
std::string corrida(const Fluxo<TBancada>& fluxo) {
    TBancada bancada;
    fluxo.prepara(bancada);
    fluxo.age(bancada);
    return bancada.diario.texto() + bancada.caixas() + "\n" + bancada.empresa.livro();
}

template <typename TBancada>
void igual_num_programa(const Fluxo<TBancada>& fluxo) {
    const std::string directa = corrida(fluxo);
    const Registado registado = em_programa();
    EXPECT_EQ(corrida(fluxo), directa);
    EXPECT_TRUE(acaba(L"orvex-componente.exe")) << "nobody uses it any more";
}

TEST(NumPrograma, EmiteUmaGuia) { igual_num_programa(fluxos::emite_guia()); }
TEST(NumPrograma, AnulaUmaGuia) { igual_num_programa(fluxos::anula_guia()); }
TEST(NumPrograma, DevolveLinhasDeUmaGuia) { igual_num_programa(fluxos::devolve()); }
TEST(NumPrograma, ConfirmaUmAjuste) { igual_num_programa(fluxos::ajusta()); }
TEST(NumPrograma, SubstituiUmAjuste) { igual_num_programa(fluxos::substitui_ajuste()); }
TEST(NumPrograma, AnulaUmAjuste) { igual_num_programa(fluxos::anula_ajuste()); }
TEST(NumPrograma, TransfereParaAOrvex) { igual_num_programa(fluxos::transfere_para_orvex()); }
TEST(NumPrograma, TransfereParaOutroCliente) { igual_num_programa(fluxos::transfere_para_cliente()); }

TEST(ComoBiblioteca, FazOMesmoNoPropioProcessoESaiQuandoNinguemAUsa) {
    const std::string directa = corrida(fluxos::devolve());
    const std::wstring ficheiro = ao_lado(L"orvex-componente.dll");
    const HMODULE biblioteca = ::LoadLibraryW(ficheiro.c_str());
    ASSERT_NE(biblioteca, nullptr);
    const auto pede = [biblioteca](const char* nome) {
        return reinterpret_cast<HRESULT(WINAPI*)()>(
            reinterpret_cast<void*>(::GetProcAddress(biblioteca, nome)))();
    };
    EXPECT_EQ(pede("DllRegisterServer"), S_OK);
    Registado::pede("Orvex.SessaoERP");
    {
        const EmpresaTeste empresa;
        Diario diario;
        const auto sessao = erp_gravado(diario);
        EXPECT_EQ(pede("DllCanUnloadNow"), S_FALSE) << "the session is one of the library's";
    }
    EXPECT_EQ(corrida(fluxos::devolve()), directa);
    Registado::pede("");
    const auto da = reinterpret_cast<void*>(::GetProcAddress(biblioteca, "DllGetClassObject"));
    for (const BOOL sim : {TRUE, FALSE, FALSE}) { // the last one is one too many
        platform::automacao::Referencia<IClassFactory> fabrica;
        reinterpret_cast<decltype(&DllGetClassObject)>(da)(componente::classe_da_emulacao.numero,
                                                           IID_PPV_ARGS(fabrica.GetAddressOf()));
        EXPECT_EQ(pede("DllCanUnloadNow"), S_FALSE);
        fabrica->LockServer(sim);
        fabrica = {};
        EXPECT_EQ(pede("DllCanUnloadNow"), sim ? S_FALSE : S_OK);
    }
    EXPECT_EQ(pede("DllUnregisterServer"), S_OK);
    EXPECT_EQ(a_correr(L"orvex-componente.exe"), 0);
    ::FreeLibrary(biblioteca);
}

TEST(CriaDocStock, OndeAChaveNaoCabeERecusadoAntesDeMaisNada) {
    using namespace platform::automacao;
    Componente cliente(componente::despacho_da_sessao(std::make_unique<platform::erp::SessaoERPEmbebida>()));
    Argumentos dados;
    for (int i = 1; i < 19; ++i)
        dados.por_valor({});
    dados.por_referencia(variant_de(0)).de_saida();
    EXPECT_THAT(falha([&] { cliente.invoca(Componente::sessao, "CriaDocStock", DISPATCH_METHOD, dados); }),
                HasSubstr("argumento 19"));
}

// The process ends before the first document is created or cancelled, or after.
template <typename TBancada>
void morre(const Fluxo<TBancada>& fluxo) {
    const HANDLE sinal = ::CreateEventW(nullptr, TRUE, FALSE, sinal_para_morrer);
    for (const wchar_t* quando : {L"antes", L"depois"}) {
        const componente::Classe classe = classe_que_morre(nova_classe());
        const Registado registado(classe, Modo::programa,
                                  L'"' + ao_lado(L"componente-que-morre.exe") + L"\" " + quando + L" " +
                                      componente::texto_do_numero(classe.numero));
        TBancada bancada;
        fluxo.prepara(bancada);
        bancada.caixas();
        const std::string antes = bancada.empresa.livro();
        ::SetEvent(sinal);
        EXPECT_NO_THROW(fluxo.age(bancada));
        ::ResetEvent(sinal);
        const std::string caixas = bancada.caixas();
        EXPECT_THAT(caixas, HasSubstr("O componente do ERP terminou a meio da operação"));
        EXPECT_EQ(bancada.empresa.livro(), antes) << caixas;
        EXPECT_EQ(documentos_perdidos(bancada.empresa, caixas), "") << caixas;
        EXPECT_EQ(linhas_sem_documento(bancada.empresa, caixas), "") << caixas;
        EXPECT_FALSE(bancada.BD.EmTransaccao());
        EXPECT_TRUE(fluxo.utilizavel(bancada)) << caixas;
    }
    ::CloseHandle(sinal);
}

TEST(QueMorre, AEmitirUmaGuiaDeixaTudoComoEstavaOuNomeado) { morre(fluxos::emite_guia()); }
TEST(QueMorre, AAnularUmaGuiaDeixaTudoComoEstavaOuNomeado) { morre(fluxos::anula_guia()); }
TEST(QueMorre, ADevolverDeixaTudoComoEstavaOuNomeado) { morre(fluxos::devolve()); }
TEST(QueMorre, AAjustarDeixaTudoComoEstavaOuNomeado) { morre(fluxos::ajusta()); }
TEST(QueMorre, ASubstituirDeixaTudoComoEstavaOuNomeado) { morre(fluxos::substitui_ajuste()); }
TEST(QueMorre, AAnularUmAjusteDeixaTudoComoEstavaOuNomeado) { morre(fluxos::anula_ajuste()); }
TEST(QueMorre, ATransferirDeixaTudoComoEstavaOuNomeado) { morre(fluxos::transfere_para_orvex()); }

TEST(Registo, DoComponenteSoSaiQuandoNenhumaDasFormasResta) {
    const componente::Classe classe = classe_que_morre(nova_classe());
    CLSID lida{};
    const auto registada = [&] { return SUCCEEDED(::CLSIDFromProgID(classe.nome.c_str(), &lida)); };
    componente::retira(classe, Modo::programa); // nothing to take away
    componente::regista(classe, Modo::programa, L"a.exe");
    componente::regista(classe, Modo::biblioteca, L"a.dll");
    componente::retira(classe, Modo::programa);
    EXPECT_TRUE(registada());
    EXPECT_TRUE(lida == classe.numero);
    componente::retira(classe, Modo::biblioteca);
    EXPECT_FALSE(registada());
}

} // namespace
} // namespace orvex::testes
