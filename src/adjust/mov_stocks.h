// The stock-adjustment screen: surplus, breakage or internal consumption of one item, a past adjustment
// loaded again, replaced or cancelled.
//
// An adjustment is one ERP stock document and one ledger row. Replacing one cancels the old document and
// deletes the old row first; the new ones keep its date.
#pragma once

#include "adjust/indices.h"
#include "common/ecra.h"
#include "livro/artigos.h"
#include "livro/detentores.h"
#include "startup/modos.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orvex::adjust {

enum class TipoAjuste { nenhum, sobra, quebra, consumo };

namespace modos = startup::modos_ajuste;

class MovStocks : public common::Ecra {
  public:
    // `Modo` is one of modos_ajuste; any other is taken for that of consumptions, without a title of its own.
    MovStocks(common::ServicosEcra servicos, std::int16_t Modo);

    void Form_Load() override;
    bool por_gravar() const override;

    // What the quantity typed comes to, for a window to show while it is typed: of a surplus or breakage that
    // is not loaded its difference to the stock; and whether it is one that is asked about. Nothing while it
    // is no number.
    struct Diferenca {
        base::Moeda Qtd; // tonnes
        bool grande = false;
        bool da_existencia = false;
    };
    std::optional<Diferenca> diferenca() const;

    // Controls

    common::Etiqueta Label1; // the screen's title
    common::Vector<common::Etiqueta> Label2{"Label2"};
    common::Vector<common::Campo> campo{"campo"};
    common::SelectorData DTPicker1;
    common::Vector<common::Botao> btFx{"btFx"};
    common::Botao btConf;
    common::Botao btCancelar;
    common::Botao btAnular;
    common::Botao btSair;

  private:
    // What a confirmation is about to write.
    struct Ajuste {
        TipoAjuste Tipo = TipoAjuste::nenhum;
        base::Moeda Qtd; // tonnes
        std::string TpDoc;
        std::int16_t Serie = 0;
        std::string Sector;

        base::Moeda com_sinal() const { return Tipo == TipoAjuste::sobra ? Qtd : -Qtd; }
    };

    // The screen: mov_stocks.cpp

    void regista_controlos();
    void limparform() override; // leaves ArmazemActual, lRegisto and UltimoErro as they are
    void nomeia_quantidade(const char* nome);
    void btCancelar_Click();
    const common::Campo* campo_de_fecho() const override { return &campo(campos::existencia); }
    common::Campo& primeiro_campo() override { return campo(campos::artigo); }
    TipoAjuste tipo_do_modo() const;
    const startup::ParametroDocumento& documento_de(TipoAjuste tipo) const;

    // The lists, and a past adjustment loaded: listas.cpp

    void btFx_Click(int Index) override;
    void EscolheAjuste();
    // Throws with the screen untouched, so that what cannot be read whole is not loaded at all.
    void LerMovimento();

    // What is validated as it is typed: validacao.cpp

    void campo_Validate(int Index, bool& Cancel) override;
    bool ValidaArtigo();
    // As far as one thing led to another.
    struct ArtigoLido {
        std::optional<livro::UltimoMovimento> ultimo{};
        std::optional<livro::ArtigoActivo> ficha{};
        std::optional<base::Variante> existencia{};
        std::optional<livro::UltimoMovimento> entrada{};
    };
    ArtigoLido LeArtigo(const std::string& artigo);
    bool ValidaQuantidade();
    bool ConsumoExcessivo() const; // more than there is, the loaded adjustment's own quantity counted back
    bool recusa_artigo(const char* aviso);
    base::Moeda valor(int Index) const; // of a field; an empty one counts as 0
    // Where the items of a holder lie.
    const std::string& ArmazemDe(const std::string& cliente) const;

    // Confirming and replacing: confirmacao.cpp

    void btConf_Click();
    bool entrada_aceite();
    Ajuste ajuste_pedido();
    bool Pergunta(const Ajuste& ajuste);
    void Confirma(const Ajuste& ajuste, confirmacao::Confirmacao& confirmacao);
    confirmacao::Intencao IntencaoDe(const Ajuste& ajuste) const;
    // "Quebra QB/1/3, TA000004, 0,350 t"
    std::string Descreve(const Ajuste& ajuste, std::int32_t NumDoc) const;
    // Guards, inside the transaction: each throws, with the reason.
    void ConfereSubstituicao(const Ajuste& ajuste);
    // `por_repor` is what the replaced one has not yet given back to the stock.
    void ConfereStock(const Ajuste& ajuste, base::Moeda por_repor);
    void ConfereArtigo();
    std::optional<std::string> DetentorActual(); // of the item on the screen, by its newest ledger row
    // Validates nothing: has the ERP create the adjustment's document, and gives its number.
    std::int32_t ValidaMovimento(const Ajuste& ajuste, double preco, const base::DataHora& Data,
                                 confirmacao::Confirmacao& confirmacao);
    // Adds the adjustment's row to the ledger; there is none to bring up to date.
    void ActualizaMov(const Ajuste& ajuste, std::int32_t NumDoc, const base::DataHora& Data);
    // Of a replacement: makes the loaded adjustment's holder that of the new one, gives its date and cancels
    // its document; its row is then to be deleted. False when the ERP did not cancel it.
    bool RemoveInf(confirmacao::Confirmacao& confirmacao, base::DataHora& Data);

    // Cancelling: anulacao.cpp

    void btAnular_Click();
    bool Anula(confirmacao::Confirmacao& confirmacao);
    // Asks, where the item has gone from the adjustment's client to another holder since.
    bool AceitaReposicao(const std::string& cliente, const std::optional<std::string>& detentor);

    // Members

    static constexpr base::Moeda limite_aviso = base::Moeda::de_decimos_milesimos(1'500); // 150 kg
    static constexpr const char* consumo_invalido = "Valor Inválido para o Consumo!";

    std::int16_t Modo;
    startup::ParametroDocumento SOBRAS, QUEBRAS, CONSUMOS;
    startup::ParametroArmazem ARMAZEM, ARMAZEMORVEX;
    startup::ParametroCliente CLIENTEORVEX;
    std::string Detentor;      // holder of the item, by its newest ledger row
    std::string ArmazemActual; // where its stock is read and moved
    std::int32_t lRegisto = 0; // of the adjustment loaded
    bool bCarregado = false;
    livro::LinhaDetentor Carregado; // its row, as it was loaded
    base::Moeda cQtdCarregada;      // tonnes
};

} // namespace orvex::adjust
