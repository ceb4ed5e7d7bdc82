// A small screen with one control of each kind, on which what all screens share is tried.
#pragma once

#include "common/ecra.h"
#include "tests/apoio/empresa_teste.h"

namespace orvex::testes {

class EcraEnsaio : public common::Ecra {
  public:
    explicit EcraEnsaio(common::ServicosEcra servicos, const std::function<void(EcraEnsaio&)>& prepara = {})
        : Ecra(std::move(servicos), "Ensaio") {
        for (const int i : {0, 1, 2}) {
            campo[i].Index = i;
            regista(campo[i], "campo(" + std::to_string(i) + ")");
        }
        regista(data, "data");
        data.KeyDown = [this](int& KeyCode, int) {
            if (KeyCode == common::tecla_enter) xelSendkeys("{TAB}");
            if (KeyCode == common::tecla_esc) xelSendkeys("+{TAB}");
        };
        regista(combo, "combo");
        combo.itens = {"Um", "Dois"};
        combo.ListIndex = 0;
        regista(lista_0, "btFx(0)");
        lista_0.Click = [this] { btFx_Click(0); };
        regista(confirmar, "confirmar");
        confirmar.Caption = "&Confirmar";
        confirmar.Click = [this] { ++confirmacoes; };
        regista(paginas, "paginas");
        paginas.Captions = {"Linhas", "Outros"};
        regista(grelha, "grelha");
        define_grelha();
        regista(nome, "nome");
        foco().define_ordem({&campo[0], &campo[1], &data, &combo, &paginas, &grelha, &campo[2], &confirmar});
        if (prepara) prepara(*this);
    }

    void Form_Load() override {}

    using Ecra::AceitaDatas;
    using Ecra::Avisa;
    using Ecra::bDigitado;
    using Ecra::MostraMensagem;
    using Ecra::SetFocus;
    using Ecra::xelSendkeys;

    common::Campo campo[3];
    common::SelectorData data;
    common::Combo combo;
    common::Botao lista_0; // of the clients, by code
    common::Botao confirmar;
    common::Separadores paginas;
    common::Grelha grelha;
    common::Etiqueta nome;

    // What the handlers do and what they saw.
    std::function<bool(int)> aceita = [](int) { return true; };
    std::vector<int> validados; // fields validated while bDigitado was set
    int confirmacoes = 0;

  private:
    void define_grelha() {
        using common::TipoCelula;
        grelha.define({{"Artigo", "Artigo", TipoCelula::texto, 1500, 0, true, false, false},
                       {"Nome", "Designação", TipoCelula::texto, 3000, 10, false},
                       {"Peso", "Peso", TipoCelula::decimal, 1200, 0, false, false, true, true},
                       {"Chave", "Chave", TipoCelula::texto, 0, 0, true, true},
                       {"Marca", "...", TipoCelula::logico, 700, 0, false}},
                      4);
        for (const int linha : {0, 1}) {
            grelha.define_valor(linha, "Artigo", "A" + std::to_string(linha));
            grelha.define_valor(linha, "Peso", base::Moeda::de_inteiro(linha + 1));
            grelha.define_valor(linha, "Marca", false);
        }
        grelha.dentro_de = &paginas;
        grelha.pagina = 0;
    }
    void campo_Validate(int Index, bool& Cancel) override {
        if (!bDigitado) return;
        validados.push_back(Index);
        Cancel = !aceita(Index);
        bDigitado = false;
    }
    void btFx_Click(int Index) override {
        preenche_da_lista(
            campo[Index],
            {BD.Ligacao(), "Clientes", "select CODIGO, Nome from Clientes order by CODIGO", 8000, {}});
    }
    const common::Campo* campo_de_fecho() const override { return &campo[0]; }
    void limparform() override {}
    common::Campo& primeiro_campo() override { return campo[0]; }
};

} // namespace orvex::testes
