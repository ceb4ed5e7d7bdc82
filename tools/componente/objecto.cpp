#include "tools/componente/objecto.h"

#include "base/falha.h"
#include "base/texto.h"

#include <algorithm>
#include <iterator>

namespace orvex::componente {
namespace {

using startup::ReferenciaERP;
using startup::ValorERP;

// Called, also where they are given nothing: automation does not say whether a property is read or a method
// called.
constexpr std::string_view metodos_sem_argumentos[] = {"Validar", "UltimaMensagem"};

bool chamado(const std::string& membro, WORD modo, const Argumentos& argumentos) {
    if ((modo & DISPATCH_METHOD) == 0) return argumentos.quantos() > 0;
    return (modo & DISPATCH_PROPERTYGET) == 0 || argumentos.quantos() > 0 ||
           std::any_of(std::begin(metodos_sem_argumentos), std::end(metodos_sem_argumentos),
                       [&](std::string_view metodo) { return base::mesmo_nome(metodo, membro); });
}

class DespachoObjecto final : public Despacho, public IObjectoERP {
  public:
    explicit DespachoObjecto(ReferenciaERP real) : real_(std::move(real)) {}

    STDMETHODIMP QueryInterface(REFIID qual, void** objecto) override {
        if (objecto == nullptr || qual != __uuidof(IObjectoERP))
            return Despacho::QueryInterface(qual, objecto);
        *objecto = static_cast<IObjectoERP*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return Despacho::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return Despacho::Release(); }
    const ReferenciaERP& real() const override { return real_; }

  protected:
    // An object cannot be asked which members it has: it says so when one is used.
    bool conhece(std::string_view) const override { return true; }

    Valor executa(const std::string& membro, WORD modo, const Argumentos& argumentos) override {
        if (poe_propriedade(modo)) {
            real_->poe(membro, platform::automacao::valor_erp_de(argumentos[0], objecto_de));
            return {};
        }
        return devolvido(chamado(membro, modo, argumentos) ? chama(membro, argumentos)
                                                           : real_->obtem(membro));
    }

  private:
    static Valor devolvido(const ValorERP& valor) {
        return platform::automacao::variant_de(valor, VT_I4, despacho_de);
    }

    ValorERP chama(const std::string& membro, const Argumentos& argumentos) {
        startup::ObjectoERP::Argumentos dados;
        for (std::size_t i = 0; i < argumentos.quantos(); ++i)
            dados.push_back(platform::automacao::valor_erp_de(argumentos[i], objecto_de));
        const startup::ObjectoERP::Argumentos antes = dados;
        ValorERP valor = real_->chama(membro, dados);
        for (std::size_t i = 0; i < dados.size(); ++i)
            if (platform::automacao::por_referencia(argumentos[i]) &&
                (dados[i].valor != antes[i].valor || dados[i].objecto != antes[i].objecto))
                platform::automacao::deixa(argumentos[i], devolvido(dados[i]));
        return valor;
    }

    ReferenciaERP real_;
};

} // namespace

Referencia<IDispatch> despacho_de(const ReferenciaERP& real) {
    if (!real) return nullptr;
    return static_cast<IDispatch*>(new DespachoObjecto(real));
}

ReferenciaERP objecto_de(const Referencia<IDispatch>& despacho) {
    if (!despacho) return nullptr;
    Referencia<IObjectoERP> nosso;
    if (platform::automacao::falhou(despacho->QueryInterface(IID_PPV_ARGS(nosso.GetAddressOf()))))
        throw base::Falha("O objecto não é deste componente.");
    return nosso->real();
}

} // namespace orvex::componente
