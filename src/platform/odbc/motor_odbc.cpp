#include "platform/odbc/motor_odbc.h"

#include "base/texto.h"
#include "platform/odbc/sessao_odbc.h"
#include "platform/odbc/texto_ligacao.h"

#include <algorithm>
#include <thread>

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

bool e_consulta(std::string_view sql) { return base::mesmo_nome(retira_palavra(sql), "select"); }

bool escreve_linhas(std::string_view sql) {
    const std::string_view verbo = retira_palavra(sql);
    return base::mesmo_nome(verbo, "delete") || base::mesmo_nome(verbo, "insert") ||
           base::mesmo_nome(verbo, "update");
}

MotorODBC::MotorODBC(std::string ligacao, const Esperas& esperas)
    : texto_(std::move(ligacao)), esperas_(esperas), fala_(fala_do_controlador(texto_)) {
    liga();
}

MotorODBC::~MotorODBC() { liberta(); }

std::unique_ptr<LigacaoODBC> MotorODBC::abre_ligacao() const {
    return std::make_unique<LigacaoODBC>(texto_odbc(texto_, fala_), esperas_);
}

void MotorODBC::liga() {
    auto nova = abre_ligacao();
    // A driver that was taken for another did not understand what was said of encryption.
    if (const Fala dele = fala_de(nova->informacao(SQL_DRIVER_NAME)); dele != fala_) {
        fala_ = dele;
        nova.reset();
        nova = abre_ligacao();
    }
    // Whatever the server's defaults are: a failed statement leaves the transaction to the program.
    const std::string sql =
        acaba_o_que_ficou() + "; " + limite_de_bloqueio(esperas_.bloqueio * 1000) +
        " SET DATEFORMAT ymd SET NOCOUNT OFF SET XACT_ABORT OFF SET IMPLICIT_TRANSACTIONS OFF; " +
        transaccoes_abertas;
    // A driver that gives up waits as long again for the server to acknowledge it.
    const int espera = (esperas_.ligacao + 1) / 2;
    if (Instrucao(*nova, espera).pergunta(sql) != 0)
        throw Falha("A ligação à base de dados não começou do princípio: tem uma transacção aberta.",
                    startup::numeros_bd::falha_geral);
    if (exclusivo_) pede_tranca(*nova, tranca_das_tabelas, "Session");
    esquece_colunas();
    ligacao_ = std::move(nova);
}

MotorODBC::Tentativas MotorODBC::tentativas(Repete repete) const {
    constexpr int vezes = 4;
    const bool sim = repete == Repete::sim && transaccao_ == Transaccao::nenhuma;
    return {sim && ligacao_ != nullptr ? 1 : 0, sim ? vezes : 0,
            std::chrono::steady_clock::now() + std::chrono::seconds(esperas_.bloqueio)};
}

bool MotorODBC::Tentativas::outra(const FalhaODBC& falha) {
    if (falha.natureza() == FalhaODBC::Natureza::ligacao) return ligacoes-- > 0;
    if (falha.natureza() != FalhaODBC::Natureza::vitima && falha.natureza() != FalhaODBC::Natureza::ocupado)
        return false;
    constexpr std::chrono::milliseconds pausa(50);
    if (std::chrono::steady_clock::now() + pausa >= fim || bloqueios-- <= 0) return false;
    std::this_thread::sleep_for(pausa);
    return true;
}

// --- Statements --------------------------------------------------------------------------------------------

MotorODBC::Alvo MotorODBC::alvo(const std::string& sql, Modo modo) {
    Alvo alvo;
    if (modo == Modo::actualizavel) alvo.tabela = tabela_de(sql);
    if (!alvo.tabela.empty()) alvo.chave = chave(alvo.tabela);
    return alvo;
}

std::shared_ptr<const Colunas> MotorODBC::Alvo::colunas(std::vector<registos::Coluna> lista) const {
    Colunas colunas{std::move(lista), tabela, !chave.empty()};
    for (const std::string& nome : chave) {
        const auto coluna =
            std::find_if(colunas.lista.begin(), colunas.lista.end(),
                         [&](const registos::Coluna& esta) { return base::mesmo_nome(esta.nome, nome); });
        colunas.chave_completa = colunas.chave_completa && coluna != colunas.lista.end();
        if (coluna != colunas.lista.end()) coluna->chave = true;
    }
    return std::make_shared<const Colunas>(std::move(colunas));
}

std::unique_ptr<registos::Conjunto> MotorODBC::consulta(const std::string& sql, Modo modo) {
    if (!e_consulta(sql))
        throw Falha("A instrução não é uma consulta.", startup::numeros_bd::instrucao_errada);
    auto lida = passo_ != nullptr ? passo_->retira(sql) : std::nullopt;
    if (!lida) envia();
    return corre(Repete::sim, [&] {
        const Alvo este = alvo(sql, modo); // first: the connection must be free for it
        if (lida)
            return std::make_unique<registos::Conjunto>(*this, este.colunas(std::move(lida->colunas)),
                                                        std::move(lida->linhas));
        auto linhas = std::make_unique<Instrucao>(*ligacao_, esperas_.instrucao);
        linhas->consulta(sql);
        auto colunas = este.colunas(linhas->le_colunas());
        std::unique_ptr<registos::Cursor> cursor;
        if (linhas->avanca()) cursor = std::move(linhas);
        auto conjunto = std::make_unique<registos::Conjunto>(*this, std::move(colunas), std::move(cursor));
        abre(*conjunto);
        return conjunto;
    });
}

void MotorODBC::executa(const std::string& sql) {
    if (pode_esperar(sql)) return adia({startup::FalhaAdiada::Genero::instrucao, sql});
    if (!escreve_linhas(sql)) esquece_colunas();
    envia();
    if (passo_ != nullptr) passo_->nota_escrita();
    tranca_para_escrever();
    corre(Repete::nao, [&] { return instrucao().executa(sql); });
}

Servidor MotorODBC::servidor() {
    return corre(Repete::sim, [&]() -> Servidor {
        return {ligacao_->informacao(SQL_DRIVER_NAME) + " " + ligacao_->informacao(SQL_DRIVER_VER),
                ligacao_->informacao(SQL_DBMS_NAME) + " " + ligacao_->informacao(SQL_DBMS_VER)};
    });
}

// The primary key, or else the columns of another index that tells each row from all others.
const std::vector<std::string>& MotorODBC::chave(const std::string& tabela) {
    const std::string nome = base::maiusculas(tabela);
    const auto encontrada = chaves_.find(nome);
    if (encontrada != chaves_.end()) return encontrada->second;
    static const std::vector<std::string> sem_chave;
    std::vector<std::string> nomes = instrucao().chave_primaria(tabela);
    if (nomes.empty()) nomes = instrucao().chave_sem_nulos(tabela);
    if (nomes.empty()) return sem_chave; // which the table may yet get
    return chaves_[nome] = std::move(nomes);
}

} // namespace orvex::platform::odbc
