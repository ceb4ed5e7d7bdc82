#include "tests/fio/mensagens.h"

#include "base/texto.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace orvex::testes::tds {
namespace {

using base::DataHora;
using base::Moeda;
using Familia = TipoSQL::Familia;

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

DataHora data_de(std::uint64_t dias, int segundos) {
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
        const auto numero = static_cast<std::int64_t>(leitura.numero(8)) * potencias_10[Moeda::casas - casas];
        return Moeda::de_decimos_milesimos(positivo ? numero : -numero);
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
    if (codigo == data) parametro.tipo = TipoSQL::le("date");
    if (tamanho != nulo)
        parametro.valor =
            le_valor(Leitura(leitura.bytes(tamanho)), tipo->codigo, descricao.empty() ? 0 : descricao.back());
    return parametro;
}

constexpr unsigned mais = 1, com_erro = 2, com_contagem = 0x10,
                   com_interrupcao = 0x20; // how a statement ended
constexpr std::size_t tamanho_fim = 13;

unsigned tamanho(const TipoSQL& tipo) {
    return tipo.maximo == std::numeric_limits<std::int16_t>::max() ? 2 : 4;
}

Escrita& descreve(Escrita& escrita, const TipoSQL& tipo) {
    constexpr std::string_view comparacao("\x09\x04\xD0\x00\x34", 5); // Latin, without case
    switch (tipo.familia) {
    case Familia::inteiro:
        return escrita.u8(inteiro).u8(tamanho(tipo));
    case Familia::decimal:
        return escrita.u8(decimal).u8(9).u8(19).u8(static_cast<unsigned>(tipo.casas)); // money too
    case Familia::data:
        return escrita.u8(data);
    case Familia::data_hora:
        return escrita.u8(0x6F).u8(8); // as rows have it, other than parameters
    default:
        return escrita.u8(texto).u16(2 * tipo.comprimento).junta(comparacao);
    }
}

std::uint64_t dias_desde(int ano, const DataHora& ate) {
    using namespace std::chrono;
    const sys_days primeiro{year(ano) / 1 / 1}, dia{year(ate.ano) / ate.mes / ate.dia};
    return static_cast<std::uint64_t>((dia - primeiro).count());
}

void escreve(Escrita& escrita, const TipoSQL& tipo, const base::Variante& valor) {
    const bool e_texto = tipo.familia == Familia::texto;
    if (valor.nulo()) {
        escrita.numero(e_texto ? 0xFFFF : 0, e_texto ? 2 : 1);
    } else if (e_texto) {
        escrita.bloco({utf16_de(valor.texto())});
    } else if (tipo.familia == Familia::inteiro) {
        escrita.u8(tamanho(tipo)).numero(static_cast<std::uint64_t>(valor.inteiro()), tamanho(tipo));
    } else if (tipo.familia == Familia::data) {
        escrita.u8(3).numero(dias_desde(1, valor.data()), 3);
    } else if (tipo.familia == Familia::data_hora) {
        const DataHora quando = valor.data();
        const int segundos = (quando.hora * 60 + quando.minuto) * 60 + quando.segundo;
        escrita.u8(8).u32(dias_desde(1900, quando)).u32(static_cast<std::uint64_t>(segundos) * 300);
    } else {
        std::int64_t numero = valor.moeda().absoluta().decimos_milesimos();
        for (int casas = Moeda::casas; casas > tipo.casas; --casas)
            numero /= 10;
        escrita.u8(9).u8(valor.moeda() < Moeda() ? 0 : 1).numero(static_cast<std::uint64_t>(numero), 8);
    }
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

std::vector<std::string> Pedido::instrucoes() const {
    std::vector<std::string> todas(1);
    char fecho = 0;
    for (const char c : texto) {
        if (fecho == 0 && c == ';') {
            todas.emplace_back();
            continue;
        }
        if (fecho == 0 && (c == '\'' || c == '"' || c == '['))
            fecho = c == '[' ? ']' : c;
        else if (c == fecho)
            fecho = 0;
        if (c != '\n' || fecho != 0) todas.back() += c;
    }
    for (auto uma = todas.begin() + 1; uma != todas.end(); ++uma)
        *uma = base::apara(*uma); // the first stays as it was sent
    std::erase(todas, "");
    return todas;
}

void Respostas::entrada_aceite() {
    Escrita corpo;
    corpo.u8(1).u32(0x04000074).texto("Microsoft SQL Server").u32(0x0000000F); // protocol 7.4, version 15
    escrita_.u8(0xAD).bloco(corpo);
    feita();
}

void Respostas::transaccao(Mudanca mudanca) {
    constexpr std::uint64_t descritor = 1; // a connection has one transaction at a time
    Escrita corpo;
    corpo.u8(mudanca);
    if (mudanca != inicio) corpo.u8(0); // none after it
    corpo.u8(sizeof descritor).numero(descritor, sizeof descritor);
    if (mudanca == inicio) corpo.u8(0); // none before it
    escrita_.u8(0xE3).bloco(corpo);
}

void Respostas::colunas(const std::vector<Coluna>& colunas) {
    constexpr unsigned nula_e_actualizavel = 9, identidade = 0x10;
    escrita_.u8(0x81).u16(colunas.size());
    for (const Coluna& coluna : colunas) {
        escrita_.u32(0).u16(nula_e_actualizavel | (coluna.identidade ? identidade : 0));
        descreve(escrita_, coluna.tipo);
        escrita_.texto(coluna.nome);
    }
}

void Respostas::linha(const std::vector<Coluna>& colunas, const std::vector<base::Variante>& valores) {
    escrita_.u8(0xD1);
    for (std::size_t i = 0; i < colunas.size(); ++i)
        escreve(escrita_, colunas[i].tipo, valores[i]);
    envia_cheios();
}

// More is said to follow; the last one of an answer is set right when it is sent.
void Respostas::fim(unsigned codigo, unsigned estado, std::int64_t linhas) {
    escrita_.u8(codigo).u16(estado | mais).u16(0).numero(static_cast<std::uint64_t>(linhas), 8);
}

void Respostas::feita(std::optional<std::int64_t> linhas) {
    fim(fim_de_instrucao_, linhas ? com_contagem : 0, linhas.value_or(0));
}

void Respostas::falhou(int numero, const std::string& texto, bool so_avisa) {
    Escrita corpo;
    corpo.u32(static_cast<std::uint64_t>(numero)).u8(1);
    corpo.u8(so_avisa ? 10 : 16); // 16 is grave, and for the user to put right
    corpo.texto(texto, 2).texto("ORVEX").texto("").u32(1);
    escrita_.u8(so_avisa ? 0xAB : 0xAA).bloco(corpo);
    fim(fim_de_instrucao_, so_avisa ? 0 : com_erro);
}

void Respostas::fim_chamada() {
    escrita_.u8(0x79).u32(0); // what the procedure returned
    fim_de_instrucao_ = 0xFD;
    fim(0xFE, 0);
}

void Respostas::envia_cheios() {
    while (!perdida_ && escrita_.bytes.size() > Canal::cabe) {
        canal_.envia(std::string_view(escrita_.bytes).substr(0, Canal::cabe), false);
        escrita_.bytes.erase(0, Canal::cabe);
    }
}

void Respostas::envia() {
    if (escrita_.bytes.empty()) feita(); // nothing was worth an answer of its own
    char& estado = escrita_.bytes[escrita_.bytes.size() - tamanho_fim + 1];
    estado = static_cast<char>(estado & ~mais);
    envia_cheios();
    if (!perdida_) canal_.envia(escrita_.bytes, true);
    escrita_.bytes.clear();
}

void Respostas::interrompida() { fim(fim_de_instrucao_, com_interrupcao); }

} // namespace orvex::testes::tds
