#include "base/texto.h"
#include "base/formato_regional.h"
#include "platform/saidas/saidas.h"

#include <algorithm>
#include <ostream>

namespace orvex::platform::saidas {
namespace {

using namespace livro::consultas;

// Above it widths are what the rows so far need: nobody waits for the last row of a million.
constexpr std::size_t linhas_medidas = 2000;
constexpr std::size_t largura_maxima = 60;

class Texto final : public Destino {
  public:
    explicit Texto(std::ostream& saida) : saida_(saida) {}
    Texto(const Texto&) = delete;
    Texto& operator=(const Texto&) = delete;
    ~Texto() override { acaba(); }

    void vista(const Vista& esta) override {
        saida_ << esta.titulo << "\n";
        for (const Filtro& filtro : esta.filtros)
            saida_ << filtro.nome << ": " << filtro.valor << "\n";
    }
    void quadro(const Quadro& este) override {
        acaba();
        quadro_ = este;
        aberto_ = true;
        medido_ = false;
        larguras_.clear();
        quantas_ = 0;
        if (!este.ficha) junta(titulos());
    }
    bool linha(const Linha& esta) override {
        ++quantas_;
        if (quadro_.ficha) {
            ficha(esta);
            return true;
        }
        junta(celulas(esta));
        if (!medido_ && por_escrever_.size() > linhas_medidas) despeja();
        return true;
    }
    void total(const Linha& este) override {
        if (quantas_ > 0) junta(celulas(este));
    }

  private:
    using Celulas = std::vector<std::string>;

    Celulas titulos() const {
        Celulas todas;
        for (const Coluna& coluna : quadro_.colunas)
            todas.push_back(coluna.titulo);
        return todas;
    }
    Celulas celulas(const Linha& linha) const {
        Celulas todas;
        for (std::size_t i = 0; i < linha.size(); ++i)
            todas.push_back(numa_linha(escrito(quadro_.colunas[i], linha[i])));
        return todas;
    }
    void ficha(const Linha& linha) {
        titulo();
        for (std::size_t i = 0; i < linha.size(); ++i) {
            const std::string valor = escrito(quadro_.colunas[i], linha[i]);
            if (!valor.empty())
                saida_ << "  " << quadro_.colunas[i].titulo << ": " << numa_linha(valor) << "\n";
        }
    }
    void titulo() { saida_ << "\n" << quadro_.titulo << "\n"; }
    void junta(Celulas celulas) {
        if (medido_) return escreve(celulas);
        larguras_.resize(quadro_.colunas.size());
        for (std::size_t i = 0; i < celulas.size(); ++i)
            larguras_[i] = std::max(larguras_[i], std::min(base::comprimento(celulas[i]), largura_maxima));
        por_escrever_.push_back(std::move(celulas));
    }
    void escreve(const Celulas& celulas) {
        std::string texto;
        for (std::size_t i = 0; i < celulas.size(); ++i) {
            const std::size_t tem = base::comprimento(celulas[i]);
            const std::string falta(tem < larguras_[i] ? larguras_[i] - tem : 0, ' ');
            texto += "  ";
            texto += quadro_.colunas[i].a_direita() ? falta + celulas[i] : celulas[i] + falta;
        }
        texto.erase(texto.find_last_not_of(' ') + 1);
        saida_ << texto << "\n";
    }
    void despeja() {
        titulo();
        for (const Celulas& celulas : por_escrever_)
            escreve(celulas);
        por_escrever_.clear();
        medido_ = true;
    }
    void acaba() {
        if (!aberto_ || quadro_.ficha) return;
        if (quantas_ == 0) {
            titulo();
            saida_ << "  (nada)\n";
            por_escrever_.clear();
        } else if (!medido_) {
            despeja();
        }
        aberto_ = false;
    }

    std::ostream& saida_;
    Quadro quadro_;
    bool aberto_ = false, medido_ = false;
    std::size_t quantas_ = 0;
    std::vector<std::size_t> larguras_;
    std::vector<Celulas> por_escrever_;
};

// Three decimals, which is what the ledger keeps; four where there are as many.
std::string em_toneladas(base::Moeda peso) {
    constexpr std::size_t casas = 3;
    std::string texto = peso.texto();
    const std::size_t ponto = texto.find('.');
    if (ponto == std::string::npos) return texto + "," + std::string(casas, '0');
    texto[ponto] = ',';
    const std::size_t tem = texto.size() - ponto - 1;
    return texto + std::string(tem < casas ? casas - tem : 0, '0');
}

} // namespace

std::string numa_linha(std::string texto) {
    std::replace_if(
        texto.begin(), texto.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; },
        ' ');
    return texto;
}

std::string escrito(const Coluna& coluna, const base::Variante& valor) {
    if (const auto* data = std::get_if<base::DataHora>(&valor.valor())) return data->data();
    if (coluna.tipo == Tipo::peso && !valor.nulo() && !std::holds_alternative<std::string>(valor.valor()))
        return em_toneladas(valor.moeda());
    return valor.texto();
}

std::unique_ptr<Destino> texto(std::ostream& saida) { return std::make_unique<Texto>(saida); }

} // namespace orvex::platform::saidas
