// Holds what the user types or pastes into an entry field to one line and to a length; never what the program
// puts there.
#pragma once

#include <QString>
#include <QValidator>

#include <functional>

namespace orvex::platform::qt {

class LimiteTexto : public QValidator {
  public:
    // `maximo` tells the UTF-16 units the field takes, none or 0 for no limit; `antes` gives the text before
    // the user's change. What does not fit is cut off what was typed or pasted, without halving a character.
    LimiteTexto(QObject* pai, std::function<int()> maximo, std::function<QString()> antes)
        : QValidator(pai), maximo_(std::move(maximo)), antes_(std::move(antes)) {}

    State validate(QString& texto, int& cursor) const override;

  private:
    std::function<int()> maximo_;
    std::function<QString()> antes_;
};

} // namespace orvex::platform::qt
