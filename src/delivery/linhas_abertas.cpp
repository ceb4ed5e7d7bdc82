#include "delivery/guias_remessa.h"

#include "livro/linhas_abertas.h"

namespace orvex::delivery {

using base::Moeda;
using base::Variante;
using common::TipoCelula;

namespace {

constexpr int linhas_em_branco = 30;
constexpr int por_escolher = 0; // of the column Estilo
constexpr int escolhida = 1;
constexpr std::uint32_t cor_escolhida = 0xAEA55D; // RGB(174, 165, 93)

} // namespace

void GuiasRemessa::Act_Detalhe() {
    Abertas.reset();
    const auto visivel = [](const char* chave, const char* legenda, TipoCelula tipo, int largura,
                            int comprimento) {
        return common::ColunaGrelha{.chave = chave,
                                    .legenda = legenda,
                                    .tipo = tipo,
                                    .largura = largura,
                                    .comprimento_maximo = comprimento,
                                    .formato_peso = tipo == TipoCelula::decimal};
    };
    Detalhe.define({visivel("Artigo", "Artigo", TipoCelula::texto, 1200, 15),
                    visivel("Nome", "Designação", TipoCelula::texto, 3400, 50),
                    visivel("Quant", "P.Liq.", TipoCelula::decimal, 1000, 12),
                    visivel("PesoBruto", "PB", TipoCelula::decimal, 1000, 12),
                    visivel("Data", "Data", TipoCelula::texto, 1200, 12),
                    visivel("Doc", "Doc.", TipoCelula::texto, 1600, 12),
                    coluna_escondida("QuantO", "QuantO", TipoCelula::decimal, 20),
                    coluna_escondida("NumLinha", "NumLinha", TipoCelula::inteiro, 12),
                    coluna_escondida("Unidade", "Unidade", TipoCelula::texto, 12),
                    coluna_escondida("Estilo", "Estilo", TipoCelula::inteiro, 12)},
                   linhas_em_branco);
    Detalhe.estilo = {Detalhe.coluna("Estilo"), Variante(escolhida), cor_escolhida};
}

void GuiasRemessa::ReparaPesos(const std::string& Cliente) { livro::repara_pesos(BD, Cliente, FACTURAS); }

std::optional<int> GuiasRemessa::ListaFacturas(const std::string& Cliente) {
    Act_Detalhe();
    const std::string armazem = ArmazemEscolhido();
    if (!prossegue("A listar")) return {}; // said before anything is asked: that is what takes long
    ReparaPesos(Cliente);

    const std::optional<int> mostradas = PreencheDetalhe(Cliente, armazem);
    if (mostradas)
        Abertas = {Cliente, cb1(combos::armazem).ListIndex};
    else
        Act_Detalhe(); // of a list that is not whole nothing is to be picked
    return mostradas;
}

void GuiasRemessa::CarregaFacturas(const std::string& Cliente) {
    if (ListaFacturas(Cliente) == 0)
        Avisa("", "Não existe informação para as condições solicitadas!", aviso_informacao);
}

std::optional<int> GuiasRemessa::PreencheDetalhe(const std::string& Cliente, const std::string& armazem) {
    // However the fill ends, the grid shows what it holds.
    struct Pintura {
        common::Grelha& grelha;
        explicit Pintura(common::Grelha& g) : grelha(g) { grelha.redesenha = false; }
        ~Pintura() { grelha.redesenha = true; }
        Pintura(const Pintura&) = delete;
        Pintura& operator=(const Pintura&) = delete;
    } const pintura(Detalhe);

    int contador = 0;
    const auto mostra = [&](const livro::LinhaAberta& linha) {
        Detalhe.garante_linha(contador);
        const auto celula = [&](const char* chave, Variante valor) {
            Detalhe.define_valor(contador, chave, std::move(valor));
        };
        celula("Artigo", linha.Artigo);
        celula("Nome", linha.Descritivo);
        celula("Quant", linha.Qtd);
        celula("PesoBruto", linha.PesoBruto.nulo() ? Variante(Moeda()) : linha.PesoBruto);
        celula("Data", linha.Data.nulo() ? Variante() : Variante(linha.Data.data().data()));
        celula("Doc", linha.documento);
        celula("QuantO", linha.QtdOrig);
        celula("NumLinha", linha.NumLinha);
        celula("Unidade", linha.Unidade);
        celula("Estilo", por_escolher);
        ++contador;
        Detalhe.garante_linha(contador);
    };
    const bool inteira = livro::mostra_linhas_abertas(BD, Cliente, armazem, FACTURAS, mostra, [&] {
        return prossegue("A listar: " + std::to_string(contador) + " linhas");
    });
    Detalhe.reordena();
    Detalhe.linha_actual = 1;
    return inteira ? std::optional(contador) : std::nullopt;
}

std::string GuiasRemessa::ChaveLinhaAberta(int linha) const {
    return livro::com_linha(livro::com_ano(Detalhe.texto(linha, "Data"), Detalhe.texto(linha, "Doc")),
                            Detalhe.texto(linha, "NumLinha"));
}

void GuiasRemessa::Detalhe_DblClick() {
    const int r = Detalhe.linha_actual - 1;
    if (GuiaCarregada() || Detalhe.texto(r, "Artigo").empty()) return;
    const std::string Data = Detalhe.texto(r, "Data");
    const std::string chave = ChaveLinhaAberta(r);
    if (!livro::le_chave(chave)) {
        Avisa("",
              "A linha do documento " + Detalhe.texto(r, "Doc") + " está sem " +
                  (Data.empty() ? "data" : "ano, tipo, série, número ou linha") +
                  " nos movimentos da ORVEX, e assim não pode ser escolhida.\r\nPeça a correcção desse "
                  "movimento.",
              aviso_informacao);
        return;
    }

    const Moeda Disponivel = Detalhe.moeda(r, "Quant");
    const Moeda Escolhido = JaEscolhido(chave);
    if (Escolhido >= Disponivel) {
        Avisa("", "Impossível seleção!\r\nLinha esgotada.", aviso_informacao);
        return;
    }
    const Moeda quantidade = Disponivel - Escolhido;
    if (Escolhido > Moeda() &&
        Avisa("",
              "Vai esgotar a linha!\r\nSó pode selecionar a Quantidade " + formato().texto(quantidade) + " !",
              aviso_ok_cancelar) != common::resposta_ok)
        return;

    LembraPasso(RascunhoNoEcra());
    EscolheLinha(r, quantidade);
    // The cell the user most often changes next.
    Gr.linha_actual = UltimaLinha + 1;
    Gr.coluna_actual = Gr.coluna("Quant");
    SetFocus(Gr);
}

Moeda GuiasRemessa::JaEscolhido(const std::string& chave) const {
    Moeda total;
    for (int i = 0; i < Gr.linhas(); ++i)
        if (Gr.texto(i, "OutroDocMesmo") == chave) total += Gr.moeda(i, "Quant");
    return total;
}

void GuiasRemessa::DesmarcaLinha(int r) { Detalhe.define_valor(r, "Estilo", por_escolher); }

void GuiasRemessa::EscolheLinha(int r, Moeda quantidade) {
    const std::string Data = Detalhe.texto(r, "Data");
    const std::string chave = ChaveLinhaAberta(r);
    if (UltimaLinha < 0) ClienteLinhas = campo(campos::cliente).Text;
    const int n = ++UltimaLinha;
    Gr.garante_linha(n);
    Gr.define_valor(n, "Artigo", Detalhe.valor(r, "Artigo"));
    Gr.define_valor(n, "Nome", Detalhe.valor(r, "Nome"));
    Gr.define_valor(n, "Quant", quantidade);
    Gr.define_valor(n, "OutroDoc", livro::com_sufixo(chave, 0));
    Gr.define_valor(n, "Doc", livro::com_ano(Data, Detalhe.texto(r, "Doc")));
    Gr.define_valor(n, "QuantDet", Detalhe.moeda(r, "Quant"));
    Gr.define_valor(n, "Unidade", Detalhe.valor(r, "Unidade"));
    Gr.define_valor(n, "Data", Data);
    Gr.define_valor(n, "OutroDocMesmo", chave);
    Gr.define_valor(n, "PesoBruto", Detalhe.valor(r, "PesoBruto"));
    Gr.define_valor(n, "QtOrig", Detalhe.valor(r, "QuantO"));
    Gr.define_valor(n, "PBOrig", Detalhe.valor(r, "PesoBruto"));
    Detalhe.define_valor(r, "Estilo", escolhida);
}

void GuiasRemessa::cb1_Change(int anterior) {
    if (UltimaLinha >= 0) {
        cb1(combos::armazem).ListIndex = anterior;
        Avisa("", "A guia já tem linhas deste armazém.\r\nCancele-a para escolher outro.", aviso_informacao);
        return;
    }
    if (Estado == EstadoGuia::a_fazer) CarregaFacturas(campo(campos::cliente).Text);
}

void GuiasRemessa::MostraLinhaActual() {
    const int r = Detalhe.linha_actual - 1;
    const bool vazia = r < 0 || r >= Detalhe.linhas() || Detalhe.texto(r, "Artigo").empty();
    Label2(rotulos::designacao).Caption = vazia ? "" : Detalhe.texto(r, "Nome");
    Label2(rotulos::quantidade).Caption = vazia ? "" : formato().peso(Detalhe.moeda(r, "QuantO"));
}

void GuiasRemessa::Detalhe_LostFocus() {
    Label2(rotulos::designacao).Caption.clear();
    Label2(rotulos::quantidade).Caption.clear();
}

void GuiasRemessa::Detalhe_RowColChange(int LastRow, int) {
    if (LastRow != 0 && LastRow != Detalhe.linha_actual) MostraLinhaActual();
}

} // namespace orvex::delivery
