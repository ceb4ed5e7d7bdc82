// An open company on the server: its connection, opened again when it was lost, and its one transaction.
#pragma once

#include "platform/odbc/falhas.h"
#include "platform/odbc/instrucao.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvex::platform::odbc {

struct Servidor;

// A failure that says what became of what was being written.
inline constexpr const char* nada_ficou = " Nada do que estava a ser gravado ficou na base de dados.";
base::Falha com(const base::Falha& falha, const char* conclusao);

// How long a statement waits for what another program is writing.
std::string limite_de_bloqueio(int milissegundos);

class Motor final : public registos::Motor {
  public:
    // Throws FalhaODBC, naming the cause.
    Motor(std::string texto_ligacao, const Esperas& esperas);
    ~Motor() override;

    std::unique_ptr<registos::Conjunto> consulta(const std::string& sql, Modo modo) override;
    void executa(const std::string& sql) override;

    void inicia() override;
    // Takes a lock of the program's own, which ends with the transaction: it stops neither readers nor the
    // ERP.
    void tranca() override;
    // When the connection is lost on the way, finds out on a new one whether the rows are there.
    void confirma() override;
    void anula() override;
    bool em_transaccao() override;
    void em_exclusivo(const std::function<void()>& trabalho) override;

    void insere(const registos::Colunas& colunas, const std::vector<registos::Campo>& campos) override;
    bool altera(const registos::Colunas& colunas, const std::vector<registos::Campo>& campos,
                const registos::Conjunto& lida) override;

    Servidor servidor();

  private:
    // Once the server has undone a transaction that the program still believes in, nothing may run until the
    // program has taken notice: on its own it would be half of something.
    enum class Transaccao { nenhuma, aberta, perdida };

    enum class Repete { sim, nao };

    // A row that was numbered in a transaction: its presence tells whether the transaction was confirmed.
    struct Testemunha {
        std::string tabela;
        std::string coluna;
        std::int64_t numero = 0;
    };

    void liga();
    // Runs the work on a connection that is free. Outside a transaction a connection found lost is opened
    // again, and work that can be done twice is done once more.
    template <typename Trabalho>
    auto corre(Repete repete, Trabalho trabalho) {
        liberta();
        exige_transaccao_viva();
        const bool outra_vez =
            ligacao_ != nullptr && transaccao_ == Transaccao::nenhuma && repete == Repete::sim;
        for (bool ultima = !outra_vez;; ultima = true) {
            try {
                if (ligacao_ == nullptr) liga();
                return trabalho();
            } catch (const FalhaODBC& apanhada) {
                const FalhaODBC falha = toma_nota(apanhada);
                if (transaccao_ == Transaccao::perdida) throw com(falha, nada_ficou);
                if (ultima || falha.especie() != FalhaODBC::Especie::ligacao) throw falha;
            }
        }
    }
    // What a failure means for the connection and for the transaction on it; gives the failure it then is.
    FalhaODBC toma_nota(const FalhaODBC& falha);
    void exige_transaccao_viva();
    void tranca_para_escrever();
    // Asks for a lock of the program's own, for a transaction or for the session, and throws when it does not
    // come in time.
    void pede_tranca(const char* recurso, const char* dono);
    // The number in the first column of the first row.
    std::int64_t pergunta(const std::string& sql);
    bool esta_na_base(const Testemunha& testemunha);
    const std::vector<std::string>& chave(const std::string& tabela);

    const std::string texto_ligacao_;
    const Esperas esperas_;
    std::unique_ptr<LigacaoODBC> ligacao_; // none once it was lost
    Transaccao transaccao_ = Transaccao::nenhuma;
    bool trancada_ = false; // the open transaction has the ledger's lock
    std::optional<Testemunha> testemunha_;
    std::map<std::string, std::vector<std::string>> chaves_; // columns of the key, by table
};

} // namespace orvex::platform::odbc
