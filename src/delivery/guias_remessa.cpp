#include "delivery/guias_remessa.h"

#include "base/descricao.h"
#include "base/falha.h"
#include "base/texto.h"
#include "livro/movimentos.h"
#include "livro/perguntas.h"

#include <algorithm>
#include <limits>

namespace orvex::delivery {
namespace {

constexpr std::int64_t linhas_por_passo = 100;

} // namespace

GuiasRemessa::GuiasRemessa(common::ServicosEcra servicos) : Ecra(std::move(servicos), "Guias Remessa") {
    regista_controlos();
}

void GuiasRemessa::Form_Load() {
    LeParametros();
    ComComprimentos({"xel_ORVEX", "xel_ORVEX_Mov", "DocGcCab", "DocGcLin", "Vendedor"}, [this] {
        LimitaCampos();
        limparform(); // which sets the grids
    });
}

void GuiasRemessa::LeParametros() {
    GUIADEVOLUCAO = parametros().lista("GUIADEVOLUCAO");
    GUIASREMESSA = parametros().lista("GUIASREMESSA");
    FACTURAS = parametros().lista_de_grupos("FACTURAS");
    ARMAZEM = parametros().lista("ARMAZEM");
    ARMAZEMORVEX = parametros().lista("ARMAZEMORVEX");
    CLIENTEORVEX = parametros().lista("CLIENTEORVEX");

    // A screen that opened with a short list would fail later, in the middle of a note.
    std::string curtos;
    const auto exige = [&curtos](const auto& parametro) {
        if (!parametro.completo()) curtos += "\r\n" + parametro.chave;
    };
    exige(GUIADEVOLUCAO);
    exige(GUIASREMESSA);
    exige(FACTURAS);
    exige(ARMAZEM);
    exige(ARMAZEMORVEX);
    exige(CLIENTEORVEX);
    if (!curtos.empty())
        throw base::Falha("O ficheiro de parâmetros «" + std::string(startup::ficheiro_parametros) +
                              "» não tem, ou tem incompletos, os parâmetros:" + curtos,
                          base::numeros_falha::sem_elemento);

    // The series go into statements as numbers.
    GUIADEVOLUCAO.Serie();
    GUIASREMESSA.Serie();
    FACTURAS.grupos();
}

void GuiasRemessa::limparform() {
    ComecaLinhas();
    DTPicker1.Value = DTPicker2(momentos::carga).Value = DTPicker2(momentos::descarga).Value = agora();
    for (const int i : {rotulos::nome_cliente, rotulos::designacao, rotulos::quantidade})
        Label2(i).Caption.clear();
    cb1(combos::armazem).itens = {ARMAZEMORVEX.Nome(), ARMAZEM.Nome()};
    cb1(combos::armazem).ListIndex = armazens::da_orvex;
    MudaEstado(EstadoGuia::vazia);
    for (auto& [indice, campo_] : campo)
        campo_.Text.clear();
    UltimoErro.clear();
    define_estado({});
    Act_Gr();
    Act_Detalhe();
    SSTab1.Tab = pagina_movimentos;
}

void GuiasRemessa::MudaEstado(EstadoGuia novo) {
    Estado = novo;
    btConf(confirmacoes::emitir).Enabled = !GuiaCarregada();
    if (GuiaCarregada()) EsquecePassos();
    btConf(confirmacoes::anular).Enabled = btGV(devolucoes::abrir).Enabled = Estado == EstadoGuia::carregada;
}

bool GuiasRemessa::Load(std::int16_t iAno, std::int16_t iSerie, std::int32_t lNumDoc,
                        const std::string& sTpDoc, bool& bErro) {
    bErro = false;
    LibertaDocumento();
    CriaCabecalhoGuia(CabecalhoNoEcra(GUIASREMESSA, DTPicker1.Value));
    if (DocActual->chama("Ler", {iAno, iSerie, lNumDoc, sTpDoc}).valor.inteiro() == 0) return true;
    if (lNumDoc != 0) {
        Avisa("", DocActual->chama("UltimaMensagem", {}).valor.texto(), aviso_informacao);
        bErro = true;
    }
    return false;
}

bool GuiasRemessa::Ler(const startup::ChaveDocumento& utkeyDoc) {
    FalhaLeitura.clear();
    Gr.redesenha = false;
    try {
        const startup::ReferenciaERP Linhas = DocActual->obtem("Linhas").objecto;
        const std::int64_t total = Linhas->obtem("Count").valor.inteiro();
        for (std::int64_t i = 1; i <= total;) {
            // The count is the ERP's word; what is announced of it has its limit. The numbers are those that
            // the ERP gives to the lines it is handed; a line of another one is asked for alone.
            const std::int64_t fim = i + std::min(total - i + 1, linhas_por_passo);
            livro::Perguntas pesos;
            for (std::int64_t n = i; n < fim; ++n)
                pesos.junta(livro::perguntas::peso_bruto(utkeyDoc, std::to_string(n)));
            BD.EmPasso(pesos.todas(), [&] {
                for (; i < fim; ++i)
                    LerLinha(Linhas->chama("Item", {i}).objecto, static_cast<int>(i - 1), utkeyDoc);
            });
        }
    } catch (const std::exception& falha) {
        // The lines written so far stay on the screen, and say that they are not all.
        FalhaLeitura = base::descricao(falha);
        observador().engolida(FalhaLeitura);
        define_estado("A guia não foi lida por inteiro: " + FalhaLeitura);
    }
    Gr.redesenha = true;
    cb1(combos::armazem).ListIndex =
        ARMAZEM.Codigo() != ArmazemGuia ? armazens::da_orvex : armazens::dos_clientes;
    return false;
}

void GuiasRemessa::LerLinha(const startup::ReferenciaERP& linha, int r,
                            const startup::ChaveDocumento& utkeyDoc) {
    Gr.define_valor(r, "Artigo", linha->obtem("Artigo").valor);
    Gr.define_valor(r, "Nome", linha->obtem("descricao").valor);
    Gr.define_valor(r, "Quant", linha->obtem("Quantidade").valor);
    Gr.define_valor(r, "NumLinha", linha->obtem("NumeroDaLinha").valor);
    if (ArmazemGuia.empty()) ArmazemGuia = linha->obtem("Armazem").valor.texto();

    Gr.define_valor(r, "PesoBruto", livro::peso_bruto(BD, utkeyDoc, Gr.texto(r, "NumLinha")));
    Gr.garante_linha(r + 1);
}

void GuiasRemessa::Inibe() {
    for (common::Controlo* controlo : controlos())
        controlo->Enabled = false;
}

void GuiasRemessa::DesInibe() {
    for (common::Controlo* controlo : controlos())
        controlo->Enabled = true;
}

bool GuiasRemessa::por_gravar() const { return !GuiaCarregada() && !GuiaNoEcra().linhas.empty(); }

void GuiasRemessa::btCancelar_Click() {
    LembraPorGravar();
    RecomecaEcra();
}

void GuiasRemessa::btSair_Click() { Unload(); }

void GuiasRemessa::Form_Terminate() {
    try {
        if (gERP.Empresa()) gERP.Desliga();
    } catch (...) {
        BD.Fecha();
        throw;
    }
    BD.Fecha();
}

std::string GuiasRemessa::ArmazemEscolhido() const {
    return cb1(combos::armazem).ListIndex == armazens::da_orvex ? ARMAZEMORVEX.Codigo() : ARMAZEM.Codigo();
}

std::int32_t GuiasRemessa::NumeroNoEcra() const {
    const auto numero = base::le_inteiro(campo(campos::numero).Text);
    if (!numero || *numero < 0 || *numero > std::numeric_limits<std::int32_t>::max())
        throw base::Falha("«" + campo(campos::numero).Text + "» não é um número de documento.",
                          base::numeros_falha::tipo_diferente);
    return static_cast<std::int32_t>(*numero);
}

} // namespace orvex::delivery
