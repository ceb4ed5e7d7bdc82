#include "platform/qt/listas/linhas_dobradas.h"

#include "base/dobrado.h"
#include "base/texto.h"

#include <algorithm>
#include <utility>

namespace orvex::platform::qt {

void LinhasDobradas::celula(std::string_view texto) {
    base::dobra_em(texto, texto_);
    texto_ += '\n'; // no word reaches over two columns
}

std::string_view LinhasDobradas::linha(int qual) const {
    const auto i = static_cast<std::size_t>(qual);
    const std::size_t inicio = i == 0 ? 0 : fins_[i - 1];
    return std::string_view(texto_).substr(inicio, fins_[i] - inicio);
}

bool LinhasDobradas::procura(const QString& texto) {
    const std::string antes = std::exchange(procurado_, base::dobrado(texto.toStdString()));
    palavras_ = base::divide(procurado_, ' ');
    std::erase(palavras_, "");
    // What did not pass with less of the text does not pass with more.
    return antes.empty() || !procurado_.starts_with(antes);
}

bool LinhasDobradas::passa(int qual) const {
    return std::all_of(palavras_.begin(), palavras_.end(), [texto = linha(qual)](const std::string& palavra) {
        return texto.find(palavra) != std::string_view::npos;
    });
}

bool LinhasDobradas::tem(int qual, const std::string& celula) const {
    return linha(qual).find(celula) != std::string_view::npos;
}

std::string LinhasDobradas::como_celula(const QString& texto) {
    return "\n" + base::dobrado(texto.trimmed().toStdString()) + "\n";
}

} // namespace orvex::platform::qt
