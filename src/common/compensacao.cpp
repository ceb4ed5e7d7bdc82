// One confirmation between the ledger and the ERP, and the way a failure ends.
#include "common/ecra.h"

#include "base/descricao.h"

#include <algorithm>

namespace orvex::common {

using startup::ChaveDocumento;

namespace {

std::string lista_de(const std::vector<ChaveDocumento>& documentos) {
    std::string texto;
    for (const ChaveDocumento& chave : documentos)
        texto += "\n\r'" + chave.texto() + " '";
    return texto;
}

// Tells by its own text what happened, whatever an earlier failure left in UltimoErro.
bool fala_por_si(const std::exception& falha) {
    return dynamic_cast<const base::FalhaGuarda*>(&falha) != nullptr ||
           dynamic_cast<const startup::ConfirmacaoDesconhecida*>(&falha) != nullptr;
}

} // namespace

void Ecra::regista_falha(const std::function<void()>& procedimento) {
    try {
        procedimento();
    } catch (const base::FalhaGuarda&) {
        throw;
    } catch (const std::exception& falha) {
        UltimoErro = base::descricao(falha);
        throw;
    }
}

void Ecra::regista_falha_numerada(const std::function<void()>& procedimento) {
    constexpr std::int64_t primeiro_numero = -2147221504;
    try {
        procedimento();
    } catch (const base::FalhaGuarda&) {
        throw;
    } catch (const std::exception& falha) {
        const auto* numerada = dynamic_cast<const base::Falha*>(&falha);
        const std::int64_t numero = numerada != nullptr ? numerada->numero() : 0;
        UltimoErro = std::to_string(numero - primeiro_numero) + " - " + base::descricao(falha);
        throw;
    }
}

std::string Ecra::erro_a_mostrar(const std::exception& falha) const {
    return fala_por_si(falha) || UltimoErro.empty() ? base::descricao(falha) : UltimoErro;
}

void Ecra::completa_erro(const std::exception& falha) {
    if (UltimoErro.empty() && !fala_por_si(falha)) UltimoErro = base::descricao(falha);
}

bool Ecra::CriaNoERP(const ChaveDocumento& pedida, const std::string& conteudo,
                     const std::function<bool()>& cria) {
    pedido_sem_resposta_ = pedida.TipoDocumento + "/" + std::to_string(pedida.Serie) + " de " +
                           std::to_string(pedida.Ano) + " (" + conteudo + ")";
    const std::size_t antes = DocsCriados.size();
    bool criado = false;
    try {
        criado = cria();
    } catch (const std::exception&) {
        if (DocsCriados.size() > antes) pedido_sem_resposta_.clear(); // its key names it
        throw;
    }
    if (!criado) DocsCriados.resize(antes);
    pedido_sem_resposta_.clear();
    return criado;
}

ChaveDocumento Ecra::CriaDocStock(const startup::PedidoDocStock& pedido) {
    const auto data = base::DataHora::le(pedido.data);
    const ChaveDocumento pedida{static_cast<std::int16_t>(data ? data->ano : 0), pedido.tipo_documento,
                                pedido.serie};
    const base::Moeda quantidade = base::Moeda::de_real(pedido.quantidades.at(1));
    ChaveDocumento criada;
    startup::ResultadoERP resultado;
    const bool criado =
        CriaNoERP(pedida, pedido.artigos.at(1) + " " + formato().texto(quantidade) + " t", [&] {
            criada = gERP.CriaDocStock(pedido);
            if (criada.NossoNoDocumento != 0) DocsCriados.push_back(criada);
            resultado = gERP.ResultadoUltimo();
            return resultado.sucesso;
        });
    if (!criado) throw base::Falha(resultado.mensagem, erp_recusou);
    return criada;
}

startup::ResultadoERP Ecra::AnulaNoERP(const ChaveDocumento& chave,
                                       const std::function<startup::ResultadoERP()>& anula) {
    anulacoes_.push_back({chave});
    startup::ResultadoERP resultado = anula();
    if (resultado.sucesso)
        anulacoes_.back().certa = true;
    else
        anulacoes_.pop_back();
    return resultado;
}

void Ecra::ConfirmaGravacao() {
    BD.ConfirmaTransaccao();
    esquece_documentos();
}

void Ecra::esquece_documentos() {
    DocsCriados.clear();
    PorAnular.clear();
    anulacoes_.clear();
    pedido_sem_resposta_.clear();
}

// Asking may fail where the rollback does not. What neither could end, the next transaction's beginning ends.
void Ecra::desfaz_transaccao() {
    try {
        if (!BD.EmTransaccao()) return;
    } catch (const std::exception&) {
    }
    try {
        BD.AnulaTransaccao();
    } catch (const std::exception&) {
    }
}

void Ecra::compensa(const std::exception& falha, const std::string& texto_erro) {
    const bool por_saber = dynamic_cast<const startup::ConfirmacaoDesconhecida*>(&falha) != nullptr;
    desfaz_transaccao();
    Avisa("", "Situação Anómala\n\rErro: " + texto_erro, 2);
    if (por_saber) {
        avisa_por_saber();
    } else {
        std::vector<ChaveDocumento> por_anular;
        for (const ChaveDocumento& chave : DocsCriados) {
            bool anulado = false;
            try {
                anulado = gERP.AnulaDocumento(1, chave).sucesso;
            } catch (const std::exception&) {
            }
            if (!anulado) por_anular.push_back(chave);
        }
        avisa_por_anular(por_anular);
    }
    avisa_pedido_sem_resposta();
    avisa_anulacoes();
    esquece_documentos();
}

void Ecra::avisa_por_anular(const std::vector<ChaveDocumento>& documentos) {
    if (documentos.empty()) return;
    Avisa("", "Os documentos seguintes devem ser anulados manualmente - " + lista_de(documentos), 2);
}

std::string Ecra::sinal_de_confirmada() const { return "o documento está nos movimentos da ORVEX"; }

void Ecra::avisa_por_saber() {
    // What the ERP has cancelled is no longer in force, whatever became of the ledger.
    std::vector<ChaveDocumento> em_vigor = DocsCriados;
    std::erase_if(em_vigor, [this](const ChaveDocumento& chave) {
        return std::any_of(anulacoes_.begin(), anulacoes_.end(),
                           [&](const Anulacao& esta) { return esta.certa && esta.chave == chave; });
    });
    const std::string pergunta = "Antes de repetir, veja se " + sinal_de_confirmada();
    if (!em_vigor.empty())
        Avisa("",
              "Os documentos seguintes continuam em vigor no ERP - " + lista_de(em_vigor) + "\n\r" +
                  pergunta + ": se sim, está tudo feito; se não, anule-os no ERP.",
              2);
    else if (anulacoes_.empty())
        Avisa("", pergunta + ": se sim, está tudo feito; se não, nada ficou.", 2);
    if (!PorAnular.empty())
        Avisa("",
              "Se sim, os documentos seguintes, que o ERP não anulou, devem ser anulados manualmente - " +
                  lista_de(PorAnular),
              2);
}

void Ecra::avisa_pedido_sem_resposta() {
    if (pedido_sem_resposta_.empty()) return;
    Avisa("",
          "Não se sabe se o ERP criou o documento " + pedido_sem_resposta_ +
              ". Procure-o no ERP e, se existir, anule-o.",
          2);
}

void Ecra::avisa_anulacoes() {
    for (const auto& [chave, certa] : anulacoes_)
        Avisa("",
              "O documento " + chave.texto() +
                  (certa ? " ficou anulado no ERP, mas pode continuar nos movimentos da ORVEX."
                         : " pode ter ficado anulado no ERP, e continua nos movimentos da ORVEX: veja o seu "
                           "estado no ERP."),
              2);
}

} // namespace orvex::common
