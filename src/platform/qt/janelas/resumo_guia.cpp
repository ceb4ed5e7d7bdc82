#include "platform/qt/janelas/resumo_guia.h"

#include "base/descricao.h"
#include "platform/qt/aplicacao.h"
#include "platform/qt/grelhas/vista_grelha.h"
#include "platform/qt/pecas.h"
#include "platform/qt/textos.h"

namespace orvex::platform::qt {
namespace {

using delivery::Situacao;

const QColor cor_anulada{0xA8, 0x1E, 0x1E};
const QColor cor_devolvida{0x4A, 0x52, 0x63};

QLabel* novos_totais(const char* nome) {
    auto* totais = new EtiquetaElidida;
    totais->setObjectName(nome);
    totais->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return totais;
}

QColor fundo(Situacao situacao) {
    switch (situacao) {
    case Situacao::devolvida_em_parte:
        return cor_aviso;
    case Situacao::devolvida:
        return cor_devolvida;
    case Situacao::anulada:
        return cor_anulada;
    case Situacao::emitida:
        break;
    }
    return cor_titulo;
}

QString com_linhas(const delivery::Totais& totais, const base::FormatoRegional& formato) {
    return totais.linhas == 0 ? QString() : qs(totais.texto(formato));
}

common::ColunaGrelha coluna(const char* chave, const char* legenda, common::TipoCelula tipo, int largura) {
    return {.chave = chave,
            .legenda = legenda,
            .tipo = tipo,
            .largura = largura,
            .recebe_foco = false,
            .formato_peso = tipo == common::TipoCelula::decimal};
}

} // namespace

ResumoDaGuia::ResumoDaGuia(delivery::GuiasRemessa& ecra)
    : ecra_(ecra), marca_(new QLabel), totais_abertas_(novos_totais("totais_abertas")),
      totais_guia_(novos_totais("totais_guia")), totais_devolucao_(novos_totais("totais_devolucao")) {
    marca_->setObjectName("situacao");
    marca_->setTextFormat(Qt::PlainText);
    marca_->setContentsMargins(8, 3, 8, 3);
    negrito(*totais_devolucao_);
}

void ResumoDaGuia::junta_colunas(VistaGrelha& final) {
    final.acrescenta_a_legenda("Transf", "Volta");
    const auto peso = [this](const char* chave) {
        return [this, chave](int linha) {
            if (ecra_.Final.valor(linha, "Artigo").vazio()) return std::string();
            return ecra_.formato().peso_inteiro(ecra_.Final.moeda(linha, chave));
        };
    };
    final.junta({coluna("janela.Qtd", "P.Liq.", common::TipoCelula::decimal, 1150), peso("Qtd")});
    final.junta(
        {coluna("janela.PesoBruto", "Peso Bruto", common::TipoCelula::decimal, 1150), peso("PesoBruto")});
    final.junta({coluna("janela.Volta", "Já devolvida", common::TipoCelula::texto, 2500),
                 [this](int linha) { return volta_da_linha(linha); }});
}

std::string ResumoDaGuia::volta_da_linha(int linha) const {
    if (!guia_ || ecra_.Final.valor(linha, "Artigo").vazio()) return {};
    const auto volta = guia_->devolvidas.find(ecra_.Final.valor(linha, "NumLinha").inteiro());
    return volta == guia_->devolvidas.end() ? "" : "devolvida em " + volta->second;
}

void ResumoDaGuia::mostra(bool pode_perguntar) {
    if (const int carregada = ecra_.carregamento(); carregada != carregada_) {
        guia_.reset();
        falha_.clear();
        if (carregada == 0 || pode_perguntar) carregada_ = carregada;
        if (carregada != 0 && pode_perguntar) pergunta();
    }
    mostra_marca();
    mostra_totais();
}

// What cannot be read is shown as such: it does not mean that nothing came back.
void ResumoDaGuia::pergunta() {
    try {
        ecra_.sem_outros([this] {
            no_ecra_ = no_ecra();
            guia_ = ecra_.LeResumo();
        });
    } catch (const std::exception& falha) {
        falha_ = base::descricao(falha);
    }
}

// What says which note it is, as it stands there: another code may be typed over it.
std::string ResumoDaGuia::no_ecra() const {
    return std::to_string(ecra_.DTPicker1.Value.ano) + "/" + ecra_.campo(delivery::campos::numero).Text +
           "/" + ecra_.campo(delivery::campos::cliente).Text;
}

void ResumoDaGuia::mostra_marca() {
    QFont letra = marca_->font();
    letra.setBold(guia_.has_value());
    marca_->setFont(letra);
    marca_->setToolTip(qs(falha_));
    marca_->setVisible((guia_ || !falha_.empty()) && no_ecra_ == no_ecra());
    if (!guia_) {
        marca_->setText("Não foi possível saber se a guia foi devolvida ou anulada.");
        return pinta_fundo(*marca_, cor_etiquetas, Qt::black);
    }
    const Situacao situacao = guia_->situacao;
    marca_->setText(texto(situacao));
    pinta_fundo(*marca_, fundo(situacao), situacao == Situacao::devolvida_em_parte ? Qt::black : Qt::white);
}

void ResumoDaGuia::mostra_nome(EtiquetaElidida& nome) const {
    if (guia_ && nome.text().isEmpty() && no_ecra_ == no_ecra()) nome.setText(qs(guia_->NomeCliente));
}

void ResumoDaGuia::mostra_totais() {
    const base::FormatoRegional& formato = ecra_.formato();
    if (ecra_.Detalhe.redesenha && versao_abertas_ != ecra_.Detalhe.versao()) { // which may be long
        versao_abertas_ = ecra_.Detalhe.versao();
        totais_abertas_->setText(com_linhas(delivery::totais(ecra_.Detalhe, "Quant", "PesoBruto"), formato));
    }
    totais_guia_->setText(com_linhas(delivery::totais(ecra_.Gr, "Quant", "PesoBruto"), formato));
    if (!ecra_.Frame3.Visible || ecra_.Final.colunas().empty()) return;
    const auto volta = [this](int linha) {
        const base::Variante& visto = ecra_.Final.valor(linha, "Transf");
        return !visto.vazio() && visto.logico();
    };
    const common::Combo& armazem = ecra_.cb1(delivery::combos::armazem);
    QString texto = "Volta: " + qs(delivery::totais(ecra_.Final, "Qtd", "PesoBruto", volta).texto(formato));
    if (const auto qual = static_cast<std::size_t>(armazem.ListIndex); qual < armazem.itens.size())
        texto += "   para: " + qs(armazem.itens[qual]);
    totais_devolucao_->setText(texto);
}

} // namespace orvex::platform::qt
