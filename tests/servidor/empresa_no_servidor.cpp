#include "tests/servidor/empresa_no_servidor.h"

#include "base/texto.h"
#include "platform/sqlite/empresa.h"
#include "startup/esquema_livro.h"
#include "tests/apoio/sessao_de_teste.h"
#include "tools/ensaio/base_ensaio.h"

#include <SQLiteCpp/Statement.h>

namespace orvex::testes {
namespace {

constexpr const char* tabelas_do_livro[]{"xel_ORVEX", "xel_ORVEX_Mov"}; // as start-up makes them

EmpresaNoServidor* actual = nullptr;

// Of what the program itself keeps, not the ERP.
bool do_livro(const std::string& sql) {
    const std::string maiusculo = base::maiusculas(sql);
    return maiusculo.find("XEL_ORVEX") != std::string::npos ||
           maiusculo.find("U_DOCGCLIN1") != std::string::npos;
}

std::string literal(const base::Variante& valor) {
    return std::holds_alternative<std::string>(valor.valor()) ? base::entre_plicas(valor.texto())
                                                              : valor.texto();
}

} // namespace

void espelha() {
    if (actual != nullptr) actual->espelha();
}

EmpresaNoServidor::EmpresaNoServidor(const std::filesystem::path& ficheiros) {
    ensaio::abre_ensaio(*this);
    ficheiros_.Abre(ligacao(ficheiros));
    le_tabelas(ficheiros / platform::sqlite::ficheiro_erp, true);
    le_tabelas(ficheiros / platform::sqlite::ficheiro_livro, false);
    static const bool feitas = (cria_tabelas(), true);
    static_cast<void>(feitas);
    SessaoODBC::IniciaTransaccao();
    for (const char* tabela : tabelas_do_livro)
        esvazia(tabela);
    for (Tabela& tabela : tabelas_) {
        esvazia(tabela.nome);
        leva(tabela);
    }
    SessaoODBC::ConfirmaTransaccao();
    actual = this;
}

EmpresaNoServidor::~EmpresaNoServidor() {
    if (actual == this) actual = nullptr;
}

// Those whose rows have a key: all of the ERP's, and U_DocGcLin1 with the ledger's.
void EmpresaNoServidor::le_tabelas(const std::filesystem::path& ficheiro, bool do_erp) {
    const SQLite::Database bd = platform::sqlite::abre_base(ficheiro);
    SQLite::Statement colunas(bd,
                              "SELECT t.name, c.name, c.type, c.pk FROM sqlite_schema t "
                              "JOIN pragma_table_info(t.name) c "
                              "WHERE t.type = 'table' AND t.name NOT LIKE 'sqlite%' ORDER BY t.name, c.cid");
    while (colunas.executeStep()) {
        const std::string nome = colunas.getColumn(0), coluna = colunas.getColumn(1);
        const bool da_chave = colunas.getColumn(3).getInt() > 0;
        if (tabelas_.empty() || tabelas_.back().nome != nome) tabelas_.push_back({nome, do_erp});
        if (da_chave) {
            tabelas_.back().chave_primaria +=
                (tabelas_.back().chave.empty() ? "[" : ", [") + coluna + "] ASC";
            tabelas_.back().chave.push_back(coluna);
        }
        tabelas_.back().criacao +=
            "[" + coluna + "] " + colunas.getColumn(2).getString() + (da_chave ? " NOT NULL, " : " NULL, ");
    }
}

// With the columns of the embedded company's tables and the same keys; the article's note lies beside it
// there.
void EmpresaNoServidor::cria_tabelas() {
    startup::VerificaTabelas(*this);
    startup::VerificaPesos(*this);
    for (const Tabela& tabela : tabelas_) {
        try {
            Consulta("Select * from " + tabela.nome + " where 1=0");
        } catch (const base::Falha& falha) {
            if (falha.numero() != startup::numeros_bd::tabela_em_falta) throw;
            SessaoODBC::Executa("CREATE TABLE [" + tabela.nome + "](" + tabela.criacao +
                                (tabela.nome == "Artigos" ? "[Observ] nvarchar(35) NULL, " : "") +
                                "CONSTRAINT [PK_" + tabela.nome + "] PRIMARY KEY CLUSTERED (" +
                                tabela.chave_primaria + "))");
        }
    }
}

EmpresaNoServidor::Linhas EmpresaNoServidor::le(Tabela& tabela) {
    Linhas linhas;
    const auto lida = ficheiros_.Consulta("Select * from " + tabela.nome);
    tabela.colunas.clear();
    for (std::size_t i = 0; i < lida->colunas(); ++i)
        tabela.colunas.emplace_back(lida->nome_coluna(i));
    for (; !lida->fim(); lida->move_seguinte()) {
        std::string onde;
        for (const std::string& coluna : tabela.chave)
            onde += (onde.empty() ? "[" : " and [") + coluna + "]=" + literal(lida->valor(coluna));
        for (std::size_t i = 0; i < lida->colunas(); ++i)
            linhas[onde].push_back(lida->valor(i));
    }
    return linhas;
}

void EmpresaNoServidor::leva(Tabela& tabela) {
    Linhas agora = le(tabela);
    for (const auto& [onde, linha] : tabela.linhas)
        if (!agora.contains(onde)) SessaoODBC::Executa("Delete " + tabela.nome + " where " + onde);
    const std::string todas = "Select * from " + tabela.nome + " where ";
    std::unique_ptr<startup::ConjuntoRegistos> novas, mudada;
    for (const auto& [onde, linha] : agora) {
        const auto antes = tabela.linhas.find(onde);
        const bool nova = antes == tabela.linhas.end();
        if (!nova && antes->second == linha) continue;
        auto& conjunto = nova ? novas : mudada;
        if (!nova || novas == nullptr) conjunto = SessaoODBC::AbreActualizavel(todas + (nova ? "1=0" : onde));
        if (nova) conjunto->acrescenta();
        for (std::size_t i = 0; i < linha.size(); ++i)
            if (nova || antes->second[i] != linha[i]) conjunto->define(tabela.colunas[i], linha[i]);
        conjunto->actualiza();
    }
    tabela.linhas = std::move(agora);
}

void EmpresaNoServidor::espelha() {
    if (actual != this || ficheiros_.EmTransaccao()) return;
    for (Tabela& tabela : tabelas_)
        if (tabela.do_erp) leva(tabela);
}

std::unique_ptr<startup::ConjuntoRegistos> EmpresaNoServidor::AbreActualizavel(const std::string& sql) {
    return do_livro(sql) ? SessaoODBC::AbreActualizavel(sql) : ficheiros_.AbreActualizavel(sql);
}

void EmpresaNoServidor::Executa(const std::string& sql) {
    if (do_livro(sql)) return SessaoODBC::Executa(sql);
    ficheiros_.Executa(sql);
    espelha();
}

void EmpresaNoServidor::IniciaTransaccao() {
    ficheiros_.IniciaTransaccao();
    SessaoODBC::IniciaTransaccao();
}

void EmpresaNoServidor::ConfirmaTransaccao() {
    ficheiros_.ConfirmaTransaccao();
    espelha();
    SessaoODBC::ConfirmaTransaccao();
}

} // namespace orvex::testes
