// Rows of a query, read forwards once; a null has no value, and what cannot be read throws.
#pragma once

#include "base/datahora.h"
#include "base/moeda.h"
#include "startup/sessao_bd.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvex::auditoria {

// Told how far the reading is; what it does with it is its own affair.
class Progresso {
  public:
    virtual ~Progresso() = default;
    virtual void fase(const std::string& qual) = 0;
    virtual void linhas(std::int64_t lidas) = 0; // now and then
    virtual void espera(int segundos) = 0;       // waits
};

class Leitura {
  public:
    Leitura(startup::SessaoBD& BD, const std::string& sql, Progresso& progresso)
        : conjunto_(BD.Consulta(sql)), progresso_(progresso), ha_(!conjunto_->fim()) {}

    bool ha() const { return ha_; }
    void seguinte() {
        constexpr std::int64_t tantas = 1 << 15;
        conjunto_->move_seguinte();
        ha_ = !conjunto_->fim();
        if (++lidas_ % tantas == 0) progresso_.linhas(tantas);
    }

    base::Variante valor(std::size_t coluna) const { return conjunto_->valor(coluna); }
    std::string texto(std::size_t coluna) const { return valor(coluna).texto(); }
    std::int64_t inteiro(std::size_t coluna) const { // 0 where there is none
        const base::Variante lido = valor(coluna);
        return lido.nulo() ? 0 : lido.inteiro();
    }
    std::optional<base::Moeda> moeda(std::size_t coluna) const {
        const base::Variante lido = valor(coluna);
        return lido.nulo() ? std::nullopt : std::optional(lido.moeda());
    }
    std::optional<base::DataHora> data(std::size_t coluna) const {
        const base::Variante lido = valor(coluna);
        return lido.nulo() ? std::nullopt : std::optional(lido.data());
    }

  private:
    std::unique_ptr<startup::ConjuntoRegistos> conjunto_;
    Progresso& progresso_;
    bool ha_;
    std::int64_t lidas_ = 0;
};

// A session is half-way through one query at most: those that are read side by side have one each.
class Sessoes {
  public:
    using Abre = std::function<std::unique_ptr<startup::SessaoBD>()>; // throws when it does not open
    explicit Sessoes(Abre abre) : abre_(std::move(abre)) {}

    startup::SessaoBD& operator[](std::size_t qual) {
        while (abertas_.size() <= qual)
            abertas_.push_back(abre_());
        return *abertas_[qual];
    }

  private:
    Abre abre_;
    std::vector<std::unique_ptr<startup::SessaoBD>> abertas_;
};

} // namespace orvex::auditoria
