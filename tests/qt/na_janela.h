// A screen at work on the small company, in its window. The keyboard starts in its first field.
#pragma once

#include "platform/qt/grelhas/vista_grelha.h"
#include "tests/common/ecra_ensaio.h"
#include "tests/qt/apoio_qt.h"

namespace orvex::testes {

inline const std::vector<Qt::Key> ok{Qt::Key_Return};
inline const std::vector<Qt::Key> para_ok{Qt::Key_Left, Qt::Key_Return}; // from Cancelar, the default

template <typename TBancada, typename TJanela>
struct NaJanela : TBancada {
    explicit NaJanela(auto... argumentos)
        : TBancada(argumentos...), qt(this->ecra, {"Bobines, Lda.", "SQLite", "demo", true}) {
        qt.define_consulta([this](const common::CodigoEscrito& codigo) {
            consultas +=
                (codigo.de == common::CodigoDe::artigo ? "artigo " : "cliente ") + codigo.codigo + "|";
            return impedimento;
        });
        qt.abre();
        activa();
    }
    ~NaJanela() { // as the rules close it, which asks nothing
        qt.descarrega();
        QCoreApplication::processEvents();
    }

    void activa() { // no window manager gives the keyboard back after a box
        qt.activateWindow();
        if (!QTest::qWaitForWindowActive(&qt)) throw std::runtime_error("A janela não ficou activa.");
    }
    void tecla(Qt::Key codigo, Qt::KeyboardModifiers modificadores = {}) {
        testes::tecla(qt, codigo, modificadores);
    }
    // Presses a key, answers the windows it brings up with these keys each, and tells what the boxes said.
    std::vector<std::string> tecla(Qt::Key codigo, Qt::KeyboardModifiers modificadores,
                                   const std::vector<std::vector<Qt::Key>>& teclas) {
        Respostas respostas;
        for (const auto& dadas : teclas)
            respostas.carrega(dadas);
        tecla(codigo, modificadores);
        activa();
        return respostas.textos;
    }
    void escreve(const char* texto) { testes::escreve(qt, texto); }
    // What the user types, "Tab, «0001», Alt+A": keys by their names, texts in quotes.
    void joga(const std::string& guiao) {
        for (const std::string& passo : partes(guiao, ", ")) {
            const QString nome = QString::fromStdString(passo);
            if (nome.startsWith("«")) {
                escreve(nome.mid(1, nome.size() - 2).toUtf8());
                continue;
            }
            const QKeyCombination teclas = QKeySequence(nome)[0];
            tecla(teclas.key(), teclas.keyboardModifiers());
        }
    }
    void cabe_em(QSize espaco) {
        EXPECT_LE(qt.minimumSizeHint().width(), espaco.width());
        EXPECT_LE(qt.minimumSizeHint().height(), espaco.height());
    }
    void clica(const char* nome) { QTest::mouseClick(&em<QWidget>(nome), Qt::LeftButton); }
    void clica_celula(const char* grelha, int linha, int coluna) {
        QTest::mouseClick(em<QTableView>(grelha).viewport(), Qt::LeftButton, {},
                          celula(qt, grelha, linha, coluna));
    }

    template <typename Tipo>
    Tipo& em(const char* nome) {
        return widget<Tipo>(qt, nome);
    }
    std::string com_teclado() const { // name of the control
        return qt.focusWidget() == nullptr ? "" : qt.focusWidget()->objectName().toStdString();
    }
    QRect lugar(const QWidget& w) { // in the window
        QCoreApplication::processEvents();
        return {w.mapTo(&qt, QPoint()), w.size()};
    }

    std::string consultas;   // what was to be opened there, each with a bar behind
    std::string impedimento; // what keeps it from that
    TJanela qt;
};

// The small screen in an open window.
class JanelaEnsaio : public platform::qt::JanelaQt {
  public:
    JanelaEnsaio(EcraEnsaio& ecra, const platform::qt::EstadoSessao& sessao) : JanelaQt(ecra, sessao) {
        auto* disposicao = new QVBoxLayout(this);
        disposicao->addWidget(vincula_com_lista(ecra.campo[0], 10, ecra.lista_0));
        for (const int i : {1, 2})
            disposicao->addWidget(vincula(ecra.campo[i], 10));
        disposicao->addWidget(vincula(ecra.data));
        disposicao->addWidget(vincula(ecra.combo));
        QTabWidget* paginas = vincula(ecra.paginas);
        paginas->addTab(vincula(ecra.grelha), {});
        paginas->addTab(new QWidget, {});
        disposicao->addWidget(paginas);
        disposicao->addWidget(vincula(ecra.nome));
        disposicao->addWidget(vincula(ecra.confirmar));
        disposicao->addWidget(&linha_estado());
    }
};

using JanelaAberta = NaJanela<Bancada<EcraEnsaio>, JanelaEnsaio>;

} // namespace orvex::testes
