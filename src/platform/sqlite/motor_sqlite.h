// An open embedded company: the connection and its prepared statements.
#pragma once

#include "platform/sqlite/empresa.h"
#include "platform/sqlite/guardadas.h"
#include "platform/sqlite/preparada.h"
#include "platform/sqlite/sessao_sqlite.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

namespace orvex::platform::sqlite {

class MotorSQLite final : public registos::Motor {
  public:
    // Opens both files of the folder, neither of which is created. Throws Falha, naming the cause.
    MotorSQLite(const std::filesystem::path& pasta, ComoEspera como, Acesso acesso);
    ~MotorSQLite() override;

    std::unique_ptr<registos::Conjunto> consulta(const std::string& sql, Modo modo) override;
    void executa(const std::string& sql) override;
    void inicia() override;
    // Takes the write lock of the ledger's file; the ERP's stays free for the ERP.
    void tranca() override;
    void confirma() override;
    // Never fails: where the engine refuses, closing the connection takes everything back.
    void anula() override;
    // Once it has answered that there is none, what the program writes next is no part of the last one.
    bool em_transaccao() override;
    // Outside a transaction its questions are read of one state of the files, until it writes.
    void em_passo(const std::vector<std::string>& perguntas, const std::function<void()>& trabalho) override;
    void em_exclusivo(const std::function<void()>& trabalho) override;

    void insere(const Colunas& colunas, const std::vector<registos::Atribuicao>& atribuicoes) override;
    bool altera(const Colunas& colunas, const std::vector<registos::Atribuicao>& atribuicoes,
                const registos::Conjunto& lida) override;

  private:
    struct Ligacao {
        SQLite::Database base;
        InstrucoesGuardadas escritas{base}; // that write the rows of a set
        std::unordered_map<std::string, std::shared_ptr<Preparada>> preparadas{}; // by shape
    };

    Ligacao& ligacao(); // opened anew where an end of a transaction had to close it
    SQLite::Database& base() { return ligacao().base; }
    bool aberta() const; // a transaction, as the engine says
    void exige_transaccao();
    void exige_inteira();

    void tranca_para_escrever();
    void segura_leitura();

    enum class Uso { consulta, execucao }; // a query is refused, not run, when it is something else

    // None for a change of the schema, which is done at once.
    std::shared_ptr<Preparada> prepara(const std::string& sql, Uso uso);
    std::shared_ptr<Preparada> primeiro_passo(const std::string& sql, Uso uso);
    void muda_esquema(const Traducao& traducao);
    // Outside a transaction what meets another program at work is tried again.
    template <typename Trabalho>
    decltype(auto) corre(Trabalho trabalho);

    const std::filesystem::path pasta_;
    ComoEspera como_;
    const Acesso acesso_;
    std::unique_ptr<Ligacao> ligacao_;
    std::optional<InstrucoesGuardadas::Emprestimo> leitura_; // half read, while a step reads
    bool iniciada_ = false;                                  // by the program, which has not ended it
    bool trancada_ = false;                                  // the open transaction has the ledger's lock
    Forma forma_;
};

} // namespace orvex::platform::sqlite
