// The way from whoever calls to the component in its apartment, and back.
#pragma once

#include "platform/automacao/apartamento.h"
#include "platform/automacao/componente.h"
#include "startup/sessao_erp.h"

#include <memory>
#include <optional>

namespace orvex::platform::automacao {

class Ligacao : public std::enable_shared_from_this<Ligacao> {
  public:
    // `cria` makes the component's session, in the apartment.
    Ligacao(const std::function<Referencia<IDispatch>()>& cria, Espera espera);

    // Runs `trabalho` in the apartment and gives what it gives.
    template <typename Trabalho>
    auto pede(Trabalho trabalho) {
        using Resposta = std::invoke_result_t<Trabalho, Componente&>;
        if constexpr (std::is_void_v<Resposta>) {
            apartamento_.executa([&] { trabalho(*componente_); }, espera_);
        } else {
            std::optional<Resposta> resposta;
            apartamento_.executa([&] { resposta.emplace(trabalho(*componente_)); }, espera_);
            return std::move(*resposta);
        }
    }

    // In the apartment: what came, as a value or as an object of ours.
    startup::ValorERP valor_de(const Valor& valor, TipoMembro tipo, const std::string& de_onde);
    startup::ReferenciaERP objecto_de(const Valor& valor, const std::string& de_onde);
    // The component's object behind one of ours; Falha when it is not of this component.
    Referencia<IDispatch> despacho_de(const startup::ReferenciaERP& objecto);

    void larga(Componente::Objecto objecto); // some time, without waiting
    void fecha(std::chrono::milliseconds limite) noexcept;

  private:
    Apartamento apartamento_;
    Espera espera_;
    std::shared_ptr<Componente> componente_; // a thread that is left behind still has it
};

} // namespace orvex::platform::automacao
