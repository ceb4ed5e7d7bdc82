#include "platform/qt/consulta/extracto.h"

#include "livro/consultas/historia.h"
#include "platform/qt/textos.h"

#include <algorithm>
#include <string_view>

namespace orvex::platform::qt::consulta {
namespace {

using namespace livro::consultas;

const Recolhida::Parte* parte(const Recolhida& vista, std::string_view chave) {
    const auto esta = std::find_if(vista.partes.begin(), vista.partes.end(),
                                   [&](const auto& uma) { return uma.quadro.chave == chave; });
    return esta == vista.partes.end() ? nullptr : &*esta;
}

// Of a row, by the column's key; null where there is none.
base::Variante valor(const Quadro& quadro, const Linha& linha, std::string_view chave) {
    for (std::size_t i = 0; i < linha.size() && i < quadro.colunas.size(); ++i)
        if (quadro.colunas[i].chave == chave) return linha[i];
    return {};
}

constexpr const char* do_inicio =
    "(1) Os nossos registos não têm o início deste artigo: a data indicada é a mais antiga que permitem "
    "afirmar, e o peso, que não permitem apurar, não está somado no total.";
constexpr const char* sem_peso_de_um_movimento =
    "(2) Falta-nos o peso de um dos movimentos deste artigo: o peso indicado pode não ser o que tem.";
constexpr const char* sem_data = "(3) Os nossos registos não têm a data de um dos movimentos deste artigo.";
constexpr const char* de_uma_passagem =
    "(4) Falta nos nossos registos uma das passagens deste artigo de um detentor para outro: a data e o peso "
    "indicados podem não ser exactos.";

struct Notas {
    bool inicio = false, de_um_movimento = false, data = false, passagem = false;
    bool ha() const { return inicio || de_um_movimento || data || passagem; }
};

bool tira(std::string& ressalvas, std::string_view esta) {
    const std::size_t onde = ressalvas.find(esta);
    if (onde == std::string::npos) return false;
    ressalvas.erase(onde, esta.size());
    return true;
}

// The client reads what we cannot tell beside the item, by the notes' numbers.
Linha linha_do_extracto(const Quadro& quadro, const Linha& linha, Notas& notas) {
    const base::Variante peso = valor(quadro, linha, "peso");
    std::string ressalvas = valor(quadro, linha, "ressalvas").texto();
    std::string marcas;
    const auto marca = [&](bool esta, bool& nota, const char* numero) {
        if (!esta) return;
        nota = true;
        marcas += (marcas.empty() ? "" : " ") + std::string(numero);
    };
    const bool inicio = tira(ressalvas, sem_inicio) || peso.nulo();
    marca(inicio, notas.inicio, "(1)");
    marca(tira(ressalvas, movimento_sem_peso) && !inicio, notas.de_um_movimento, "(2)");
    marca(tira(ressalvas, movimento_sem_data), notas.data, "(3)");
    marca(ressalvas.find_first_not_of(". ") != std::string::npos, notas.passagem, "(4)"); // any other
    return {valor(quadro, linha, "artigo"),
            valor(quadro, linha, "designacao"),
            valor(quadro, linha, "desde"),
            valor(quadro, linha, "dias"),
            peso,
            marcas};
}

Recolhida::Parte artigos(const Recolhida::Parte& detidos, const std::string& data, Notas& notas) {
    Recolhida::Parte lista;
    lista.quadro = {"artigos",
                    "Artigos em poder de V. Ex.as em " + data,
                    {{"artigo", "Artigo", Tipo::codigo},
                     {"designacao", "Designação"},
                     {"desde", "Desde", Tipo::data},
                     {"dias", "Dias", Tipo::inteiro},
                     {"peso", "Peso (t)", Tipo::peso}}};
    for (const Linha& linha : detidos.linhas)
        lista.linhas.push_back(linha_do_extracto(detidos.quadro, linha, notas));
    for (const Linha& total : detidos.totais)
        lista.totais.push_back({valor(detidos.quadro, total, "artigo"),
                                valor(detidos.quadro, total, "designacao"),
                                {},
                                {},
                                valor(detidos.quadro, total, "peso"),
                                {}});
    if (notas.ha()) lista.quadro.colunas.push_back({"notas", "Notas", Tipo::codigo});
    for (auto* linhas : {&lista.linhas, &lista.totais})
        for (Linha& linha : *linhas)
            linha.resize(lista.quadro.colunas.size());
    return lista;
}

// What the client looks for first.
Recolhida::Parte resumo(const Quadro& quadro, const Linha& ficha) {
    return {{"resumo",
             "Resumo",
             {{"cliente", "Cliente", Tipo::codigo},
              {"nome", "Nome"},
              {"artigos", "N.º de artigos", Tipo::inteiro},
              {"peso", "Peso total (t)", Tipo::peso}},
             true},
            {{valor(quadro, ficha, "cliente"), valor(quadro, ficha, "nome"), valor(quadro, ficha, "artigos"),
              valor(quadro, ficha, "peso")}},
            {}};
}

std::vector<QString> fecho(const Notas& notas) {
    std::vector<QString> paragrafos;
    if (notas.inicio) paragrafos.push_back(do_inicio);
    if (notas.de_um_movimento) paragrafos.push_back(sem_peso_de_um_movimento);
    if (notas.data) paragrafos.push_back(sem_data);
    if (notas.passagem) paragrafos.push_back(de_uma_passagem);
    paragrafos.push_back(
        "Agradecemos que confira este extracto e que nos comunique qualquer diferença. Se estiver "
        "conforme, queira devolver-nos uma cópia datada, assinada e carimbada.");
    return paragrafos;
}

} // namespace

Extracto extracto_de(const Recolhida& cliente) {
    Extracto extracto;
    Notas notas;
    std::string codigo, nome, data;
    if (const auto* ficha = parte(cliente, "ficha"); ficha != nullptr && !ficha->linhas.empty()) {
        const Linha& valores = ficha->linhas.front();
        codigo = valor(ficha->quadro, valores, "cliente").texto();
        nome = valor(ficha->quadro, valores, "nome").texto();
        data = valor(ficha->quadro, valores, "data").data().data();
        extracto.vista.partes.push_back(resumo(ficha->quadro, valores));
    }
    extracto.nome = "Extracto " + qs(codigo);
    extracto.vista.cabecalho = {
        "extracto",
        "Extracto de artigos em poder do cliente",
        {{"Cliente", nome.empty() ? codigo : codigo + " – " + nome}, {"À data de", data}}};
    if (const auto* detidos = parte(cliente, "artigos"))
        extracto.vista.partes.push_back(artigos(*detidos, data, notas));
    if (const auto* idades = parte(cliente, "idades")) extracto.vista.partes.push_back(*idades);
    extracto.fecho = fecho(notas);
    return extracto;
}

} // namespace orvex::platform::qt::consulta
