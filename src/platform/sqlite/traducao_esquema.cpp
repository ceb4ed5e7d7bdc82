// CREATE TABLE and ALTER TABLE. The declared types go into the engine's schema as they are: they say how a
// value is written and read (TipoSQL).
#include "platform/sqlite/leitor.h"

#include "base/texto.h"

#include <array>

namespace orvex::platform::sqlite {
namespace {

struct ColunaDeclarada {
    std::string sql;
    bool identidade = false;
};

// An identity column is the engine's own never-repeating row number, which must be a key by itself.
ColunaDeclarada le_coluna(Leitor& leitor) {
    ColunaDeclarada coluna;
    const std::string nome = leitor.nome();
    const std::string tipo = le_tipo(leitor);
    std::string nulo;
    for (;;) {
        if (leitor.aceita_palavra("IDENTITY")) {
            leitor.exige_sinal("(");
            leitor.exige(leitor.numero() == "1");
            leitor.exige_sinal(",");
            leitor.exige(leitor.numero() == "1" && tipo == "int");
            leitor.exige_sinal(")");
            coluna.identidade = true;
        } else if (leitor.aceita_palavra("NOT")) {
            leitor.exige_palavra("NULL");
            nulo = " NOT NULL";
        } else if (leitor.aceita_palavra("NULL")) {
            nulo = " NULL";
        } else {
            break;
        }
    }
    const char* comparacao = tipo.starts_with("nvarchar") ? " COLLATE SERVIDOR" : "";
    coluna.sql = coluna.identidade ? nome + " INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL"
                                   : nome + " " + tipo + comparacao + nulo;
    return coluna;
}

// How the server lays the table out on its disks means nothing here.
void passa_opcoes(Leitor& leitor) {
    if (leitor.aceita_palavra("WITH")) {
        leitor.exige_sinal("(");
        do {
            leitor.nome();
            leitor.exige_sinal("=");
            leitor.exige(leitor.aceita_palavra("ON") || leitor.aceita_palavra("OFF"));
        } while (leitor.aceita_sinal(","));
        leitor.exige_sinal(")");
    }
    if (leitor.aceita_palavra("ON")) leitor.nome();
}

// The columns of CONSTRAINT name PRIMARY KEY [CLUSTERED] (columns), in parentheses.
std::string le_chave(Leitor& leitor) {
    leitor.nome();
    leitor.exige_palavra("PRIMARY");
    leitor.exige_palavra("KEY");
    leitor.aceita_palavra("CLUSTERED");
    leitor.exige_sinal("(");
    std::string colunas;
    do {
        if (!colunas.empty()) colunas += ",";
        colunas += leitor.nome();
        if (leitor.aceita_palavra("DESC")) {
            colunas += " DESC";
        } else {
            leitor.aceita_palavra("ASC");
        }
    } while (leitor.aceita_sinal(","));
    leitor.exige_sinal(")");
    passa_opcoes(leitor);
    return "(" + colunas + ")";
}

} // namespace

std::string le_tipo(Leitor& leitor) {
    constexpr std::array<std::string_view, 7> tipos{"INT",      "SMALLINT", "MONEY",   "DATE",
                                                    "DATETIME", "DECIMAL",  "NVARCHAR"};
    const std::string_view escrito = leitor.retira().texto;
    std::string tipo;
    for (const std::string_view conhecido : tipos)
        if (iguais_sem_caixa(escrito, conhecido)) tipo = conhecido;
    if (tipo.empty()) instrucao_errada(escrito);
    for (char& c : tipo)
        c = static_cast<char>(c - 'A' + 'a');
    if (tipo != "nvarchar" && tipo != "decimal") return tipo;
    leitor.exige_sinal("(");
    tipo += "(" + leitor.numero();
    if (tipo.starts_with("decimal")) {
        leitor.exige_sinal(",");
        tipo += "," + leitor.numero();
    }
    leitor.exige_sinal(")");
    return tipo + ")";
}

std::string traduz_criacao(Leitor& leitor) {
    leitor.exige_palavra("TABLE");
    const std::string tabela = leitor.tabela();
    leitor.exige_sinal("(");
    std::string corpo;
    std::string chave;
    bool identidade = false;
    do {
        if (leitor.aceita_palavra("CONSTRAINT")) {
            leitor.exige(chave.empty());
            chave = le_chave(leitor);
            continue;
        }
        const ColunaDeclarada coluna = le_coluna(leitor);
        leitor.exige(!coluna.identidade || !identidade);
        identidade = identidade || coluna.identidade;
        corpo += (corpo.empty() ? "" : ",") + coluna.sql;
    } while (leitor.aceita_sinal(","));
    leitor.exige_sinal(")");
    passa_opcoes(leitor);
    if (!chave.empty()) corpo += (identidade ? ",UNIQUE " : ",PRIMARY KEY ") + chave;
    // Without an identity the rows lie in the order of their key, as a clustered key has them.
    const bool pela_chave = !chave.empty() && !identidade;
    return "CREATE TABLE main." + tabela + "(" + corpo + ")" + (pela_chave ? " WITHOUT ROWID" : "");
}

std::vector<std::string> traduz_alteracao(Leitor& leitor) {
    leitor.exige_palavra("TABLE");
    const std::string tabela = leitor.tabela();
    leitor.exige_palavra("ADD");
    std::vector<std::string> instrucoes;
    do {
        const ColunaDeclarada coluna = le_coluna(leitor);
        leitor.exige(!coluna.identidade);
        instrucoes.push_back("ALTER TABLE " + tabela + " ADD COLUMN " + coluna.sql);
    } while (leitor.aceita_sinal(","));
    return instrucoes;
}

} // namespace orvex::platform::sqlite
