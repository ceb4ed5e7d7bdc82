#include "platform/erp/sessao_erp_embebida.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "base/texto.h"
#include "platform/erp/objectos.h"
#include "platform/sqlite/empresa.h"
#include "startup/definicoes.h"
#include "startup/ficheiro.h"

#include <SQLiteCpp/Exception.h>

#include <filesystem>

namespace orvex::platform::erp {
namespace {

using base::Falha;
using startup::ChaveDocumento;
using startup::DefinicoesERP;
using startup::PedidoDocStock;
using startup::ReferenciaERP;
using startup::ResultadoERP;

// What Empresa gives: who is logged in, and where.
class ObjectoEmpresa : public startup::ObjectoERP {
  public:
    ObjectoEmpresa(std::string codigo, std::string nome)
        : codigo_(std::move(codigo)), nome_(std::move(nome)) {}

    startup::ValorERP obtem(std::string_view membro) override {
        if (base::mesmo_nome(membro, "Codigo")) return codigo_;
        if (base::mesmo_nome(membro, "Nome")) return nome_;
        desconhecido(membro);
    }
    void poe(std::string_view membro, const startup::ValorERP&) override { desconhecido(membro); }

  private:
    startup::ValorERP invoca(std::string_view membro, Argumentos&) override { return obtem(membro); }
    [[noreturn]] static void desconhecido(std::string_view membro) {
        throw Falha("O ERP não conhece o membro «" + std::string(membro) + "» da empresa.");
    }

    std::string codigo_;
    std::string nome_;
};

std::unique_ptr<BaseErp> abre(const std::filesystem::path& pasta, const sqlite::ComoEspera& como) {
    const auto ficheiro = pasta / sqlite::ficheiro_erp;
    if (const std::string defeito = startup::defeito_do_ficheiro(ficheiro); !defeito.empty())
        throw Falha("Não existe uma empresa na pasta «" + base::texto_de(pasta) +
                    "»: " + sqlite::ficheiro_erp + " " + defeito + ".");
    return std::make_unique<BaseErp>(
        sqlite::abre_base(ficheiro, SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX, como.espera_ms), como);
}

bool utilizador_aceite(BaseErp& base, const std::string& utilizador, const std::string& palavra_passe) {
    Comando procura(base, "select PalavraPasse from Utilizadores where Utilizador = ?");
    return procura.com(utilizador).linha() && procura.texto(0) == palavra_passe;
}

template <typename Tipo>
Tipo elemento(const std::vector<Tipo>& vector, std::size_t posicao) {
    return posicao < vector.size() ? vector[posicao] : Tipo{};
}

// The stock document asked for. A transfer goes from `armazem` to `destino`; elsewhere `destino` means
// nothing.
Documento documento_de_stock(const PedidoDocStock& pedido, bool transferencia) {
    Documento documento;
    Registo& cab = documento.cabecalho;
    cab.poe("Data", pedido.data);
    if (!cab.obtem("Data").nulo()) cab.poe("Ano", cab.obtem("Data").data().ano);
    cab.poe("AreaGestao", pedido.area);
    cab.poe("Sector", pedido.sector);
    cab.poe("Serie", pedido.serie);
    cab.poe("TipoDocumento", pedido.tipo_documento);
    cab.poe("TipoTerceiro", pedido.tipo_terceiro);
    cab.poe("Processo", pedido.processo);
    for (std::size_t i = 1; i < pedido.artigos.size(); ++i) {
        documento.linhas.push_back(nova_linha());
        Registo& linha = *documento.linhas.back();
        linha.poe("TipoDeLinha", 1);
        linha.poe("Artigo", pedido.artigos[i]);
        linha.poe("Armazem", pedido.armazem);
        if (transferencia) linha.poe("ArmazemDestino", pedido.destino);
        linha.poe("Quantidade", elemento(pedido.quantidades, i));
        linha.poe("QuantidadeOrigem", elemento(pedido.quantidades, i));
        linha.poe("PrecoUnitario", elemento(pedido.precos, i));
        linha.poe("DataMvStock", pedido.data);
        linha.poe("Sector", pedido.sector);
    }
    return documento;
}

} // namespace

SessaoERPEmbebida::SessaoERPEmbebida() : SessaoERPEmbebida(sqlite::espera_normal_ms) {}

SessaoERPEmbebida::SessaoERPEmbebida(int espera_ms)
    : espera_ms_(espera_ms), estado_(std::make_shared<Estado>()) {}

SessaoERPEmbebida::SessaoERPEmbebida(espera::Espera a_vista) : SessaoERPEmbebida() {
    a_vista_ = std::move(a_vista);
}

bool SessaoERPEmbebida::Liga(const std::array<std::string, 5>& valores) {
    Desliga();
    if (valores[DefinicoesERP::base].empty()) throw Falha("Falta a pasta da empresa do ERP.");
    try {
        auto base = abre(base::caminho_de(valores[DefinicoesERP::base]),
                         {a_vista_, espera_ms_, espera::Motivo::erp, espera::Motivo::erp});
        Comando empresa(*base, "select Codigo, Nome from Empresa where Codigo = ?");
        const bool aceite = empresa.com(valores[DefinicoesERP::empresa]).linha() &&
                            utilizador_aceite(*base, valores[DefinicoesERP::utilizador],
                                              valores[DefinicoesERP::palavra_passe]);
        estado_->ultimo = aceite ? ResultadoERP{true, {}} : ResultadoERP{false, "O ERP recusou a entrada."};
        if (!aceite) return false;
        empresa_ = std::make_shared<ObjectoEmpresa>(empresa.texto(0), empresa.texto(1));
        estado_->base = std::move(base);
        return true;
    } catch (const SQLite::Exception& falha) {
        throw Falha(texto_da_falha(falha) + " (pasta «" + valores[DefinicoesERP::base] + "»)");
    }
}

ReferenciaERP SessaoERPEmbebida::CriaObjecto(const std::string& classe) {
    estado_->aberta();
    if (classe == "SageApiNextPlus.DocumentoComercial") return std::make_shared<DocumentoComercial>(estado_);
    if (classe == "SageApiNextPlus.DocumentosGcLin") return std::make_shared<ObjectoRegisto>(nova_linha());
    throw Falha("O ERP não conhece a classe «" + classe + "».");
}

ChaveDocumento SessaoERPEmbebida::CriaDocStock(const PedidoDocStock& pedido) {
    ChaveDocumento chave;
    estado_->executa([&] {
        BaseErp& base = estado_->aberta();
        const MovimentoStock movimento = movimento_do_tipo(base, pedido.tipo_documento);
        if (movimento == MovimentoStock::nenhum)
            throw Recusa("O tipo de documento «" + pedido.tipo_documento + "» não movimenta stocks.");
        Documento documento = documento_de_stock(pedido, movimento == MovimentoStock::transferencia);
        for (const auto& linha : documento.linhas)
            sugere_do_artigo(base, *linha);
        grava(base, documento);
        chave = documento.chave();
    });
    return estado_->ultimo.sucesso ? chave : ChaveDocumento{};
}

std::int16_t SessaoERPEmbebida::SubmeteDocumento(std::int16_t, const ReferenciaERP& documento) {
    submetido_.reset();
    auto* comercial = dynamic_cast<DocumentoComercial*>(documento.get());
    if (comercial == nullptr) throw Falha("O objecto submetido ao ERP não é um documento comercial.");
    if (!comercial->submete().sucesso) return -1;
    submetido_ = documento;
    return 0;
}

ResultadoERP SessaoERPEmbebida::AnulaDocumento(std::int16_t, const ChaveDocumento& chave) {
    return estado_->executa([&] { anula(estado_->aberta(), chave); });
}

ResultadoERP SessaoERPEmbebida::ResultadoUltimo() { return estado_->ultimo; }

void SessaoERPEmbebida::Desliga() {
    estado_->base.reset();
    empresa_.reset();
    submetido_.reset();
}

} // namespace orvex::platform::erp
