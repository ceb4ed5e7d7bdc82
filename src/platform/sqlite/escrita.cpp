// Writing the rows of a record set.
#include "platform/sqlite/falhas.h"
#include "platform/sqlite/motor_sqlite.h"

namespace orvex::platform::sqlite {
namespace {

// The key finds the row; all values read, to the letter, tell that nobody changed it.
std::string condicao(const Colunas& colunas) {
    std::string chave;
    std::string lidos;
    for (const Coluna& coluna : colunas.lista) {
        if (coluna.chave)
            chave.append(chave.empty() ? " WHERE [" : " AND [").append(coluna.nome).append("]=?");
        lidos.append(" AND [").append(coluna.nome).append("] COLLATE BINARY IS ?");
    }
    return chave + lidos;
}

int associa_atribuicoes(SQLite::Statement& instrucao, const Colunas& colunas,
                        const std::vector<registos::Atribuicao>& atribuicoes) {
    int parametro = 0;
    for (const registos::Atribuicao& atribuicao : atribuicoes)
        associa_valor(instrucao, ++parametro, colunas.lista[atribuicao.coluna].tipo, atribuicao.valor);
    return parametro;
}

} // namespace

void MotorSQLite::insere(const Colunas& colunas, const std::vector<registos::Atribuicao>& atribuicoes) {
    tranca_para_escrever();
    com_falhas([&] {
        const auto instrucao =
            ligacao().escritas.toma(texto_insercao(onde_se_escreve(colunas.tabela), colunas, atribuicoes));
        associa_atribuicoes(*instrucao, colunas, atribuicoes);
        instrucao->exec();
    });
}

bool MotorSQLite::altera(const Colunas& colunas, const std::vector<registos::Atribuicao>& atribuicoes,
                         const registos::Conjunto& lida) {
    tranca_para_escrever();
    return com_falhas([&] {
        const auto instrucao =
            ligacao().escritas.toma(texto_alteracao(colunas, atribuicoes) + condicao(colunas));
        int parametro = associa_atribuicoes(*instrucao, colunas, atribuicoes);
        const auto associa_lida = [&](std::size_t coluna) {
            if (const base::Variante* escrito = lida.escrito(coluna)) {
                associa_valor(*instrucao, ++parametro, colunas.lista[coluna].tipo, *escrito);
            } else {
                associa_celula(*instrucao, ++parametro, lida.celula(coluna));
            }
        };
        for (std::size_t i = 0; i < colunas.lista.size(); ++i)
            if (colunas.lista[i].chave) associa_lida(i);
        for (std::size_t i = 0; i < colunas.lista.size(); ++i)
            associa_lida(i);
        // Of a view the engine counts the rows that were written for it, not its own.
        const int antes = base().getTotalChanges();
        instrucao->exec();
        return base().getTotalChanges() > antes;
    });
}

} // namespace orvex::platform::sqlite
