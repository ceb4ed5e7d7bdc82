// The recorded session behind a component that lives in the test's own process: the program of the test is
// registered as the library of a class of its own, so that the client finds it as it finds any component.
// What the record wants spoilt of an answer is spoilt between the two.
#include "platform/automacao/sessao_erp_automacao.h"
#include "tests/apoio/gravador.h"
#include "tools/componente/classe.h"
#include "tools/componente/sessao.h"

#include <cstdlib>
#include <mutex>

namespace orvex::testes {
namespace {

using componente::Referencia;
using Maneira = Diario::Maneira;

void estraga(VARIANT& valor, Maneira maneira) {
    if (valor.vt == (VT_ARRAY | VT_VARIANT)) { // a document's key
        if (maneira == Maneira::como_nulo) return static_cast<void>(::VariantClear(&valor));
        VARIANT* elementos = nullptr;
        ULONG quantos = valor.parray->rgsabound[0].cElements;
        if (FAILED(::SafeArrayAccessData(valor.parray, reinterpret_cast<void**>(&elementos)))) return;
        for (ULONG i = 0; i < quantos; ++i)
            estraga(elementos[i], maneira);
        ::SafeArrayUnaccessData(valor.parray);
        return;
    }
    if (valor.vt != VT_I2 && valor.vt != VT_I4 && valor.vt != VT_CY) return;
    if (maneira != Maneira::como_nulo)
        ::VariantChangeTypeEx(&valor, &valor, LOCALE_INVARIANT, 0,
                              maneira == Maneira::como_texto ? VT_BSTR : VT_R8);
    else
        valor.vt = VT_NULL;
}

// Objects of a component that no longer answers answer nothing.
class Estragado final : public IDispatch {
  public:
    Estragado(Referencia<IDispatch> real, Diario& diario, std::shared_ptr<bool> terminou)
        : real_(std::move(real)), diario_(diario), terminou_(std::move(terminou)) {}
    virtual ~Estragado() = default;

    STDMETHODIMP QueryInterface(REFIID qual, void** objecto) override {
        if (qual != __uuidof(IUnknown) && qual != __uuidof(IDispatch))
            return real_->QueryInterface(qual, objecto); // what only its own component asks
        *objecto = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++referencias_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG restam = --referencias_;
        if (restam == 0) delete this;
        return restam;
    }
    STDMETHODIMP GetTypeInfoCount(UINT* quantas) override { return real_->GetTypeInfoCount(quantas); }
    STDMETHODIMP GetTypeInfo(UINT qual, LCID lingua, ITypeInfo** info) override {
        return real_->GetTypeInfo(qual, lingua, info);
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* nomes, UINT quantos, LCID lingua, DISPID* numeros) override {
        return *terminou_ ? RPC_E_DISCONNECTED
                          : real_->GetIDsOfNames(GUID{}, nomes, quantos, lingua, numeros);
    }
    STDMETHODIMP Invoke(DISPID numero, REFIID, LCID lingua, WORD modo, DISPPARAMS* dados, VARIANT* resultado,
                        EXCEPINFO* excepcao, UINT* argumento) override {
        if (*terminou_) return RPC_E_DISCONNECTED;
        const HRESULT resposta =
            real_->Invoke(numero, GUID{}, lingua, modo, dados, resultado, excepcao, argumento);
        const auto maneira = std::exchange(diario_.a_estragar, std::nullopt);
        if (maneira >= Maneira::termina) return acaba(resultado);
        if (maneira == Maneira::sem_descricao) return E_FAIL;
        if (maneira && resultado != nullptr) estraga(*resultado, *maneira);
        for (UINT i = 0; maneira && i < dados->cArgs; ++i)
            if (dados->rgvarg[i].vt == (VT_BYREF | VT_VARIANT)) estraga(*dados->rgvarg[i].pvarVal, *maneira);
        if (resultado != nullptr && resultado->vt == VT_DISPATCH && resultado->pdispVal != nullptr) {
            Referencia<IDispatch> real;
            real.Attach(resultado->pdispVal);
            resultado->pdispVal =
                Referencia<IDispatch>(new Estragado(std::move(real), diario_, terminou_)).Detach();
        }
        return resposta;
    }

  private:
    HRESULT acaba(VARIANT* resultado) {
        *terminou_ = true;
        if (resultado != nullptr) ::VariantClear(resultado);
        return RPC_E_DISCONNECTED;
    }

    Referencia<IDispatch> real_;
    Diario& diario_;
    std::shared_ptr<bool> terminou_;
    ULONG referencias_ = 0;
};

// What the next session is made of.
componente::FazSessao seguinte;

// A class that is registered as long as the process lasts.
class ClasseDoTeste {
  public:
    ClasseDoTeste() {
        std::wstring ficheiro(MAX_PATH, L'\0');
        ficheiro.resize(::GetModuleFileNameW(nullptr, ficheiro.data(), MAX_PATH));
        componente::regista(classe_, componente::Modo::biblioteca, ficheiro);
    }
    ClasseDoTeste(const ClasseDoTeste&) = delete;
    ~ClasseDoTeste() { componente::retira(classe_, componente::Modo::biblioteca); }

    std::string nome() const { return platform::automacao::utf8_de(classe_.nome); }

  private:
    componente::Classe classe_ = [] {
        CLSID numero{};
        ::CoCreateGuid(&numero);
        return componente::Classe{numero, L"Orvex.Teste." + std::to_wstring(::GetCurrentProcessId()),
                                  L"Teste"};
    }();
};

std::string erp_pedido() {
    const char* erp = std::getenv("ORVEX_TESTE_ERP");
    return erp != nullptr ? erp : "";
}

} // namespace

bool pela_automacao() { return erp_pedido() == "automacao"; }

std::unique_ptr<startup::SessaoERP> pelo_caminho_pedido(std::unique_ptr<startup::SessaoERP> real,
                                                        Diario& diario) {
    if (erp_pedido().empty()) return real;
    if (!pela_automacao()) // a class that is registered, and recorded on this side
        return std::make_unique<platform::operacoes::SessaoERPOuvida>(
            std::make_unique<platform::automacao::SessaoERPAutomacao>(erp_pedido()), diario);
    static const ClasseDoTeste classe;
    static std::mutex vez; // programs at once, with one class for all
    const std::lock_guard guarda(vez);
    const auto sessao = std::make_shared<std::unique_ptr<startup::SessaoERP>>(std::move(real));
    seguinte = [sessao, &diario] {
        return Referencia<IDispatch>(new Estragado(componente::despacho_da_sessao(std::move(*sessao)), diario,
                                                   std::make_shared<bool>()));
    };
    return std::make_unique<platform::automacao::SessaoERPAutomacao>(classe.nome());
}

} // namespace orvex::testes

extern "C" __declspec(dllexport) HRESULT WINAPI DllGetClassObject(REFCLSID, REFIID qual, void** objecto) {
    using namespace orvex;
    return componente::fabrica(testes::seguinte, componente::Modo::biblioteca)->QueryInterface(qual, objecto);
}
