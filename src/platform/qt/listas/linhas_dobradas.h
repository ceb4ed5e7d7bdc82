// Rows as they are filtered while one types: the text of each, folded (no case, no accents) and end to end,
// and the words that are looked for.
#pragma once

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace orvex::platform::qt {

class LinhasDobradas {
  public:
    // A row is its cells, in between these two.
    void comeca() { texto_ += '\n'; }
    void celula(std::string_view texto);
    void acaba() { fins_.push_back(texto_.size()); }

    // From here on rows pass that contain every word of the text. True where some that did not pass by the
    // text before may pass by this one.
    bool procura(const QString& texto);
    bool passam_todas() const { return palavras_.empty(); }
    bool passa(int linha) const;
    // With a cell that is the text, but for case and accents; `celula` is what `como_celula` made of it.
    bool tem(int linha, const std::string& celula) const;
    static std::string como_celula(const QString& texto);

  private:
    std::string_view linha(int qual) const;

    std::string texto_; // "\na\nb\n"; row i ends at fins_[i]
    std::vector<std::size_t> fins_;
    std::string procurado_;
    std::vector<std::string> palavras_;
};

} // namespace orvex::platform::qt
