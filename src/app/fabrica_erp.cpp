#include "app/fabrica_erp.h"

#include "base/falha.h"
#include "platform/erp/sessao_erp_embebida.h"

namespace orvex::app {

std::unique_ptr<startup::SessaoERP> cria_sessao_erp(const startup::DefinicoesERP& definicoes) {
    using startup::DefinicoesERP;
    const std::string& servidor = definicoes.valores[DefinicoesERP::servidor];
    if (servidor.empty() || definicoes.valores[DefinicoesERP::base].empty())
        throw base::Falha(
            "O ficheiro de definições não diz a que empresa do ERP ligar: faltam Servidor ou Base.");
    switch (definicoes.tipo()) {
    case startup::TipoERP::emulacao:
        return std::make_unique<platform::erp::SessaoERPEmbebida>();
    case startup::TipoERP::producao:
        break;
    }
    throw base::Falha("Esta versão só traz a emulação do ERP, e não a ligação ao ERP do servidor «" +
                      servidor + "»: em [ERP], Servidor tem de ser sqlite.");
}

} // namespace orvex::app
