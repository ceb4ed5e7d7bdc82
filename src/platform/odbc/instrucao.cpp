#include "platform/odbc/instrucao.h"

#include "base/datahora.h"

#include <array>
#include <limits>

namespace orvex::platform::odbc {
namespace {

using registos::Celula;
using registos::Coluna;
using registos::TipoSQL;
using Familia = TipoSQL::Familia;

constexpr SQLULEN maximo_digitos = 19; // of a Moeda; a finer or longer number is only read
constexpr std::size_t linhas_de_uma_vez = 20;
constexpr SQLULEN maximo_comparavel = 4000; // longer texts have no length to hold a value to

TipoSQL tipo_de(SQLSMALLINT tipo, SQLULEN tamanho, SQLSMALLINT casas) {
    switch (tipo) {
    case SQL_TINYINT:
        return {Familia::inteiro, std::numeric_limits<std::uint8_t>::max()};
    case SQL_SMALLINT:
        return {Familia::inteiro, std::numeric_limits<std::int16_t>::max()};
    case SQL_INTEGER:
        return {Familia::inteiro, std::numeric_limits<std::int32_t>::max()};
    case SQL_BIGINT:
        return {Familia::inteiro, std::numeric_limits<std::int64_t>::max()};
    case SQL_DECIMAL:
    case SQL_NUMERIC:
        if (casas > base::Moeda::casas || tamanho > maximo_digitos) return {};
        return {Familia::decimal, 0, casas};
    case SQL_TYPE_DATE:
        return {Familia::data};
    case SQL_TYPE_TIMESTAMP:
        return {Familia::data_hora};
    case SQL_CHAR:
    case SQL_VARCHAR:
    case SQL_WCHAR:
    case SQL_WVARCHAR:
        return {Familia::texto, 0, 0, tamanho <= maximo_comparavel ? tamanho : 0};
    default:
        return {};
    }
}

// How a column of this type is asked for. Decimals as text: exact.
SQLSMALLINT tipo_c_de(SQLSMALLINT tipo) {
    switch (tipo) {
    case SQL_BIT:
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
        return SQL_C_SBIGINT;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return SQL_C_DOUBLE;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
        return SQL_C_CHAR;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
        return SQL_C_TYPE_TIMESTAMP;
    default:
        return SQL_C_WCHAR;
    }
}

std::string texto_de(const SQL_TIMESTAMP_STRUCT& t) {
    return base::DataHora{t.year, t.month, t.day, t.hour, t.minute, t.second}.data_hora_iso();
}

SQLUSMALLINT numero(std::size_t coluna) { return static_cast<SQLUSMALLINT>(coluna + 1); }

} // namespace

Instrucao::Instrucao(const LigacaoODBC& ligacao, int espera, espera::Motivo motivo)
    : ligacao_(ligacao), motivo_(motivo) {
    exige(SQLAllocHandle(SQL_HANDLE_STMT, ligacao.punho(), &punho_), SQL_HANDLE_DBC, ligacao.punho());
    SQLSetStmtAttrW(punho_, SQL_ATTR_QUERY_TIMEOUT, como_ponteiro(espera), SQL_IS_UINTEGER);
}

// With rows left, the server is told to stop, and waited for until it has.
Instrucao::~Instrucao() {
    const auto larga = [this] { SQLFreeHandle(SQL_HANDLE_STMT, punho_); };
    ha_linhas_ ? chama(larga) : larga();
}

void Instrucao::exige_certo(SQLRETURN resultado) const {
    if (resultado == SQL_ERROR) ligacao_.nota_erro();
    exige(resultado, SQL_HANDLE_STMT, punho_);
}

void Instrucao::exige_certo_e_avisos(SQLRETURN resultado) {
    exige_certo(resultado);
    if (resultado != SQL_SUCCESS_WITH_INFO) return;
    for (Diagnostico& aviso : le_diagnosticos(SQL_HANDLE_STMT, punho_))
        avisos_.push_back(std::move(aviso));
}

FalhaODBC Instrucao::avisada(int nativo) const {
    constexpr const char* recusada = "42000"; // the state it would have had
    for (const Diagnostico& aviso : avisos_)
        if (aviso.nativo == nativo) return falha_de({{recusada, nativo, aviso.texto}});
    return falha_de({{recusada, nativo, "erro " + std::to_string(nativo)}});
}

void Instrucao::corre(const std::string& sql, std::vector<Parametro>& parametros) {
    for (std::size_t i = 0; i < parametros.size(); ++i)
        parametros[i].associa(punho_, numero(i));
    TextoLargo texto = largo(sql);
    avisos_.clear();
    exige_certo_e_avisos(SQLExecDirectW(punho_, texto.data(), static_cast<SQLINTEGER>(texto.size() - 1)));
}

void Instrucao::consulta(const std::string& sql, std::vector<Parametro> parametros) {
    chama([&] {
        corre(sql, parametros);
        if (numero_colunas() == 0) {
            seguinte();
            return;
        }
        prepara_linha();
        le_linhas();
    });
}

bool Instrucao::seguinte() {
    exige_lidas();
    bool ha = false;
    chama([&] {
        nova_.clear();
        linha_ = lidas_ = 0;
        ha_linhas_ = false;
        avisos_.clear();
        do {
            const SQLRETURN resultado = SQLMoreResults(punho_);
            exige_certo_e_avisos(resultado);
            if (resultado == SQL_NO_DATA) return;
        } while (numero_colunas() == 0);
        prepara_linha();
        le_linhas();
        ha = true;
    });
    return ha;
}

std::int64_t Instrucao::executa(const std::string& sql, std::vector<Parametro> parametros) {
    // A table's triggers report what they changed before the statement reports its own.
    std::int64_t alteradas = 0;
    chama([&] {
        corre(sql, parametros);
        SQLRETURN resultado = SQL_SUCCESS;
        while (resultado != SQL_NO_DATA) {
            SQLLEN contadas = -1;
            exige_certo(SQLRowCount(punho_, &contadas));
            if (contadas >= 0) alteradas = contadas;
            resultado = SQLMoreResults(punho_);
            exige_certo(resultado);
        }
    });
    return alteradas;
}

void Instrucao::esgota() {
    exige_lidas();
    ha_linhas_ = false;
    SQLRETURN resultado = SQL_SUCCESS;
    while (resultado != SQL_NO_DATA) {
        resultado = SQLMoreResults(punho_);
        exige_certo(resultado);
    }
}

std::int64_t Instrucao::pergunta(const std::string& sql, std::vector<Parametro> parametros) {
    std::int64_t resposta = 0;
    chama([&] {
        consulta(sql, std::move(parametros));
        if (avanca()) resposta = registos::le_celula({}, celula(0)).inteiro();
        esgota();
    });
    return resposta;
}

// --- The catalogue -----------------------------------------------------------------------------------------

std::vector<std::string> Instrucao::chave_primaria(const std::string& tabela) {
    constexpr std::size_t coluna_nome = 3; // COLUMN_NAME of the catalogue's answer
    TextoLargo nome = largo(tabela);
    chama([&] { exige_certo(SQLPrimaryKeysW(punho_, nullptr, 0, nullptr, 0, nome.data(), SQL_NTS)); });
    return nomes(coluna_nome);
}

std::vector<std::string> Instrucao::chave_sem_nulos(const std::string& tabela) {
    constexpr std::size_t coluna_nome = 1;
    TextoLargo nome = largo(tabela);
    chama([&] {
        exige_certo(SQLSpecialColumnsW(punho_, SQL_BEST_ROWID, nullptr, 0, nullptr, 0, nome.data(), SQL_NTS,
                                       SQL_SCOPE_CURROW, SQL_NO_NULLS));
    });
    return nomes(coluna_nome);
}

std::vector<std::string> Instrucao::nomes(std::size_t coluna) {
    prepara_linha();
    std::vector<std::string> lidos;
    while (avanca())
        lidos.push_back(registos::le_celula({}, celula(coluna)).texto());
    return lidos;
}

// --- Columns -----------------------------------------------------------------------------------------------

SQLSMALLINT Instrucao::numero_colunas() const {
    SQLSMALLINT total = 0;
    exige_certo(SQLNumResultCols(punho_, &total));
    return total;
}

std::vector<Coluna> Instrucao::le_colunas() {
    std::vector<Coluna> colunas;
    for (std::size_t i = 0; i < nova_.size(); ++i) {
        std::array<SQLWCHAR, 130> nome{};
        SQLSMALLINT comprimento = 0, tipo = 0, casas = 0, anulavel = 0;
        SQLULEN tamanho = 0;
        SQLLEN numerada = 0;
        exige_certo(SQLDescribeColW(punho_, numero(i), nome.data(), static_cast<SQLSMALLINT>(nome.size()),
                                    &comprimento, &tipo, &tamanho, &casas, &anulavel));
        exige_certo(
            SQLColAttributeW(punho_, numero(i), SQL_DESC_AUTO_UNIQUE_VALUE, nullptr, 0, nullptr, &numerada));
        colunas.push_back({.nome = estreito(nome.data(), static_cast<std::size_t>(comprimento)),
                           .tipo = tipo_de(tipo, tamanho, casas),
                           .identidade = numerada == SQL_TRUE});
    }
    return colunas;
}

void Instrucao::prepara_linha() {
    nova_.assign(static_cast<std::size_t>(numero_colunas()), {});
    linhas_.clear();
    linha_ = lidas_ = 0;
    ha_linhas_ = !nova_.empty();
    for (std::size_t i = 0; i < nova_.size(); ++i) {
        SQLLEN tipo = 0;
        exige_certo(SQLColAttributeW(punho_, numero(i), SQL_DESC_CONCISE_TYPE, nullptr, 0, nullptr, &tipo));
        nova_[i].tipo_c = tipo_c_de(static_cast<SQLSMALLINT>(tipo));
    }
}

// --- Rows --------------------------------------------------------------------------------------------------

bool Instrucao::avanca() {
    if (linha_ == lidas_ && ha_linhas_) chama([this] { le_linhas(); });
    if (linha_ < lidas_) {
        ++linha_;
        return true;
    }
    exige_lidas();
    return false;
}

void Instrucao::exige_lidas() {
    if (falha_) std::rethrow_exception(std::exchange(falha_, nullptr));
}

// A look-up reads one row of few. The next ones are on their way already: taking them costs less than telling
// the server to stop, and than asking another thread for each.
void Instrucao::le_linhas() {
    linha_ = lidas_ = 0;
    try {
        while (ha_linhas_ && lidas_ < linhas_de_uma_vez) {
            const SQLRETURN resultado = SQLFetch(punho_);
            exige_certo(resultado);
            ha_linhas_ = resultado != SQL_NO_DATA;
            if (!ha_linhas_) return;
            if (lidas_ == linhas_.size()) linhas_.push_back(nova_);
            // In order and whole: some drivers give a column only once, and none before the last one asked
            // for.
            for (std::size_t i = 0; i < nova_.size(); ++i)
                le(i, linhas_[lidas_][i]);
            ++lidas_;
        }
    } catch (const base::Falha&) {
        ha_linhas_ = false;
        falha_ = std::current_exception();
    }
}

void Instrucao::le(std::size_t coluna, Lida& lida) {
    SQLLEN indicador = 0;
    switch (lida.tipo_c) {
    case SQL_C_SBIGINT:
        exige_certo(SQLGetData(punho_, numero(coluna), SQL_C_SBIGINT, &lida.inteiro, 0, &indicador));
        break;
    case SQL_C_DOUBLE:
        exige_certo(SQLGetData(punho_, numero(coluna), SQL_C_DOUBLE, &lida.real, 0, &indicador));
        break;
    case SQL_C_CHAR: {
        std::array<char, 64> decimal{};
        exige_certo(SQLGetData(punho_, numero(coluna), SQL_C_CHAR, decimal.data(), SQLLEN{decimal.size()},
                               &indicador));
        lida.texto = decimal.data();
        break;
    }
    case SQL_C_TYPE_TIMESTAMP: {
        SQL_TIMESTAMP_STRUCT instante{};
        exige_certo(
            SQLGetData(punho_, numero(coluna), SQL_C_TYPE_TIMESTAMP, &instante, sizeof instante, &indicador));
        lida.texto = texto_de(instante);
        break;
    }
    default:
        indicador = le_texto(numero(coluna), lida.texto) ? 0 : SQL_NULL_DATA;
    }
    lida.nula = indicador == SQL_NULL_DATA;
}

bool Instrucao::le_texto(SQLUSMALLINT coluna, std::string& texto) {
    TextoLargo lido;
    for (;;) {
        std::array<SQLWCHAR, 1024> parte;
        SQLLEN indicador = 0;
        const SQLRETURN resultado =
            SQLGetData(punho_, coluna, SQL_C_WCHAR, parte.data(), SQLLEN{sizeof parte}, &indicador);
        exige_certo(resultado);
        if (indicador == SQL_NULL_DATA) return false;
        if (resultado == SQL_NO_DATA) break;
        // A text that does not fit comes in parts, each with a final zero.
        const auto falta = indicador == SQL_NO_TOTAL ? sizeof parte : static_cast<std::size_t>(indicador);
        const bool cortada = falta > sizeof parte - sizeof(SQLWCHAR);
        const std::size_t unidades = cortada ? parte.size() - 1 : falta / sizeof(SQLWCHAR);
        lido.insert(lido.end(), parte.begin(), parte.begin() + static_cast<std::ptrdiff_t>(unidades));
        if (!cortada) break;
    }
    texto = estreito(lido.data(), lido.size());
    return true;
}

Celula Instrucao::celula(std::size_t coluna) const {
    const Lida& lida = linhas_.at(linha_ - 1).at(coluna);
    if (lida.nula) return {};
    if (lida.tipo_c == SQL_C_SBIGINT) return lida.inteiro;
    if (lida.tipo_c == SQL_C_DOUBLE) return lida.real;
    return std::string_view(lida.texto);
}

} // namespace orvex::platform::odbc
