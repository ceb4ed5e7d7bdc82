#include "platform/odbc/motor.h"

#include "base/texto.h"
#include "platform/odbc/sessao_odbc.h"

#include <algorithm>

namespace orvex::platform::odbc {
namespace {

using base::Falha;
using registos::Colunas;

// The next word, blanks around it left out.
std::string_view retira_palavra(std::string_view& texto) {
    texto.remove_prefix(std::min(texto.find_first_not_of(" \t\r\n"), texto.size()));
    const std::string_view palavra = texto.substr(0, texto.find_first_of(" \t\r\n"));
    texto.remove_prefix(palavra.size());
    return palavra;
}

bool e_consulta(std::string_view sql) { return base::mesmo_nome(retira_palavra(sql), "select"); }

// The table that a query reads, without schema and brackets. None for a query whose rows are not those of one
// table as they are: with a join, or with values that were computed.
std::string tabela_de(std::string_view sql) {
    retira_palavra(sql); // SELECT
    std::string_view palavra = retira_palavra(sql);
    for (; !palavra.empty() && !base::mesmo_nome(palavra, "from"); palavra = retira_palavra(sql))
        if (palavra.find_first_of("()+-'") != std::string_view::npos) return {};
    std::string tabela(retira_palavra(sql));
    const std::string_view seguinte = retira_palavra(sql);
    if (!seguinte.empty() && !base::mesmo_nome(seguinte, "where") && !base::mesmo_nome(seguinte, "order"))
        return {};
    tabela.erase(0, tabela.rfind('.') + 1);
    std::erase_if(tabela, [](char c) { return c == '[' || c == ']'; });
    return tabela;
}

} // namespace

Motor::Motor(std::string texto_ligacao, const Esperas& esperas)
    : texto_ligacao_(std::move(texto_ligacao)), esperas_(esperas) {
    liga();
}

Motor::~Motor() { liberta(); }

void Motor::liga() {
    auto nova = std::make_unique<LigacaoODBC>(texto_ligacao_, esperas_);
    // Whatever the server's defaults are: a failed statement leaves the transaction to the program.
    Instrucao(*nova, esperas_)
        .executa(limite_de_bloqueio(esperas_.bloqueio * 1000) +
                 " SET DATEFORMAT ymd SET NOCOUNT OFF SET XACT_ABORT OFF SET IMPLICIT_TRANSACTIONS OFF");
    ligacao_ = std::move(nova);
}

// --- Statements --------------------------------------------------------------------------------------------

std::unique_ptr<registos::Conjunto> Motor::consulta(const std::string& sql, Modo modo) {
    if (!e_consulta(sql))
        throw Falha("A instrução não é uma consulta.", startup::numeros_bd::instrucao_errada);
    return corre(Repete::sim, [&] {
        auto colunas = std::make_shared<Colunas>();
        std::vector<std::string> por_encontrar;
        if (modo == Modo::actualizavel) {
            colunas->tabela = tabela_de(sql);
            if (!colunas->tabela.empty()) por_encontrar = chave(colunas->tabela);
        }
        auto instrucao = std::make_unique<Instrucao>(*ligacao_, esperas_);
        instrucao->consulta(sql);
        colunas->lista = instrucao->le_colunas();
        colunas->chave_completa = !por_encontrar.empty();
        for (const std::string& nome : por_encontrar) {
            const auto coluna =
                std::find_if(colunas->lista.begin(), colunas->lista.end(),
                             [&](const registos::Coluna& esta) { return base::mesmo_nome(esta.nome, nome); });
            colunas->chave_completa = colunas->chave_completa && coluna != colunas->lista.end();
            if (coluna != colunas->lista.end()) coluna->chave = true;
        }
        std::unique_ptr<registos::Cursor> cursor;
        if (instrucao->avanca()) cursor = std::move(instrucao);
        auto conjunto = std::make_unique<registos::Conjunto>(*this, std::move(colunas), std::move(cursor));
        abre(*conjunto);
        return conjunto;
    });
}

void Motor::executa(const std::string& sql) {
    tranca_para_escrever();
    corre(Repete::nao, [&] { return Instrucao(*ligacao_, esperas_).executa(sql); });
}

Servidor Motor::servidor() {
    return corre(Repete::sim, [&]() -> Servidor {
        return {ligacao_->informacao(SQL_DRIVER_NAME) + " " + ligacao_->informacao(SQL_DRIVER_VER),
                ligacao_->informacao(SQL_DBMS_NAME) + " " + ligacao_->informacao(SQL_DBMS_VER)};
    });
}

std::int64_t Motor::pergunta(const std::string& sql) {
    Instrucao instrucao(*ligacao_, esperas_);
    instrucao.consulta(sql);
    const std::int64_t resposta =
        instrucao.avanca() ? registos::le_celula({}, instrucao.celula(0)).inteiro() : 0;
    instrucao.esgota();
    return resposta;
}

const std::vector<std::string>& Motor::chave(const std::string& tabela) {
    const auto encontrada = chaves_.find(tabela);
    if (encontrada != chaves_.end()) return encontrada->second;
    static const std::vector<std::string> sem_chave;
    constexpr std::size_t coluna_nome = 3; // COLUMN_NAME of the catalogue's answer
    std::vector<std::string> nomes;
    Instrucao instrucao(*ligacao_, esperas_);
    instrucao.chave_primaria(tabela);
    while (instrucao.avanca())
        nomes.push_back(registos::le_celula({}, instrucao.celula(coluna_nome)).texto());
    if (nomes.empty()) return sem_chave; // which the table may yet get
    return chaves_[tabela] = std::move(nomes);
}

} // namespace orvex::platform::odbc
