// The window of the enquiries: a search field, and the views that it and their links open, gone through back
// and forward.
#pragma once

#include "livro/consultas/pedido.h"
#include "platform/qt/consulta/pergunta.h"
#include "platform/qt/memoria.h"
#include "platform/qt/pecas.h"

#include <optional>
#include <vector>

class QLabel;
class QStackedWidget;
class QToolButton;

namespace orvex::platform::qt::consulta {

class BarraLevar;
class Caminho;
class Pagina;
class Procura;

class JanelaConsulta : public QWidget {
  public:
    JanelaConsulta(std::shared_ptr<Fonte> fonte, const EstadoSessao& sessao);
    ~JanelaConsulta() override;

    // As it was left the last time, on a view or on the search.
    void abre(const std::optional<livro::consultas::Pedido>& pedido = {});
    void avisa(const QString& texto); // without a box: whoever works in it is not kept from it

  protected:
    bool eventFilter(QObject* alvo, QEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void closeEvent(QCloseEvent* evento) override;
    bool focusNextPrevChild(bool seguinte) override;

  private:
    enum class Teclado { fica, na_tabela };

    QWidget* linha_da_procura();
    QWidget* inicio(); // what can be asked, until something is
    QToolButton* botao_pequeno(const char* nome, const QString& texto, const QString& dica);
    void teclas();
    void segue(const livro::consultas::Pedido& pedido, Teclado teclado);
    void segue(livro::consultas::Ligacao ligacao, const std::string& texto, Teclado teclado);
    void anda(int passos);
    void outra_vez();
    void filtra();
    void esc();
    void mostra(); // what is in sight, and what may be done
    void poe_em_cima(QWidget* este);
    std::vector<QWidget*> por_ordem_do_teclado();
    void mostra_ajuda();

    std::shared_ptr<Fonte> fonte_;
    EstadoSessao sessao_;
    LugarDaJanela lugar_{"Consulta"};
    QLabel* titulo_;
    QStackedWidget* pilha_; // start, answers, views
    AreaQueCabe* area_;     // around them
    QWidget* inicio_ = nullptr;
    QWidget* em_cima_ = nullptr; // of these
    QToolButton *atras_ = nullptr, *a_frente_ = nullptr;
    LinhaEstado* linha_estado_;
    std::unique_ptr<Procura> procura_;
    std::unique_ptr<Caminho> caminho_;
    BarraLevar* barra_ = nullptr;
};

} // namespace orvex::platform::qt::consulta
