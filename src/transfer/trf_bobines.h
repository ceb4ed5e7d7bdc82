// The transfer screen: moves an item from the client that holds it back to ORVEX, or on to another client.
//
// A transfer is an exit row and an entry row of the ledger, in this order, so that the entry's client is the
// new holder. Back to ORVEX the ERP moves the stock between the warehouses too; to another client the article
// notes its holder.
#pragma once

#include "common/ecra.h"
#include "livro/artigos.h"
#include "livro/detentores.h"
#include "startup/modos.h"
#include "transfer/indices.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvex::transfer {

namespace modos = startup::modos_transferencia;

class TrfBobines : public common::Ecra {
  public:
    // `Modo` is one of modos_transferencia.
    TrfBobines(common::ServicosEcra servicos, std::int16_t Modo);

    void Form_Load() override;
    bool por_gravar() const override;

    // Controls

    common::Etiqueta Label1; // the screen's title
    common::Vector<common::Etiqueta> Label2{"Label2"};
    common::Vector<common::Campo> campo{"campo"};
    common::SelectorData DTPicker1;
    common::Vector<common::Botao> btFx{"btFx"};
    common::Botao btConf;
    common::Botao btCancelar;
    common::Botao btSair;

  private:
    // The screen and its validations: trf_bobines.cpp

    void regista_controlos();
    void limparform() override; // leaves UltimoErro as it is
    void btFx_Click(int Index) override;
    void btCancelar_Click();
    const common::Campo* campo_de_fecho() const override { return &campo(campos::detentor); }
    common::Campo& primeiro_campo() override { return campo(campos::artigo); }
    // Ends the program, unless it is the parameters file that has to be put right.
    void falha_sem_tratamento(const std::exception& falha) override;

    void campo_Validate(int Index, bool& Cancel) override;
    bool ValidaArtigo();
    // As far as one thing led to another.
    struct ArtigoLido {
        std::optional<livro::UltimoMovimento> ultimo{};
        bool com_guias = false;
        std::optional<livro::ArtigoActivo> ficha{};
        std::optional<base::Moeda> existencia{};
        std::optional<livro::UltimoMovimento> entrada{};
        std::string NomeDetentor{};  // empty for no such client
        std::string DetentorNoERP{}; //
    };
    ArtigoLido LeArtigo(const std::string& artigo);
    void AnunciaGuiasPorGerar(const std::string& artigo, std::vector<std::string>& anunciadas) const;
    bool ValidaDetentor(const ArtigoLido& lido);
    bool ValidaStock(const ArtigoLido& lido);
    const std::string& ArmazemDe(const std::string& cliente) const; // where the items of a holder lie
    // Tonnes; nothing where the item never was.
    std::optional<base::Moeda> Existencia(const std::string& artigo, const std::string& armazem);
    bool ValidaDestino();
    void LimpaArtigo();
    void LimpaDestino();

    // Confirming: confirmacao.cpp

    void btConf_Click();
    const std::string& Destino() const; // the item's new holder
    confirmacao::Meios meios_da_transferencia();
    confirmacao::Intencao IntencaoDeTransferir() const;
    void ExigeParametros() const;
    // The ledger is a chain: each exit leaves the holder that the row before it named. Throws when the item
    // is not the one accepted or has moved since, on this workstation or on another.
    void VerificaAceite();
    std::vector<std::string> PerguntasDaConfirmacao() const; // under the ledger's lock
    void GravaMovimentos();                                  // the exit, and then the entry
    // Adds one of the two rows; `txt` is its remark.
    void GravaMovimento(const std::string& Cliente, const std::string& txt, base::Moeda Qtd,
                        const std::string& TpDoc, std::int16_t Serie, const std::string& CliFinal);
    // Has the ERP create the stock document.
    void TransfereArmazem(confirmacao::Confirmacao& confirmacao, base::Moeda Quant);
    double PrecoTransferencia(const std::string& Artigo); // 0 without stock, unlike PrecoMovimento
    std::string PerguntaDaFicha() const;
    void ActArtigo(); // notes the new holder on the article's card, where it has one

    // Members

    static constexpr const char* guias_por_gerar = "Existem Guias de Remessa por gerar para este Artigo!";

    std::int16_t Modo;
    startup::ParametroDocumento SOBRAS, QUEBRAS, CONSUMOS, TRF;
    startup::ParametroGrupos FACTURAS;
    startup::ParametroArmazem ARMAZEM, ARMAZEMORVEX;
    startup::ParametroCliente CLIENTEORVEX;
    std::string Detentor;      // `Cliente` of the item's newest ledger row
    std::string ArmazemActual; // where its stock lies
    base::Moeda Quantidade;    // its stock there, tonnes
    std::string DetentorNoERP; // the holder shown, as the ERP writes it; empty for no
                               // such client
    int ComprimentoObserv = 0; // of the article's note

    // What the validations accepted last. `Registo` is that of the item's newest ledger row then.
    struct Aceite {
        std::string Artigo;
        std::int64_t Registo = 0;
        std::string Destino;
    };
    Aceite Aceites;
};

} // namespace orvex::transfer
