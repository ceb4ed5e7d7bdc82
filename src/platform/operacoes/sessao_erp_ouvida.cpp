#include "platform/operacoes/sessao_erp_ouvida.h"

#include "platform/operacoes/escrito.h"
#include "startup/definicoes.h"

#include <utility>

namespace orvex::platform::operacoes {
namespace {

using startup::ChaveDocumento;
using startup::ReferenciaERP;
using startup::ResultadoERP;
using startup::ValorERP;
using Especie = Operacao::Especie;

class ObjectoOuvido : public startup::ObjectoERP {
  public:
    ObjectoOuvido(ReferenciaERP real, std::string nome, Ouvinte& ouvinte)
        : real_(std::move(real)), nome_(std::move(nome)), ouvinte_(ouvinte) {}

    ValorERP obtem(std::string_view membro) override {
        const Operacao esta{Especie::obtem, nome_, membro, [&membro] { return std::string(membro); }};
        return veste(com_ouvinte(ouvinte_, esta, [&] { return real_->obtem(membro); }), membro);
    }
    void poe(std::string_view membro, const ValorERP& valor) override {
        const Operacao esta{Especie::poe, nome_, membro,
                            [&] { return std::string(membro) + "=" + escrito_de(valor); }};
        com_ouvinte(ouvinte_, esta, [&] { real_->poe(membro, real_de(valor)); });
    }

    // The ERP knows its own objects only.
    static ReferenciaERP real_de(const ReferenciaERP& objecto) {
        const auto* ouvido = dynamic_cast<const ObjectoOuvido*>(objecto.get());
        return ouvido != nullptr ? ouvido->real_ : objecto;
    }

  private:
    ValorERP invoca(std::string_view membro, Argumentos& argumentos) override {
        Argumentos reais;
        for (const ValorERP& argumento : argumentos)
            reais.push_back(real_de(argumento));
        const Operacao esta{Especie::chama, nome_, membro, [&] { return chamada(membro, argumentos); }};
        ValorERP valor = com_ouvinte(ouvinte_, esta, [&] { return real_->chama(membro, reais); });
        for (std::size_t i = 0; i < reais.size(); ++i)
            if (!reais[i].objecto || reais[i].objecto != real_de(argumentos[i].objecto))
                argumentos[i] = veste(std::move(reais[i]), membro);
        return veste(std::move(valor), membro);
    }

    std::string chamada(std::string_view membro, const Argumentos& argumentos) const {
        std::string escritos;
        for (const ValorERP& argumento : argumentos)
            escritos += (escritos.empty() ? "" : ", ") + escrito_de(argumento);
        return nome_ + "." + std::string(membro) + "(" + escritos + ")";
    }
    static std::string escrito_de(const ValorERP& valor) {
        if (!valor.objecto) return escrito(valor.valor);
        const auto* ouvido = dynamic_cast<const ObjectoOuvido*>(valor.objecto.get());
        return ouvido != nullptr ? ouvido->nome_ : "objecto";
    }
    static ValorERP real_de(const ValorERP& valor) {
        return valor.objecto ? ValorERP(real_de(valor.objecto)) : valor;
    }
    ValorERP veste(ValorERP valor, std::string_view nome) {
        if (valor.objecto)
            valor.objecto = std::make_shared<ObjectoOuvido>(valor.objecto, std::string(nome), ouvinte_);
        return valor;
    }

    ReferenciaERP real_;
    std::string nome_;
    Ouvinte& ouvinte_;
};

ReferenciaERP ouvido(ReferenciaERP real, const char* nome, Ouvinte& ouvinte) {
    if (real == nullptr) return nullptr;
    return std::make_shared<ObjectoOuvido>(std::move(real), nome, ouvinte);
}

std::string texto_de(const startup::PedidoDocStock& p) {
    return "STOCK " + escritos(p.tipo_terceiro, p.area, p.tipo_documento, p.sector, p.serie, p.destino,
                               p.processo, p.texto_8, p.data, p.texto_10, p.armazem, p.inteiro_12, p.texto_13,
                               p.artigos, p.textos_15, p.quantidades, p.precos, p.textos_18);
}

} // namespace

bool SessaoERPOuvida::Liga(const std::array<std::string, 5>& valores) {
    ouvinte_.segredo(valores[startup::DefinicoesERP::palavra_passe]);
    const Operacao esta{Especie::liga, "LIGA AO ERP", {}, [] { return std::string("LIGA AO ERP"); }};
    return com_ouvinte(ouvinte_, esta, [&] { return real_->Liga(valores); });
}

ReferenciaERP SessaoERPOuvida::CriaObjecto(const std::string& classe) {
    const Operacao esta{Especie::cria_objecto, classe, {}, [&classe] { return "CRIA " + classe; }};
    return ouvido(com_ouvinte(ouvinte_, esta, [&] { return real_->CriaObjecto(classe); }),
                  classe.ends_with("Comercial") ? "doc" : "lin", ouvinte_);
}

void SessaoERPOuvida::PreparaDocStock(bool sim) {
    const Operacao esta{Especie::prepara_stock, "PREPARA", {}, [sim] { return "PREPARA " + escrito(sim); }};
    com_ouvinte(ouvinte_, esta, [&] { real_->PreparaDocStock(sim); });
}

ChaveDocumento SessaoERPOuvida::CriaDocStock(const startup::PedidoDocStock& pedido) {
    const Operacao esta{Especie::cria_stock, "STOCK", {}, [&pedido] { return texto_de(pedido); }};
    return com_ouvinte(ouvinte_, esta, [&] { return real_->CriaDocStock(pedido); });
}

std::int16_t SessaoERPOuvida::SubmeteDocumento(std::int16_t especie, const ReferenciaERP& documento) {
    const Operacao esta{
        Especie::submete, "SUBMETE", {}, [especie] { return "SUBMETE " + std::to_string(especie); }};
    return com_ouvinte(ouvinte_, esta,
                       [&] { return real_->SubmeteDocumento(especie, ObjectoOuvido::real_de(documento)); });
}

ReferenciaERP SessaoERPOuvida::DocumentoSubmetido() {
    const Operacao esta{Especie::submetido, "SUBMETIDO", {}, [] { return std::string("SUBMETIDO"); }};
    return ouvido(com_ouvinte(ouvinte_, esta, [&] { return real_->DocumentoSubmetido(); }), "submetido",
                  ouvinte_);
}

ResultadoERP SessaoERPOuvida::AnulaDocumento(std::int16_t um, const ChaveDocumento& chave) {
    const Operacao esta{Especie::anula, "ANULA", {}, [um, &chave] {
                            return "ANULA " + std::to_string(um) + " " + chave.texto();
                        }};
    return com_ouvinte(ouvinte_, esta, [&] { return real_->AnulaDocumento(um, chave); });
}

ResultadoERP SessaoERPOuvida::ResultadoUltimo() {
    const Operacao esta{Especie::resultado, "RESULTADO", {}, [] { return std::string("RESULTADO"); }};
    return com_ouvinte(ouvinte_, esta, [&] { return real_->ResultadoUltimo(); });
}

} // namespace orvex::platform::operacoes
