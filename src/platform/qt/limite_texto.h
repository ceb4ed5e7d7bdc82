// Limits what the user types into an entry field, and never what the program puts there.
#pragma once

#include <QString>
#include <QValidator>

#include <functional>

namespace orvex::platform::qt {

class LimiteTexto : public QValidator {
  public:
    // `antes` gives the text before the user's change; a maximum of 0 is no limit. What does not fit is cut
    // off what was typed or pasted.
    LimiteTexto(QObject* pai, int maximo, std::function<QString()> antes)
        : QValidator(pai), maximo_(maximo), antes_(std::move(antes)) {}

    State validate(QString& texto, int& cursor) const override {
        if (maximo_ <= 0 || texto.size() <= maximo_) return Acceptable;
        const QString anterior = antes_();
        const auto excesso = texto.size() - std::max<qsizetype>(maximo_, anterior.size());
        if (excesso <= 0 || texto == anterior) return Acceptable;
        const auto inicio = std::max<qsizetype>(0, cursor - excesso);
        texto.remove(inicio, excesso);
        cursor = static_cast<int>(inicio);
        return Acceptable;
    }

  private:
    int maximo_;
    std::function<QString()> antes_;
};

} // namespace orvex::platform::qt
