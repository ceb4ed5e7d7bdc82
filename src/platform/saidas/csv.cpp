#include "platform/saidas/saidas.h"

#include "base/texto.h"

#include <algorithm>
#include <ostream>

namespace orvex::platform::saidas {
namespace {

using namespace livro::consultas;

bool algarismo(char c) { return c >= '0' && c <= '9'; }

// What a spreadsheet reads as a number or a date: 0012, 10/12, 1E5, 5%, SET2, 1-MAR.
bool e_numero_ou_data(const std::string& texto) {
    constexpr std::string_view meses =
        "JAN FEV MAR ABR MAI JUN JUL AGO SET OUT NOV DEZ FEB APR MAY AUG SEP OCT DEC";
    std::string letras;
    bool ha_algarismo = false;
    for (const char c : base::maiusculas(texto)) {
        if (c >= 'A' && c <= 'Z')
            letras += c;
        else if (algarismo(c))
            ha_algarismo = true;
        else if (std::string_view(".,/-: %()").find(c) == std::string_view::npos)
            return false;
    }
    return ha_algarismo && (letras.empty() || letras == "E" ||
                            (letras.size() == 3 && meses.find(letras) != std::string_view::npos));
}

// A code is kept as well where it only begins like one: a spreadsheet of another language may take more.
bool codigo_parece_numero(const std::string& codigo) {
    return !codigo.empty() && std::any_of(codigo.begin(), codigo.end(), algarismo) &&
           (algarismo(codigo.front()) || codigo.find_first_of("-/ .,:") != std::string::npos);
}

bool parece_formula(const std::string& texto) {
    return !texto.empty() && std::string_view("=+-@\t\r").find(texto.front()) != std::string_view::npos;
}

std::string com_aspas(const std::string& texto) {
    std::string dobradas = "\"";
    for (const char c : texto)
        dobradas += c == '"' ? std::string("\"\"") : std::string(1, c);
    return dobradas + "\"";
}

std::string celula(const std::string& texto) {
    return texto.find_first_of(";\"\r\n\t") == std::string::npos ? texto : com_aspas(texto);
}

// A formula that is nothing but the text.
std::string como_texto(const std::string& texto) { return com_aspas("=" + com_aspas(texto)); }

class Csv final : public Destino {
  public:
    explicit Csv(std::ostream& saida) : saida_(saida) { saida_ << "\xEF\xBB\xBF"; }

    void vista(const Vista& esta) override { unico_ = esta.unico; }
    void quadro(const Quadro& este) override {
        if (!unico_) saida_ << (primeiro_ ? "" : "\n") << celula(este.titulo) << "\n";
        primeiro_ = false;
        quadro_ = este;
        for (std::size_t i = 0; i < este.colunas.size(); ++i)
            saida_ << (i == 0 ? "" : ";") << celula(este.colunas[i].titulo);
        saida_ << "\n";
    }
    bool linha(const Linha& esta) override {
        for (std::size_t i = 0; i < esta.size(); ++i)
            saida_ << (i == 0 ? "" : ";") << valor(quadro_.colunas[i], esta[i]);
        saida_ << "\n";
        return true;
    }
    void total(const Linha&) override {}

  private:
    static std::string valor(const Coluna& coluna, const base::Variante& valor) {
        std::string texto = escrito(coluna, valor);
        if (!std::holds_alternative<std::string>(valor.valor())) return texto;
        std::replace(texto.begin(), texto.end(), '\0', ' ');
        const bool codigo = coluna.tipo == Tipo::codigo && coluna.ligacao != Ligacao::documento;
        return parece_formula(texto) || e_numero_ou_data(texto) || (codigo && codigo_parece_numero(texto))
                   ? como_texto(texto)
                   : celula(texto);
    }

    std::ostream& saida_;
    Quadro quadro_;
    bool unico_ = false, primeiro_ = true;
};

} // namespace

std::unique_ptr<Destino> csv(std::ostream& saida) { return std::make_unique<Csv>(saida); }

} // namespace orvex::platform::saidas
