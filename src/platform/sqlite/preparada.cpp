#include "platform/sqlite/preparada.h"

#include "platform/sqlite/lexico.h"

#include <SQLiteCpp/Database.h>
#include <sqlite3.h>

namespace orvex::platform::sqlite {
namespace {

sqlite3_stmt* ponteiro_de(const SQLite::Database& base, const SQLite::Statement& instrucao) {
    sqlite3_stmt* ponteiro = sqlite3_next_stmt(base.getHandle(), nullptr);
    while (ponteiro != nullptr && instrucao.getQuery() != sqlite3_sql(ponteiro))
        ponteiro = sqlite3_next_stmt(base.getHandle(), ponteiro);
    return ponteiro;
}

struct ParteDeChave {
    bool chave = false;
    bool identidade = false;
};

// Of the engine's own description of the table: asking with a PRAGMA would open a read of every file, and
// with it fix the snapshot of a file that the ERP is still going to write to.
ParteDeChave parte_de_chave(const SQLite::Database& base, const std::string& tabela,
                            const std::string& coluna) {
    int chave = 0;
    int identidade = 0;
    const auto descreve = [&](const char* ficheiro) {
        return sqlite3_table_column_metadata(base.getHandle(), ficheiro, tabela.c_str(), coluna.c_str(),
                                             nullptr, nullptr, nullptr, &chave, &identidade) == SQLITE_OK;
    };
    // A view has no such description: its key is that of the ERP's table behind it, if there is one.
    if (!descreve(nullptr)) descreve("erp");
    return {chave != 0, identidade != 0};
}

// Marks the columns that make the table's key and tells whether the query has them all.
bool marca_chave(const SQLite::Database& base, const std::string& tabela, std::vector<Coluna>& colunas) {
    const std::string nome = tabela.substr(1, tabela.size() - 2); // without the brackets
    std::ptrdiff_t encontradas = 0;
    for (Coluna& coluna : colunas) {
        const ParteDeChave parte = parte_de_chave(base, nome, coluna.nome);
        coluna.chave = parte.chave;
        coluna.identidade = parte.identidade;
        encontradas += parte.chave ? 1 : 0;
    }
    const SQLite::Statement todas(base, "SELECT * FROM " + tabela); // never run: for its columns
    std::ptrdiff_t partes = 0;
    for (int i = 0; i < todas.getColumnCount(); ++i)
        partes += parte_de_chave(base, nome, todas.getColumnName(i)).chave ? 1 : 0;
    return partes > 0 && partes == encontradas;
}

std::shared_ptr<const Colunas> le_colunas(const SQLite::Statement& instrucao, sqlite3_stmt* ponteiro) {
    auto colunas = std::make_shared<Colunas>();
    for (int i = 0; i < instrucao.getColumnCount(); ++i) {
        const char* declarado = sqlite3_column_decltype(ponteiro, i);
        colunas->lista.push_back(
            {instrucao.getColumnName(i), declarado == nullptr ? TipoSQL{} : TipoSQL::le(declarado)});
    }
    return colunas;
}

} // namespace

Preparada::Preparada(const SQLite::Database& base, const Traducao& traducao)
    : instrucao(base, traducao.instrucoes.front()), genero(traducao.genero), base_(base),
      tabela_(traducao.tabela), ponteiro_(ponteiro_de(base, instrucao)),
      leitura_(le_colunas(instrucao, ponteiro_)) {}

std::shared_ptr<const Colunas> Preparada::colunas_actualizaveis() {
    if (tabela_.empty()) return leitura_;
    if (escrita_ == nullptr) {
        auto colunas = std::make_shared<Colunas>(*leitura_);
        colunas->tabela = tabela_;
        colunas->chave_completa = marca_chave(base_, tabela_, colunas->lista);
        escrita_ = std::move(colunas);
    }
    return escrita_;
}

void Preparada::associa(const Forma& forma) {
    if (static_cast<std::size_t>(instrucao.getBindParameterCount()) != forma.literais())
        instrucao_errada(forma.chave());
    textos_.resize(forma.literais());
    for (std::size_t i = 0; i < forma.literais(); ++i) {
        const int parametro = static_cast<int>(i) + 1;
        if (const auto* texto = std::get_if<std::string>(&forma.literal(i))) {
            textos_[i] = *texto;
            instrucao.bindNoCopy(parametro, textos_[i]);
        } else if (const auto* inteiro = std::get_if<std::int64_t>(&forma.literal(i))) {
            instrucao.bind(parametro, *inteiro);
        } else {
            instrucao.bind(parametro, std::get<double>(forma.literal(i)));
        }
    }
}

bool Preparada::caduca() const { return sqlite3_stmt_status(ponteiro_, SQLITE_STMTSTATUS_REPREPARE, 0) > 0; }

// Straight from the library: a list is hundreds of thousands of these.
Celula Preparada::celula(std::size_t coluna) const {
    const int i = static_cast<int>(coluna);
    switch (sqlite3_column_type(ponteiro_, i)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return std::int64_t{sqlite3_column_int64(ponteiro_, i)};
    case SQLITE_FLOAT:
        return sqlite3_column_double(ponteiro_, i);
    default: {
        const auto* texto = reinterpret_cast<const char*>(sqlite3_column_text(ponteiro_, i));
        return std::string_view(texto, static_cast<std::size_t>(sqlite3_column_bytes(ponteiro_, i)));
    }
    }
}

void associa_celula(SQLite::Statement& instrucao, int parametro, const Celula& celula) {
    if (const auto* inteiro = std::get_if<std::int64_t>(&celula)) {
        instrucao.bind(parametro, *inteiro);
    } else if (const auto* real = std::get_if<double>(&celula)) {
        instrucao.bind(parametro, *real);
    } else if (const auto* texto = std::get_if<std::string_view>(&celula)) {
        instrucao.bind(parametro, std::string(*texto));
    } else {
        instrucao.bind(parametro);
    }
}

void associa_valor(SQLite::Statement& instrucao, int parametro, const TipoSQL& tipo,
                   const base::Variante& valor) {
    if (const auto* moeda = std::get_if<base::Moeda>(&valor.valor())) {
        instrucao.bind(parametro, moeda->real()); // the engine keeps a whole one as an integer
    } else if (const auto* data = std::get_if<base::DataHora>(&valor.valor())) {
        instrucao.bind(parametro,
                       tipo.familia == TipoSQL::Familia::data ? data->data_iso() : data->data_hora_iso());
    } else if (const auto* real = std::get_if<double>(&valor.valor())) {
        instrucao.bind(parametro, *real);
    } else if (valor.nulo()) {
        instrucao.bind(parametro);
    } else if (const auto* texto = std::get_if<std::string>(&valor.valor())) {
        instrucao.bindNoCopy(parametro, *texto);
    } else {
        instrucao.bind(parametro, valor.inteiro());
    }
}

} // namespace orvex::platform::sqlite
