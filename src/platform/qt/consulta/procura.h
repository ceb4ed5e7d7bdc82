// The search field and its answers: asked anew at each key, and in one go for what a barcode reader sends.
#pragma once

#include "livro/consultas/quadro.h"
#include "platform/qt/consulta/pergunta.h"
#include "platform/qt/consulta/vista_quadro.h"

#include <QElapsedTimer>
#include <QTimer>

#include <optional>

class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace orvex::platform::qt::consulta {

class Procura : public QObject, private Ouvinte {
  public:
    struct Janela {
        AoAbrir abre;
        std::function<void(const QString&)> diz; // in the status line
        std::function<void()> mudou;             // whether the answers are to be seen
        std::function<void()> desce;             // to the view, where no answers are
    };
    Procura(std::shared_ptr<Fonte> fonte, Janela janela);

    QLineEdit& campo() const { return *campo_; }
    QWidget& respostas() const { return *respostas_; } // in the place of the view
    bool a_vista() const { return a_vista_; }
    bool a_meio() const { return espera_.isActive() || pergunta_.a_meio(); }
    QString actual() const; // the code of the current answer

    void foca();
    void escreve(QKeyEvent& tecla);      // typed elsewhere, where nothing takes text
    void procura(const QString& codigo); // and open it: what a reader sent
    void outra_vez();
    void desiste();
    void fecha(); // the answers; the text stays, to be written over
    bool eventFilter(QObject* alvo, QEvent* evento) override;

  private:
    struct Achado {
        livro::consultas::Ligacao ligacao;
        std::string texto;
        QTreeWidgetItem* linha;
    };

    void comeca() override;
    void vista(const livro::consultas::Vista&) override {}
    void quadro(const livro::consultas::Quadro& este) override;
    void linhas(std::vector<livro::consultas::Linha> estas) override;
    void total(const livro::consultas::Linha&) override {}
    void acaba(const Fim& fim) override;

    QString texto() const;
    void mudou_o_texto();
    void pergunta();
    void limpa();
    void entra(); // Enter in the field
    void decide();
    const Achado* exacto() const; // the only one that is the text to the letter
    void abre(const Achado& achado);
    bool tecla_no_campo(const QKeyEvent& tecla);
    bool tecla_na_lista(QKeyEvent& tecla);
    void mostra(const QString& mensagem);
    QSize altura_da_linha() const;

    Janela janela_;
    QLineEdit* campo_;
    QWidget* respostas_;
    QLabel* mensagem_;
    QPushButton* outra_vez_;
    QTreeWidget* lista_;
    QTimer espera_; // a moment, so that a reader's code is asked once
    std::vector<Achado> achados_;
    std::optional<livro::consultas::Quadro> quadro_; // being told, and not in the list yet
    std::string grupo_;                              // that the last rows of the list stand in
    bool da_anterior_ = false;                       // what the list shows, until something new comes
    bool a_vista_ = false;
    bool enter_ = false; // pressed before its answer was there
    std::optional<Fim> fim_;
    QElapsedTimer desde_o_enter_;
    Pergunta pergunta_;
};

} // namespace orvex::platform::qt::consulta
