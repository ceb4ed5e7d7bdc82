#include "platform/automacao/fabrica.h"

#include "base/falha.h"
#include "platform/automacao/sessao_erp_automacao.h"

namespace orvex::platform::automacao {

std::unique_ptr<startup::SessaoERP> sessao_das_definicoes(const startup::DefinicoesERP& definicoes,
                                                          const Espera& espera) {
    if (definicoes.componente.empty())
        throw base::Falha(
            "O ficheiro de definições não diz por que componente se chega ao ERP do servidor «" +
            definicoes.valores[startup::DefinicoesERP::servidor] + "»: em [ERP], falta Componente.");
    return std::make_unique<SessaoERPAutomacao>(definicoes.componente, espera);
}

} // namespace orvex::platform::automacao
