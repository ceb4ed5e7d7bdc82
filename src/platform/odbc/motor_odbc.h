// An open company on the server: its connection, opened again when it was lost, and its one transaction.
#pragma once

#include "platform/odbc/controladores.h"
#include "platform/odbc/falhas.h"
#include "platform/odbc/instrucao.h"
#include "platform/odbc/passo.h"

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvex::platform::odbc {

struct Servidor;

// A failure that says what became of what was being written.
inline constexpr const char* nada_ficou = " Nada do que estava a ser gravado ficou na base de dados.";
inline constexpr const char* nao_se_sabe =
    " Não se sabe se o que estava a ser gravado ficou na base de dados: verifique antes de repetir.";
base::Falha com(const base::Falha& falha, const char* conclusao);

inline constexpr const char* transaccoes_abertas = "SELECT @@TRANCOUNT AS n";

// How long a statement waits for what another program is writing.
std::string limite_de_bloqueio(int milissegundos);

class MotorODBC final : public registos::Motor {
  public:
    // Takes what ConstrutorLigacao built. Throws Falha, naming the cause.
    MotorODBC(std::string ligacao, const Esperas& esperas);
    ~MotorODBC() override;

    std::unique_ptr<registos::Conjunto> consulta(const std::string& sql, Modo modo) override;
    void executa(const std::string& sql) override;

    void inicia() override;
    // Takes a lock of the program's own, which ends with the transaction: it stops neither readers nor the
    // ERP.
    void tranca() override;
    // When the connection is lost on the way, finds out on a new one whether the rows are there: throws
    // ConfirmacaoDesconhecida only when nobody can tell.
    void confirma() override;
    void anula() override;
    // A server that does not tell loses its connection, and with it whatever was open.
    bool em_transaccao() override;
    // What the work wrote when it throws: outside a transaction it is sent all the same, since without the
    // step it would have been; inside one it is dropped, and only a rollback is accepted.
    void em_passo(const std::vector<std::string>& perguntas, const std::function<void()>& trabalho) override;
    void em_exclusivo(const std::function<void()>& trabalho) override;

    void insere(const registos::Colunas& colunas,
                const std::vector<registos::Atribuicao>& atribuicoes) override;
    bool altera(const registos::Colunas& colunas, const std::vector<registos::Atribuicao>& atribuicoes,
                const registos::Conjunto& lida) override;

    Servidor servidor();

  private:
    // Once the server has undone a transaction that the program still believes in, nothing may run until the
    // program has taken notice: on its own it would be half of something. Nor may anything but a rollback,
    // once a write failed that the program believes to be done.
    enum class Transaccao { nenhuma, aberta, falhada, perdida };

    enum class Repete { sim, nao };

    // A row that was numbered in a transaction: its presence tells whether the transaction was confirmed.
    struct Testemunha {
        std::string tabela;
        std::string condicao; // WHERE its key is the one that follows, and its number ...
        std::vector<Parametro> chave;
        std::int64_t numero;
    };

    // What is left of the attempts to run something.
    struct Tentativas {
        int ligacoes, bloqueios;
        std::chrono::steady_clock::time_point fim;
        bool outra(const FalhaODBC& falha); // pauses where that helps
    };

    std::unique_ptr<LigacaoODBC> abre_ligacao() const;
    void liga();
    Instrucao instrucao() const { return {*ligacao_, esperas_.instrucao}; }
    // Runs the work on a connection that is free. Outside a transaction a connection found lost is opened
    // again, and work that can be done twice is done once more; or a few times, where others stood in its
    // way.
    template <typename Trabalho>
    auto corre(Repete repete, Trabalho trabalho) {
        liberta();
        exige_transaccao_viva();
        Tentativas restam = tentativas(repete);
        for (;;) {
            try {
                if (ligacao_ == nullptr) liga();
                return trabalho();
            } catch (const FalhaODBC& apanhada) {
                const FalhaODBC falha = toma_nota(apanhada);
                if (transaccao_ == Transaccao::perdida) throw com(falha, nada_ficou);
                if (!restam.outra(falha)) throw falha;
                engole(falha);
            }
        }
    }
    Tentativas tentativas(Repete repete) const;
    // What a failure means for the connection and for the transaction on it; gives the failure it then is.
    FalhaODBC toma_nota(const FalhaODBC& falha);
    void exige_transaccao_viva();
    void tranca_para_escrever();
    void le_adiante(Passo& passo, const std::vector<std::string>& perguntas);
    bool le_juntas(Passo& passo, const std::vector<std::string>& perguntas); // false when not all came
    bool pode_esperar(const std::string& sql) const;
    std::int64_t escreve(Escrita escrita); // tells how many rows it changed
    void adia(Escrita escrita);
    void envia(); // what waits
    void envia_na_transaccao(std::vector<Escrita> escritas);
    void envia_sozinhas(std::vector<Escrita> escritas);
    void corre_lote(Lote& lote, std::size_t quantas);
    startup::FalhaAdiada a_dizer(const Lote& lote, bool incerto) const;
    // What waits belongs before what comes now, and what was read ahead will be old.
    void acaba_o_adiado();
    void larga_o_adiado();
    void exige_anulacao(const base::Falha& causa);
    // Asks for a lock of the program's own, for a transaction or for the session, and throws when it does not
    // come in time.
    void pede_tranca(const LigacaoODBC& ligacao, const char* recurso, const char* dono) const;
    std::int64_t abertas_no_servidor() const;
    bool anulada_pelo_servidor();
    void nota_testemunha(const registos::Colunas& colunas,
                         const std::vector<registos::Atribuicao>& atribuicoes);
    void numera_testemunha();
    bool confirmada_afinal(const FalhaODBC& falha);
    // What rows of a query are found again by, where they are to be.
    struct Alvo {
        std::string tabela;
        std::vector<std::string> chave;
        std::shared_ptr<const registos::Colunas> colunas(std::vector<registos::Coluna> lista) const;
    };
    Alvo alvo(const std::string& sql, Modo modo);
    const std::vector<std::string>& chave(const std::string& tabela);

    const std::string texto_; // as ConstrutorLigacao built it
    const Esperas esperas_;
    Fala fala_;
    std::unique_ptr<LigacaoODBC> ligacao_; // none once it was lost
    Transaccao transaccao_ = Transaccao::nenhuma;
    bool trancada_ = false;  // the open transaction has the ledger's lock
    bool exclusivo_ = false; // work runs that has the lock of the tables
    std::optional<Testemunha> testemunha_;
    std::optional<base::Falha> causa_;                       // of a transaction that is `falhada`
    Passo* passo_ = nullptr;                                 // the innermost that runs
    std::map<std::string, std::vector<std::string>> chaves_; // columns of the key, by table, upper case
};

} // namespace orvex::platform::odbc
