#include "instalacao.h"

#include "app/gaveta_da_empresa.h"
#include "base/caminho.h"
#include "livro/tabelas.h"
#include "platform/odbc/sessao_odbc.h"
#include "platform/proteccao/proteccao.h"
#include "platform/sqlite/empresa.h"
#include "platform/sqlite/sessao_sqlite.h"

namespace orvex::auditoria {
namespace {

using startup::DefinicoesBD;
using startup::SessaoBD;

std::unique_ptr<SessaoBD> abre(const DefinicoesBD& definicoes) {
    std::unique_ptr<SessaoBD> BD;
    if (definicoes.servidor == startup::servidor_embebido) {
        BD = std::make_unique<platform::sqlite::SessaoSQLite>(platform::sqlite::espera_normal_ms,
                                                              platform::sqlite::Acesso::leitura);
    } else {
        // To put a million rows in order takes a server longer than any statement of the screens.
        BD = std::make_unique<platform::odbc::SessaoODBC>(
            platform::odbc::Esperas{.ligacao = 15, .instrucao = 1800, .bloqueio = 120});
    }
    if (!BD->Abre(startup::texto_ligacao(definicoes))) {
        BD->Consulta(livro::sonda_detentores); // throws, naming the cause
        throw base::Falha("A base de dados não abriu.");
    }
    return BD;
}

} // namespace

void abre_instalacao(const startup::PastasInstalacao& pastas, Pedido& pedido, std::string& empresa) {
    const DefinicoesBD definicoes =
        startup::definicoes_bd(pastas.ficheiro_definicoes(), pastas.catalogo(), platform::proteccao::abre);
    if (definicoes.incompletas())
        throw base::Falha("Em [BD] de «" + base::texto_de(pastas.ficheiro_definicoes()) +
                          "» faltam Servidor, Base ou Utilizador.");
    const bool embebida = definicoes.servidor == startup::servidor_embebido;
    empresa = embebida ? definicoes.base : definicoes.base + " em " + definicoes.servidor;
    pedido.abre = [definicoes] { return abre(definicoes); };
    if (embebida)
        pedido.aspecto = [definicoes] {
            return platform::sqlite::aspecto(base::caminho_de(definicoes.base));
        };
    pedido.gaveta.emplace(app::gaveta_da_empresa(definicoes));
    pedido.abre(); // what fails here is told once
}

} // namespace orvex::auditoria
