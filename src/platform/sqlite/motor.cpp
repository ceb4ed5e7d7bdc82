#include "platform/sqlite/motor.h"

#include "platform/registos/conjunto.h"
#include "platform/sqlite/falhas.h"
#include "platform/sqlite/lexico.h"

#include <SQLiteCpp/Transaction.h>
#include <sqlite3.h>

namespace orvex::platform::sqlite {
namespace {

namespace fs = std::filesystem;
using base::Falha;

constexpr std::size_t preparadas_guardadas = 200; // far more shapes than the program has

std::string texto_de(const fs::path& caminho) {
    const std::u8string texto = caminho.u8string();
    return {texto.begin(), texto.end()};
}

// Made sure of here, so that the message can say which file is at fault and why.
fs::path ficheiro_existente(const fs::path& pasta, const char* nome) {
    std::error_code erro;
    if (!fs::is_directory(pasta, erro))
        throw Falha("A pasta da empresa não existe ou não pode ser lida: " + texto_de(pasta),
                    startup::numeros_bd::falha_geral);
    const fs::path ficheiro = pasta / nome;
    if (!fs::is_regular_file(ficheiro, erro))
        throw Falha("Falta um ficheiro da empresa, ou não pode ser lido: " + texto_de(ficheiro),
                    startup::numeros_bd::falha_geral);
    return ficheiro;
}

template <typename Procedimento>
decltype(auto) no_ficheiro(const fs::path& ficheiro, Procedimento procedimento) {
    try {
        return procedimento();
    } catch (const SQLite::Exception& erro) {
        const Falha falha = falha_de(erro);
        throw Falha(texto_de(ficheiro) + ": " + falha.what(), startup::numeros_bd::falha_geral);
    }
}

SQLite::Database abre_livro(const fs::path& pasta, int espera_ms) {
    const fs::path livro = ficheiro_existente(pasta, ficheiro_livro);
    return no_ficheiro(livro, [&] {
        auto base = abre_base(livro, SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX, espera_ms);
        base.exec("SELECT 1 FROM sqlite_schema LIMIT 1"); // opening alone reads nothing
        return base;
    });
}

// Over a statement that has made its first step.
class CursorPreparada final : public registos::Cursor {
  public:
    explicit CursorPreparada(std::shared_ptr<Preparada> preparada) : preparada_(std::move(preparada)) {}
    // Repeats the failure of the last step, which has been dealt with.
    ~CursorPreparada() override { preparada_->instrucao.tryReset(); }

    bool ha_linha() const { return preparada_->instrucao.hasRow(); }
    bool avanca() override {
        return com_falhas([this] { return preparada_->instrucao.executeStep(); });
    }
    Celula celula(std::size_t coluna) const override { return le_coluna(preparada_->instrucao, coluna); }

  private:
    std::shared_ptr<Preparada> preparada_;
};

} // namespace

Motor::Motor(const fs::path& pasta, int espera_ms)
    : erp_(pasta / ficheiro_erp), espera_ms_(espera_ms), base_(abre_livro(pasta, espera_ms)) {
    ficheiro_existente(pasta, ficheiro_erp);
    no_ficheiro(erp_, [&] {
        SQLite::Statement anexa(base_, "ATTACH ? AS erp");
        anexa.bind(1, texto_de(erp_));
        anexa.exec();
        base_.exec("SELECT 1 FROM erp.sqlite_schema LIMIT 1");
        base_.exec(std::string("PRAGMA erp.") + memoria_paginas);
        for (const char* nome : {"main", "erp"})
            if (sqlite3_db_readonly(base_.getHandle(), nome) != 0)
                throw Falha("A empresa só pode ser lida: não há permissão para gravar em " + texto_de(pasta),
                            startup::numeros_bd::falha_geral);
    });
}

Motor::~Motor() { liberta(); }

// --- Statements --------------------------------------------------------------------------------------------

std::shared_ptr<Preparada> Motor::prepara(const std::string& sql, Uso uso) {
    forma_.le(sql);
    auto encontrada = preparadas_.find(forma_.chave());
    if (encontrada == preparadas_.end()) {
        const Traducao traducao = traduz(forma_.chave());
        if (traducao.genero == Traducao::Genero::esquema) {
            if (uso == Uso::consulta) instrucao_errada(sql);
            muda_esquema(traducao);
            return nullptr;
        }
        if (preparadas_.size() >= preparadas_guardadas) preparadas_.clear();
        encontrada = preparadas_.emplace(forma_.chave(), std::make_shared<Preparada>(base_, traducao)).first;
    }
    auto preparada = encontrada->second;
    if (uso == Uso::consulta && preparada->genero != Traducao::Genero::consulta) instrucao_errada(sql);
    preparada->liga(forma_);
    return preparada;
}

// All or nothing, inside a transaction of the program's or not.
void Motor::muda_esquema(const Traducao& traducao) {
    preparadas_.clear();
    base_.exec("SAVEPOINT esquema");
    try {
        for (const std::string& instrucao : traducao.instrucoes)
            base_.exec(instrucao);
        base_.exec("RELEASE esquema");
    } catch (const SQLite::Exception&) {
        base_.tryExec("ROLLBACK TO esquema");
        base_.tryExec("RELEASE esquema");
        throw;
    }
}

std::shared_ptr<Preparada> Motor::primeiro_passo(const std::string& sql, Uso uso) {
    auto preparada = prepara(sql, uso);
    if (preparada == nullptr) return preparada;
    try {
        preparada->instrucao.executeStep();
    } catch (const SQLite::Exception&) {
        preparada->instrucao.tryReset();
        throw;
    }
    return preparada;
}

std::unique_ptr<registos::Conjunto> Motor::consulta(const std::string& sql, Modo modo) {
    liberta();
    return com_falhas([&] {
        auto preparada = primeiro_passo(sql, Uso::consulta);
        if (preparada->caduca()) { // its columns may be others now
            preparadas_.clear();
            preparada = primeiro_passo(sql, Uso::consulta);
        }
        auto colunas = modo == Modo::actualizavel ? preparada->colunas_actualizaveis() : preparada->colunas();
        auto cursor = std::make_unique<CursorPreparada>(std::move(preparada));
        if (!cursor->ha_linha()) cursor.reset();
        auto conjunto = std::make_unique<registos::Conjunto>(*this, std::move(colunas), std::move(cursor));
        abre(*conjunto);
        return conjunto;
    });
}

void Motor::executa(const std::string& sql) {
    liberta();
    tranca_para_escrever();
    com_falhas([&] {
        const auto preparada = primeiro_passo(sql, Uso::execucao);
        if (preparada != nullptr) preparada->instrucao.tryReset();
    });
}

// --- Transactions ------------------------------------------------------------------------------------------

void Motor::inicia() {
    transaccao("BEGIN");
    trancada_ = false;
}

void Motor::tranca() {
    if (!em_transaccao()) throw Falha("Não há transacção aberta.", startup::numeros_bd::falha_geral);
    if (trancada_) return;
    // Nothing was written yet. What was read has fixed what is seen of the file, and who came first may have
    // written to it since: the transaction begins again, so that it sees the file as it is.
    transaccao("ROLLBACK");
    transaccao("BEGIN");
    // Writes nothing; a company without the table has nothing to guard.
    const int codigo = base_.tryExec("UPDATE main.xel_ORVEX SET NumSerie = NumSerie WHERE 0");
    if (codigo != SQLITE_OK && codigo != SQLITE_ERROR)
        throw falha_de(SQLite::Exception(base_.getHandle(), codigo));
    trancada_ = true;
}

void Motor::tranca_para_escrever() {
    if (!trancada_ && em_transaccao()) tranca();
}

// The write lock of the ERP's file, over a connection of its own: the work writes the ledger's, and the ERP's
// own writers hold it for no longer than one document takes.
void Motor::em_exclusivo(const std::function<void()>& trabalho) {
    com_falhas([&] {
        auto erp = abre_base(erp_, SQLite::OPEN_READWRITE, espera_ms_);
        const SQLite::Transaction so_nos(erp, SQLite::TransactionBehavior::IMMEDIATE);
        trabalho();
    });
}

void Motor::transaccao(const char* instrucao) {
    liberta();
    com_falhas([&] { base_.exec(instrucao); });
}

bool Motor::em_transaccao() { return sqlite3_get_autocommit(base_.getHandle()) == 0; }

} // namespace orvex::platform::sqlite
