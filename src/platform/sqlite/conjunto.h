// A record set of an embedded company. While its statement is open, rows come from it one by one; before the
// session does anything else the rest is read into memory and the statement let go.
#pragma once

#include "platform/sqlite/linhas.h"
#include "platform/sqlite/motor.h"

#include <exception>

namespace orvex::platform::sqlite {

class Conjunto final : public startup::ConjuntoRegistos {
  public:
    // Takes over a statement that has made its first step.
    Conjunto(Motor& motor, std::shared_ptr<Preparada> preparada);
    ~Conjunto() override;

    bool fim() override;
    void move_seguinte() override;
    std::int64_t contagem() override;

    std::size_t colunas() const override { return colunas_->lista.size(); }
    std::string_view nome_coluna(std::size_t coluna) const override {
        return colunas_->lista.at(coluna).nome;
    }
    base::Variante valor(std::size_t coluna) override;
    base::Variante valor(std::string_view nome) override { return valor(indice(nome)); }

    void acrescenta() override;
    void define(std::string_view nome, const base::Variante& valor) override;
    void actualiza() override;

    // The same columns, with what it takes to find a row again.
    void torna_actualizavel(std::shared_ptr<const Colunas> colunas) { colunas_ = std::move(colunas); }

    bool aberto() const { return preparada_ != nullptr; }
    // Never throws: what goes wrong is kept for whoever reads the set next.
    void guarda_resto() noexcept;

  private:
    struct Definido {
        std::size_t coluna;
        base::Variante valor;
    };

    std::size_t indice(std::string_view nome) const;
    void larga_instrucao();
    void verifica() const;
    Celula celula(std::size_t coluna) const;
    void exige_actualizavel() const;
    void insere();
    void altera();
    std::string condicao() const;
    void liga_lida(SQLite::Statement& instrucao, int parametro, std::size_t coluna) const;

    Motor& motor_;
    std::shared_ptr<Preparada> preparada_; // while rows come from it
    std::shared_ptr<const Colunas> colunas_;
    Linhas linhas_; // the rest of the rows, once the statement has been let go
    bool ha_linha_;
    std::int64_t contagem_ = 0; // rows met; all of them once the statement has been let go
    std::exception_ptr falha_;

    bool nova_ = false;
    std::vector<Definido> definidos_; // fields set and not yet written
    std::vector<Definido> escritos_;  // fields of the current row written since it was read
};

} // namespace orvex::platform::sqlite
