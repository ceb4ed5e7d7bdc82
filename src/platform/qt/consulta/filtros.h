// What a view was asked with, to be asked otherwise.
#pragma once

#include "livro/consultas/pedido.h"
#include "platform/qt/consulta/leitor.h"

#include <QVariant>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class QLineEdit;

namespace orvex::platform::qt::consulta {

class GrelhaDePares;

class Filtros : public QWidget {
  public:
    struct Janela {
        std::function<void(const livro::consultas::Pedido&)> ve;
        std::function<void(const QString&)> diz;  // what is wrong
        std::function<void(const QString&)> lido; // by a barcode reader, where no code is written
    };

    // None for a view that has no filters.
    static Filtros* de(const livro::consultas::Pedido& pedido, Janela janela);
    bool eventFilter(QObject* alvo, QEvent* evento) override;

  private:
    Filtros(const livro::consultas::Pedido& pedido, Janela janela);
    void constroi(livro::consultas::PedidoCliente& pedido);
    void constroi(livro::consultas::PedidoParados& pedido);
    void constroi(livro::consultas::PedidoMovimentos& pedido);
    void constroi(auto&) {}

    // A field each, of what `onde` keeps.
    void data(const char* nome, const QString& legenda, const QString& vazio,
              std::optional<base::DataHora>& onde);
    void data(const char* nome, const QString& legenda, base::DataHora& onde);
    void texto(const char* nome, const QString& legenda, std::string& onde);
    void dias(const char* nome, const QString& legenda, int& onde);
    void especie(const char* nome, const QString& legenda, std::string& onde);
    void junta(const char* nome, const QString& legenda, QWidget* campo);
    void ve();
    bool recusa(QLineEdit& campo, const QString& porque);

    livro::consultas::Pedido pedido_;
    Janela janela_;
    Leitor leitor_;
    QVariant antes_do_leitor_; // in the field that its characters went to
    GrelhaDePares* grelha_;
    std::vector<std::function<bool()>> leituras_; // into pedido_; false where a field was refused
};

} // namespace orvex::platform::qt::consulta
