#include "delivery/guias_remessa.h"

#include "base/texto.h"

#include <algorithm>
#include <iterator>

namespace orvex::delivery {

using base::Moeda;
using base::Variante;
using common::TipoColuna;

namespace {

constexpr int linhas_em_branco = 30;
constexpr std::uint32_t cor_escolhida = 0xAEA55D; // RGB(174, 165, 93)

// The year of a "dd-mm-yyyy" date, as it stands in line keys.
std::string ano_de(const std::string& data) { return base::ultimos(data, 4); }

} // namespace

void GuiasRemessa::Act_Detalhe() {
    const auto visivel = [](const char* chave, const char* legenda, TipoColuna tipo, int largura,
                            int comprimento) {
        return common::Coluna{
            chave, legenda, tipo, largura, comprimento, true, false, true, tipo == TipoColuna::decimal};
    };
    const auto escondida = [](const char* chave, TipoColuna tipo, int comprimento) {
        return common::Coluna{
            chave, chave, tipo, 1200, comprimento, true, true, false, tipo == TipoColuna::decimal};
    };
    Detalhe.define(
        {visivel("Artigo", "Artigo", TipoColuna::texto, 1200, 15),
         visivel("Nome", "Designação", TipoColuna::texto, 3400, 50),
         visivel("Quant", "P.Liq.", TipoColuna::decimal, 1000, 12),
         visivel("PesoBruto", "PB", TipoColuna::decimal, 1000, 12),
         visivel("Data", "Data", TipoColuna::texto, 1200, 12),
         visivel("Doc", "Doc.", TipoColuna::texto, 1600, 12), escondida("QuantO", TipoColuna::decimal, 20),
         escondida("NumLinha", TipoColuna::inteiro, 12), escondida("Unidade", TipoColuna::texto, 12),
         escondida("Estilo", TipoColuna::inteiro, 12)},
        linhas_em_branco);
    Detalhe.estilo = {Detalhe.coluna("Estilo"), Variante(1), cor_escolhida};
}

void GuiasRemessa::ReparaPesos(const std::string& Cliente) {
    const auto linhas = BD.Consulta(
        " Select m.*,l.PESOBRUTO as 'PB' from xel_ORVEX_Mov as m inner join artigos as a on a.codigo=m.Artigo"
        " left outer  join U_Docgclin1 as l ON l.ano=m.ano and  l.TPDOCUM =m.tpdoc and l.SERIE =m.seriedoc"
        " and l.nnumdoc=m.numdoc and l.NUMLINHA =m.numlinha where Cliente =" +
        base::entre_plicas(Cliente) + " and Qtd>0 and artoudes=0 and (" + filtro_documentos(FACTURAS) + " )");
    for (; !linhas->fim(); linhas->move_seguinte())
        if (!linhas->valor("PB").nulo() && linhas->valor("PesoBruto").nulo()) ReparaPeso(*linhas);
}

void GuiasRemessa::ReparaPeso(startup::ConjuntoRegistos& lida) {
    if (!TemChavePropria(lida)) return; // it cannot be found again
    const std::string sql = "select * from xel_Orvex_Mov where Ano=" + lida.valor("Ano").texto() +
                            " and TpDoc=" + base::entre_plicas(lida.valor("TpDoc").texto()) +
                            " and NumDoc= " + lida.valor("NumDoc").texto() +
                            " and SerieDoc=" + lida.valor("SerieDoc").texto() +
                            " and NumLInha=" + lida.valor("NumLinha").texto() + " ";
    // Another workstation that lists the same client repairs the same lines.
    constexpr int vezes = 3;
    for (int vez = 1; vez <= vezes; ++vez) {
        const auto linha = BD.AbreActualizavel(sql);
        if (linha->fim() || !linha->valor("PesoBruto").nulo()) return;
        linha->define("PesoLiquido", lida.valor("QtdOrig"));
        linha->define("PesoBruto", lida.valor("PB"));
        try {
            return linha->actualiza();
        } catch (const base::Falha& falha) {
            if (falha.numero() != startup::numeros_bd::registo_alterado) throw;
        }
    }
}

bool GuiasRemessa::TemChavePropria(startup::ConjuntoRegistos& linha) {
    constexpr const char* partes[] = {"Ano", "TpDoc", "NumDoc", "SerieDoc", "NumLinha"};
    return std::none_of(std::begin(partes), std::end(partes),
                        [&](const char* coluna) { return linha.valor(coluna).nulo(); });
}

bool GuiasRemessa::EstaNoArmazem(startup::ConjuntoRegistos& linha, const std::string& armazem) {
    const auto valor = [&](const char* coluna) { return base::entre_plicas(linha.valor(coluna).texto()); };
    const auto origem = BD.Consulta("Select * from DocGcLin where TpDocum=" + valor("TpDoc") +
                                    " and Serie=" + valor("SerieDoc") + " and Nnumdoc=" + valor("NumDoc") +
                                    " and Ano=" + valor("Ano") + " and NumLinha=" + valor("NumLinha"));
    return !origem->fim() && base::maiusculas(origem->valor("Armazem").texto()) == armazem;
}

void GuiasRemessa::CarregaFacturas(const std::string& Cliente) {
    Act_Detalhe();
    const std::string armazem = base::maiusculas(ArmazemEscolhido());
    ReparaPesos(Cliente);

    if (PreencheDetalhe(Cliente, armazem) == 0)
        Avisa("", "Não existe informação para as condições solicitadas!", 2);
}

int GuiasRemessa::PreencheDetalhe(const std::string& Cliente, const std::string& armazem) {
    const auto linhas = BD.Consulta(
        "Select * from xel_ORVEX_Mov INNER JOIN Artigos ON Artigos.Codigo=xel_ORVEX_Mov.Artigo where "
        "Cliente =" +
        base::entre_plicas(Cliente) + " and Qtd>0 and artoudes=0 and (" + filtro_documentos(FACTURAS) + " )");
    // However the fill ends, the grid shows what it holds.
    struct Pintura {
        common::Grelha& grelha;
        explicit Pintura(common::Grelha& g) : grelha(g) { grelha.redesenha = false; }
        ~Pintura() { grelha.redesenha = true; }
        Pintura(const Pintura&) = delete;
        Pintura& operator=(const Pintura&) = delete;
    } const pintura(Detalhe);

    int contador = 0;
    for (; !linhas->fim(); linhas->move_seguinte()) {
        const std::string TpDoc = linhas->valor("TpDoc").texto();
        const std::string SerieDoc = linhas->valor("SerieDoc").texto();
        const std::string NumDoc = linhas->valor("NumDoc").texto();
        const std::string NumLinha = linhas->valor("NumLinha").texto();
        if (TemChavePropria(*linhas) && !EstaNoArmazem(*linhas, armazem)) continue;

        const Variante data = linhas->valor("Data");
        const Variante peso = linhas->valor("PesoBruto");
        Detalhe.garante_linha(contador);
        const Variante celulas[] = {linhas->valor("Artigo"),
                                    linhas->valor("Descritivo"),
                                    linhas->valor("Qtd"),
                                    peso.nulo() ? Variante(Moeda()) : peso,
                                    data.nulo() ? Variante() : Variante(data.data().data()),
                                    TpDoc + "/" + SerieDoc + "/" + NumDoc,
                                    linhas->valor("QtdOrig"),
                                    linhas->valor("NumLinha"),
                                    linhas->valor("UnBase"),
                                    0};
        for (int coluna = 0; const Variante& celula : celulas)
            Detalhe.define_valor(contador, coluna++, celula);
        ++contador;
        Detalhe.garante_linha(contador);
    }
    return contador;
}

std::string GuiasRemessa::ChaveLinhaAberta(int linha) const {
    return ano_de(Detalhe.texto(linha, "Data")) + "/" + Detalhe.texto(linha, "Doc") + "/" +
           Detalhe.texto(linha, "NumLinha");
}

void GuiasRemessa::Detalhe_DblClick() {
    const int r = Detalhe.linha_actual - 1;
    if (GuiaCarregada() || Detalhe.texto(r, "Artigo").empty()) return;
    const std::string Data = Detalhe.texto(r, "Data");
    const std::string Doc = ano_de(Data) + "/" + Detalhe.texto(r, "Doc");
    const std::string chave = ChaveLinhaAberta(r);
    if (!TemChave(chave)) {
        Avisa("",
              "A linha do documento " + Detalhe.texto(r, "Doc") + " está sem " +
                  (Data.empty() ? "data" : "ano, tipo, série, número ou linha") +
                  " nos movimentos da ORVEX, e assim não pode ser escolhida.\r\nPeça a correcção desse "
                  "movimento.",
              2);
        return;
    }

    const Moeda Disponivel = Detalhe.moeda(r, "Quant");
    Moeda JaEscolhido;
    for (int i = 0; i < Gr.linhas(); ++i)
        if (Gr.texto(i, "OutroDocMesmo") == chave) JaEscolhido += Gr.moeda(i, "Quant");
    if (JaEscolhido >= Disponivel) {
        Avisa("", "Impossível seleção!\r\nLinha esgotada.", 2);
        return;
    }
    const Moeda quantidade = Disponivel - JaEscolhido;
    if (JaEscolhido > Moeda() &&
        Avisa("",
              "Vai esgotar a linha!\r\nSó pode selecionar a Quantidade " + formato().texto(quantidade) + " !",
              3) != common::resposta_ok)
        return;

    const int n = ++UltimaLinha;
    Gr.garante_linha(n);
    Gr.define_valor(n, "Artigo", Detalhe.valor(r, "Artigo"));
    Gr.define_valor(n, "Nome", Detalhe.valor(r, "Nome"));
    Gr.define_valor(n, "Quant", quantidade);
    Gr.define_valor(n, "OutroDoc", chave + "/00000");
    Gr.define_valor(n, "Doc", Doc);
    Gr.define_valor(n, "QuantDet", Disponivel);
    Gr.define_valor(n, "Unidade", Detalhe.valor(r, "Unidade"));
    Gr.define_valor(n, "Data", Data);
    Gr.define_valor(n, "OutroDocMesmo", chave);
    Gr.define_valor(n, "PesoBruto", Detalhe.valor(r, "PesoBruto"));
    Gr.define_valor(n, "QtOrig", Detalhe.valor(r, "QuantO"));
    Gr.define_valor(n, "PBOrig", Detalhe.valor(r, "PesoBruto"));
    Detalhe.define_valor(r, "Estilo", 1);

    // The cell the user most often changes next.
    Gr.linha_actual = n + 1;
    Gr.coluna_actual = Gr.coluna("Quant");
    SetFocus(Gr);
}

void GuiasRemessa::cb1_Change(int anterior) {
    if (UltimaLinha >= 0) {
        cb1(0).ListIndex = anterior;
        Avisa("", "A guia já tem linhas deste armazém.\r\nCancele-a para escolher outro.", 2);
        return;
    }
    if (Estado == EstadoGuia::a_fazer) CarregaFacturas(campo(0).Text);
}

void GuiasRemessa::MostraLinhaActual() {
    const int r = Detalhe.linha_actual - 1;
    const bool vazia = r < 0 || r >= Detalhe.linhas() || Detalhe.texto(r, "Artigo").empty();
    Label2(6).Caption = vazia ? "" : Detalhe.texto(r, "Nome");
    Label2(7).Caption = vazia ? "" : formato().peso(Detalhe.moeda(r, "QuantO"));
}

void GuiasRemessa::Detalhe_LostFocus() {
    Label2(6).Caption.clear();
    Label2(7).Caption.clear();
}

void GuiasRemessa::Detalhe_RowColChange(int LastRow, int) {
    if (LastRow != 0 && LastRow != Detalhe.linha_actual) MostraLinhaActual();
}

} // namespace orvex::delivery
