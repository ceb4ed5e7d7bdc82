#include "tools/componente/despacho.h"

#include "base/descricao.h"

#include <map>
#include <mutex>

namespace orvex::componente {
namespace {

using base::Falha;
using platform::automacao::Texto;

// Names and numbers, the same for every object: whoever asked one object for a number may use it on another
// of its kind. Each spelling has a number of its own, so that what is asked is what was written.
class Nomes {
  public:
    DISPID numero(const std::string& nome) {
        const std::lock_guard guarda(tranca_);
        const auto [este, novo] = numeros_.try_emplace(nome, static_cast<DISPID>(nomes_.size() + 1));
        if (novo) nomes_.push_back(nome);
        return este->second;
    }
    std::string nome(DISPID numero) {
        const std::lock_guard guarda(tranca_);
        if (numero < 1 || static_cast<std::size_t>(numero) > nomes_.size())
            throw Resposta{DISP_E_MEMBERNOTFOUND};
        return nomes_[static_cast<std::size_t>(numero) - 1];
    }

  private:
    std::mutex tranca_;
    std::map<std::string, DISPID> numeros_;
    std::vector<std::string> nomes_;
};

Nomes& nomes() {
    static Nomes todos;
    return todos;
}

// The numbers of automation stay what they are; the small ones stand where such numbers have their place.
HRESULT numero_da_falha(const Falha& falha) {
    if (falha.numero() < 0) return falha.numero();
    return falha.numero() == 0 ? E_FAIL : MAKE_SCODE(SEVERITY_ERROR, FACILITY_CONTROL, falha.numero());
}

HRESULT diz(EXCEPINFO* excepcao, const std::string& texto, HRESULT numero) {
    if (excepcao == nullptr) return numero;
    Texto origem(origem_das_falhas), descricao(texto); // both, or none
    *excepcao = {};
    excepcao->scode = numero;
    excepcao->bstrSource = origem.larga();
    excepcao->bstrDescription = descricao.larga();
    return DISP_E_EXCEPTION;
}

void verifica(WORD modo, const DISPPARAMS* dados) {
    if (dados == nullptr) throw Resposta{E_POINTER};
    const bool poe = poe_propriedade(modo);
    if (dados->cNamedArgs != 0 && !(poe && *dados->rgdispidNamedArgs == DISPID_PROPERTYPUT))
        throw Resposta{DISP_E_NONAMEDARGS};
    if (poe && dados->cArgs != 1) throw Resposta{DISP_E_BADPARAMCOUNT};
}

} // namespace

STDMETHODIMP Despacho::QueryInterface(REFIID qual, void** objecto) {
    if (objecto == nullptr) return E_POINTER;
    *objecto = nullptr;
    if (qual != __uuidof(IUnknown) && qual != __uuidof(IDispatch)) return E_NOINTERFACE;
    *objecto = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) Despacho::Release() {
    const ULONG restam = --referencias_;
    if (restam == 0) delete this;
    return restam;
}

STDMETHODIMP Despacho::GetTypeInfoCount(UINT* quantas) {
    if (quantas == nullptr) return E_POINTER;
    *quantas = 0;
    return S_OK;
}

STDMETHODIMP Despacho::GetIDsOfNames(REFIID, LPOLESTR* nomes_pedidos, UINT quantos, LCID, DISPID* numeros) {
    if (nomes_pedidos == nullptr || numeros == nullptr || quantos == 0) return E_INVALIDARG;
    return sem_lancar([&] {
        const std::string nome = platform::automacao::utf8_de(nomes_pedidos[0]);
        const bool conhecido = conhece(nome);
        for (UINT i = 0; i < quantos; ++i)
            numeros[i] = DISPID_UNKNOWN; // arguments have no names
        if (conhecido) numeros[0] = nomes().numero(nome);
        return conhecido && quantos == 1 ? S_OK : DISP_E_UNKNOWNNAME;
    });
}

STDMETHODIMP Despacho::Invoke(DISPID numero, REFIID, LCID, WORD modo, DISPPARAMS* dados, VARIANT* resultado,
                              EXCEPINFO* excepcao, UINT*) {
    const Referencia<IDispatch> ate_ao_fim(this); // the call may release the last reference
    // Telling a failure may fail too.
    return sem_lancar([&]() -> HRESULT {
        try {
            verifica(modo, dados);
            Valor valor = executa(nomes().nome(numero), modo, Argumentos(*dados));
            if (resultado != nullptr) *resultado = valor.larga();
            return S_OK;
        } catch (const Resposta& resposta) {
            return resposta.numero;
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const Falha& falha) {
            return diz(excepcao, falha.what(), numero_da_falha(falha));
        } catch (const std::exception& falha) {
            return diz(excepcao, base::descricao(falha), E_UNEXPECTED);
        }
    });
}

} // namespace orvex::componente
