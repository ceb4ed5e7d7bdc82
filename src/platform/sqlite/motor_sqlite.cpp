#include "platform/sqlite/motor_sqlite.h"

#include "platform/registos/conjunto.h"
#include "platform/sqlite/falhas.h"
#include "platform/sqlite/lexico.h"

#include <sqlite3.h>

namespace orvex::platform::sqlite {
namespace {

using base::Falha;

constexpr std::size_t preparadas_guardadas = 200; // far more shapes than the program has

[[noreturn]] void falhou(const char* texto) { throw Falha(texto, startup::numeros_bd::falha_geral); }

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
    Celula celula(std::size_t coluna) const override { return preparada_->celula(coluna); }

  private:
    std::shared_ptr<Preparada> preparada_;
};

} // namespace

MotorSQLite::MotorSQLite(const std::filesystem::path& pasta, ComoEspera como, Acesso acesso)
    : pasta_(pasta), como_(std::move(como)), acesso_(acesso) {
    ligacao();
}

MotorSQLite::~MotorSQLite() { liberta(); }

MotorSQLite::Ligacao& MotorSQLite::ligacao() {
    if (ligacao_ == nullptr) {
        esquece_colunas();
        ligacao_.reset(new Ligacao{acesso_ == Acesso::escrita
                                       ? abre_empresa(pasta_, como_.espera_ms)
                                       : abre_empresa_para_ler(pasta_, como_.espera_ms)});
        espera_a_vista(ligacao_->base, como_);
    }
    return *ligacao_;
}

template <typename Trabalho>
decltype(auto) MotorSQLite::corre(Trabalho trabalho) {
    exige_inteira();
    return com_falhas([&] { return insiste(aberta() ? 0 : como_.espera_ms, trabalho); });
}

// --- Statements --------------------------------------------------------------------------------------------

std::shared_ptr<Preparada> MotorSQLite::prepara(const std::string& sql, Uso uso) {
    forma_.le(sql);
    auto& preparadas = ligacao().preparadas;
    auto encontrada = preparadas.find(forma_.chave());
    if (encontrada == preparadas.end()) {
        const Traducao traducao = traduz(forma_.chave());
        if (traducao.genero == Traducao::Genero::esquema) {
            if (uso == Uso::consulta) instrucao_errada(sql);
            muda_esquema(traducao);
            return nullptr;
        }
        if (preparadas.size() >= preparadas_guardadas) preparadas.clear();
        encontrada = preparadas.emplace(forma_.chave(), std::make_shared<Preparada>(base(), traducao)).first;
    }
    auto preparada = encontrada->second;
    if (uso == Uso::consulta && preparada->genero != Traducao::Genero::consulta) instrucao_errada(sql);
    preparada->associa(forma_);
    return preparada;
}

// All or nothing, inside a transaction of the program's or not.
void MotorSQLite::muda_esquema(const Traducao& traducao) {
    ligacao().preparadas.clear();
    esquece_colunas();
    base().exec("SAVEPOINT esquema");
    try {
        for (const std::string& instrucao : traducao.instrucoes)
            base().exec(instrucao);
        base().exec("RELEASE esquema");
    } catch (const SQLite::Exception&) {
        base().tryExec("ROLLBACK TO esquema");
        base().tryExec("RELEASE esquema");
        throw;
    }
    if (aberta()) return;
    try {
        marca_comecado(base());
    } catch (const SQLite::Exception& falha) {
        engole(falha); // the next opening does it; what was made is not made again
    }
}

std::shared_ptr<Preparada> MotorSQLite::primeiro_passo(const std::string& sql, Uso uso) {
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

std::unique_ptr<registos::Conjunto> MotorSQLite::consulta(const std::string& sql, Modo modo) {
    liberta();
    return corre([&] {
        auto preparada = primeiro_passo(sql, Uso::consulta);
        if (preparada->caduca()) { // its columns may be others now
            ligacao().preparadas.clear();
            esquece_colunas();
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

void MotorSQLite::executa(const std::string& sql) {
    liberta();
    tranca_para_escrever();
    corre([&] {
        const auto preparada = primeiro_passo(sql, Uso::execucao);
        if (preparada != nullptr) preparada->instrucao.tryReset();
    });
}

// --- Transactions ------------------------------------------------------------------------------------------

bool MotorSQLite::aberta() const {
    return ligacao_ != nullptr && sqlite3_get_autocommit(ligacao_->base.getHandle()) == 0;
}

bool MotorSQLite::em_transaccao() {
    if (!aberta()) iniciada_ = false;
    return aberta();
}

// The engine takes a transaction back by itself when the disk fails it. What is written after that would
// stand alone.
void MotorSQLite::exige_inteira() {
    if (iniciada_ && !aberta())
        falhou("A base de dados desistiu da transacção por causa de uma falha anterior. Nada ficou gravado.");
}

void MotorSQLite::exige_transaccao() {
    exige_inteira();
    if (!iniciada_) falhou("Não há transacção aberta. Nada ficou gravado.");
}

void MotorSQLite::inicia() {
    leitura_.reset();
    liberta();
    anula(); // one that a failure left behind is none of this one's
    com_falhas([&] {
        exige_os_mesmos_ficheiros(base());
        base().exec("BEGIN");
    });
    iniciada_ = true;
}

void MotorSQLite::tranca() {
    exige_transaccao();
    if (trancada_) return;
    liberta();
    com_falhas([&] {
        // Nothing was written yet. What was read has fixed what is seen of the file, and who came first may
        // have written to it since: the transaction begins again, so that it sees the file as it is.
        base().exec("ROLLBACK");
        base().exec("BEGIN");
        // Writes nothing; a company without the table has nothing to guard.
        const int codigo = base().tryExec("UPDATE main.xel_ORVEX SET NumSerie = NumSerie WHERE 0");
        if (codigo != SQLITE_OK && codigo != SQLITE_ERROR)
            throw SQLite::Exception(base().getHandle(), codigo);
    });
    trancada_ = true;
}

void MotorSQLite::tranca_para_escrever() {
    leitura_.reset();
    exige_inteira();
    if (!trancada_ && aberta()) tranca();
}

void MotorSQLite::confirma() {
    exige_transaccao();
    liberta();
    com_falhas([&] { base().exec("COMMIT"); });
    iniciada_ = trancada_ = false;
}

void MotorSQLite::anula() {
    leitura_.reset();
    liberta();
    iniciada_ = trancada_ = false;
    if (!aberta()) return;
    base().tryExec("ROLLBACK");
    if (aberta()) ligacao_.reset();
}

// Each statement that finds no other at work locks and unlocks both files, which takes longer than the search
// for one row.
void MotorSQLite::segura_leitura() {
    try {
        leitura_.emplace(ligacao().escritas, "SELECT 1 FROM main.sqlite_schema, erp.sqlite_schema");
        if ((*leitura_)->tryExecuteStep() != SQLITE_ROW) leitura_.reset();
    } catch (const SQLite::Exception& falha) {
        leitura_.reset();
        engole(falha); // it fails again where it is asked for something
    }
}

void MotorSQLite::em_passo(const std::vector<std::string>& perguntas, const std::function<void()>& trabalho) {
    if (perguntas.empty() || aberta() || leitura_) return trabalho();
    segura_leitura();
    struct AoAcabar {
        std::optional<InstrucoesGuardadas::Emprestimo>& leitura;
        ~AoAcabar() { leitura.reset(); }
    } const ao_acabar{leitura_};
    trabalho();
}

// A lock that is nothing else's: neither the ledger's, which the work takes, nor the ERP's, which who has the
// ledger's may be waiting for.
void MotorSQLite::em_exclusivo(const std::function<void()>& trabalho) {
    const auto ficheiro = pasta_ / ficheiro_exclusivo;
    const auto so_nos = com_falhas([&] {
        SQLite::Database tranca(ficheiro, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, como_.espera_ms);
        espera_a_vista(tranca, como_);
        // For whoever may write the ledger; where it is somebody else's file, that one has done it.
        std::error_code erro;
        std::filesystem::permissions(
            ficheiro, std::filesystem::status(pasta_ / ficheiro_livro, erro).permissions(), erro);
        tranca.exec("BEGIN EXCLUSIVE");
        return tranca;
    });
    trabalho();
}

} // namespace orvex::platform::sqlite
