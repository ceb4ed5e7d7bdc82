#include "adjust/mov_stocks.h"

#include "base/texto.h"
#include "livro/artigos.h"
#include "livro/detentores.h"

namespace orvex::adjust {

using base::Moeda;

void MovStocks::campo_Validate(int Index, bool& Cancel) {
    if (!bDigitado) return;
    if (Index == 0) Cancel = !ValidaArtigo();
    if (Index == 3) Cancel = !ValidaQuantidade();
    // Only here: a validation that failed half-way must run again when the field is left again.
    bDigitado = false;
}

Moeda MovStocks::valor(int Index) const { return formato().le(campo(Index).Text).value_or(Moeda()); }

const std::string& MovStocks::ArmazemDe(const std::string& cliente) const {
    return cliente == CLIENTEORVEX[0] ? ARMAZEMORVEX[0] : ARMAZEM[0];
}

bool MovStocks::recusa_artigo(const char* aviso) {
    Avisa("", aviso, aviso_informacao);
    Label2(1).Caption.clear();
    SetFocus(campo(0));
    return false;
}

bool MovStocks::ValidaArtigo() {
    const std::string artigo = campo(0).Text;
    if (campo(0).Text.empty()) {
        Label2(1).Caption.clear();
        return true;
    }
    const auto ultimo = livro::ultimo_movimento(BD, artigo);
    if (!ultimo) return recusa_artigo("Artigo não existente!");
    ArmazemActual = ArmazemDe(ultimo->Cliente);
    {
        const auto ficha =
            BD.Consulta("SELECT * FROM Artigos  where Artigos.CODIGO=" + base::entre_plicas(artigo) +
                        " and Artigos.Inactivo<>-1 ");
        if (ficha->fim()) return recusa_artigo("Artigo não existente!");
        Label2(1).Caption = ficha->valor("Nome").texto();
        campo(0).Text = ficha->valor("CODIGO").texto(); // as the ERP writes it, whatever case was typed
    }
    const auto existencia = livro::existencia(BD, campo(0).Text, ArmazemActual);
    if (!existencia) {
        Avisa("", "Este Artigo não tem Existência!", aviso_informacao);
        return false;
    }
    const auto entrada = livro::ultimo_movimento_outra_vez(BD, artigo);
    if (!entrada) {
        Avisa("", "Este Artigo não tem Entrada!", aviso_informacao);
        return false;
    }
    campo(1).Text = formato().texto(*existencia);
    campo(1).Enabled = false;
    Detentor = entrada->Cliente;
    SetFocus(campo(2));
    return true;
}

bool MovStocks::ConsumoExcessivo() const { return valor(3) - cQtdCarregada > valor(1); }

bool MovStocks::ValidaQuantidade() {
    const auto recusa = [this](const char* aviso) {
        Avisa("", aviso, aviso_informacao);
        SetFocus(campo(3));
        return false;
    };
    const auto aceita = [this](const char* observacao) {
        if (campo(4).Text.empty()) campo(4).Text = observacao;
        return true;
    };
    if (campo(3).Text.empty()) return recusa("Campo Obrigatório!");
    if (!formato().le(campo(3).Text)) return recusa("Valor inválido!");
    const Moeda novo = valor(3), stock = valor(1);

    if (tipo_do_modo() == TipoAjuste::consumo)
        return ConsumoExcessivo() ? recusa(consumo_invalido) : aceita("Consumo Interno");
    if (tipo_do_modo() == TipoAjuste::quebra) {
        if (bCarregado && ConsumoExcessivo()) return recusa(consumo_invalido);
        if (!bCarregado && novo > stock) return recusa("A Nova Existência deve ser inferior à Existência!");
        return aceita("Sucata");
    }
    if (bCarregado) return true;
    return novo < stock ? recusa("A Nova Existência deve ser superior à Existência!")
                        : aceita("Excesso de Peso");
}

} // namespace orvex::adjust
