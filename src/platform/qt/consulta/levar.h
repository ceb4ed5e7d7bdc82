// A view taken along: to the clipboard, to a file, to paper. Each gives what to say of it in the status line,
// empty where the user gave it up; what fails is told in a box, and leaves what was there.
#pragma once

#include "livro/consultas/quadro.h"

#include <QString>

#include <functional>

class QWidget;

namespace orvex::platform::qt::consulta {

// What fails in it, memory too, is told in a box; empty then.
QString tenta(QWidget& janela, const std::function<QString()>& faz);
QString copia(const livro::consultas::Recolhida& vista); // with its headings
QString guarda_csv(QWidget& janela, const livro::consultas::Recolhida& vista);
QString guarda_xlsx(QWidget& janela, const livro::consultas::Recolhida& vista);
// With company, view, filters, date, page numbers and totals.
QString imprime(QWidget& janela, const livro::consultas::Recolhida& vista, const QString& empresa);
QString guarda_pdf(QWidget& janela, const livro::consultas::Recolhida& vista, const QString& empresa);

// "Extracto de artigos em poder do cliente", of the view of a client.
QString imprime_extracto(QWidget& janela, const livro::consultas::Recolhida& vista, const QString& empresa);
QString guarda_extracto(QWidget& janela, const livro::consultas::Recolhida& vista, const QString& empresa);

} // namespace orvex::platform::qt::consulta
