#include "startup/parametros.h"

#include "base/texto.h"
#include "startup/ficheiro.h"

#include <algorithm>
#include <limits>

namespace orvex::startup {

const std::string& ListaParametros::operator[](std::size_t indice) const {
    if (indice < elementos.size()) return elementos[indice];
    throw FalhaParametro("O parâmetro " + chave + " está incompleto: falta o elemento " +
                             std::to_string(indice + 1) + " no ficheiro de parâmetros.",
                         base::numeros_falha::sem_elemento);
}

std::int16_t ListaParametros::serie(std::size_t indice) const {
    using Limites = std::numeric_limits<std::int16_t>;
    const auto numero = base::le_inteiro((*this)[indice]);
    if (numero && *numero >= Limites::min() && *numero <= Limites::max())
        return static_cast<std::int16_t>(*numero);
    throw FalhaParametro("O parâmetro " + chave + " tem no elemento " + std::to_string(indice + 1) +
                             " um valor que não é um número de série.",
                         base::numeros_falha::tipo_diferente);
}

std::vector<ParametroGrupos::Grupo> ParametroGrupos::grupos() const {
    std::vector<Grupo> lidos;
    for (std::size_t i = 0; i == 0 || i < elementos.size(); i += tamanho_grupo) {
        serie(i + 1);
        (*this)[i + 2];
        lidos.push_back({(*this)[i], (*this)[i + 1]});
    }
    return lidos;
}

std::string Parametros::LerParametros(const std::string& Texto) const {
    const std::string procurado = base::maiusculas(Texto) + "=";
    const std::size_t tamanho = base::comprimento(procurado);
    for (const std::string& linha : le_linhas(ficheiro_, "de parâmetros"))
        if (base::maiusculas(base::primeiros(linha, tamanho)) == procurado)
            return base::a_partir_de(linha, tamanho + 1);
    return {};
}

ListaParametros Parametros::lista(const std::string& chave) const {
    return {chave, base::divide(LerParametros(chave), ',')};
}

ListaParametros Parametros::lista_de_grupos(const std::string& chave) const {
    std::string valor = LerParametros(chave);
    std::replace(valor.begin(), valor.end(), ';', ',');
    ListaParametros grupos{chave, base::divide(valor, ',')};
    // What follows a separator at the end of whole groups is no group.
    if (grupos.elementos.size() % ParametroGrupos::tamanho_grupo == 1 && grupos.elementos.back().empty())
        grupos.elementos.pop_back();
    return grupos;
}

} // namespace orvex::startup
