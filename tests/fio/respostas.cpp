#include "tests/fio/respostas.h"

#include <chrono>
#include <limits>

namespace orvex::testes::tds {
namespace {

using base::DataHora;
using base::Moeda;
using platform::registos::TipoSQL;
using Familia = TipoSQL::Familia;

constexpr unsigned mais = 1, com_erro = 2, com_contagem = 0x10,
                   com_interrupcao = 0x20; // how a statement ended
constexpr std::size_t tamanho_fim = 13;

unsigned tamanho(const TipoSQL& inteiro) {
    return inteiro.maximo == std::numeric_limits<std::int16_t>::max() ? 2 : 4;
}

void descreve(Escrita& escrita, const TipoSQL& tipo) {
    constexpr std::string_view comparacao("\x09\x04\xD0\x00\x34", 5); // Latin, without case
    switch (tipo.familia) {
    case Familia::inteiro:
        escrita.u8(0x26).u8(tamanho(tipo));
        break;
    case Familia::decimal:
        escrita.u8(0x6A).u8(9).u8(19).u8(static_cast<unsigned>(tipo.casas)); // money too
        break;
    case Familia::data:
        escrita.u8(0x28);
        break;
    case Familia::data_hora:
        escrita.u8(0x6F).u8(8);
        break;
    default:
        escrita.u8(0xE7).u16(2 * tipo.comprimento).junta(comparacao);
    }
}

std::uint64_t dias_desde(int ano, const DataHora& data) {
    using namespace std::chrono;
    const sys_days primeiro{year(ano) / 1 / 1}, dia{year(data.ano) / data.mes / data.dia};
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

void Respostas::falhou(int numero, const std::string& texto) {
    Escrita corpo;
    corpo.u32(static_cast<std::uint64_t>(numero)).u8(1).u8(16); // grave, and for the user to put right
    corpo.texto(texto, 2).texto("ORVEX").texto("").u32(1);
    escrita_.u8(0xAA).bloco(corpo);
    fim(fim_de_instrucao_, com_erro);
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
