#include "platform/operacoes/sessao_bd_ouvida.h"

#include "platform/operacoes/escrito.h"
#include "startup/construtor_ligacao.h"

#include <utility>

namespace orvex::platform::operacoes {
namespace {

using startup::ConjuntoRegistos;
using Especie = Operacao::Especie;

// Rows are passed on as they are asked for: a list of many costs one call more for each.
class ConjuntoOuvido : public ConjuntoRegistos {
  public:
    ConjuntoOuvido(std::unique_ptr<ConjuntoRegistos> real, const std::string& sql, Ouvinte& ouvinte)
        : real_(std::move(real)), sql_(sql), ouvinte_(ouvinte) {}

    bool fim() override {
        return conta_a_falha(Especie::le, [this] { return real_->fim(); });
    }
    void move_seguinte() override {
        conta_a_falha(Especie::le, [this] { real_->move_seguinte(); });
    }
    std::int64_t contagem() override {
        return com_ouvinte(ouvinte_, {Especie::conta, sql_}, [this] { return real_->contagem(); });
    }
    std::size_t colunas() const override { return real_->colunas(); }
    std::string_view nome_coluna(std::size_t coluna) const override { return real_->nome_coluna(coluna); }
    base::Variante valor(std::size_t coluna) override { return real_->valor(coluna); }
    base::Variante valor(std::string_view nome) override { return real_->valor(nome); }
    void acrescenta() override {
        campos_ = "  acrescenta";
        real_->acrescenta();
    }
    void define(std::string_view nome, const base::Variante& valor) override {
        campos_ += " " + std::string(nome) + "=" + escrito(valor);
        conta_a_falha(Especie::altera, [&] { real_->define(nome, valor); });
    }
    void actualiza() override {
        const std::string campos = std::exchange(campos_, altera);
        com_ouvinte(ouvinte_, {Especie::altera, sql_, {}, [&campos] { return std::string(campos); }},
                    [this] { real_->actualiza(); });
    }

  private:
    // Of what is too small and too frequent to be told of when it succeeds.
    template <typename Trabalho>
    std::invoke_result_t<Trabalho> conta_a_falha(Especie especie, Trabalho trabalho) {
        try {
            return trabalho();
        } catch (const std::exception& falha) {
            ouvinte_.depois(a_que_falhou({especie, sql_}, falha), {{}, &falha});
            throw;
        }
    }

    static constexpr const char* altera = "  altera";

    std::unique_ptr<ConjuntoRegistos> real_;
    std::string sql_;
    Ouvinte& ouvinte_;
    std::string campos_ = altera; // put since the row was begun
};

Operacao instrucao(Especie especie, const char* verbo, const std::string& sql) {
    return {especie, sql, {}, [verbo, &sql] { return verbo + sql; }};
}

Operacao passo(Especie especie, const char* verbo) {
    return {especie, verbo, {}, [verbo] { return std::string(verbo); }};
}

} // namespace

Operacao a_que_falhou(const Operacao& esta, const std::exception& falha) {
    using Genero = startup::FalhaAdiada::Genero;
    const auto* adiada = dynamic_cast<const startup::FalhaAdiada*>(&falha);
    if (adiada == nullptr) return esta;
    switch (adiada->genero()) {
    case Genero::pergunta:
        return instrucao(Especie::consulta, "CONSULTA ", adiada->instrucao());
    case Genero::instrucao:
        return instrucao(Especie::executa, "EXECUTA ", adiada->instrucao());
    case Genero::linha:
        break;
    }
    return instrucao(Especie::altera, "  altera ", adiada->instrucao());
}

bool SessaoBDOuvida::Abre(const std::string& ligacao) {
    ouvinte_.segredo(startup::ConstrutorLigacao::le(ligacao)["Pwd"]);
    return com_ouvinte(ouvinte_, passo(Especie::abre, "LIGA"), [&] { return real_->Abre(ligacao); });
}

std::unique_ptr<ConjuntoRegistos> SessaoBDOuvida::Consulta(const std::string& sql) {
    return com_ouvinte(ouvinte_, instrucao(Especie::consulta, "CONSULTA ", sql),
                       [&]() -> std::unique_ptr<ConjuntoRegistos> {
                           return std::make_unique<ConjuntoOuvido>(real_->Consulta(sql), sql, ouvinte_);
                       });
}

std::unique_ptr<ConjuntoRegistos> SessaoBDOuvida::AbreActualizavel(const std::string& sql) {
    return com_ouvinte(ouvinte_, instrucao(Especie::abre_actualizavel, "ABRE ", sql),
                       [&]() -> std::unique_ptr<ConjuntoRegistos> {
                           return std::make_unique<ConjuntoOuvido>(real_->AbreActualizavel(sql), sql,
                                                                   ouvinte_);
                       });
}

void SessaoBDOuvida::Executa(const std::string& sql) {
    com_ouvinte(ouvinte_, instrucao(Especie::executa, "EXECUTA ", sql), [&] { real_->Executa(sql); });
}

void SessaoBDOuvida::IniciaTransaccao() {
    com_ouvinte(ouvinte_, passo(Especie::inicia, "INICIA"), [this] { real_->IniciaTransaccao(); });
}

void SessaoBDOuvida::Tranca() {
    com_ouvinte(ouvinte_, passo(Especie::tranca, "TRANCA"), [this] { real_->Tranca(); });
}

void SessaoBDOuvida::ConfirmaTransaccao() {
    com_ouvinte(ouvinte_, passo(Especie::confirma, "CONFIRMA"), [this] { real_->ConfirmaTransaccao(); });
}

void SessaoBDOuvida::AnulaTransaccao() {
    com_ouvinte(ouvinte_, passo(Especie::desfaz, "DESFAZ"), [this] { real_->AnulaTransaccao(); });
}

bool SessaoBDOuvida::EmTransaccao() {
    return com_ouvinte(ouvinte_, passo(Especie::em_transaccao, "EM TRANSACCAO"),
                       [this] { return real_->EmTransaccao(); });
}

void SessaoBDOuvida::EmPasso(const std::vector<std::string>& perguntas,
                             const std::function<void()>& trabalho) {
    bool do_trabalho = false;
    try {
        real_->EmPasso(perguntas, [&] {
            do_trabalho = true;
            trabalho();
            do_trabalho = false;
        });
    } catch (const startup::FalhaAdiada& falha) {
        if (!do_trabalho) ouvinte_.depois(a_que_falhou({}, falha), {{}, &falha});
        throw;
    }
}

std::size_t SessaoBDOuvida::Comprimento(const std::string& tabela, const std::string& coluna) {
    return com_ouvinte(ouvinte_, instrucao(Especie::comprimento, "COMPRIMENTO ", tabela),
                       [&] { return real_->Comprimento(tabela, coluna); });
}

} // namespace orvex::platform::operacoes
