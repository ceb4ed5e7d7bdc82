#include "plano.h"

#include "nomes.h"

#include <algorithm>
#include <chrono>
#include <map>

namespace orvex::demo {
namespace {

using base::DataHora;
using base::Moeda;

constexpr std::int64_t maximo_linhas_factura = 6;
constexpr std::int64_t artigos_do_primeiro_cliente = 3; // so that its first list shows something

Moeda toneladas(std::int64_t quilos) { return Moeda::de_decimos_milesimos(quilos * 10); }

std::string codigo_artigo(std::int64_t numero) {
    std::string digitos = std::to_string(numero + 1);
    if (digitos.size() < 6) digitos.insert(0, 6 - digitos.size(), '0');
    return familia(numero).prefixo + digitos;
}

// Who holds the articles at clients: the first few lie at the first client, the others go round.
std::int64_t dono(std::int64_t vez, std::int64_t clientes) {
    return vez < artigos_do_primeiro_cliente ? 1 : 1 + (vez - artigos_do_primeiro_cliente + 1) % clientes;
}

void planeia_artigos(const OpcoesEmpresa& opcoes, Sorteio& sorteio, Plano& plano) {
    const std::int64_t activos = std::max<std::int64_t>(opcoes.clientes - 1, 1);
    for (std::int64_t i = 0; i < opcoes.artigos; ++i) {
        Artigo novo;
        novo.codigo = codigo_artigo(i);
        novo.nome = familia(i).nome;
        novo.preco = Moeda::de_inteiro(familia(i).preco + sorteio.entre(-30, 30));
        novo.existencia = toneladas(sorteio.entre(200, 4500));
        // Of four articles two are at ORVEX, one is at a client who has part of it invoiced, and one is at a
        // client with nothing pending, free to be transferred.
        const std::size_t posicao = plano.artigos.size();
        if (i % 4 < 2) {
            plano.de_orvex.push_back(posicao);
        } else {
            novo.dono = dono(i / 4, activos);
            if (i % 4 == 2) plano.de_clientes[novo.dono].push_back(posicao);
        }
        plano.artigos.push_back(std::move(novo));
    }
}

void acrescenta_facturas(std::int64_t cliente, std::int64_t linhas, Sorteio& sorteio, Plano& plano) {
    while (linhas > 0) {
        const std::int64_t desta = std::min(linhas, sorteio.entre(1, maximo_linhas_factura));
        plano.facturas.push_back({.cliente = cliente, .linhas = desta, .tipo = "", .numero = 0, .data = {}});
        linhas -= desta;
    }
}

void planeia_facturas(const OpcoesEmpresa& opcoes, Sorteio& sorteio, Plano& plano) {
    const std::int64_t activos = std::max<std::int64_t>(opcoes.clientes - 1, 1);
    const std::int64_t do_primeiro =
        activos == 1 ? opcoes.linhas : std::min(opcoes.linhas, opcoes.linhas_primeiro_cliente);
    acrescenta_facturas(1, do_primeiro, sorteio, plano);
    for (std::int64_t resto = opcoes.linhas - do_primeiro; resto > 0;) {
        const std::int64_t desta = std::min(resto, sorteio.entre(1, maximo_linhas_factura));
        acrescenta_facturas(sorteio.entre(2, activos), desta, sorteio, plano);
        resto -= desta;
    }
    sorteio.baralha(plano.facturas);
}

// Spread evenly from the first of January of last year to today, numbered as they come.
void data_facturas(const OpcoesEmpresa& opcoes, Sorteio& sorteio, Plano& plano) {
    const DataHora inicio{.ano = opcoes.hoje.ano - 1};
    std::map<std::pair<int, std::string>, std::int64_t> numeros;
    for (std::size_t i = 0; i < plano.facturas.size(); ++i) {
        Factura& factura = plano.facturas[i];
        factura.data = data_entre(inicio, opcoes.hoje, i + 1, plano.facturas.size());
        factura.tipo = sorteio.uma_em(4) ? "FR" : "FA";
        factura.numero = ++numeros[{factura.data.ano, factura.tipo}];
    }
}

} // namespace

DataHora data_entre(const DataHora& inicio, const DataHora& fim, std::size_t parte, std::size_t partes) {
    using namespace std::chrono;
    const sys_days primeiro = year(inicio.ano) / inicio.mes / inicio.dia;
    const sys_days ultimo = year(fim.ano) / fim.mes / fim.dia;
    const auto dias = static_cast<std::size_t>((ultimo - primeiro).count());
    const year_month_day data(primeiro + days(dias * parte / partes));
    return {.ano = static_cast<int>(data.year()),
            .mes = static_cast<int>(static_cast<unsigned>(data.month())),
            .dia = static_cast<int>(static_cast<unsigned>(data.day())),
            .hora = 0,
            .minuto = 0,
            .segundo = 0};
}

Plano planeia(const OpcoesEmpresa& opcoes, Sorteio& sorteio) {
    Plano plano;
    planeia_artigos(opcoes, sorteio, plano);
    planeia_facturas(opcoes, sorteio, plano);
    data_facturas(opcoes, sorteio, plano);
    return plano;
}

} // namespace orvex::demo
