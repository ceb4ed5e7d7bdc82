// The database session every rule works on, and its record sets. Adapters under platform/ implement both.
#pragma once

#include "base/falha.h"
#include "base/variante.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::startup {

// Numbers of database failures (Falha::numero) that the rules and the tests know.
namespace numeros_bd {
inline constexpr std::int32_t tabela_em_falta = -2147217865;
inline constexpr std::int32_t instrucao_errada = -2147217900;
inline constexpr std::int32_t chave_violada = -2147217873;
inline constexpr std::int32_t valor_truncado =
    -2147217833; // a text too long or a number out of its column's range
inline constexpr std::int32_t sem_permissao = -2147217911;
inline constexpr std::int32_t registo_alterado =
    -2147217864;                                         // the row to update was changed or deleted meanwhile
inline constexpr std::int32_t falha_geral = -2147467259; // locked, read-only, damaged, full, lost, not open
} // namespace numeros_bd

// Rows of a query, visited forwards. Field names are case-insensitive; in a join the first match wins; an
// unknown name throws. A set costs what is asked of it: rows are read as they are visited, the count only
// when asked for, and no lock outlives the set or the next statement of its session.
class ConjuntoRegistos {
  public:
    virtual ~ConjuntoRegistos() = default;

    virtual bool fim() = 0; // no current row: an empty set, or moved past the last row
    virtual void move_seguinte() = 0;
    virtual std::int64_t contagem() = 0; // rows in all, whatever the current one

    virtual std::size_t colunas() const = 0;
    virtual std::string_view nome_coluna(std::size_t coluna) const = 0;
    virtual base::Variante valor(std::size_t coluna) = 0;
    virtual base::Variante valor(std::string_view nome) = 0;

    // Updatable sets only. `acrescenta` starts a new row, `define` sets a field of it (or of the current
    // row), and `actualiza` writes it. The row is found again by its key and by the values read: if somebody
    // changed it meanwhile, `actualiza` throws registo_alterado and writes nothing.
    virtual void acrescenta() = 0;
    virtual void define(std::string_view nome, const base::Variante& valor) = 0;
    virtual void actualiza() = 0;
};

// Nobody can tell whether the transaction was confirmed: what it wrote may be there, or may not.
class ConfirmacaoDesconhecida : public base::Falha {
  public:
    using base::Falha::Falha;
};

// A failure of a statement that was sent later than it was asked for (EmPasso). Its text is that of the
// statement's own failure, and names the row.
class FalhaAdiada : public base::Falha {
  public:
    enum class Genero { pergunta, instrucao, linha };

    FalhaAdiada(const base::Falha& falha, Genero genero, std::string instrucao)
        : Falha(falha), genero_(genero), instrucao_(std::move(instrucao)) {}
    Genero genero() const { return genero_; }
    const std::string& instrucao() const { return instrucao_; } // the statement, without a row's values

  private:
    Genero genero_;
    std::string instrucao_;
};

class SessaoBD {
  public:
    virtual ~SessaoBD() = default;

    // False when the session did not open; every later statement then throws, naming the cause.
    virtual bool Abre(const std::string& ligacao) = 0;

    // Each throws Falha with a number of numeros_bd and a text. The sets must not outlive the session.
    virtual std::unique_ptr<ConjuntoRegistos> Consulta(const std::string& sql) = 0;
    virtual std::unique_ptr<ConjuntoRegistos> AbreActualizavel(const std::string& sql) = 0;
    virtual void Executa(const std::string& sql) = 0;

    // Locks nothing yet.
    virtual void IniciaTransaccao() = 0;
    // Inside a transaction: takes the ledger's lock, which one program at a time holds, until the transaction
    // ends. Asked for before a rule reads what it guards: what is read from here on is what will be written
    // over, what was read before may be old. The first write takes it too. Waits for whoever has it, and
    // throws when that takes too long.
    virtual void Tranca() = 0;
    // When it throws, nothing was confirmed, unless it is ConfirmacaoDesconhecida; a transaction that is
    // still open (EmTransaccao) must be rolled back.
    virtual void ConfirmaTransaccao() = 0;
    virtual void AnulaTransaccao() = 0;
    virtual bool EmTransaccao() = 0; // as the engine says, not as we remember

    // One step of the rules, which an engine far away makes in few requests. `perguntas` are queries that the
    // work asks for, each text as it will be asked, and are read together when it begins; one that is asked
    // more often than announced, or again after a write, is read anew, and none may depend on what the work
    // writes before it asks. That is sent together: before what was not announced is asked, and at the end.
    //
    // A failure is that of the statement that failed, as it would be without the step, and is thrown by
    // that statement, by a later one or by the end. Inside a transaction only a rollback follows it; outside
    // of one, each statement stands or fails by itself, those after it too.
    //
    // A step within a step writes at its own end. None shows the user anything: what it read would grow old.
    virtual void EmPasso(const std::vector<std::string>& perguntas,
                         const std::function<void()>& trabalho) = 0;

    // Outside a transaction: runs the work while no other program of ours runs any here.
    virtual void EmExclusivo(const std::function<void()>& trabalho) = 0;

    // The longest text that a column takes, in UTF-16 units; 0 where nothing limits it, or it does not exist.
    virtual std::size_t Comprimento(const std::string& tabela, const std::string& coluna) = 0;
    // What it asks of the server the first time that it is asked of a table, for a step that announces it.
    static std::string pergunta_das_colunas(const std::string& tabela) {
        return "Select * from " + tabela + " where 1=0";
    }

    // The open connection, for a pick list to run its query on.
    virtual SessaoBD& Ligacao() { return *this; }

    virtual void Fecha() = 0;
};

} // namespace orvex::startup
