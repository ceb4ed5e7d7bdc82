#include "platform/sqlite/motor.h"

#include "platform/sqlite/conjunto.h"
#include "platform/sqlite/falhas.h"
#include "platform/sqlite/lexico.h"

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

// Texts are joined; numbers, and texts that are added to numbers, are summed.
void soma_servidor(sqlite3_context* contexto, int, sqlite3_value** valores) {
    const auto tipo = [&](int i) { return sqlite3_value_type(valores[i]); };
    if (tipo(0) == SQLITE_NULL || tipo(1) == SQLITE_NULL) {
        sqlite3_result_null(contexto);
    } else if (tipo(0) == SQLITE_TEXT && tipo(1) == SQLITE_TEXT) {
        std::string texto;
        for (int i = 0; i < 2; ++i) {
            const auto* bytes = static_cast<const char*>(sqlite3_value_blob(valores[i]));
            if (bytes != nullptr)
                texto.append(bytes, static_cast<std::size_t>(sqlite3_value_bytes(valores[i])));
        }
        sqlite3_result_text64(contexto, texto.data(), texto.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    } else if (sqlite3_value_numeric_type(valores[0]) == SQLITE_TEXT ||
               sqlite3_value_numeric_type(valores[1]) == SQLITE_TEXT) {
        sqlite3_result_error(contexto, "a text that is no number is added to a number", -1);
    } else if (tipo(0) == SQLITE_INTEGER && tipo(1) == SQLITE_INTEGER) {
        sqlite3_result_int64(contexto, sqlite3_value_int64(valores[0]) + sqlite3_value_int64(valores[1]));
    } else {
        sqlite3_result_double(contexto, sqlite3_value_double(valores[0]) + sqlite3_value_double(valores[1]));
    }
}

} // namespace

Motor::Motor(const fs::path& pasta, int espera_ms) : base_(abre_livro(pasta, espera_ms)) {
    const fs::path erp = ficheiro_existente(pasta, ficheiro_erp);
    no_ficheiro(erp, [&] {
        SQLite::Statement anexa(base_, "ATTACH ? AS erp");
        anexa.bind(1, texto_de(erp));
        anexa.exec();
        base_.exec("SELECT 1 FROM erp.sqlite_schema LIMIT 1");
        base_.exec(std::string("PRAGMA erp.") + memoria_paginas);
        for (const char* nome : {"main", "erp"})
            if (sqlite3_db_readonly(base_.getHandle(), nome) != 0)
                throw Falha("A empresa só pode ser lida: não há permissão para gravar em " + texto_de(pasta),
                            startup::numeros_bd::falha_geral);
        base_.createFunction(funcao_soma, 2, true, nullptr, soma_servidor);
    });
}

Motor::~Motor() { liberta(); }

void Motor::liberta() {
    if (aberto_ != nullptr) aberto_->guarda_resto();
}

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

std::unique_ptr<startup::ConjuntoRegistos> Motor::consulta(const std::string& sql, Modo modo) {
    liberta();
    return com_falhas([&] {
        auto preparada = primeiro_passo(sql, Uso::consulta);
        if (preparada->caduca()) { // its columns may be others now
            preparadas_.clear();
            preparada = primeiro_passo(sql, Uso::consulta);
        }
        auto conjunto = std::make_unique<Conjunto>(*this, preparada);
        if (modo == Modo::actualizavel) conjunto->torna_actualizavel(preparada->colunas_actualizaveis());
        if (conjunto->aberto()) aberto_ = conjunto.get();
        return conjunto;
    });
}

void Motor::executa(const std::string& sql) {
    liberta();
    com_falhas([&] {
        const auto preparada = primeiro_passo(sql, Uso::execucao);
        if (preparada != nullptr) preparada->instrucao.tryReset();
    });
}

// --- Transactions ------------------------------------------------------------------------------------------

void Motor::inicia_transaccao() {
    transaccao("BEGIN");
    // Writes nothing; a company without the table has nothing to guard.
    const int codigo = base_.tryExec("UPDATE main.xel_ORVEX SET NumSerie = NumSerie WHERE 0");
    if (codigo == SQLITE_OK || codigo == SQLITE_ERROR) return;
    const SQLite::Exception erro(base_.getHandle(), codigo);
    base_.tryExec("ROLLBACK");
    throw falha_de(erro);
}

void Motor::transaccao(const char* instrucao) {
    liberta();
    com_falhas([&] { base_.exec(instrucao); });
}

bool Motor::em_transaccao() const { return sqlite3_get_autocommit(base_.getHandle()) == 0; }

} // namespace orvex::platform::sqlite
