// A program with windows: what its main needs of the toolkit.
#pragma once

#include "common/janela.h"

#include <QApplication>

#include <exception>
#include <functional>
#include <memory>
#include <string>

namespace orvex::platform::qt {

// A failure inside an event ends the event loop and is reported by main; it must not pass through the
// toolkit.
class Programa : public QApplication {
  public:
    // Ready for windows. Where there is no window system `diz_falha` is told so, and the process ends.
    static std::unique_ptr<Programa> novo(int& argc, char** argv,
                                          std::function<void(const std::string&)> diz_falha);

    bool notify(QObject* alvo, QEvent* evento) override;
    int corre(); // until the last window is closed; throws what failed meanwhile

  private:
    Programa(int& argc, char** argv) : QApplication(argc, argv) {}

    std::exception_ptr falha_;
};

// A box, or a line on the error output where nobody sees a box: without a window system, or on a pretended
// one.
void diz(const std::string& texto, const std::string& titulo, common::Icone icone);

} // namespace orvex::platform::qt
