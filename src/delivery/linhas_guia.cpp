#include "delivery/guias_remessa.h"

#include "base/texto.h"
#include "livro/chaves.h"

namespace orvex::delivery {

using base::Moeda;
using base::Variante;
using common::TipoCelula;

namespace {

constexpr int linhas_em_branco = 30;

} // namespace

void GuiasRemessa::Act_Gr() {
    UltimaLinha = -1;
    const auto peso = [](const char* chave, const char* legenda, int largura) {
        return common::ColunaGrelha{.chave = chave,
                                    .legenda = legenda,
                                    .tipo = TipoCelula::decimal,
                                    .largura = largura,
                                    .comprimento_maximo = 12,
                                    .so_leitura = false,
                                    .formato_peso = true};
    };
    Gr.define({coluna_artigo(), coluna_designacao(3700), peso("Quant", "P.Liq.", 1150),
               coluna_escondida("Doc", "Doc", TipoCelula::texto, 20),
               coluna_escondida("QuantDet", "QuantDet", TipoCelula::decimal, 12),
               coluna_escondida("Unidade", "Unidade", TipoCelula::texto, 20),
               coluna_escondida("Data", "Data", TipoCelula::texto, 20),
               coluna_escondida("OutroDoc", "OutroDoc", TipoCelula::texto, 20),
               coluna_escondida("OutroDocMesmo", "OutroDocMesmo", TipoCelula::texto, 20),
               coluna_escondida("NumLinha", "NumLinha", TipoCelula::inteiro, 20),
               peso("PesoBruto", "Peso Bruto", 1100),
               coluna_escondida("QtOrig", "Qt Orig", TipoCelula::decimal, 12),
               coluna_escondida("PBOrig", "PB Orig", TipoCelula::decimal, 12)},
              linhas_em_branco);
}

void GuiasRemessa::Gr_KeyDown(int& KeyCode, int) {
    bDigitado = true;
    if (KeyCode == common::tecla_esc) {
        bDigitado = false;
        KeyCode = 0;
    }
    if (KeyCode == common::tecla_esquerda) bDigitado = false;
}

void GuiasRemessa::Gr_BeforeColUpdate(int Row, int Col, const Variante& OldValue, bool& Cancel) {
    const int linha = Row - 1;
    const Rascunho antes = RascunhoNoEcra();
    bool aceite = true;
    if (GuiaCarregada())
        aceite = RecusaAlterarGuia();
    else if (Col == Gr.coluna("Nome"))
        aceite = AceitaNome(linha);
    else if (Col == Gr.coluna("Quant") && bDigitado)
        aceite = AceitaQuant(linha);
    else if (Col == Gr.coluna("PesoBruto") && bDigitado)
        aceite = AceitaPesoBruto();
    if (!aceite) {
        Cancel = true;
        Gr.texto_editado = formato().texto(OldValue);
    } else {
        LembraPasso(antes);
    }
    bDigitado = false;
}

// A return takes the note's lines as the screen shows them.
bool GuiasRemessa::RecusaAlterarGuia() {
    Avisa("", "A guia carregada não pode ser alterada!", aviso_informacao);
    return false;
}

bool GuiasRemessa::AceitaNome(int linha) {
    if (linha == 0 && !Gr.texto(linha, "Artigo").empty()) return true;
    if (linha == 0 || Gr.texto(linha - 1, "Doc").empty()) {
        MostraMensagem("Não é permitido introduzir linha de texto!", mensagem_critica);
        return false;
    }
    if (!Gr.texto(linha, "Doc").empty()) return true;

    LigaTexto(linha);
    return true;
}

void GuiasRemessa::LigaTexto(int linha) {
    Gr.define_valor(linha, "Doc", Gr.valor(linha - 1, "Doc"));
    Gr.define_valor(linha, "OutroDoc",
                    livro::com_sufixo(Gr.texto(ArtigoDaLinha(linha), "OutroDocMesmo"), UltimaLinha + 1));
    ++UltimaLinha;
}

bool GuiasRemessa::AceitaQuant(int linha) {
    if (Gr.texto(linha, "Artigo").empty()) {
        Gr.texto_editado.clear();
        return true;
    }
    const auto numero = formato().le(Gr.texto_editado);
    if (!numero || *numero < Moeda()) {
        MostraMensagem("Valor inválido!", mensagem_critica);
        return false;
    }
    if (*numero > Gr.moeda(linha, "QuantDet")) return recusa("Ultrapassa a quantidade inicial!", Gr);
    Gr.define_valor(linha, "PesoBruto", *numero);
    return true;
}

bool GuiasRemessa::AceitaPesoBruto() {
    const auto numero = formato().le(Gr.texto_editado);
    if (numero && *numero >= Moeda()) return true;
    MostraMensagem("Valor Inválido!", mensagem_critica);
    return false;
}

void GuiasRemessa::Gr_BeforeDelete(bool& Cancel) {
    if (Gr.linha_actual == 1) {
        Avisa("", "Não é permitido retirar esta linha!", aviso_informacao);
        Cancel = true;
    }
    if (!Gr_PodeApagar()) Cancel = true;
    if (!Cancel) LembraPasso(RascunhoNoEcra());
}

bool GuiasRemessa::Gr_PodeApagar() const {
    return !GuiaCarregada() && Gr.linha_actual > 1 && Gr.linha_actual - 1 <= UltimaLinha;
}

void GuiasRemessa::Gr_AfterDelete() {
    if (UltimaLinha > 0) --UltimaLinha;
    // Text that stood under the article goes with it: under another one it would speak of the wrong goods.
    for (const int linha = Gr.linha_actual - 1; linha <= UltimaLinha && TextoSemArtigo(linha); --UltimaLinha)
        Gr.apaga_linha(linha);
}

int GuiasRemessa::ArtigoDaLinha(int linha) const {
    while (linha > 0 && Gr.texto(linha, "OutroDocMesmo").empty())
        --linha;
    return linha;
}

bool GuiasRemessa::TextoSemArtigo(int linha) const {
    if (!Gr.valor(linha, "Artigo").vazio()) return false;
    return !livro::e_da_linha(Gr.texto(linha, "OutroDoc"), Gr.texto(ArtigoDaLinha(linha), "OutroDocMesmo"));
}

} // namespace orvex::delivery
