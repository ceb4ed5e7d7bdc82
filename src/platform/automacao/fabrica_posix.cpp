#include "platform/automacao/fabrica.h"

#include "base/falha.h"

namespace orvex::platform::automacao {

std::unique_ptr<startup::SessaoERP> sessao_das_definicoes(const startup::DefinicoesERP& definicoes,
                                                          const Espera&) {
    throw base::Falha("Só no Windows há a automação por que se chega ao ERP do servidor «" +
                      definicoes.valores[startup::DefinicoesERP::servidor] +
                      "»; neste sistema, em [ERP], Servidor tem de ser sqlite.");
}

} // namespace orvex::platform::automacao
