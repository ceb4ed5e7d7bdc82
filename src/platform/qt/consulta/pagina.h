// A view in the window: its filters, its cards with their chart, and its tables, which fill while one reads.
#pragma once

#include "livro/consultas/pedido.h"
#include "platform/qt/consulta/etiquetas.h"
#include "platform/qt/consulta/pergunta.h"
#include "platform/qt/consulta/vista_quadro.h"

#include <QBoxLayout>
#include <QPointer>
#include <QWidget>

#include <map>

class QLabel;
class QPushButton;
class QTabWidget;
class QVBoxLayout;

namespace orvex::platform::qt::consulta {

class Filtros;

class Pagina : public QWidget, private Ouvinte {
  public:
    struct Janela {
        AoAbrir abre;
        std::function<void(const livro::consultas::Pedido&)> pede; // by its filters
        std::function<void(const QString&)> lido;
        std::function<void()> mudou; // what is said of it, and what may be done with it
        std::function<void()> copia; // the marked rows
        std::function<void(const QString&)> diz;
    };
    Pagina(std::shared_ptr<Fonte> fonte, livro::consultas::Pedido pedido, Janela janela);

    const livro::consultas::Pedido& pedido() const { return pedido_; }
    QString titulo() const;
    QString estado() const; // for the status line
    bool a_meio() const { return pergunta_.a_meio(); }
    bool inteira() const { return como_ == Fim::Como::respondeu && !a_meio(); }
    int lidas() const; // rows of all its tables

    void pergunta(); // anew too
    void desiste() { pergunta_.desiste(); }
    void foca(); // the first table, now or when it comes
    void vira(int passos);
    void abre_separador(const std::string& chave); // once it is there
    std::string separador() const;
    VistaQuadro* actual() const;

    livro::consultas::Recolhida toda() const;                    // as it was answered
    livro::consultas::Recolhida recolhida() const;               // as its tables show it
    int quantas() const;                                         // rows of that
    int quantas_marcadas() const;                                // and of the next
    std::optional<livro::consultas::Recolhida> marcadas() const; // of the table in sight; none of a part
    std::vector<Etiqueta> etiquetas() const;                     // its item, or the marked ones
    bool tem_artigos() const;

  protected:
    void resizeEvent(QResizeEvent* evento) override;

  private:
    struct Bloco {
        Parte parte; // its rows only where no table shows them
        QPointer<VistaQuadro> tabela;
    };

    void comeca() override;
    void vista(const livro::consultas::Vista& esta) override;
    void quadro(const livro::consultas::Quadro& este) override;
    void linhas(std::vector<livro::consultas::Linha> estas) override;
    void total(const livro::consultas::Linha& este) override;
    void acaba(const Fim& fim) override;

    void poe_filtros();
    void esvazia();
    QBoxLayout::Direction lado_a_lado() const; // of card and chart
    void nova_tabela(Bloco& bloco);
    void fecha_bloco(); // all its rows are there
    void conta(const Bloco& bloco);
    void guarda_lugar();
    void repoe_lugar();
    void mostra(const QString& mensagem, bool outra_vez);
    int lugar_de(const VistaQuadro* tabela) const;

    livro::consultas::Pedido pedido_;
    Janela janela_;
    Filtros* filtros_ = nullptr;
    QVBoxLayout* disposicao_;
    QWidget* aviso_; // what is missing, and why
    QLabel* mensagem_;
    QPushButton* outra_vez_;
    QWidget* conteudo_ = nullptr;
    QBoxLayout* cartoes_ = nullptr;
    QTabWidget* separadores_ = nullptr;
    livro::consultas::Vista cabecalho_;
    std::vector<Bloco> blocos_;
    std::optional<Fim::Como> como_;
    bool quer_foco_ = false;
    std::string quer_separador_;
    struct Lugar { // in a table, before it was asked for again
        QString filtro;
        int linha = 0;
    };
    std::map<std::string, Lugar> lugares_;
    Pergunta pergunta_;
};

// What a view is called before it has answered.
QString titulo_de(const livro::consultas::Pedido& pedido);

} // namespace orvex::platform::qt::consulta
