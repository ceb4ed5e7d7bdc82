// A small screen with one control of each kind, on which the bindings are tried.
#pragma once

#include "common/ecra.h"
#include "platform/qt/janela_qt.h"
#include "platform/qt/vista_grelha.h"
#include "tests/qt/apoio_qt.h"

#include <QTabWidget>
#include <QVBoxLayout>

#include <stdexcept>

namespace orvex::testes {

// Rows given by the test; every other operation is refused.
class TabelaFixa : public startup::SessaoBD {
  public:
    using Linhas = std::vector<std::vector<base::Variante>>;

    std::vector<std::string> nomes = {"Codigo", "Nome"};
    Linhas linhas;
    bool falha = false;

    bool Abre(const std::string&) override { return true; }
    std::unique_ptr<startup::ConjuntoRegistos> Consulta(const std::string&) override;
    std::unique_ptr<startup::ConjuntoRegistos> AbreActualizavel(const std::string&) override { recusa(); }
    void Executa(const std::string&) override { recusa(); }
    void IniciaTransaccao() override { recusa(); }
    void ConfirmaTransaccao() override { recusa(); }
    void AnulaTransaccao() override { recusa(); }
    bool EmTransaccao() override { return false; }
    void Fecha() override {}

  private:
    [[noreturn]] static void recusa() { throw base::Falha("Não faz parte deste ensaio."); }
};

class SemERP : public startup::SessaoERP {
  public:
    void ModoLigacao(std::int16_t) override {}
    bool Liga(const std::array<std::string, 5>&) override { return true; }
    startup::ReferenciaERP CriaObjecto(const std::string&) override { return nullptr; }
    void PreparaDocStock(bool) override {}
    startup::ChaveDocumento CriaDocStock(const startup::PedidoDocStock&) override { return {}; }
    std::int16_t SubmeteDocumento(std::int16_t, const startup::ReferenciaERP&) override { return -1; }
    startup::ReferenciaERP DocumentoSubmetido() override { return nullptr; }
    startup::ResultadoERP AnulaDocumento(std::int16_t, const startup::ChaveDocumento&) override { return {}; }
    startup::ResultadoERP ResultadoUltimo() override { return {}; }
    startup::ReferenciaERP Empresa() override { return nullptr; }
    void Desliga() override {}
};

struct Sessoes {
    TabelaFixa tabela;
    SemERP erp;
};

class EcraTeste : protected Sessoes, public common::Ecra {
  public:
    EcraTeste();

    void Form_Load() override {}

    using Ecra::Avisa;
    using Ecra::bDigitado;
    using Sessoes::tabela;
    common::ListaPesquisa lista() {
        return {.ligacao = tabela, .titulo = "Clientes", .sql = "s", .colunas = {}};
    }

    common::Campo campo[3];
    common::SelectorData data;
    common::Combo combo;
    common::Botao lista_0;
    common::Botao confirmar;
    common::Separadores paginas;
    common::Grelha grelha;
    common::Etiqueta nome;

    // What the handlers do and what they saw.
    std::function<bool(int)> aceita = [](int) { return true; };
    std::vector<int> validados; // fields validated while bDigitado was set
    int confirmacoes = 0;
    int duplos_cliques = 0;

  private:
    void campo_Validate(int Index, bool& Cancel) override;
    void btFx_Click(int Index) override { preenche_da_lista(campo[Index], lista()); }
    const common::Campo* campo_de_fecho() const override { return &campo[0]; }
    void limparform() override {}
    common::Campo& primeiro_campo() override { return campo[0]; }
};

class JanelaTeste : public platform::qt::JanelaQt {
  public:
    explicit JanelaTeste(EcraTeste& ecra);
};

// A screen in its open window. The keyboard starts in campo(0).
class JanelaAberta {
  public:
    explicit JanelaAberta(const std::function<void(EcraTeste&)>& prepara = {}) {
        if (prepara) prepara(ecra);
        janela = std::make_unique<JanelaTeste>(ecra);
        janela->abre();
        if (!QTest::qWaitForWindowActive(janela.get()))
            throw std::runtime_error("A janela não ficou activa.");
    }
    // The click a user makes on a control's middle.
    void clica(const char* nome) { QTest::mouseClick(&widget<QWidget>(*janela, nome), Qt::LeftButton); }
    void clica_celula(int linha, int coluna) {
        QTest::mouseClick(widget<QTableView>(*janela, "grelha").viewport(), Qt::LeftButton, {},
                          celula(*janela, "grelha", linha, coluna));
    }

    EcraTeste ecra;
    std::unique_ptr<JanelaTeste> janela;
};

} // namespace orvex::testes
