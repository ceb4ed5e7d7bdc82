// What records everything the program asks of the database and of the ERP, to the letter and in order, and
// fails at any step asked for.
//
// A step is a statement, a row update, the begin, the lock or the commit of a transaction, the creation of an
// ERP object, a member put, got or called, a submission, a cancellation. Of a step that fails nothing was
// done (a refused commit leaves the transaction open), or all of it was, and only the answer is lost.
#pragma once

#include "platform/erp/sessao_erp_embebida.h"
#include "startup/sessao_bd.h"
#include "tests/servidor/empresa_no_servidor.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace orvex::testes {

struct Diario {
    enum class Maneira { lanca, recusa, faz_e_lanca }; // of failing; an ERP operation can also refuse
    // What else fails, once the step has failed.
    enum class Depois { nada, anulacao_recusada, tudo_lanca };

    std::vector<std::string> linhas;
    int passos = 0;
    int falha_no = 0; // the step that fails, from 1; 0 is none
    Maneira maneira = Maneira::lanca;
    Depois depois = Depois::nada;
    bool falhou = false;
    std::function<void(const std::string& linha)> espia; // sees each statement or operation before it runs

    bool falha() { return ++passos == falha_no && (falhou = true); }
    bool falhou_agora() const { return passos == falha_no; }
    [[noreturn]] static void lanca() { throw base::Falha("Falha provocada."); }
    void passo() {
        if (falha()) lanca();
    }
    template <typename Trabalho>
    auto passo(const std::string& linha, Trabalho trabalho) {
        if (espia) espia(linha);
        if (falha()) {
            if (maneira == Maneira::faz_e_lanca) trabalho();
            lanca();
        }
        linhas.push_back(linha);
        return trabalho();
    }
    void passo(const std::string& linha) {
        passo(linha, [] {});
    }
    // Values put one after the other into one object share a line.
    void passo_de(const std::string& objecto, const std::string& valor) {
        passo();
        if (linhas.empty() || !linhas.back().starts_with(objecto + " ")) linhas.push_back(objecto);
        linhas.back() += " " + valor;
    }
    bool tambem(Depois qual) const { return falhou && depois == qual; }

    std::string texto() const {
        std::string tudo = "\n";
        for (const std::string& linha : linhas)
            tudo += linha + "\n";
        return tudo;
    }
    void recomeca() { *this = Diario{}; }
};

// Texts in quotes, so that '1' and 1 differ.
inline std::string escrito(const base::Variante& valor) {
    if (valor.nulo()) return "null";
    if (const auto* logico = std::get_if<bool>(&valor.valor())) return *logico ? "True" : "False";
    return std::holds_alternative<std::string>(valor.valor()) ? "'" + valor.texto() + "'" : valor.texto();
}

template <typename Valor>
std::string escrito(const std::vector<Valor>& valores) {
    std::string todos;
    for (const Valor& valor : valores)
        todos += (todos.empty() ? "" : " ") + escrito(base::Variante(valor));
    return "[" + todos + "]";
}

template <typename... Valores>
std::string escritos(const Valores&... valores) {
    std::string todos;
    ((todos += (todos.empty() ? "" : ", ") + escrito(valores)), ...);
    return todos;
}

class ConjuntoGravado : public startup::ConjuntoRegistos {
  public:
    ConjuntoGravado(std::unique_ptr<startup::ConjuntoRegistos> real, Diario& diario)
        : real_(std::move(real)), diario_(diario) {}

    bool fim() override { return real_->fim(); }
    void move_seguinte() override { real_->move_seguinte(); }
    std::int64_t contagem() override { return real_->contagem(); }
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
        real_->define(nome, valor);
    }
    void actualiza() override {
        diario_.passo(std::exchange(campos_, "  altera"), [this] { real_->actualiza(); });
    }

  private:
    std::unique_ptr<startup::ConjuntoRegistos> real_;
    Diario& diario_;
    std::string campos_ = "  altera";
};

class ObjectoGravado : public startup::ObjectoERP {
  public:
    ObjectoGravado(startup::ReferenciaERP real, std::string nome, Diario& diario)
        : real_(std::move(real)), nome_(std::move(nome)), diario_(diario) {}

    startup::ValorERP obtem(std::string_view membro) override {
        diario_.passo();
        return veste(real_->obtem(membro), membro);
    }
    void poe(std::string_view membro, const startup::ValorERP& valor) override {
        diario_.passo_de(nome_, std::string(membro) + "=" + escrito_de(valor));
        real_->poe(membro, real_de(valor));
    }

    const startup::ReferenciaERP& real() const { return real_; }
    static ObjectoGravado& gravado(const startup::ReferenciaERP& o) {
        return dynamic_cast<ObjectoGravado&>(*o);
    }

  private:
    startup::ValorERP invoca(std::string_view membro, Argumentos& argumentos) override {
        if (recusado_ && membro == "UltimaMensagem") return "O ERP recusou.";
        const bool falha = diario_.falha();
        recusado_ = falha && membro == "Finalizar" && diario_.maneira == Diario::Maneira::recusa;
        if (recusado_) return -1;
        if (falha && diario_.maneira != Diario::Maneira::faz_e_lanca) Diario::lanca();
        std::string escritos;
        Argumentos reais;
        for (const startup::ValorERP& argumento : argumentos) {
            escritos += (escritos.empty() ? "" : ", ") + escrito_de(argumento);
            reais.push_back(real_de(argumento));
        }
        diario_.linhas.push_back(nome_ + "." + std::string(membro) + "(" + escritos + ")");
        startup::ValorERP valor = real_->chama(membro, reais);
        if (membro == "Finalizar") espelha();
        if (falha) Diario::lanca();
        for (std::size_t i = 0; i < reais.size(); ++i)
            if (!reais[i].objecto || reais[i].objecto != real_de(argumentos[i]).objecto)
                argumentos[i] = veste(std::move(reais[i]), membro);
        return veste(std::move(valor), membro);
    }
    static std::string escrito_de(const startup::ValorERP& valor) {
        return valor.objecto ? gravado(valor.objecto).nome_ : escrito(valor.valor);
    }
    static startup::ValorERP real_de(const startup::ValorERP& valor) {
        return valor.objecto ? gravado(valor.objecto).real_ : valor;
    }
    startup::ValorERP veste(startup::ValorERP valor, std::string_view nome) {
        if (valor.objecto)
            valor.objecto = std::make_shared<ObjectoGravado>(valor.objecto, std::string(nome), diario_);
        return valor;
    }

    startup::ReferenciaERP real_;
    std::string nome_;
    Diario& diario_;
    bool recusado_ = false;
};

class SessaoERPGravada : public platform::erp::SessaoERPEmbebida {
  public:
    explicit SessaoERPGravada(Diario& diario) : diario_(diario) {}

    startup::ReferenciaERP CriaObjecto(const std::string& classe) override {
        return diario_.passo("CRIA " + classe, [&] {
            return std::make_shared<ObjectoGravado>(SessaoERPEmbebida::CriaObjecto(classe),
                                                    classe.ends_with("Comercial") ? "doc" : "lin", diario_);
        });
    }
    void PreparaDocStock(bool sim) override {
        diario_.passo("PREPARA " + escrito(sim), [&] { SessaoERPEmbebida::PreparaDocStock(sim); });
    }
    startup::ChaveDocumento CriaDocStock(const startup::PedidoDocStock& p) override {
        return operacao("STOCK " + escritos(p.tipo_terceiro, p.area, p.tipo_documento, p.sector, p.serie,
                                            p.destino, p.processo, p.texto_8, p.data, p.texto_10, p.armazem,
                                            p.inteiro_12, p.texto_13, p.artigos, p.textos_15, p.quantidades,
                                            p.precos, p.textos_18),
                        startup::ChaveDocumento{}, [&] { return SessaoERPEmbebida::CriaDocStock(p); });
    }
    std::int16_t SubmeteDocumento(std::int16_t especie, const startup::ReferenciaERP& documento) override {
        return operacao("SUBMETE " + std::to_string(especie), std::int16_t{-1}, [&] {
            return SessaoERPEmbebida::SubmeteDocumento(especie, ObjectoGravado::gravado(documento).real());
        });
    }
    startup::ReferenciaERP DocumentoSubmetido() override {
        diario_.passo();
        return std::make_shared<ObjectoGravado>(SessaoERPEmbebida::DocumentoSubmetido(), "submetido",
                                                diario_);
    }
    startup::ResultadoERP AnulaDocumento(std::int16_t um, const startup::ChaveDocumento& chave) override {
        if (diario_.tambem(Diario::Depois::tudo_lanca)) Diario::lanca();
        if (diario_.tambem(Diario::Depois::anulacao_recusada)) return recusado;
        return operacao("ANULA " + std::to_string(um) + " " + chave.texto(), recusado,
                        [&] { return SessaoERPEmbebida::AnulaDocumento(um, chave); });
    }
    startup::ResultadoERP ResultadoUltimo() override {
        diario_.passo();
        return recusada_ ? recusado : SessaoERPEmbebida::ResultadoUltimo();
    }

  private:
    // What an operation gives when it is refused here, or what the real session gives.
    template <typename Resultado, typename Trabalho>
    Resultado operacao(const std::string& linha, const Resultado& quando_recusada, Trabalho trabalho) {
        const bool falha = diario_.falha();
        recusada_ = falha && diario_.maneira == Diario::Maneira::recusa;
        if (recusada_) return quando_recusada;
        if (falha && diario_.maneira == Diario::Maneira::lanca) Diario::lanca();
        diario_.linhas.push_back(linha);
        const Resultado resultado = trabalho();
        espelha();
        if (falha) Diario::lanca();
        return resultado;
    }

    inline static const startup::ResultadoERP recusado{false, "O ERP recusou."};
    Diario& diario_;
    bool recusada_ = false; // the last operation was refused here, not by the real session
};

} // namespace orvex::testes
