// The toolkit's own words in European Portuguese: standard buttons and the menus of entry fields. The toolkit
// ships no translation for Portugal.
#pragma once

#include <QTranslator>

namespace orvex::platform::qt {

struct Palavra {
    const char* original;
    const char* portugues;
};

class TextosPortugueses : public QTranslator {
  public:
    using QTranslator::QTranslator;

    bool isEmpty() const override { return false; }
    QString translate(const char* contexto, const char* texto, const char* distincao, int n) const override;
};

} // namespace orvex::platform::qt
