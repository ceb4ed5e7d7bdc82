#include "instalacao.h"

#include "app/gaveta_da_empresa.h"
#include "tools/comum/empresa_para_ler.h"

namespace orvex::auditoria {

void abre_instalacao(const startup::PastasInstalacao& pastas, Pedido& pedido, std::string& empresa) {
    // To put a million rows in order takes a server longer than any statement of the screens.
    constexpr int espera_da_instrucao = 1800;
    const EmpresaParaLer lida = empresa_para_ler(pastas, espera_da_instrucao);
    empresa = lida.nome;
    pedido.abre = lida.abre;
    pedido.aspecto = lida.aspecto;
    pedido.gaveta.emplace(app::gaveta_da_empresa(lida.definicoes));
    pedido.abre(); // what fails here is told once
}

} // namespace orvex::auditoria
