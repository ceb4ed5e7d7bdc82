#include "tools/comum/empresa_para_ler.h"

#include "base/caminho.h"
#include "livro/tabelas.h"
#include "platform/odbc/sessao_odbc.h"
#include "platform/proteccao/proteccao.h"
#include "platform/sqlite/empresa.h"
#include "platform/sqlite/sessao_sqlite.h"

namespace orvex {
namespace {

using startup::DefinicoesBD;
using startup::SessaoBD;

std::unique_ptr<SessaoBD> abre(const DefinicoesBD& definicoes, int espera_da_instrucao) {
    std::unique_ptr<SessaoBD> BD;
    if (definicoes.servidor == startup::servidor_embebido) {
        BD = std::make_unique<platform::sqlite::SessaoSQLite>(platform::sqlite::espera_normal_ms,
                                                              platform::sqlite::Acesso::leitura);
    } else {
        BD = std::make_unique<platform::odbc::SessaoODBC>(
            platform::odbc::Esperas{.ligacao = 15, .instrucao = espera_da_instrucao, .bloqueio = 120});
    }
    const bool abriu = BD->Abre(startup::texto_ligacao(definicoes));
    try {
        BD->Consulta(livro::sonda_detentores); // throws, naming the cause
    } catch (const base::Falha& falha) {
        if (falha.numero() != startup::numeros_bd::tabela_em_falta) throw;
        throw base::Falha(
            "Esta empresa ainda não tem o livro da ORVEX: o programa cria-o da primeira vez que "
            "a abre. Abra-a uma vez com o ORVEX.");
    }
    if (!abriu) throw base::Falha("A base de dados não abriu.");
    return BD;
}

} // namespace

EmpresaParaLer empresa_para_ler(const startup::PastasInstalacao& pastas, int espera_da_instrucao) {
    const DefinicoesBD definicoes =
        startup::definicoes_bd(pastas.ficheiro_definicoes(), pastas.catalogo(), platform::proteccao::abre);
    if (definicoes.incompletas())
        throw base::Falha("Em [BD] de «" + base::texto_de(pastas.ficheiro_definicoes()) +
                          "» faltam Servidor, Base ou Utilizador.");
    const bool embebida = definicoes.servidor == startup::servidor_embebido;
    EmpresaParaLer empresa{.definicoes = definicoes,
                           .nome =
                               embebida ? definicoes.base : definicoes.base + " em " + definicoes.servidor,
                           .abre = [=] { return abre(definicoes, espera_da_instrucao); },
                           .aspecto = {}};
    if (embebida)
        empresa.aspecto = [pasta = base::caminho_de(definicoes.base)] {
            return platform::sqlite::aspecto(pasta);
        };
    return empresa;
}

} // namespace orvex
