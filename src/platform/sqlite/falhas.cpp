#include "platform/sqlite/falhas.h"

#include "startup/sessao_bd.h"

#include <sqlite3.h>

#include <string>
#include <string_view>

namespace orvex::platform::sqlite {
namespace {

namespace numeros = startup::numeros_bd;

constexpr std::string_view sem_tabela = "no such table: ";

struct Descricao {
    std::int32_t numero;
    std::string texto;
};

Descricao de_restricao(int codigo) {
    switch (codigo) {
    case SQLITE_CONSTRAINT_NOTNULL:
        return {numeros::chave_violada, "Falta um valor obrigatório."};
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
    case SQLITE_CONSTRAINT_UNIQUE:
        return {numeros::chave_violada, "Já existe um registo com a mesma chave."};
    default:
        return {numeros::chave_violada, "Os dados não respeitam uma regra da base de dados."};
    }
}

Descricao descreve(int codigo, std::string_view mensagem) {
    if (codigo == SQLITE_BUSY_SNAPSHOT)
        return {numeros::falha_geral,
                "Os dados foram alterados por outro programa desde que foram lidos. Tente novamente."};
    switch (codigo & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_SCHEMA:
    case SQLITE_PROTOCOL:
        return {numeros::falha_geral,
                "A base de dados está a ser usada por outro programa. Tente novamente."};
    case SQLITE_READONLY:
        return {numeros::falha_geral, "A base de dados só permite leitura."};
    case SQLITE_FULL:
        return {numeros::falha_geral, "Não há espaço em disco para gravar na base de dados."};
    case SQLITE_CORRUPT:
        return {numeros::falha_geral, "A base de dados está danificada."};
    case SQLITE_NOTADB:
        return {numeros::falha_geral, "O ficheiro não é uma base de dados, ou está danificado."};
    case SQLITE_CANTOPEN:
        return {numeros::falha_geral, "Não foi possível abrir a base de dados."};
    case SQLITE_IOERR:
        return {numeros::falha_geral,
                "Erro a ler ou a gravar a base de dados (" + std::string(mensagem) + ")."};
    case SQLITE_NOMEM:
        return {numeros::falha_geral, "Memória insuficiente."};
    case SQLITE_CONSTRAINT:
        return de_restricao(codigo);
    case SQLITE_ERROR:
        break;
    default:
        return {numeros::falha_geral, "Erro da base de dados (" + std::string(mensagem) + ")."};
    }
    if (mensagem.starts_with(sem_tabela))
        return {numeros::tabela_em_falta,
                "A tabela " + std::string(mensagem.substr(sem_tabela.size())) + " não existe."};
    return {numeros::instrucao_errada, "A instrução SQL tem um erro (" + std::string(mensagem) + ")."};
}

} // namespace

bool passageira(const SQLite::Exception& erro) {
    const int codigo = erro.getErrorCode() & 0xFF;
    return codigo == SQLITE_BUSY || codigo == SQLITE_LOCKED || codigo == SQLITE_SCHEMA ||
           codigo == SQLITE_PROTOCOL;
}

base::Falha falha_de(const SQLite::Exception& erro) {
    const std::string_view mensagem = erro.what();
    const int codigo = erro.getExtendedErrorCode() > 0 ? erro.getExtendedErrorCode() : erro.getErrorCode();
    const Descricao descricao = descreve(codigo, mensagem);
    return base::Falha(descricao.texto, descricao.numero);
}

} // namespace orvex::platform::sqlite
