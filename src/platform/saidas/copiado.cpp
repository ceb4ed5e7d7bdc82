#include "platform/saidas/saidas.h"

#include <ostream>

namespace orvex::platform::saidas {
namespace {

using namespace livro::consultas;

class Tabulado final : public Destino {
  public:
    explicit Tabulado(std::ostream& saida) : saida_(saida) {}

    void vista(const Vista& esta) override { unico_ = esta.unico; }
    void quadro(const Quadro& este) override {
        if (!unico_) saida_ << (primeiro_ ? "" : "\n") << numa_linha(este.titulo) << "\n";
        primeiro_ = false;
        quadro_ = este;
        for (std::size_t i = 0; i < este.colunas.size(); ++i)
            saida_ << (i == 0 ? "" : "\t") << este.colunas[i].titulo;
        saida_ << "\n";
    }
    bool linha(const Linha& esta) override {
        for (std::size_t i = 0; i < esta.size(); ++i)
            saida_ << (i == 0 ? "" : "\t") << numa_linha(escrito(quadro_.colunas[i], esta[i]));
        saida_ << "\n";
        return true;
    }
    void total(const Linha&) override {}

  private:
    std::ostream& saida_;
    Quadro quadro_;
    bool unico_ = false, primeiro_ = true;
};

std::string em_html(const std::string& texto) {
    std::string escrito;
    for (const char c : numa_linha(texto)) {
        if (c == '&')
            escrito += "&amp;";
        else if (c == '<')
            escrito += "&lt;";
        else
            escrito += c;
    }
    return escrito;
}

class Html final : public Destino {
  public:
    explicit Html(std::ostream& saida) : saida_(saida) { saida_ << "<meta charset=\"utf-8\">"; }
    Html(const Html&) = delete;
    Html& operator=(const Html&) = delete;
    ~Html() override { fecha(); }

    void vista(const Vista& esta) override { unico_ = esta.unico; }
    void quadro(const Quadro& este) override {
        fecha();
        if (!unico_) saida_ << "<p><b>" << em_html(este.titulo) << "</b></p>";
        saida_ << "<table><tr>";
        for (const Coluna& coluna : este.colunas)
            saida_ << "<th>" << em_html(coluna.titulo) << "</th>";
        saida_ << "</tr>\n";
        quadro_ = este;
        aberto_ = true;
    }
    bool linha(const Linha& esta) override {
        saida_ << "<tr>";
        for (std::size_t i = 0; i < esta.size(); ++i)
            saida_ << "<td" << forma(quadro_.colunas[i], esta[i]) << ">"
                   << em_html(escrito(quadro_.colunas[i], esta[i])) << "</td>";
        saida_ << "</tr>\n";
        return true;
    }
    void total(const Linha&) override {}

  private:
    // A text is said to be one, and a number which one it is, in the two ways that spreadsheets know.
    static std::string forma(const Coluna& coluna, const base::Variante& valor) {
        if (std::holds_alternative<std::string>(valor.valor()))
            return " style='mso-number-format:\"\\@\"' sdnum=\"2070;0;@\"";
        if (valor.nulo() || !coluna.a_direita()) return {};
        return " align=\"right\" sdval=\"" + valor.texto() + "\" sdnum=\"2070;0;" +
               (coluna.tipo == Tipo::peso ? "#,##0.000" : "0") + "\"";
    }
    void fecha() {
        if (aberto_) saida_ << "</table>\n";
        aberto_ = false;
    }

    std::ostream& saida_;
    Quadro quadro_;
    bool unico_ = false, aberto_ = false;
};

} // namespace

std::unique_ptr<Destino> tabulado(std::ostream& saida) { return std::make_unique<Tabulado>(saida); }
std::unique_ptr<Destino> html(std::ostream& saida) { return std::make_unique<Html>(saida); }

} // namespace orvex::platform::saidas
