#include "platform/odbc/marcas.h"

namespace orvex::platform::odbc {
namespace {

constexpr const char* nome_da_marca = "xel_ORVEX_passo";

} // namespace

std::string marca_do_inicio(std::size_t lugar) {
    return "SELECT " + std::to_string(lugar) + " AS " + nome_da_marca + ",@n AS n,@e AS e;\n";
}

std::string marca_de(std::size_t lugar) {
    return ";\nSELECT @n=@@ROWCOUNT,@e=@@ERROR;\n" + marca_do_inicio(lugar);
}

std::optional<Marca> le_marca(Instrucao& instrucao, const std::vector<registos::Coluna>& colunas) {
    if (colunas.size() != 3 || colunas.front().nome != nome_da_marca || !instrucao.avanca()) return {};
    const auto numero = [&](std::size_t i) { return registos::le_celula({}, instrucao.celula(i)).inteiro(); };
    Marca marca{static_cast<std::size_t>(numero(0)), numero(1), {}};
    if (const auto erro = numero(2); erro != 0) marca.causa = instrucao.avisada(static_cast<int>(erro));
    return marca;
}

} // namespace orvex::platform::odbc
