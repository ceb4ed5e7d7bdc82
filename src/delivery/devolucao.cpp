#include "delivery/guias_remessa.h"

#include "base/falha.h"
#include "base/texto.h"
#include "livro/movimentos.h"
#include "livro/perguntas.h"

#include <exception>
#include <utility>
#include <vector>

namespace orvex::delivery {

using base::Variante;
using common::TipoCelula;

namespace {

constexpr int linhas_em_branco = 10;

} // namespace

void GuiasRemessa::btGV_Click(int Index) {
    if (Index == devolucoes::abrir) {
        if (ExigeGuiaNoEcra() && GuiaLidaPorInteiro()) AbreDevolucao();
        return;
    }
    if (Index == devolucoes::confirmar && !AceitaDatas({&DTPicker3})) return;
    if (Index == devolucoes::confirmar && Avisa("", "Vai proceder à Devolução.\n\rPretende continuar?",
                                                aviso_ok_cancelar) == common::resposta_ok)
        return GravaDevolucao();
    Frame3.Visible = false;
    DesInibe();
    MudaEstado(EstadoGuia::carregada);
    SetFocus(btGV(devolucoes::abrir));
}

void GuiasRemessa::AbreDevolucao() {
    DTPicker3.Value = agora();
    Frame3.Visible = true;
    Inibe();
    MudaEstado(EstadoGuia::a_devolver);
    for (common::Controlo* controlo : std::initializer_list<common::Controlo*>{
             &btGV(devolucoes::confirmar), &btGV(devolucoes::desistir), &btSair, &Frame3, &DTPicker3})
        controlo->Enabled = true;
    Act_Final();
    CarregaFinal();
    Final.Enabled = true;
    Final.coluna_actual = Final.coluna("Transf");
    SetFocus(Final);
}

void GuiasRemessa::Act_Final() {
    const auto peso_escondido = [](const char* chave) {
        return common::ColunaGrelha{.chave = chave,
                                    .legenda = chave,
                                    .tipo = TipoCelula::decimal,
                                    .largura = 1500,
                                    .comprimento_maximo = 15,
                                    .oculta = true,
                                    .recebe_foco = false};
    };
    Final.define({coluna_artigo(),
                  coluna_designacao(4200),
                  peso_escondido("Qtd"),
                  {.chave = "Transf",
                   .legenda = "...",
                   .tipo = TipoCelula::logico,
                   .largura = 700,
                   .so_leitura = false},
                  coluna_escondida("NumLinha", "NumLinha", TipoCelula::inteiro, 20),
                  peso_escondido("PesoBruto")},
                 linhas_em_branco);
}

void GuiasRemessa::CarregaFinal() {
    int i = 0;
    for (int linha = 0; linha < Gr.linhas(); ++linha) {
        if (Gr.valor(linha, "Artigo").vazio()) continue;
        Final.define_valor(i, "Artigo", Gr.valor(linha, "Artigo"));
        Final.define_valor(i, "Nome", Gr.valor(linha, "Nome"));
        Final.define_valor(i, "Qtd", Gr.valor(linha, "Quant"));
        Final.define_valor(i, "Transf", false);
        Final.define_valor(i, "NumLinha", Gr.valor(linha, "NumLinha"));
        Final.define_valor(i, "PesoBruto", Gr.valor(linha, "PesoBruto"));
        Final.garante_linha(++i);
    }
}

void GuiasRemessa::Final_BeforeColUpdate(int Row, int Col, bool&) {
    const int linha = Row - 1;
    if (Col != Final.coluna("Transf") || Final.texto_editado != common::Grelha::com_visto) return;
    if (Final.valor(linha, "Artigo").vazio()) {
        Final.texto_editado = common::Grelha::sem_visto; // nothing to take back in a blank row
        return;
    }
    TestaGR(Final.texto(linha, "Artigo"),
            static_cast<std::int16_t>(Final.valor(linha, "NumLinha").inteiro()));
    if (!bDevolvido) return;
    Avisa("", "O Artigo selecionado já foi devolvido!", aviso_informacao);
    Final.texto_editado = common::Grelha::sem_visto;
}

bool GuiasRemessa::Devolvida(int linha) const {
    const Variante& marca = Final.valor(linha, "Transf");
    return !marca.nulo() && marca.logico() && !Final.valor(linha, "Artigo").vazio();
}

void GuiasRemessa::GravaDevolucao() {
    confirmacao::Confirmacao confirmacao(meios());
    const auto fim = confirmacao.executa(
        [&] {
            ArmazemGuia = ArmazemEscolhido();
            CriaERegista(DevolucaoNoEcra(), confirmacao);
        },
        [this](const std::exception& falha) { return erro_a_mostrar(falha); });
    if (fim == confirmacao::Confirmacao::Fim::recusada) return;
    DesInibe();
    Recomeca();
    Frame3.Visible = false;
}

void GuiasRemessa::ActualizaMovGV(const Guia& devolucao, std::int32_t NoDoc, std::int32_t NoGRemessa) {
    com_ultimo_erro([&] {
        const auto linhas = livro::linhas_a_devolver(BD, DocumentoDaGuia(NoGRemessa));
        if (linhas.empty()) RecusaSemMovimentos(NoGRemessa); // nothing of it is in the ledger to take back
        std::vector<std::pair<const livro::MovimentoLido*, const LinhaGuia*>> repostas;
        for (const livro::MovimentoLido& linha : linhas)
            for (const LinhaGuia& devolvida : devolucao.linhas)
                if (base::le_inteiro(linha.chave.NumLinha) == devolvida.NumLinha)
                    repostas.emplace_back(&linha, &devolvida);

        livro::Perguntas anunciadas;
        for (const auto& [linha, devolvida] : repostas)
            if (const auto origem = livro::le_chave(linha->Origem)) anunciadas.junta_linha(*origem);
        for (const LinhaGuia& devolvida : devolucao.linhas)
            anunciadas.junta(livro::perguntas::devolvida(GUIADEVOLUCAO.TpDoc(), LinhaDaGuia(devolvida)));
        anunciadas.junta(livro::perguntas::linhas_no_erp(devolucao.cab.documento(NoDoc)));
        BD.EmPasso(anunciadas.todas(), [&] {
            for (const auto& [linha, devolvida] : repostas)
                if (const auto origem = linha->origem())
                    livro::repoe(BD, *origem, {devolvida->Quant, devolvida->Quant, devolvida->PesoBruto});
            RecusaDevolvidas(devolucao);
            EscreveLinhasERP(devolucao.cab, NoDoc);
        });
    });
}

void GuiasRemessa::RecusaSemMovimentos(std::int32_t NoGRemessa) {
    if (livro::anulado_no_erp(BD, DocumentoDaGuia(NoGRemessa)))
        throw base::FalhaGuarda("A guia " + std::to_string(NoGRemessa) + " foi anulada depois de carregada.");
    throw base::FalhaGuarda("A guia " + std::to_string(NoGRemessa) + " não está nos movimentos da ORVEX.");
}

livro::ChaveLinha GuiasRemessa::LinhaDaGuia(const LinhaGuia& devolvida) const {
    return DocumentoDaGuia(NumGuia).linha(std::to_string(devolvida.NumLinha));
}

// Another program may have taken a line back since it was ticked here.
void GuiasRemessa::RecusaDevolvidas(const Guia& devolucao) {
    for (const LinhaGuia& linha : devolucao.linhas)
        if (livro::devolvida(BD, GUIADEVOLUCAO.TpDoc(), LinhaDaGuia(linha)))
            throw base::FalhaGuarda("O artigo " + linha.Artigo + " da guia " + std::to_string(NumGuia) +
                                    " já foi devolvido.");
}

void GuiasRemessa::TestaGR(const std::string& sArtigo, std::int16_t Linha) {
    bDevolvido = false;
    bDevolvido =
        livro::devolvida_pelo_cliente(BD, campo(campos::cliente).Text, GUIADEVOLUCAO.TpDoc(), sArtigo,
                                      DocumentoDaGuia(NumGuia).linha(std::to_string(Linha)));
}

int GuiasRemessa::ProximaDevolvida(int desde) {
    livro::Perguntas anunciadas;
    std::vector<int> com_artigo;
    for (int i = desde; i < Gr.linhas(); ++i) {
        if (Gr.valor(i, "Artigo").vazio()) continue;
        com_artigo.push_back(i);
        anunciadas.junta(livro::perguntas::devolvida_pelo_cliente(
            campo(campos::cliente).Text, GUIADEVOLUCAO.TpDoc(), Gr.texto(i, "Artigo")));
    }
    int proxima = Gr.linhas();
    BD.EmPasso(anunciadas.todas(), [&] {
        for (const int i : com_artigo) {
            TestaGR(Gr.texto(i, "Artigo"), static_cast<std::int16_t>(Gr.valor(i, "NumLinha").inteiro()));
            if (!bDevolvido) continue;
            proxima = i;
            return;
        }
    });
    return proxima;
}

// The others are looked at again after each box.
void GuiasRemessa::TestaDevolucao(bool& Boa) {
    Boa = false;
    for (int i = ProximaDevolvida(0); i < Gr.linhas(); i = ProximaDevolvida(i + 1)) {
        Avisa("", ja_devolvida, aviso_informacao);
        Boa = true;
    }
}

} // namespace orvex::delivery
