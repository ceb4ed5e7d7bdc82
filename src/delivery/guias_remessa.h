// The delivery-note screen: issues a delivery note from a client's open invoice lines, loads an issued note,
// cancels it, or takes its items back.
//
// One class; each .cpp file beside this one holds one concern of it. The ledger and the ERP document of a
// confirmation stand or fall together: the ledger writes are one transaction, the ERP document is cancelled
// again when they fail.
#pragma once

#include "common/ecra.h"
#include "delivery/guia.h"
#include "delivery/indices.h"
#include "delivery/rascunho.h"
#include "delivery/resumo.h"
#include "livro/chaves.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvex::delivery {

// Outcome of the check of a Portuguese tax number.
enum class ResultadoNIF : std::int16_t { valido = 0, invalido = 1, vazio = 2 };

// Nine digits, the last a check digit over the first eight.
void ValidaNIF(const std::string& NIF, ResultadoNIF& ok);

class GuiasRemessa : public common::Ecra {
  public:
    explicit GuiasRemessa(common::ServicosEcra servicos);

    void Form_Load() override;
    void Form_Terminate() override;
    bool por_gravar() const override;

    // For a window, which shows more of a loaded note than the rules read of it: which note is on the screen
    // (the first loaded is 1, the next 2; 0 is none), and what became of it. Asks the database, in one
    // request; throws what that throws, and Falha for a note that is not there or was not read whole.
    int carregamento() const { return GuiaCarregada() ? Carregamentos : 0; }
    ResumoGuia LeResumo();
    // Number, date and client on the screen are those of the note that was loaded.
    bool GuiaAindaNoEcra() const;
    static constexpr const char* outra_guia =
        "O número, a data ou o cliente já não são os da guia carregada.\r\nVolte a carregar a guia.";

    // The note being made: rascunho.cpp

    std::optional<Rascunho> rascunho() const; // nothing where it has no lines, or is loaded
    bool pode_repor() const { return !por_gravar() && Estado != EstadoGuia::a_devolver; }
    // Puts a draft on a screen where nothing is lost by it. Its weights are checked against what is open now,
    // and what is missing is said. False when it was not put there: the screen is then empty.
    bool utilizador_repoe(const Rascunho& rascunho);
    // Takes back the last line picked or deleted, the last edit of a line or the last note given up.
    void utilizador_desfaz();
    // A note that was given up: what the next taking back on an empty screen puts there.
    void lembra(const Rascunho& rascunho);
    // The note that had to make room for another one since this was last asked, be that one there or not.
    std::optional<Rascunho> retira_posta_de_lado() { return std::exchange(DeLado, std::nullopt); }
    bool GuiaCarregada() const { return Estado >= EstadoGuia::carregada; }

    // Controls

    common::Etiqueta Label1; // the screen's title
    common::Vector<common::Etiqueta> Label2{"Label2"};
    common::Vector<common::Campo> campo{"campo"};
    common::SelectorData DTPicker1;
    common::Vector<common::SelectorData> DTPicker2{"DTPicker2"};
    common::SelectorData DTPicker3;
    common::Vector<common::Combo> cb1{"cb1"};
    common::Vector<common::Botao> btFx{"btFx"};
    common::Vector<common::Botao> btConf{"btConf"};
    common::Vector<common::Botao> btGV{"btGV"};
    common::Botao btCancelar;
    common::Botao btSair;
    common::Separadores SSTab1;
    common::Grelha Detalhe; // ledger lines open for the client
    common::Grelha Gr;      // lines of the note
    common::Grelha Final;   // lines of the note to choose from for a return
    common::Quadro Frame3;  // the return panel
    common::Etiqueta Titulo;

  private:
    // Of the note on the screen. `a_fazer` has a client, and his open lines to pick from; what is loaded
    // cannot be changed, nor, once cancelled, cancelled or taken back.
    enum class EstadoGuia { vazia, a_fazer, carregada, anulada, a_devolver };
    // A line of the document being built, and whether the ERP showed it when the ledger was written.
    struct LinhaEnviada {
        std::string Artigo{};     // none for a text line
        base::Moeda Quantidade{}; // tonnes
        bool mostrada = false;
    };
    struct Passo {
        Rascunho guia{};
        bool abandonada = false; // whole, as it was given up: no step of the note that came after it
    };
    static constexpr std::int16_t submeter = 1; // TipoEnvio: also hand the document to the ERP
    static constexpr const char* ja_devolvida = "Esta GR já foi devolvida!";
    static constexpr int pagina_movimentos = 0;
    static constexpr int pagina_diversos = 1;
    static constexpr std::int16_t mercado_nacional = 1; // of MercadoCliente: the tax number is verified

    // Names, captions and handlers of the controls: controlos.cpp

    void regista_controlos();
    void regista_rotulos();
    void regista_campos();
    void LimitaCampos();
    // Columns that grids share; a designation is as long as the ERP and the ledger keep it.
    static common::ColunaGrelha coluna_artigo();
    common::ColunaGrelha coluna_designacao(int largura);
    static common::ColunaGrelha coluna_escondida(const char* chave, const char* legenda,
                                                 common::TipoCelula tipo, int comprimento);
    void regista_botoes();
    void regista_grelhas();
    void na_pagina(common::Controlo& controlo, int pagina);

    // The screen and its states: guias_remessa.cpp

    void LeParametros();
    void limparform() override; // leaves NumGuia and ArmazemGuia as they are
    // Reads a document of the ERP into DocActual, where it throws away what is there; the screen's own
    // loading is Form_Load.
    bool Load(std::int16_t iAno, std::int16_t iSerie, std::int32_t lNumDoc, const std::string& sTpDoc,
              bool& bErro);
    // Shows the lines of DocActual in Gr. Always False, which says nothing: what failed is in FalhaLeitura.
    bool Ler(const startup::ChaveDocumento& utkeyDoc);
    void LerLinha(const startup::ReferenciaERP& linha, int r, const startup::ChaveDocumento& utkeyDoc);
    void Inibe();    // every control
    void DesInibe(); // every control, also those that were disabled before
    void btCancelar_Click();
    void btSair_Click();
    const common::Campo* campo_de_fecho() const override { return &campo(campos::cliente); }
    common::Campo& primeiro_campo() override { return campo(campos::cliente); }
    // Which buttons can be pressed goes with it.
    void MudaEstado(EstadoGuia novo);
    std::string ArmazemEscolhido() const; // of the warehouse choice
    std::int32_t NumeroNoEcra() const;    // in the number's field; throws when it is none

    // Client and header fields: campos.cpp

    void campo_Validate(int Index, bool& Cancel) override;
    void ValidaCliente(bool& Cancel);
    bool LeCliente(bool& Cancel); // the one whose code is on the screen; false where there is none
    void ValidaNumero(bool& Cancel);
    void MostraCabecalho();
    void ValidaVendedor(int Index, bool& Cancel);
    void ValidaContribuinte(bool& Cancel);
    void LimpaDadosCliente();
    void LerIvas(const std::string& Reg); // of one VAT regime, the market: sets MercadoCliente
    void btFx_Click(int Index) override;
    void EscolheGuia();

    // Open ledger lines: linhas_abertas.cpp

    void Act_Detalhe();
    // Lists the client's open lines, not invoices, and first repairs their gross weights in the ledger.
    void CarregaFacturas(const std::string& Cliente);
    // The same without a word. Gives the lines shown; nothing where the user gave it up.
    std::optional<int> ListaFacturas(const std::string& Cliente);
    // Gives the lines shown; nothing where the user gave it up.
    std::optional<int> PreencheDetalhe(const std::string& Cliente, const std::string& armazem);
    void ReparaPesos(const std::string& Cliente);
    std::string ChaveLinhaAberta(int linha) const; // 2019/FA/1/123/2
    void cb1_Change(int anterior);
    void MostraLinhaActual();
    void Detalhe_DblClick();
    base::Moeda JaEscolhido(const std::string& chave) const; // by the note, of an open line
    void EscolheLinha(int r, base::Moeda quantidade);        // into a new row of the note
    void DesmarcaLinha(int r);
    void Detalhe_GotFocus() { MostraLinhaActual(); }
    void Detalhe_LostFocus();
    void Detalhe_RowColChange(int LastRow, int LastCol);

    // Lines of the note: linhas_guia.cpp

    void Act_Gr();
    void Gr_KeyDown(int& KeyCode, int Shift);
    void Gr_BeforeColUpdate(int Row, int Col, const base::Variante& OldValue, bool& Cancel);
    bool RecusaAlterarGuia();
    bool AceitaNome(int linha);
    void LigaTexto(int linha); // a new line of text to the nearest article above it
    bool AceitaQuant(int linha);
    bool AceitaPesoBruto();
    void Gr_BeforeDelete(bool& Cancel);
    bool Gr_PodeApagar() const;
    void Gr_AfterDelete();
    int ArtigoDaLinha(int linha) const; // the row of the article that a text line stands under
    bool TextoSemArtigo(int linha) const;

    // Drafts: rascunho.cpp

    Rascunho RascunhoNoEcra() const;
    void Volta(const Passo& passo, std::vector<Passo> atras); // `atras` are the steps that then remain
    void LembraPasso(const Rascunho& rascunho);
    void Lembra(Passo passo);
    void LembraPorGravar(); // what is about to go from the screen
    void PoeDeLado();       // the same, and not because the user gave it up
    void EsquecePassos();   // of the note that is not on the screen any more; the ones given up stay
    bool Repoe(const Rascunho& rascunho);
    bool RepoeCabecalho(const Rascunho& rascunho);
    // Of the client whose lines are listed; with the weights they had, or those that are open now.
    void RepoeLinhas(const std::vector<LinhaRascunho>& linhas, bool como_estavam);
    bool RepoeLinha(int aberta, const LinhaRascunho& linha, bool como_estava, std::string& faltas);
    void PoeTexto(const std::string& texto);

    // Issuing and cancelling: emissao.cpp

    void btConf_Click(int Index);
    void Confirma(int Index, confirmacao::Confirmacao& confirmacao);
    bool VerificaQuantidades();
    bool VerificaContribuinte();
    // The whole of one transaction: the ERP's document of a note or a return, and the ledger's rows of it.
    void CriaERegista(const Guia& guia, confirmacao::Confirmacao& confirmacao);
    void Anula(confirmacao::Confirmacao& confirmacao);
    bool ExigeGuiaNoEcra();
    bool GuiaLidaPorInteiro();
    void Recomeca(); // lets go of the document too

    // The note as a value: guia.cpp

    CabecalhoGuia CabecalhoNoEcra(const startup::ParametroDocumento& documento,
                                  const base::DataHora& data) const;
    Guia GuiaNoEcra() const;
    Guia DevolucaoNoEcra() const; // of the lines ticked

    // The ERP document: documento.cpp

    bool LibertaDocumento(); // lets go of DocActual, whether there is one or not; always True
    // Where there is no document yet, makes one with this header.
    bool CriaCabecalhoGuia(const CabecalhoGuia& cab);
    bool CriaCabecalhoDevolucao(const CabecalhoGuia& cab);
    bool CriaCabecalho(const CabecalhoGuia& cab);
    // Add the lines and have the ERP save the whole document. True exactly when it was created; otherwise
    // UltimoErro tells why. `Erro` alone does not tell: after a refusal it is the flag of the ERP's last
    // result, which may be 0.
    bool CriaLinhasGuia(const Guia& guia, confirmacao::Confirmacao& confirmacao, std::int16_t TipoEnvio,
                        std::int32_t& Erro, std::string& Mensagem);
    bool CriaLinhasDevolucao(const Guia& devolucao, confirmacao::Confirmacao& confirmacao,
                             std::int16_t TipoEnvio, std::int32_t& Erro, std::string& Mensagem);
    void AdicionaLinha(const CabecalhoGuia& cab, const LinhaGuia& linha);
    void AdicionaLinhaTexto(const CabecalhoGuia& cab, const std::string& texto);
    startup::ReferenciaERP NovaLinha(const std::string& Artigo);
    // What every line says of its movement: its day and sector, and no price of its own.
    static void PoeMovimento(startup::ObjectoERP& lin, const CabecalhoGuia& cab);
    void SugereValores(const startup::ReferenciaERP& lin);
    void ComecaLinhas();
    void AcrescentaLinha(const startup::ReferenciaERP& lin, const std::string& OutroDoc, base::Moeda peso,
                         LinhaEnviada enviada);
    std::string ConteudoEnviado() const; // the articles and weights of the document being built
    static startup::ChaveDocumento ChaveDe(const startup::ReferenciaERP& documento);
    bool EnviaDocumento(confirmacao::Confirmacao& confirmacao, std::int16_t TipoEnvio, std::int32_t& Erro,
                        std::string& Mensagem);

    // The ledger: livro.cpp

    // Issue: takes from the open lines and adds the new note's rows.
    void ActualizaMov(const Guia& guia, std::int32_t NoDoc);
    // Cancellation of the note: gives back to the open lines what it took, and deletes its rows.
    void ActualizaMovGR(std::int32_t NoDoc);
    // One movement row, one holder row and one gross-weight row per article line of the ERP document. In a
    // step.
    void EscreveLinhasERP(const CabecalhoGuia& cab, std::int32_t NoDoc);
    // Throws when an article line that was sent is none of those the ERP shows: its weight would have left
    // the open line and be nowhere.
    void ExigeLinhasMostradas(const startup::ChaveDocumento& criado) const;
    livro::Documento DocumentoDaGuia(std::int32_t NoDoc) const; // a note of the year on the screen

    // Returns: devolucao.cpp

    void btGV_Click(int Index);
    void AbreDevolucao();
    void Act_Final();
    void CarregaFinal();
    void Final_BeforeColUpdate(int Row, int Col, bool& Cancel);
    bool Devolvida(int linha) const; // ticked in Final
    void GravaDevolucao();
    // Return: gives back to the open lines and adds the rows of the return; the note's own stay.
    void ActualizaMovGV(const Guia& devolucao, std::int32_t NoDoc, std::int32_t NoGRemessa);
    [[noreturn]] void RecusaSemMovimentos(std::int32_t NoGRemessa);
    void RecusaDevolvidas(const Guia& devolucao);
    livro::ChaveLinha LinhaDaGuia(const LinhaGuia& devolvida) const; // of the loaded note
    void TestaDevolucao(bool& Boa); // Boa: a line of the note was returned, so it cannot be cancelled
    // From this row of the note on, the first line that was returned; the number of rows where there is none.
    int ProximaDevolvida(int desde);
    // Whether this line of the loaded note was returned by the client on the screen: sets bDevolvido.
    void TestaGR(const std::string& sArtigo, std::int16_t Linha);

    // Members

    startup::ParametroDocumento GUIASREMESSA;
    startup::ParametroDocumento GUIADEVOLUCAO;
    startup::ParametroGrupos FACTURAS;
    startup::ParametroArmazem ARMAZEM; // of items at clients
    startup::ParametroArmazem ARMAZEMORVEX;
    startup::ParametroCliente CLIENTEORVEX; // the one that stands for ORVEX

    EstadoGuia Estado = EstadoGuia::vazia;
    std::int32_t NumGuia = 0; // number of the loaded note
    int Carregamentos = 0;
    startup::ReferenciaERP DocActual; // the document being built or read
    std::int16_t MercadoCliente = 0;  // of the client's VAT regime
    // Per line of the note being built, text lines included; position 0 is never used.
    std::vector<std::string> OutrosDocsLinha;
    std::vector<base::Moeda> PesosLinha; // gross weight, tonnes
    std::vector<LinhaEnviada> LinhasEnviadas;
    std::string ArmazemGuia;
    std::int16_t UltimaLinha = -1; // matrix row of the last used row of Gr
    bool bDevolvido = false;       // outcome of the last TestaGR
    std::string ClienteLinhas;     // whose open lines the note's are
    std::vector<Passo> Passado;    // of the note being made, oldest first, after those given up before it
    std::optional<Rascunho> DeLado;
    // Whose open lines Detalhe shows, whole, and in which choice of warehouse.
    std::optional<std::pair<std::string, int>> Abertas;
    std::string FalhaLeitura; // why the loaded note's lines were not all read; empty when they were
};

} // namespace orvex::delivery
