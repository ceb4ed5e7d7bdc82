#include "livro/tabelas.h"
#include "base/texto.h"
#include "base_de_dados.h"
#include "tabelas_usadas.h"

#include <algorithm>
#include <set>

namespace orvex::diagnostico {
namespace {

using startup::DefinicoesBD;
using startup::SessaoBD;

bool alterada(const TabelaUsada& tabela) {
    return std::any_of(tabela.direitos.begin(), tabela.direitos.end(),
                       [](std::string_view direito) { return direito == "UPDATE"; });
}

class VerificacaoTabelas {
  public:
    VerificacaoTabelas(SessaoBD& BD, const DefinicoesBD& definicoes, Resultados& resultados)
        : BD_(BD), catalogo_(BD, definicoes), base_(definicoes.base), resultados_(resultados) {}

    void tudo() {
        for (const TabelaUsada& tabela : tabelas_usadas())
            interroga(tabela);
        livro_em_falta();
        if (catalogo_.embebida()) {
            junta("direitos", Estado::ok, "os ficheiros da empresa podem ser lidos e gravados");
        } else {
            for (const TabelaUsada& tabela : tabelas_usadas())
                if (!em_falta_.contains(tabela.nome)) direitos(tabela);
            comparacao();
            juncao();
        }
        indices();
    }

  private:
    void junta(std::string o_que, Estado estado, std::string texto) {
        resultados_.push_back({std::move(o_que), estado, std::move(texto)});
    }

    void interroga(const TabelaUsada& tabela);
    void colunas(const TabelaUsada& tabela, const std::vector<std::string>& em_falta);
    void livro_em_falta();
    void direitos(const TabelaUsada& tabela);
    void sem_definicao(const TabelaUsada& tabela);
    void chave(const TabelaUsada& tabela);
    void comparacao();
    void juncao();
    void indices();

    SessaoBD& BD_;
    Catalogo catalogo_;
    const std::string& base_;
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
        const bool negada = falha.numero() == startup::numeros_bd::sem_permissao;
        junta("tabela " + nome, Estado::erro,
              falta ? "não existe, e é o ERP que a cria: verifique se " + base_ + " é a base de dados do ERP."
              : negada ? std::string("existe, e não pode ser lida. ") + falha.what()
                       : falha.what());
    }
}

void VerificacaoTabelas::colunas(const TabelaUsada& tabela, const std::vector<std::string>& em_falta) {
    const std::string o_que = std::string("tabela ") + tabela.nome;
    if (em_falta.empty())
        return junta(o_que, Estado::ok,
                     std::to_string(tabela.colunas.size()) + " colunas usadas, todas presentes");
    const bool pesos =
        tabela.do_livro && std::equal(em_falta.begin(), em_falta.end(), std::begin(livro::colunas_de_pesos),
                                      std::end(livro::colunas_de_pesos));
    if (pesos && catalogo_.pode(tabela.nome, "OBJECT", "ALTER"))
        return junta(o_que, Estado::ok, enumera(em_falta) + " serão acrescentadas no primeiro arranque");
    junta(o_que, Estado::erro,
          "falta " + enumera(em_falta) + ". " +
              (pesos
                   ? "Até ao primeiro arranque " + catalogo_.da("ALTER", tabela.nome) + ", ou acrescente-as."
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
    const std::string o_que = (faltam.size() < todas ? "tabela " : "tabelas ") + enumera(faltam);
    if (faltam.size() < todas)
        return junta(
            o_que, Estado::erro,
            "não existe, e o arranque só cria as duas tabelas do livro em conjunto: reponha-a de uma "
            "cópia de segurança.");
    if (catalogo_.pode("", "DATABASE", "CREATE TABLE") && catalogo_.pode("dbo", "SCHEMA", "ALTER"))
        return junta(o_que, Estado::ok, "serão criadas no primeiro arranque");
    const std::string& utilizador = catalogo_.utilizador();
    junta(o_que, Estado::erro,
          "não existem, e nada diz que o utilizador as possa criar. Até ao primeiro arranque GRANT CREATE "
          "TABLE TO " +
              utilizador + " e GRANT ALTER ON SCHEMA::[dbo] TO " + utilizador +
              ", ou crie-as com instalacao.sql.");
}

void VerificacaoTabelas::direitos(const TabelaUsada& tabela) {
    if (catalogo_.ve_definicao(tabela.nome) == Resposta::nao) return sem_definicao(tabela);
    const std::string o_que = std::string("direitos em ") + tabela.nome;
    const auto respostas = catalogo_.tem(tabela.nome, "OBJECT", tabela.direitos);
    std::vector<std::string> todos(tabela.direitos.begin(), tabela.direitos.end()), recusados;
    for (std::size_t i = 0; i < respostas.size(); ++i)
        if (respostas[i] == Resposta::nao) recusados.push_back(todos[i]);
    if (!recusados.empty())
        junta(o_que, Estado::erro, "faltam: " + catalogo_.da(enumera(recusados), tabela.nome));
    else if (std::count(respostas.begin(), respostas.end(), Resposta::sim) == std::ssize(respostas))
        junta(o_que, Estado::ok, enumera(todos));
    else
        junta(o_que, Estado::nao_verificado, "o servidor não disse se tem " + enumera(todos));
    if (alterada(tabela)) chave(tabela);
}

// The program asks the catalogue for the number of the row it added to the ledger, and for what it finds a
// row again by when it updates it.
void VerificacaoTabelas::sem_definicao(const TabelaUsada& tabela) {
    junta(std::string("definição de ") + tabela.nome,
          tabela.do_livro || alterada(tabela) ? Estado::erro : Estado::nao_verificado,
          "a tabela existe, mas não se vê como é feita, porque VIEW DEFINITION está negado ao utilizador ou "
          "a um "
          "grupo seu. Retire a negação: REVOKE VIEW DEFINITION ON [dbo].[" +
              std::string(tabela.nome) + "] FROM " + catalogo_.utilizador());
}

void VerificacaoTabelas::chave(const TabelaUsada& tabela) {
    const std::string o_que = std::string("chave de ") + tabela.nome;
    switch (catalogo_.tem_chave(tabela.nome)) {
    case Resposta::sim:
        return junta(o_que, Estado::ok, "as linhas encontram-se por uma chave única");
    case Resposta::nao:
        return junta(
            o_que, Estado::erro,
            "não tem chave primária nem outro índice único, e assim o programa não pode alterar as suas "
            "linhas. Peça uma chave a quem fez a tabela.");
    case Resposta::nenhuma:
        return junta(o_que, Estado::nao_verificado, "o servidor não disse se a tem");
    }
}

// The statements write the names of tables and columns in more than one way.
void VerificacaoTabelas::comparacao() {
    constexpr const char* o_que = "maiúsculas e minúsculas";
    const auto nome = catalogo_.comparacao();
    if (!nome) return junta(o_que, Estado::nao_verificado, "o servidor não disse se as distingue");
    const bool distingue = nome->find("_CS_") != std::string::npos || nome->find("_BIN") != std::string::npos;
    junta(o_que, distingue ? Estado::erro : Estado::ok,
          distingue
              ? "a base de dados distingue-as (" + *nome +
                    "), e o programa não encontraria as tabelas: é preciso uma base com um COLLATE _CI_."
              : "a base de dados não as distingue (" + *nome + ")");
}

// Texts of the ledger compare as the database does, those of the ERP as its tables say; where the two differ
// the server refuses to compare one with the other.
void VerificacaoTabelas::juncao() {
    try {
        BD_.Consulta(livro::sonda_artigos_nos_movimentos);
    } catch (const base::Falha& falha) {
        if (falha.numero() != startup::numeros_bd::instrucao_errada) return; // told with the tables
        junta("artigos nos movimentos", Estado::erro,
              std::string(falha.what()) +
                  " Os textos de xel_ORVEX_Mov têm de ter o mesmo COLLATE que os de Artigos.");
    }
}

void VerificacaoTabelas::indices() {
    std::vector<std::string> faltam;
    for (const auto& [tabela, nome] : indices_facultativos()) {
        const bool existe = !em_falta_.contains(tabela);
        const bool escondido =
            existe && !catalogo_.embebida() && catalogo_.ve_definicao(tabela) == Resposta::nao;
        const Resposta tem = escondido ? Resposta::nenhuma : catalogo_.tem_indice(tabela, nome);
        if (tem == Resposta::nenhuma)
            return junta("índices", Estado::nao_verificado, "o servidor não disse que índices há");
        if (tem == Resposta::nao) faltam.emplace_back(nome);
    }
    junta("índices", Estado::informacao,
          faltam.empty() ? "todos os facultativos presentes"
                         : "faltam, e são facultativos: " + enumera(faltam));
}

} // namespace

void verifica_tabelas(SessaoBD& BD, const DefinicoesBD& definicoes, Resultados& resultados) {
    VerificacaoTabelas(BD, definicoes, resultados).tudo();
}

} // namespace orvex::diagnostico
