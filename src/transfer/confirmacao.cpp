#include "transfer/trf_bobines.h"

#include "base/falha.h"
#include "base/texto.h"
#include "livro/artigos.h"
#include "livro/detentores.h"
#include "livro/linhas_abertas.h"

#include <exception>
#include <utility>
#include <vector>

namespace orvex::transfer {

using base::FalhaGuarda;
using base::Moeda;
using confirmacao::Confirmacao;
using confirmacao::Fluxo;
using confirmacao::Intencao;

void TrfBobines::btConf_Click() {
    if (campo(campos::destino).Text.empty() && Modo == modos::para_cliente) {
        recusa("Deve selecionar o cliente destino!", campo(campos::destino));
        return;
    }
    if (campo(campos::artigo).Text.empty()) {
        Avisa(campo(campos::artigo).Legenda, "", aviso_obrigatorio);
        return SetFocus(campo(campos::artigo));
    }
    ExigeParametros();
    if (!AceitaDatas({&DTPicker1})) return;
    Confirmacao confirmacao(meios_da_transferencia());
    const auto fim = confirmacao.executa(
        [&] {
            confirmacao.Inicia(IntencaoDeTransferir());
            BD.Tranca();
            BD.EmPasso(PerguntasDaConfirmacao(), [&] {
                VerificaAceite();
                GravaMovimentos();
                if (Modo == modos::para_cliente) ActArtigo();
            });
            if (Modo == modos::para_orvex) TransfereArmazem(confirmacao, Quantidade);
            const std::string destino =
                Modo == modos::para_orvex ? std::string("ORVEX") : campo(campos::destino).Text;
            std::string feito = "Transferido " + campo(campos::artigo).Text + ", " +
                                campo(campos::detentor).Text + " → " + destino + ", " +
                                formato().peso_inteiro(Quantidade) + " t";
            confirmacao.Confirma();
            define_feito(std::move(feito));
        },
        [this](const std::exception& falha) {
            completa_erro(falha);
            return erro_a_mostrar(falha);
        });
    if (fim == Confirmacao::Fim::recusada) return;
    RecomecaEcra();
}

const std::string& TrfBobines::Destino() const {
    return Modo == modos::para_orvex ? CLIENTEORVEX.Codigo() : campo(campos::destino).Text;
}

confirmacao::Meios TrfBobines::meios_da_transferencia() {
    confirmacao::Meios estes = meios();
    // A transfer's rows do not carry the number of its document.
    estes.sinal = "o último movimento do artigo " + campo(campos::artigo).Text + " é o desta transferência";
    return estes;
}

Intencao TrfBobines::IntencaoDeTransferir() const {
    Intencao intencao{.fluxo = Fluxo::transfere_para_cliente,
                      .Cliente = Destino(),
                      .Data = DTPicker1.Value,
                      .artigos = {{campo(campos::artigo).Text, Quantidade, ArmazemActual}}};
    if (Modo == modos::para_orvex) {
        intencao.fluxo = Fluxo::transfere_para_orvex;
        intencao.cria = {static_cast<std::int16_t>(DTPicker1.Value.ano), TRF.TpDoc(), TRF.Serie()};
    }
    return intencao;
}

// Found missing half-way, an element would cost the user what the fields hold.
void TrfBobines::ExigeParametros() const {
    QUEBRAS.Serie();
    SOBRAS.Serie();
    if (Modo == modos::para_cliente) return;
    TRF.Serie();
    TRF.Sector();
    ARMAZEM.Codigo();
    ARMAZEMORVEX.Codigo();
    CLIENTEORVEX.Codigo();
}

std::vector<std::string> TrfBobines::PerguntasDaConfirmacao() const {
    const std::string& artigo = campo(campos::artigo).Text;
    std::vector<std::string> anunciadas{livro::perguntas::ultimo_movimento(artigo),
                                        livro::perguntas::existencia(artigo, ArmazemActual)};
    AnunciaGuiasPorGerar(artigo, anunciadas);
    if (Modo == modos::para_cliente) anunciadas.push_back(PerguntaDaFicha());
    return anunciadas;
}

void TrfBobines::VerificaAceite() {
    const std::string artigo = "O Artigo/Num.Série " + campo(campos::artigo).Text;
    if (campo(campos::artigo).Text != Aceites.Artigo)
        throw FalhaGuarda(artigo + " não foi validado. Volte a indicá-lo.");
    if (Modo == modos::para_cliente && campo(campos::destino).Text != Aceites.Destino)
        throw FalhaGuarda("O cliente destino " + campo(campos::destino).Text +
                          " não foi validado para este Artigo. Volte a indicá-lo.");
    const std::string& codigo = campo(campos::artigo).Text;
    const auto ultimo = livro::ultimo_movimento(BD, codigo);
    if (!ultimo || ultimo->Registo != Aceites.Registo)
        throw FalhaGuarda(artigo + " teve outro movimento depois de ter sido indicado. Volte a indicá-lo.");
    // An older note or adjustment that was cancelled meanwhile leaves the newest row as it was.
    if (livro::tem_linhas_abertas(BD, codigo, FACTURAS)) throw FalhaGuarda(guias_por_gerar);
    if (Existencia(codigo, ArmazemActual) != Quantidade)
        throw FalhaGuarda("A Existência do Artigo/Num.Série " + codigo +
                          " mudou depois de ter sido indicado. Volte a indicá-lo.");
}

void TrfBobines::GravaMovimentos() {
    const std::string& destino = Destino();
    com_ultimo_erro_numerado([&] {
        BD.EmPasso({}, [&] { // so that its failures are told here
            GravaMovimento(Modo == modos::para_orvex ? Detentor : campo(campos::detentor).Text,
                           campo(campos::obs_saida).Text, -Quantidade, QUEBRAS.TpDoc(), QUEBRAS.Serie(),
                           destino);
            GravaMovimento(destino, campo(campos::obs_entrada).Text, Quantidade, SOBRAS.TpDoc(),
                           SOBRAS.Serie(), destino);
        });
    });
}

void TrfBobines::GravaMovimento(const std::string& Cliente, const std::string& txt, Moeda Qtd,
                                const std::string& TpDoc, std::int16_t Serie, const std::string& CliFinal) {
    livro::acrescenta_detentor(BD, {.NumSerie = campo(campos::artigo).Text,
                                    .Cliente = Cliente,
                                    .Data = DTPicker1.Value,
                                    .Quantidade = Qtd,
                                    .Obs = txt,
                                    .CliFinal = CliFinal,
                                    .Documento = {.Ano = static_cast<std::int16_t>(agora().ano),
                                                  .TipoDocumento = TpDoc,
                                                  .Serie = Serie}});
}

void TrfBobines::TransfereArmazem(Confirmacao& confirmacao, Moeda Quant) {
    com_ultimo_erro_numerado([&] {
        const std::string& Artigo = campo(campos::artigo).Text;
        confirmacao.CriaDocStock({.tipo_documento = TRF.TpDoc(),
                                  .sector = TRF.Sector(),
                                  .serie = TRF.Serie(),
                                  .destino = ARMAZEMORVEX.Codigo(),
                                  .data = DTPicker1.Value.data(),
                                  .armazem = ARMAZEM.Codigo(),
                                  .artigos = {"", Artigo},
                                  .textos_15 = {"", ""},
                                  .quantidades = {0, Quant.real()},
                                  .precos = {0, PrecoTransferencia(Artigo)},
                                  .textos_18 = {"", ""}});
    });
}

double TrfBobines::PrecoTransferencia(const std::string& Artigo) {
    return livro::preco_transferencia(BD, Artigo);
}

std::string TrfBobines::PerguntaDaFicha() const {
    return "Select * from Artigos where Codigo=" + base::entre_plicas(campo(campos::artigo).Text);
}

void TrfBobines::ActArtigo() {
    const auto ficha = BD.AbreActualizavel(PerguntaDaFicha());
    if (ficha->fim()) return;
    ficha->define("Observ",
                  base::primeiros(campo(campos::destino).Text + " - " + Label2(rotulos::destino).Caption,
                                  static_cast<std::size_t>(ComprimentoObserv)));
    ficha->actualiza();
}

} // namespace orvex::transfer
