// What automation sees of an object of ours: members by name, late bound, and failures with their text.
#pragma once

#include "platform/automacao/valores.h"
#include "tools/componente/vida.h"

#include <atomic>
#include <new>

// What implements the system's interfaces ends by Release; they have no destructor to be called by.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace orvex::componente {

using platform::automacao::Referencia;
using platform::automacao::Valor;

// Who a failure comes from, as whoever asked is told.
inline constexpr const char* origem_das_falhas = "Orvex.SessaoERP";

// The arguments of a call in the order in which they were given; automation has the last one first.
class Argumentos {
  public:
    explicit Argumentos(DISPPARAMS& dados) : dados_(dados) {}

    std::size_t quantos() const { return dados_.cArgs; }
    VARIANT& operator[](std::size_t i) const { return dados_.rgvarg[dados_.cArgs - 1 - i]; }

  private:
    DISPPARAMS& dados_;
};

class Despacho : public IDispatch {
  public:
    Despacho() = default;
    Despacho(const Despacho&) = delete;
    Despacho& operator=(const Despacho&) = delete;
    virtual ~Despacho() = default;

    STDMETHODIMP QueryInterface(REFIID qual, void** objecto) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++referencias_; }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT* quantas) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* nomes, UINT quantos, LCID, DISPID* numeros) override;
    STDMETHODIMP Invoke(DISPID numero, REFIID, LCID, WORD modo, DISPPARAMS* dados, VARIANT* resultado,
                        EXCEPINFO* excepcao, UINT* argumento) override;

  protected:
    virtual bool conhece(std::string_view membro) const = 0;
    // `modo` is how the member is used: DISPATCH_METHOD, DISPATCH_PROPERTYGET or both,
    // DISPATCH_PROPERTYPUT or DISPATCH_PROPERTYPUTREF. Throws Resposta, Falha, or anything else.
    virtual Valor executa(const std::string& membro, WORD modo, const Argumentos& argumentos) = 0;

  private:
    std::atomic<ULONG> referencias_ = 0;
    Vida vida_;
};

// Nothing that is thrown may leave: the other side may be written in any language.
template <typename Accao>
HRESULT sem_lancar(const Accao& accao) noexcept {
    try {
        return accao();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

// An answer that automation has a number for.
struct Resposta {
    HRESULT numero;
};

inline bool poe_propriedade(WORD modo) {
    return (modo & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
}

} // namespace orvex::componente
