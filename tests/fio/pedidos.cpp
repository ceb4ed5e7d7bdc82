#include "tests/fio/pedidos.h"

#include "base/texto.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace orvex::testes::tds {
namespace {

// A password travels with the halves of its bytes changed over, then turned.
std::string revela(std::string_view escondida) {
    std::string revelada;
    for (const char c : escondida) {
        const unsigned byte = static_cast<unsigned char>(c) ^ 0xA5u;
        revelada += static_cast<char>((byte << 4 | byte >> 4) & 0xFF);
    }
    return revelada;
}

constexpr unsigned char inteiro = 0x26, data = 0x28, data_hora = 0x2A, texto_longo = 0x63, decimal = 0x6A,
                        texto = 0xE7;
struct TipoParametro {
    unsigned char codigo;
    std::size_t descricao; // how many bytes describe the type; the last is the decimals, if it has any
    std::size_t tamanho;   // how many tell the value's length
};
constexpr TipoParametro tipos[] = {{inteiro, 1, 1},     {data, 0, 1},    {data_hora, 1, 1},
                                   {texto_longo, 9, 4}, {decimal, 3, 1}, {texto, 7, 2}};

base::DataHora data_de(std::uint64_t dias, int segundos) {
    constexpr std::chrono::sys_days primeiro{std::chrono::year(1) / 1 / 1};
    const std::chrono::year_month_day dia{primeiro + std::chrono::days(dias)};
    return {static_cast<int>(dia.year()),
            static_cast<int>(static_cast<unsigned>(dia.month())),
            static_cast<int>(static_cast<unsigned>(dia.day())),
            segundos / 3600,
            segundos / 60 % 60,
            segundos % 60};
}

base::Variante le_valor(Leitura leitura, unsigned char codigo, int casas) {
    const std::size_t tamanho = leitura.resto();
    constexpr std::int64_t potencias_10[]{1, 10, 100, 1000, 10'000, 100'000, 1'000'000, 10'000'000};
    switch (codigo) {
    case inteiro:
        return static_cast<std::int64_t>(leitura.numero(tamanho));
    case decimal: {
        const bool positivo = leitura.numero(1) != 0;
        const auto numero =
            static_cast<std::int64_t>(leitura.numero(8)) * potencias_10[base::Moeda::casas - casas];
        return base::Moeda::de_decimos_milesimos(positivo ? numero : -numero);
    }
    case data:
    case data_hora: {
        const auto hora = static_cast<std::int64_t>(leitura.numero(tamanho - 3));
        return data_de(leitura.numero(3), static_cast<int>(hora / potencias_10[casas]));
    }
    default:
        return leitura.texto(tamanho);
    }
}

Parametro le_parametro(Leitura& leitura) {
    Parametro parametro;
    leitura.bytes(2 * leitura.numero(1) + 1); // its name, where it goes by one
    const auto codigo = leitura.numero(1);
    const auto* tipo =
        std::find_if(std::begin(tipos), std::end(tipos), [&](const auto& t) { return t.codigo == codigo; });
    if (tipo == std::end(tipos)) throw LigacaoPerdida();
    const std::string_view descricao = leitura.bytes(tipo->descricao);
    const std::uint64_t tamanho = leitura.numero(tipo->tamanho);
    const std::uint64_t nulo = tipo->codigo == texto ? 0xFFFF : 0;
    if (codigo == data) parametro.tipo = platform::registos::TipoSQL::le("date");
    if (tamanho != nulo)
        parametro.valor =
            le_valor(Leitura(leitura.bytes(tamanho)), tipo->codigo, descricao.empty() ? 0 : descricao.back());
    return parametro;
}

} // namespace

Entrada le_entrada(std::string_view bytes) {
    const auto campo = [&](std::size_t numero) { // each is a place and a length, after what has a fixed one
        Leitura lugar(bytes), leitura(bytes);
        lugar.bytes(36 + 4 * numero);
        leitura.bytes(lugar.u16());
        return leitura.bytes(std::size_t{2} * lugar.u16());
    };
    const auto em_utf8 = [](std::string_view utf16) { return Leitura(utf16).texto(utf16.size()); };
    return {em_utf8(campo(1)), em_utf8(revela(campo(2))), em_utf8(campo(3)), em_utf8(campo(8))};
}

Pedido le_pedido(const Mensagem& mensagem) {
    Leitura leitura(mensagem.bytes);
    leitura.bytes(leitura.numero(4) - 4); // the headers; their length counts itself
    Pedido pedido;
    if (mensagem.tipo == lote) {
        pedido.texto = leitura.texto(leitura.resto());
        return pedido;
    }
    if (mensagem.tipo != chamada) throw LigacaoPerdida();
    constexpr unsigned por_numero = 0xFFFF, executesql = 10;
    const unsigned unidades = leitura.u16();
    pedido.procedimento = unidades != por_numero        ? leitura.texto(std::size_t{2} * unidades)
                          : leitura.u16() == executesql ? "sp_executesql"
                                                        : "?";
    leitura.u16();
    while (leitura.resto() > 0)
        pedido.parametros.push_back(le_parametro(leitura));
    pedido.texto = pedido.procedimento;
    auto& parametros = pedido.parametros;
    if (pedido.procedimento != "sp_executesql" || parametros.size() < 2) return pedido;
    pedido.texto = parametros[0].valor.texto(); // then the types of the others
    parametros.erase(parametros.begin(), parametros.begin() + 2);
    return pedido;
}

std::string Pedido::registado() const {
    std::string tudo = texto;
    for (const char* separador = " | "; const auto& [tipo, valor] : parametros) {
        const bool e_texto = std::holds_alternative<std::string>(valor.valor());
        tudo += std::exchange(separador, ", ");
        tudo += valor.nulo() ? "null" : e_texto ? base::entre_plicas(valor.texto()) : valor.texto();
    }
    return tudo;
}

} // namespace orvex::testes::tds
