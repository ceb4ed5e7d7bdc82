#include "adjust/mov_stocks.h"

#include "livro/artigos.h"
#include "livro/detentores.h"

namespace orvex::adjust {

using base::Moeda;

void MovStocks::campo_Validate(int Index, bool& Cancel) {
    if (!bDigitado) return;
    if (Index == campos::artigo) Cancel = !ValidaArtigo();
    if (Index == campos::quantidade) Cancel = !ValidaQuantidade();
    // Only here: a validation that failed half-way must run again when the field is left again.
    bDigitado = false;
}

Moeda MovStocks::valor(int Index) const { return formato().le(campo(Index).Text).value_or(Moeda()); }

const std::string& MovStocks::ArmazemDe(const std::string& cliente) const {
    return cliente == CLIENTEORVEX.Codigo() ? ARMAZEMORVEX.Codigo() : ARMAZEM.Codigo();
}

bool MovStocks::recusa_artigo(const char* aviso) {
    recusa(aviso, campo(campos::artigo));
    Label2(rotulos::nome_artigo).Caption.clear();
    return false;
}

bool MovStocks::ValidaArtigo() {
    const std::string artigo = campo(campos::artigo).Text;
    if (campo(campos::artigo).Text.empty()) {
        Label2(rotulos::nome_artigo).Caption.clear();
        return true;
    }
    const ArtigoLido lido = LeArtigo(artigo);
    if (!lido.ultimo) return recusa_artigo("Artigo não existente!");
    ArmazemActual = ArmazemDe(lido.ultimo->Cliente);
    if (!lido.ficha) return recusa_artigo("Artigo não existente!");
    Label2(rotulos::nome_artigo).Caption = lido.ficha->Nome;
    campo(campos::artigo).Text = lido.ficha->Codigo; // whatever case was typed
    if (!lido.existencia) {
        Avisa("", "Este Artigo não tem Existência!", aviso_informacao);
        return false;
    }
    if (!lido.entrada) {
        Avisa("", "Este Artigo não tem Entrada!", aviso_informacao);
        return false;
    }
    campo(campos::existencia).Text = formato().texto(*lido.existencia);
    campo(campos::existencia).Enabled = false;
    Detentor = lido.entrada->Cliente;
    SetFocus(campo(campos::processo));
    return true;
}

MovStocks::ArtigoLido MovStocks::LeArtigo(const std::string& artigo) {
    ArtigoLido lido;
    BD.EmPasso({livro::perguntas::ultimo_movimento(artigo), livro::perguntas::artigo_activo(artigo),
                livro::perguntas::ultimo_movimento_outra_vez(artigo)},
               [&] {
                   lido.ultimo = livro::ultimo_movimento(BD, artigo);
                   if (lido.ultimo) lido.ficha = livro::artigo_activo(BD, artigo);
                   if (lido.ficha)
                       lido.existencia =
                           livro::existencia(BD, lido.ficha->Codigo, ArmazemDe(lido.ultimo->Cliente));
                   if (lido.existencia) lido.entrada = livro::ultimo_movimento_outra_vez(BD, artigo);
               });
    return lido;
}

std::optional<MovStocks::Diferenca> MovStocks::diferenca() const {
    const auto novo = formato().le(campo(campos::quantidade).Text);
    const auto stock = formato().le(campo(campos::existencia).Text);
    if (!novo || !stock || campo(campos::artigo).Text.empty()) return std::nullopt;
    const bool consumo = tipo_do_modo() == TipoAjuste::consumo;
    Diferenca diferenca{.Qtd = *novo, .da_existencia = !bCarregado && !consumo};
    if (diferenca.da_existencia) diferenca.Qtd = *novo - *stock;
    diferenca.grande = !consumo && diferenca.Qtd.absoluta() >= limite_aviso;
    return diferenca;
}

bool MovStocks::ConsumoExcessivo() const {
    return valor(campos::quantidade) - cQtdCarregada > valor(campos::existencia);
}

bool MovStocks::ValidaQuantidade() {
    common::Campo& quantidade = campo(campos::quantidade);
    const auto aceita = [this](const char* observacao) {
        if (campo(campos::observacoes).Text.empty()) campo(campos::observacoes).Text = observacao;
        return true;
    };
    if (quantidade.Text.empty()) return recusa("Campo Obrigatório!", quantidade);
    if (!formato().le(quantidade.Text)) return recusa("Valor inválido!", quantidade);
    const Moeda novo = valor(campos::quantidade), stock = valor(campos::existencia);

    if (tipo_do_modo() == TipoAjuste::consumo)
        return ConsumoExcessivo() ? recusa(consumo_invalido, quantidade) : aceita("Consumo Interno");
    if (tipo_do_modo() == TipoAjuste::quebra) {
        if (bCarregado && ConsumoExcessivo()) return recusa(consumo_invalido, quantidade);
        if (!bCarregado && novo > stock)
            return recusa("A Nova Existência deve ser inferior à Existência!", quantidade);
        return aceita("Sucata");
    }
    if (bCarregado) return true;
    return novo < stock ? recusa("A Nova Existência deve ser superior à Existência!", quantidade)
                        : aceita("Excesso de Peso");
}

} // namespace orvex::adjust
