#include "delivery/guias_remessa.h"

#include "base/falha.h"
#include "base/texto.h"

#include <exception>
#include <unordered_map>
#include <utility>

namespace orvex::delivery {

using base::Moeda;
using confirmacao::Confirmacao;

namespace {

std::string NomeDe(const livro::Documento& documento) { return documento.linha("").documento(); }

} // namespace

void GuiasRemessa::btConf_Click(int Index) {
    Confirmacao confirmacao(meios());
    const auto fim =
        confirmacao.executa([&] { Confirma(Index, confirmacao); },
                            [this](const std::exception& falha) { return erro_a_mostrar(falha); });
    if (fim == Confirmacao::Fim::falhou) Recomeca();
}

void GuiasRemessa::Confirma(int Index, Confirmacao& confirmacao) {
    if (Index == confirmacoes::emitir && !VerificaQuantidades()) return SetFocus(campo(campos::cliente));
    if (campo(campos::cliente).Text.empty()) {
        recusa("Falta o Cliente!", campo(campos::cliente));
        return;
    }
    if (!VerificaContribuinte()) {
        SSTab1.Tab = pagina_diversos;
        return SetFocus(campo(campos::contribuinte));
    }
    if (Index == confirmacoes::anular) {
        if (!ExigeGuiaNoEcra() || !GuiaLidaPorInteiro()) return;
        if (Avisa("", "Vai proceder à anulação.\n\rPretende continuar?", aviso_ok_cancelar) !=
            common::resposta_ok)
            return RecomecaEcra();
    }
    if (Index == confirmacoes::emitir &&
        !AceitaDatas({&DTPicker1, &DTPicker2(momentos::carga), &DTPicker2(momentos::descarga)}))
        return;
    ArmazemGuia = ArmazemEscolhido();
    if (Index == confirmacoes::emitir)
        CriaERegista(GuiaNoEcra(), confirmacao);
    else
        Anula(confirmacao);
    Recomeca();
}

void GuiasRemessa::Recomeca() {
    LibertaDocumento();
    RecomecaEcra();
    EsquecePassos();
}

bool GuiasRemessa::VerificaQuantidades() {
    std::unordered_map<std::string, Moeda> total;
    for (int i = 0; i < Gr.linhas(); ++i)
        if (!Gr.valor(i, "Artigo").vazio()) total[Gr.texto(i, "OutroDocMesmo")] += Gr.moeda(i, "Quant");
    std::unordered_map<std::string, Moeda> disponivel; // of the first line with each key
    for (int i = 0; i < Detalhe.linhas() && disponivel.size() < total.size(); ++i) {
        if (Detalhe.valor(i, "Artigo").vazio()) continue;
        const std::string chave = ChaveLinhaAberta(i);
        if (total.contains(chave)) disponivel.try_emplace(chave, Detalhe.moeda(i, "Quant"));
    }

    // The first row of a key sees the key's whole total, so later rows of it can add nothing new.
    for (int i = 0; i < Gr.linhas(); ++i) {
        if (Gr.valor(i, "Artigo").vazio()) continue;
        const std::string chave = Gr.texto(i, "OutroDocMesmo");
        if (total[chave] <= disponivel[chave]) continue;
        Avisa("",
              "Não é possível gravar!\r\nA quantidade selecionada ultrapassa a permitida.\r\n Linha com " +
                  Gr.texto(i, "Artigo") + " Qtd = " + formato().texto(total[chave]) + " ",
              aviso_informacao);
        return false;
    }
    return true;
}

bool GuiasRemessa::VerificaContribuinte() {
    ResultadoNIF ok = ResultadoNIF::valido;
    if (MercadoCliente == mercado_nacional) ValidaNIF(campo(campos::contribuinte).Text, ok);
    if (ok == ResultadoNIF::invalido)
        return Avisa("", "Número Contribuinte inválido!", aviso_ok_cancelar) == common::resposta_ok;
    if (ok == ResultadoNIF::vazio) Avisa("", "Número Contribuinte obrigatório!", aviso_informacao);
    return ok == ResultadoNIF::valido;
}

// What is cancelled is the note that was loaded: the ledger goes by what the screen shows, the ERP by the
// document read, and the two must still be the same note.
bool GuiasRemessa::ExigeGuiaNoEcra() {
    return GuiaAindaNoEcra() || recusa(outra_guia, campo(campos::numero));
}

bool GuiasRemessa::GuiaAindaNoEcra() const {
    const startup::ReferenciaERP Cab = DocActual ? DocActual->obtem("Cab").objecto : nullptr;
    return Cab && Cab->obtem("Ano").valor.inteiro() == DTPicker1.Value.ano &&
           base::le_inteiro(campo(campos::numero).Text) == Cab->obtem("NossoNoDocumento").valor.inteiro() &&
           Cab->obtem("Terceiro").valor.texto() == campo(campos::cliente).Text;
}

// What was not read would be given back as nothing.
bool GuiasRemessa::GuiaLidaPorInteiro() {
    if (FalhaLeitura.empty()) return true;
    return recusa("A guia não foi lida por inteiro, e assim não pode ser anulada nem devolvida.\r\n" +
                      FalhaLeitura + "\r\nVolte a carregar a guia.",
                  campo(campos::numero));
}

void GuiasRemessa::CriaERegista(const Guia& guia, Confirmacao& confirmacao) {
    const bool devolucao = guia.cab.devolucao;
    confirmacao.Inicia(guia.intencao());
    BD.Tranca(); // before the ERP moves stock that others may be deciding on
    LibertaDocumento();
    devolucao ? CriaCabecalhoDevolucao(guia.cab) : CriaCabecalhoGuia(guia.cab);
    std::int32_t Erro = 0;
    std::string Mensagem;
    const bool criado = devolucao ? CriaLinhasDevolucao(guia, confirmacao, submeter, Erro, Mensagem)
                                  : CriaLinhasGuia(guia, confirmacao, submeter, Erro, Mensagem);
    if (!criado || Erro != 0) throw base::Falha(Mensagem);
    const std::int32_t numero = confirmacao.Criado().NossoNoDocumento;
    devolucao ? ActualizaMovGV(guia, numero, NumGuia) : ActualizaMov(guia, numero);
    ExigeLinhasMostradas(confirmacao.Criado());
    const std::string documento = NomeDe(guia.cab.documento(numero));
    std::string feito = (devolucao ? "Devolvida " + NomeDe(DocumentoDaGuia(NumGuia)) + " em " + documento
                                   : "Emitida " + documento) +
                        ", " + guia.texto(formato());
    confirmacao.Confirma();
    define_feito(std::move(feito));
    Avisa("", "Foi criado o documento Nº  " + std::to_string(numero), aviso_informacao);
}

void GuiasRemessa::Anula(Confirmacao& confirmacao) {
    const Guia guia = GuiaNoEcra();
    std::string feito = "Anulada " + NomeDe(DocumentoDaGuia(NumGuia)) + ", " + guia.texto(formato());
    confirmacao.Inicia(guia.intencao_de_anular(NumGuia));
    bool Boa = false;
    TestaDevolucao(Boa);
    if (Boa) return confirmacao.Desiste(ja_devolvida);

    const startup::ChaveDocumento chave = ChaveDe(DocActual);
    LibertaDocumento();
    ActualizaMovGR(NumeroNoEcra());
    const startup::ResultadoERP resultado = confirmacao.Anula(chave, confirmacao::Leitura::resultado_ultimo);
    if (!resultado.sucesso) {
        UltimoErro = resultado.mensagem;
        throw base::Falha(resultado.mensagem);
    }
    confirmacao.Confirma();
    define_feito(std::move(feito));
}

} // namespace orvex::delivery
