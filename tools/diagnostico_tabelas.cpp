#include "base/texto.h"
#include "diagnostico_bd.h"
#include "tabelas_usadas.h"

#include <algorithm>
#include <set>

namespace orvex::diagnostico {
namespace {

using startup::DefinicoesBD;
using startup::SessaoBD;

std::string lista(const std::vector<std::string>& nomes) {
    std::string texto;
    for (const std::string& nome : nomes)
        texto += (texto.empty() ? "" : ", ") + nome;
    return texto;
}

class VerificacaoTabelas {
  public:
    VerificacaoTabelas(SessaoBD& BD, const DefinicoesBD& definicoes, Resultados& resultados)
        : BD_(BD), definicoes_(definicoes), embebida_(definicoes.servidor == startup::servidor_embebido),
          resultados_(resultados) {}

    void tudo() {
        for (const TabelaUsada& tabela : tabelas_usadas())
            interroga(tabela);
        livro_em_falta();
        if (embebida_)
            junta("direitos", Estado::ok, "os ficheiros da empresa podem ser lidos e gravados");
        else
            for (const TabelaUsada& tabela : tabelas_usadas())
                if (!em_falta_.contains(tabela.nome)) direitos(tabela);
        indices();
    }

  private:
    enum class Resposta { sim, nao, nenhuma };

    void junta(std::string o_que, Estado estado, std::string texto) {
        resultados_.push_back({std::move(o_que), estado, std::move(texto)});
    }

    void interroga(const TabelaUsada& tabela);
    void colunas(const TabelaUsada& tabela, const std::vector<std::string>& em_falta);
    void livro_em_falta();
    void direitos(const TabelaUsada& tabela);
    void indices();
    // Each right of the server's kind on the thing named; all unanswered when the server refuses to say.
    std::vector<Resposta> tem(const std::string& nome, const char* especie,
                              const std::vector<const char*>& direitos);
    bool pode(const std::string& nome, const char* especie, const char* direito) {
        return embebida_ || tem(nome, especie, {direito}).front() == Resposta::sim;
    }

    SessaoBD& BD_;
    const DefinicoesBD& definicoes_;
    bool embebida_;
    Resultados& resultados_;
    std::set<std::string> em_falta_; // tables that are not there
};

void VerificacaoTabelas::interroga(const TabelaUsada& tabela) {
    const std::string nome = tabela.nome;
    try {
        const auto conjunto = BD_.Consulta("Select * from " + nome + " where 1=0");
        std::vector<std::string> em_falta;
        for (const char* coluna : tabela.colunas) {
            bool encontrada = false;
            for (std::size_t i = 0; i < conjunto->colunas() && !encontrada; ++i)
                encontrada = base::mesmo_nome(conjunto->nome_coluna(i), coluna);
            if (!encontrada) em_falta.emplace_back(coluna);
        }
        colunas(tabela, em_falta);
    } catch (const base::Falha& falha) {
        const bool falta = falha.numero() == startup::numeros_bd::tabela_em_falta;
        if (falta) em_falta_.insert(nome);
        if (falta && tabela.do_livro) return; // told once both tables are known
        junta("tabela " + nome, Estado::erro,
              falta ? "não existe, e é o ERP que a cria: verifique se " + definicoes_.base +
                          " é a base de dados do ERP."
                    : falha.what());
    }
}

void VerificacaoTabelas::colunas(const TabelaUsada& tabela, const std::vector<std::string>& em_falta) {
    const std::string o_que = std::string("tabela ") + tabela.nome;
    if (em_falta.empty())
        return junta(o_que, Estado::ok,
                     std::to_string(tabela.colunas.size()) + " colunas usadas, todas presentes");
    const bool pesos =
        tabela.do_livro && std::equal(em_falta.begin(), em_falta.end(), std::begin(colunas_de_pesos),
                                      std::end(colunas_de_pesos));
    if (pesos && pode(tabela.nome, "OBJECT", "ALTER"))
        return junta(o_que, Estado::ok, lista(em_falta) + " serão acrescentadas no primeiro arranque");
    junta(o_que, Estado::erro,
          "falta " + lista(em_falta) + ". " +
              (pesos ? "Dê ao utilizador ALTER na tabela até ao primeiro arranque, ou acrescente-as."
                     : "Acrescente o que falta, ou reponha a tabela de uma cópia de segurança."));
}

// Start-up makes both tables of the ledger, or none.
void VerificacaoTabelas::livro_em_falta() {
    std::vector<std::string> faltam;
    std::size_t todas = 0;
    for (const TabelaUsada& tabela : tabelas_usadas()) {
        if (!tabela.do_livro) continue;
        ++todas;
        if (em_falta_.contains(tabela.nome)) faltam.emplace_back(tabela.nome);
    }
    if (faltam.empty()) return;
    const std::string o_que = (faltam.size() < todas ? "tabela " : "tabelas ") + lista(faltam);
    if (faltam.size() < todas)
        return junta(
            o_que, Estado::erro,
            "não existe, e o arranque só cria as duas tabelas do livro em conjunto: reponha-a de uma "
            "cópia de segurança.");
    if (pode("", "DATABASE", "CREATE TABLE") && pode("dbo", "SCHEMA", "ALTER"))
        return junta(o_que, Estado::ok, "serão criadas no primeiro arranque");
    junta(o_que, Estado::erro,
          "não existem, e nada diz que o utilizador " + definicoes_.utilizador +
              " as possa criar: dê-lhe CREATE TABLE e ALTER no esquema dbo até ao primeiro arranque, ou "
              "crie-as.");
}

std::vector<VerificacaoTabelas::Resposta> VerificacaoTabelas::tem(const std::string& nome,
                                                                  const char* especie,
                                                                  const std::vector<const char*>& direitos) {
    std::vector<Resposta> respostas(direitos.size(), Resposta::nenhuma);
    const std::string coisa = nome.empty() ? "DB_NAME()" : base::entre_plicas(nome);
    std::string sql;
    for (const char* direito : direitos)
        sql += (sql.empty() ? "SELECT " : ", ") + ("HAS_PERMS_BY_NAME(" + coisa) + ", '" + especie + "', '" +
               direito + "')";
    try {
        const auto linha = BD_.Consulta(sql);
        for (std::size_t i = 0; i < respostas.size() && !linha->fim(); ++i)
            if (const auto valor = linha->valor(i); !valor.nulo())
                respostas[i] = valor.inteiro() == 1 ? Resposta::sim : Resposta::nao;
    } catch (const base::Falha&) {
        respostas.assign(direitos.size(), Resposta::nenhuma);
    }
    return respostas;
}

void VerificacaoTabelas::direitos(const TabelaUsada& tabela) {
    const std::string o_que = std::string("direitos em ") + tabela.nome;
    const auto respostas = tem(tabela.nome, "OBJECT", tabela.direitos);
    std::vector<std::string> todos(tabela.direitos.begin(), tabela.direitos.end()), recusados;
    for (std::size_t i = 0; i < respostas.size(); ++i)
        if (respostas[i] == Resposta::nao) recusados.push_back(todos[i]);
    if (!recusados.empty())
        junta(o_que, Estado::erro,
              "faltam: GRANT " + lista(recusados) + " ON [dbo].[" + tabela.nome + "] TO [" +
                  definicoes_.utilizador + "]");
    else if (std::count(respostas.begin(), respostas.end(), Resposta::sim) == std::ssize(respostas))
        junta(o_que, Estado::ok, lista(todos));
    else
        junta(o_que, Estado::nao_verificado, "o servidor não disse se tem " + lista(todos));
}

void VerificacaoTabelas::indices() {
    std::vector<std::string> faltam;
    try {
        for (const auto& [tabela, nome] : indices_facultativos()) {
            const auto encontrado = BD_.Consulta(
                embebida_ ? "SELECT name FROM sqlite_schema WHERE name=" + base::entre_plicas(nome)
                          : "SELECT name FROM sys.indexes WHERE object_id=OBJECT_ID(" +
                                base::entre_plicas(tabela) + ") AND name=" + base::entre_plicas(nome));
            if (encontrado->fim()) faltam.emplace_back(nome);
        }
    } catch (const base::Falha&) {
        return junta("índices", Estado::nao_verificado, "o servidor não disse que índices há");
    }
    junta("índices", Estado::informacao,
          faltam.empty() ? "todos os facultativos presentes"
                         : "faltam, e são facultativos: " + lista(faltam));
}

} // namespace

void verifica_tabelas(SessaoBD& BD, const DefinicoesBD& definicoes, Resultados& resultados) {
    VerificacaoTabelas(BD, definicoes, resultados).tudo();
}

} // namespace orvex::diagnostico
