#include "app/fabrica_erp.h"

#include "base/falha.h"
#include "platform/automacao/fabrica.h"
#include "platform/erp/sessao_erp_embebida.h"

namespace orvex::app {

std::unique_ptr<startup::SessaoERP> cria_sessao_erp(const startup::DefinicoesERP& definicoes,
                                                    const platform::espera::Espera& espera) {
    using startup::DefinicoesERP;
    if (definicoes.valores[DefinicoesERP::servidor].empty() ||
        definicoes.valores[DefinicoesERP::base].empty())
        throw base::Falha(
            "O ficheiro de definições não diz a que empresa do ERP ligar: faltam Servidor ou Base.");
    switch (definicoes.tipo()) {
    case startup::TipoERP::emulacao:
        return std::make_unique<platform::erp::SessaoERPEmbebida>(espera);
    case startup::TipoERP::producao:
        break;
    }
    return platform::automacao::sessao_das_definicoes(definicoes, espera);
}

} // namespace orvex::app
