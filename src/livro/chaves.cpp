#include "livro/chaves.h"

#include "base/texto.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace orvex::livro {
namespace {

constexpr std::size_t partes_da_chave = 5;
constexpr std::size_t digitos_do_sufixo = 5;
constexpr std::size_t digitos_do_ano = 4;
constexpr std::size_t depois_do_ano = 6; // where a document's type begins; positions count from 1
constexpr const char* sem_sufixo = "/00000";

// Of the columns of a key.
template <typename Inteiro>
bool numero(const std::string& parte) {
    const auto lido = base::le_inteiro(parte);
    return lido && *lido >= std::numeric_limits<Inteiro>::min() &&
           *lido <= std::numeric_limits<Inteiro>::max();
}

bool sufixo(const std::string& parte) {
    return parte.size() == digitos_do_sufixo &&
           std::all_of(parte.begin(), parte.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

std::string ChaveLinha::documento() const { return TpDoc + "/" + Serie + "/" + NumDoc; }
std::string ChaveLinha::texto() const { return Ano + "/" + documento() + "/" + NumLinha; }
std::string ChaveLinha::origem() const { return texto() + sem_sufixo; }

std::optional<ChaveLinha> le_chave(std::string_view texto) {
    std::vector<std::string> p = base::divide(texto, '/');
    if (p.size() == partes_da_chave + 1 && sufixo(p.back())) p.pop_back();
    if (p.size() != partes_da_chave || !numero<std::int16_t>(p[0]) || p[1].empty() ||
        !numero<std::int16_t>(p[2]) || !numero<std::int32_t>(p[3]) || !numero<std::int16_t>(p[4]))
        return std::nullopt;
    return ChaveLinha{p[0], p[1], p[2], p[3], p[4]};
}

std::optional<ChaveLinha> le_origem(const std::string& Origem, const ChaveLinha& linha) {
    if (Origem.empty()) return std::nullopt;
    auto chave = le_chave(Origem);
    if (!chave)
        throw base::FalhaGuarda("A linha " + linha.texto() + " dos movimentos da ORVEX tem como origem «" +
                                Origem +
                                "», que não é a chave de uma linha, e o seu peso não seria reposto em "
                                "nenhuma. Peça a correcção desse movimento.");
    return chave;
}

std::optional<ChaveLinha> chave_propria(startup::ConjuntoRegistos& movimento) {
    std::string partes[partes_da_chave];
    std::string* parte = partes;
    for (const char* coluna : {"Ano", "TpDoc", "SerieDoc", "NumDoc", "NumLinha"}) {
        const base::Variante valor = movimento.valor(coluna);
        if (valor.nulo()) return std::nullopt;
        *parte++ = valor.texto();
    }
    return ChaveLinha{partes[0], partes[1], partes[2], partes[3], partes[4]};
}

std::string com_ano(std::string_view data, std::string_view documento) {
    return base::ultimos(data, digitos_do_ano) + "/" + std::string(documento);
}

std::string sem_ano(std::string_view documento_com_ano) {
    return base::a_partir_de(documento_com_ano, depois_do_ano);
}

std::string com_linha(std::string_view documento_com_ano, std::string_view NumLinha) {
    return std::string(documento_com_ano) + "/" + std::string(NumLinha);
}

std::string com_sufixo(std::string_view chave, int numero_da_linha) {
    return std::string(chave) + "/" +
           base::ultimos("00000" + std::to_string(numero_da_linha), digitos_do_sufixo);
}

bool e_da_linha(std::string_view com_sufixo, std::string_view chave) {
    return com_sufixo.starts_with(std::string(chave) + "/");
}

ChaveLinha Documento::linha(const std::string& NumLinha) const {
    return {std::to_string(Ano), TpDoc, Serie, std::to_string(Numero), NumLinha};
}

} // namespace orvex::livro
