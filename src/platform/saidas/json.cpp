#include "platform/saidas/saidas.h"

#include <nlohmann/json.hpp>

#include <ostream>

namespace orvex::platform::saidas {
namespace {

using namespace livro::consultas;
using Json = nlohmann::ordered_json;

const char* nome(Tipo tipo) {
    switch (tipo) {
    case Tipo::data:
        return "data";
    case Tipo::peso:
        return "peso_t";
    case Tipo::inteiro:
        return "inteiro";
    default:
        return "texto";
    }
}

// Texts of a database may hold anything.
std::string escrito_json(const Json& valor) {
    return valor.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string valor_json(const base::Variante& valor) {
    if (valor.nulo()) return "null";
    if (const auto* data = std::get_if<base::DataHora>(&valor.valor())) return escrito_json(data->data_iso());
    if (const auto* texto = std::get_if<std::string>(&valor.valor())) return escrito_json(*texto);
    return valor.texto(); // plain decimal text
}

class SaidaJson final : public Destino {
  public:
    explicit SaidaJson(std::ostream& saida) : saida_(saida) {}
    SaidaJson(const SaidaJson&) = delete;
    SaidaJson& operator=(const SaidaJson&) = delete;
    ~SaidaJson() override {
        if (!comecada_) return;
        fecha_quadro();
        saida_ << "\n]}\n";
    }

    void vista(const Vista& esta) override {
        comecada_ = true;
        Json filtros = Json::object();
        for (const Filtro& filtro : esta.filtros)
            filtros[filtro.nome] = filtro.valor;
        saida_ << "{\"vista\": " << escrito_json(esta.chave) << ", \"titulo\": " << escrito_json(esta.titulo)
               << ", \"filtros\": " << escrito_json(filtros) << ", \"quadros\": [";
    }
    void quadro(const Quadro& este) override {
        fecha_quadro();
        Json colunas = Json::array();
        for (const Coluna& coluna : este.colunas)
            colunas.push_back(
                {{"coluna", coluna.chave}, {"titulo", coluna.titulo}, {"tipo", nome(coluna.tipo)}});
        saida_ << (quadros_++ == 0 ? "\n" : ",\n") << "{\"quadro\": " << escrito_json(este.chave)
               << ", \"titulo\": " << escrito_json(este.titulo) << ", \"colunas\": " << escrito_json(colunas)
               << ", \"linhas\": [";
        quadro_ = este;
        aberto_ = true;
        linhas_ = 0;
        totais_.clear();
    }
    bool linha(const Linha& esta) override {
        saida_ << (linhas_++ == 0 ? "\n" : ",\n") << objecto(esta);
        return true;
    }
    void total(const Linha& este) override { totais_ += (totais_.empty() ? "\n" : ",\n") + objecto(este); }

  private:
    std::string objecto(const Linha& linha) const {
        std::string texto;
        for (std::size_t i = 0; i < linha.size(); ++i)
            texto +=
                (i == 0 ? "{" : ", ") + escrito_json(quadro_.colunas[i].chave) + ": " + valor_json(linha[i]);
        return texto + "}";
    }
    void fecha_quadro() {
        if (aberto_) saida_ << "], \"totais\": [" << totais_ << "]}";
        aberto_ = false;
    }

    std::ostream& saida_;
    Quadro quadro_;
    bool comecada_ = false, aberto_ = false;
    int quadros_ = 0, linhas_ = 0;
    std::string totais_;
};

} // namespace

std::unique_ptr<Destino> json(std::ostream& saida) { return std::make_unique<SaidaJson>(saida); }

} // namespace orvex::platform::saidas
