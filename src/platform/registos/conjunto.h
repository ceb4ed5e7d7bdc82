// The one record set of every engine. While its cursor is open, rows come from it one by one; before the
// connection does anything else the rest is read into memory and the cursor let go. One that is only added to
// is not even opened, once its columns are known.
//
// What is set is held to the column's type at once. An update is left to the engine, with what was read.
#pragma once

#include "platform/registos/linhas.h"
#include "startup/sessao_bd.h"

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orvex::platform::registos {

struct Coluna {
    std::string nome;
    TipoSQL tipo;
    bool chave = false;      // of the table's key; known of a query that can be updated
    bool identidade = false; // given by the database
};

struct Colunas {
    std::vector<Coluna> lista;
    std::string tabela; // that a row of these is found in; empty when the set is for reading only
    bool chave_completa = false;
};

struct Atribuicao {
    std::size_t coluna;
    base::Variante valor; // as the column keeps it (normaliza)
};

// A statement that stands on a row. Let go when destroyed.
class Cursor {
  public:
    virtual ~Cursor() = default;
    virtual bool avanca() = 0; // false when there are no more rows
    virtual Celula celula(std::size_t coluna) const = 0;
};

class Conjunto;

// The failure registo_alterado.
inline constexpr const char* alterado_por_outro = "O registo foi alterado ou apagado por outro utilizador.";

using AoEngolir = std::function<void(const std::exception&)>;

// An engine with an open database: the connection under the sets, of which one at most is half read.
class Motor {
  public:
    virtual ~Motor() = default;
    Motor(const Motor&) = delete;
    Motor& operator=(const Motor&) = delete;

    enum class Modo { leitura, actualizavel };

    // As those of SessaoBD.
    virtual std::unique_ptr<Conjunto> consulta(const std::string& sql, Modo modo) = 0;
    virtual void executa(const std::string& sql) = 0;
    virtual void inicia() = 0;
    virtual void tranca() = 0;
    virtual void confirma() = 0;
    virtual void anula() = 0;
    virtual bool em_transaccao() = 0;
    // An engine beside the program gains nothing by it.
    virtual void em_passo(const std::vector<std::string>& /*perguntas*/,
                          const std::function<void()>& trabalho) {
        trabalho();
    }
    virtual void em_exclusivo(const std::function<void()>& trabalho) = 0;

    virtual void insere(const Colunas& colunas, const std::vector<Atribuicao>& atribuicoes) = 0;
    // False when no row has the key and the values of the one that was read.
    virtual bool altera(const Colunas& colunas, const std::vector<Atribuicao>& atribuicoes,
                        const Conjunto& lida) = 0;

    // A set to update. One whose columns are known sends its query when it is asked for anything but new
    // rows.
    std::unique_ptr<Conjunto> abre_actualizavel(const std::string& sql);
    // Rows were added to the set of this text: there may be more. What was read of the columns before they
    // were forgotten is not learnt again.
    void conhece(const std::string& sql, const std::shared_ptr<const Colunas>& colunas, int geracao);
    int geracao() const { return geracao_; }

    // Reads the half-read set to its end into memory, so that the connection is free.
    void liberta();
    // Told of each failure that the engine mends by itself or can do nothing about, and tells nobody else.
    void define_ao_engolir(AoEngolir ao_engolir) { ao_engolir_ = std::move(ao_engolir); }
    // The set is done with its cursor, or gone.
    void esquece(const Conjunto* conjunto) {
        if (aberto_ == conjunto) aberto_ = nullptr;
    }
    void passa(const Conjunto* de, Conjunto* para) {
        if (aberto_ == de) aberto_ = para;
    }

  protected:
    Motor() = default;
    void abre(Conjunto& conjunto);
    // The tables may be others now: after a change of the schema, on a new connection.
    void esquece_colunas() {
        conhecidas_.clear();
        ++geracao_;
    }
    void engole(const std::exception& falha) const {
        if (ao_engolir_) ao_engolir_(falha);
    }

  private:
    AoEngolir ao_engolir_;
    Conjunto* aberto_ = nullptr;
    std::map<std::string, std::shared_ptr<const Colunas>> conhecidas_; // by text
    int geracao_ = 0;                                                  // of what is known
};

class Conjunto final : public startup::ConjuntoRegistos {
  public:
    // With the cursor on the first row; none when there is no row.
    Conjunto(Motor& motor, std::shared_ptr<const Colunas> colunas, std::unique_ptr<Cursor> cursor);
    // With all its rows, which were read before.
    Conjunto(Motor& motor, std::shared_ptr<const Colunas> colunas, Linhas linhas);
    // Not opened yet.
    Conjunto(Motor& motor, std::shared_ptr<const Colunas> colunas, std::string sql);
    ~Conjunto() override;

    bool fim() override;
    void move_seguinte() override;
    std::int64_t contagem() override;

    std::size_t colunas() const override { return colunas_->lista.size(); }
    std::string_view nome_coluna(std::size_t coluna) const override {
        return colunas_->lista.at(coluna).nome;
    }
    const TipoSQL& tipo(std::size_t coluna) const { return colunas_->lista.at(coluna).tipo; }
    base::Variante valor(std::size_t coluna) override;
    base::Variante valor(std::string_view nome) override { return valor(indice(nome)); }

    void acrescenta() override;
    void define(std::string_view nome, const base::Variante& valor) override;
    void actualiza() override;

    bool aberto() const { return cursor_ != nullptr; }
    void define_texto(const std::string& sql) { sql_ = sql; } // of a set to update
    // Never throws: what goes wrong is kept for whoever reads the set next.
    void guarda_resto() noexcept;

    // The current row as it now is in the database: as it was read, but for what this set has written.
    Celula celula(std::size_t coluna) const;
    const base::Variante* escrito(std::size_t coluna) const;

  private:
    std::size_t indice(std::string_view nome) const;
    void larga_cursor();
    void abre_se();
    void verifica() const;
    void exige_actualizavel() const;
    void altera();

    Motor& motor_;
    std::shared_ptr<const Colunas> colunas_;
    int geracao_;                    // in which they were read
    std::unique_ptr<Cursor> cursor_; // while rows come from it
    Linhas linhas_;                  // the rest of the rows, once the cursor has been let go
    bool ha_linha_;
    std::int64_t contagem_ = 0; // rows met; all of them once the cursor has been let go
    std::exception_ptr falha_;
    std::string sql_;        // of a set to update
    bool por_abrir_ = false; // its query has not been sent

    bool nova_ = false;
    std::vector<Atribuicao> definidos_; // fields set and not yet written
    std::vector<Atribuicao> escritos_;  // fields of the current row written since it was read
};

// "INSERT INTO t([a],[b]) VALUES (?,?)" and "UPDATE t SET [a]=?,[b]=?", one parameter for each field.
std::string texto_insercao(const std::string& tabela, const Colunas& colunas,
                           const std::vector<Atribuicao>& atribuicoes);
inline std::string texto_insercao(const Colunas& colunas, const std::vector<Atribuicao>& atribuicoes) {
    return texto_insercao(colunas.tabela, colunas, atribuicoes);
}
std::string texto_alteracao(const Colunas& colunas, const std::vector<Atribuicao>& atribuicoes);

} // namespace orvex::platform::registos
