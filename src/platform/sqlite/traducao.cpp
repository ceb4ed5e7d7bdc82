#include "platform/sqlite/traducao.h"

#include "base/texto.h"
#include "platform/sqlite/leitor.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvex::platform::sqlite {
namespace {

// Reads by recursive descent; each procedure returns the engine's text of what it read.
class Tradutor {
  public:
    explicit Tradutor(std::string_view chave) : leitor_(chave) {}

    Traducao traduz();

  private:
    Traducao consulta();
    std::string itens();
    std::string item();
    std::string alcunha();
    std::string tabela_com_alcunha();
    std::string juncoes();
    std::string onde();
    std::string ordem();
    std::string apaga();
    std::string altera();
    template <typename Le>
    std::string lista(Le le);

    std::string expressao();
    std::string conjuncao();
    std::string negacao();
    std::string comparacao();
    std::string conjunto();
    std::string soma();
    std::string sinal();
    std::string primaria();
    std::string coluna();
    std::string funcao();
    std::string converte();
    std::string molda();
    std::string cortado(const std::string& texto, const std::string& tipo);

    bool agrupa_o_que_mostra(const std::vector<std::string>& grupo) const;

    Leitor leitor_;
    bool simples_ = true;              // one table, and nothing but its columns as they are
    std::vector<std::string> colunas_; // the items

    bool so_colunas_ = true;
};

Traducao Tradutor::traduz() {
    Traducao traducao;
    if (leitor_.aceita_palavra("SELECT")) {
        traducao = consulta();
    } else if (leitor_.aceita_palavra("DELETE")) {
        traducao = {Traducao::Genero::alteracao, {apaga()}, {}};
    } else if (leitor_.aceita_palavra("UPDATE")) {
        traducao = {Traducao::Genero::alteracao, {altera()}, {}};
    } else if (leitor_.aceita_palavra("CREATE")) {
        traducao = {Traducao::Genero::esquema, {traduz_criacao(leitor_)}, {}};
    } else {
        leitor_.exige_palavra("ALTER");
        traducao = {Traducao::Genero::esquema, traduz_alteracao(leitor_), {}};
    }
    leitor_.exige_fim();
    return traducao;
}

// --- Statements --------------------------------------------------------------------------------------------

Traducao Tradutor::consulta() {
    std::string limite;
    if (leitor_.aceita_palavra("TOP")) limite = " LIMIT " + leitor_.numero();
    const std::string mostrados = itens();
    std::string escolha = "SELECT ";
    std::string sql;
    leitor_.exige_palavra("FROM");
    const std::string tabela = tabela_com_alcunha();
    sql = " FROM " + tabela;
    sql += juncoes();
    sql += onde();
    if (leitor_.aceita_palavra("GROUP")) {
        leitor_.exige_palavra("BY");
        simples_ = false;
        std::vector<std::string> grupo;
        const std::string agrupadas = lista([&] { return grupo.emplace_back(coluna()); });
        if (agrupa_o_que_mostra(grupo)) {
            escolha = "SELECT DISTINCT ";
        } else {
            sql += " GROUP BY " + agrupadas;
        }
    }
    sql += ordem() + limite;
    return {Traducao::Genero::consulta, {escolha + mostrados + sql}, simples_ ? tabela : std::string()};
}

// Grouping by the very columns that are shown only leaves out repeated rows. Said so, the engine takes the
// rows in the order of an index as they come; told to group, it sorts them all first.
bool Tradutor::agrupa_o_que_mostra(const std::vector<std::string>& grupo) const {
    if (!so_colunas_ || grupo.size() != colunas_.size()) return false;
    // The table tells two columns apart only where both name it.
    const auto mesma = [](const std::string& a, const std::string& b) {
        const std::size_t em_a = a.find("].["), em_b = b.find("].[");
        if (em_a == std::string::npos) return base::mesmo_nome(a, b.substr(b.rfind('[')));
        if (em_b == std::string::npos) return base::mesmo_nome(a.substr(a.rfind('[')), b);
        return base::mesmo_nome(a, b);
    };
    return std::is_permutation(grupo.begin(), grupo.end(), colunas_.begin(), colunas_.end(), mesma);
}

template <typename Le>
std::string Tradutor::lista(Le le) {
    std::string sql = le();
    while (leitor_.aceita_sinal(","))
        sql += "," + le();
    return sql;
}

std::string Tradutor::itens() {
    return lista([this] { return item(); });
}

std::string Tradutor::item() {
    if (leitor_.aceita_sinal("*")) {
        so_colunas_ = false;
        return "*";
    }
    const bool pode_ser_coluna = leitor_.e_nome();
    std::string sql = expressao();
    // The text of an expression holds a parenthesis or a sign beyond its names; a plain column does not.
    if (!pode_ser_coluna || sql.find_first_of("()=<>'+ ?") != std::string::npos)
        simples_ = so_colunas_ = false;
    colunas_.push_back(sql);
    const std::string nome = alcunha();
    if (!nome.empty()) simples_ = false;
    return sql + nome;
}

std::string Tradutor::alcunha() {
    const bool com_as = leitor_.aceita_palavra("AS");
    if (com_as && leitor_.actual().categoria == Categoria::texto) {
        const std::string_view texto = leitor_.actual().texto;
        leitor_.exige(texto.find(']') == std::string_view::npos);
        leitor_.retira();
        return " AS [" + std::string(texto.substr(1, texto.size() - 2)) + "]";
    }
    if (com_as || leitor_.e_nome()) return " AS " + leitor_.nome();
    return {};
}

std::string Tradutor::tabela_com_alcunha() {
    const std::string tabela = leitor_.tabela();
    const std::string nome = alcunha();
    if (!nome.empty()) simples_ = false;
    return tabela + nome;
}

std::string Tradutor::juncoes() {
    std::string sql;
    for (;;) {
        if (leitor_.aceita_palavra("LEFT")) {
            leitor_.aceita_palavra("OUTER");
            sql += " LEFT";
        } else if (!leitor_.aceita_palavra("INNER") && !leitor_.e_palavra("JOIN")) {
            return sql;
        }
        leitor_.exige_palavra("JOIN");
        simples_ = false;
        sql += " JOIN " + tabela_com_alcunha();
        leitor_.exige_palavra("ON");
        sql += " ON " + expressao();
    }
}

std::string Tradutor::onde() {
    if (!leitor_.aceita_palavra("WHERE")) return {};
    return " WHERE " + expressao();
}

std::string Tradutor::ordem() {
    if (!leitor_.aceita_palavra("ORDER")) return {};
    leitor_.exige_palavra("BY");
    return " ORDER BY " + lista([this] {
               std::string sql = coluna();
               if (leitor_.aceita_palavra("DESC")) return sql + " DESC";
               leitor_.aceita_palavra("ASC");
               return sql;
           });
}

std::string Tradutor::apaga() {
    leitor_.aceita_palavra("FROM");
    const std::string tabela = onde_se_escreve(leitor_.tabela());
    return "DELETE FROM " + tabela + onde();
}

std::string Tradutor::altera() {
    std::string sql = "UPDATE " + leitor_.tabela();
    leitor_.exige_palavra("SET");
    sql += " SET " + lista([this] {
               const std::string destino = leitor_.nome();
               leitor_.exige_sinal("=");
               return destino + "=" + soma();
           });
    return sql + onde();
}

// --- Expressions -------------------------------------------------------------------------------------------

std::string Tradutor::expressao() {
    std::string sql = conjuncao();
    while (leitor_.aceita_palavra("OR"))
        sql += " OR " + conjuncao();
    return sql;
}

std::string Tradutor::conjuncao() {
    std::string sql = negacao();
    while (leitor_.aceita_palavra("AND"))
        sql += " AND " + negacao();
    return sql;
}

std::string Tradutor::negacao() { return leitor_.aceita_palavra("NOT") ? "NOT " + negacao() : comparacao(); }

std::string Tradutor::comparacao() {
    std::string sql = soma();
    if (leitor_.aceita_palavra("IS")) {
        sql += leitor_.aceita_palavra("NOT") ? " IS NOT NULL" : " IS NULL";
        leitor_.exige_palavra("NULL");
        return sql;
    }
    if (leitor_.aceita_palavra("LIKE"))
        return sql.insert(0, std::string(funcao_semelhante) + "(") + "," + soma() + ")";
    if (leitor_.aceita_palavra("IN")) return sql + " IN " + conjunto();
    for (const std::string_view operador : {"=", "<>", "!=", "<", ">", "<=", ">="})
        if (leitor_.aceita_sinal(operador)) return sql + std::string(operador) + soma();
    return sql;
}

// Of values, or the rows of a query.
std::string Tradutor::conjunto() {
    leitor_.exige_sinal("(");
    std::string sql;
    if (leitor_.aceita_palavra("SELECT")) {
        const auto colunas = std::exchange(colunas_, {});
        const bool so_colunas = std::exchange(so_colunas_, true);
        sql = consulta().instrucoes.front();
        colunas_ = colunas;
        so_colunas_ = so_colunas;
        simples_ = false;
    } else {
        sql = lista([this] { return soma(); });
    }
    leitor_.exige_sinal(")");
    return "(" + sql + ")";
}

std::string Tradutor::soma() {
    std::string sql = sinal();
    for (;;) {
        if (leitor_.aceita_sinal("+")) {
            sql.insert(0, std::string(funcao_soma) + "(").append("," + sinal() + ")");
        } else if (leitor_.aceita_sinal("-")) {
            sql.insert(0, "(").append(" - " + sinal() + ")");
        } else {
            return sql;
        }
    }
}

std::string Tradutor::sinal() {
    if (leitor_.aceita_sinal("-")) return "(- " + sinal() + ")";
    leitor_.aceita_sinal("+");
    return primaria();
}

std::string Tradutor::primaria() {
    if (leitor_.aceita_sinal("(")) {
        std::string sql = "(" + expressao() + ")";
        leitor_.exige_sinal(")");
        return sql;
    }
    switch (leitor_.actual().categoria) {
    case Categoria::texto:
    case Categoria::numero:
        simples_ = false;
        return std::string(leitor_.retira().texto);
    case Categoria::parametro:
        leitor_.retira();
        return "?";
    case Categoria::palavra:
        if (leitor_.seguinte().texto == "(" && leitor_.seguinte().categoria == Categoria::sinal)
            return funcao();
        break;
    default:
        break;
    }
    return coluna();
}

std::string Tradutor::coluna() {
    std::string sql = leitor_.nome();
    if (!leitor_.aceita_sinal(".")) return sql;
    if (leitor_.aceita_sinal("*")) return sql + ".*";
    return sql + "." + leitor_.nome();
}

std::string Tradutor::funcao() {
    constexpr std::array<std::string_view, 5> simples{"ABS", "COUNT", "MAX", "MIN", "SUM"};
    if (leitor_.e_palavra("CONVERT")) return converte();
    if (leitor_.e_palavra("CAST")) return molda();
    const auto conhecida = std::find_if(simples.begin(), simples.end(),
                                        [this](std::string_view nome) { return leitor_.e_palavra(nome); });
    leitor_.exige(conhecida != simples.end());
    leitor_.retira();
    leitor_.exige_sinal("(");
    const std::string argumento = *conhecida == "COUNT" && leitor_.aceita_sinal("*") ? "*" : soma();
    leitor_.exige_sinal(")");
    return std::string(*conhecida) + "(" + argumento + ")";
}

// Dates are kept in the form that style 120 writes, so the text only has to be cut.
std::string Tradutor::converte() {
    leitor_.retira();
    leitor_.exige_sinal("(");
    const std::string tipo = le_tipo(leitor_);
    leitor_.exige_sinal(",");
    const std::string valor = soma();
    leitor_.exige_sinal(",");
    leitor_.exige(leitor_.actual().texto == "120");
    leitor_.retira();
    leitor_.exige_sinal(")");
    return cortado(valor, tipo);
}

std::string Tradutor::molda() {
    leitor_.retira();
    leitor_.exige_sinal("(");
    const std::string valor = soma();
    leitor_.exige_palavra("AS");
    const std::string tipo = le_tipo(leitor_);
    leitor_.exige_sinal(")");
    return cortado("CAST(" + valor + " AS TEXT)", tipo);
}

std::string Tradutor::cortado(const std::string& texto, const std::string& tipo) {
    const std::string_view prefixo = "nvarchar(";
    leitor_.exige(tipo.starts_with(prefixo));
    return "substr(" + texto + ",1," + tipo.substr(prefixo.size());
}

} // namespace

std::string onde_se_escreve(const std::string& tabela) {
    return base::mesmo_nome(tabela, "[Artigos]") ? "erp." + tabela : tabela;
}

Traducao traduz(std::string_view chave) { return Tradutor(chave).traduz(); }

} // namespace orvex::platform::sqlite
