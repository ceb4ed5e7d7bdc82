#include "platform/erp/registo.h"

#include "base/falha.h"
#include "base/texto.h"

#include <limits>

namespace orvex::platform::erp {
namespace {

using base::Variante;

constexpr Membro tabela_cabecalho[] = {
    {"Ano", "Ano", TipoMembro::inteiro_16},
    {"TipoDocumento", "TpDoc", TipoMembro::texto, 3},
    {"Serie", "Serie", TipoMembro::inteiro_16},
    {"NossoNoDocumento", "NNumDoc", TipoMembro::inteiro_32},
    {"Data", "Data", TipoMembro::data},
    {"AreaGestao", "AreaGestao", TipoMembro::inteiro_16},
    {"Sector", "Sector", TipoMembro::texto, 5},
    {"TipoTerceiro", "TpTerc", TipoMembro::inteiro_16},
    {"Terceiro", "Terceiro", TipoMembro::texto, 15},
    {"TipoPreco", "TpPreco", TipoMembro::inteiro_16},
    {"RegimeIva", "RegIva", TipoMembro::texto, 3},
    {"NumeroContribuinte", "NumContrib", TipoMembro::texto, 20},
    {"Processo", "Processo", TipoMembro::texto, 30},
    {"VossoNoDocumento", "VossoNo", TipoMembro::texto, 30},
    {"Vendedor", "Vendedor", TipoMembro::texto, 6},
    {"MeiodeTransporte", "MeioTransp", TipoMembro::texto, 40},
    {"Matricula", "Matricula", TipoMembro::texto, 20},
    {"LocalCarga", "LocalCarga", TipoMembro::texto, 60},
    {"LocalDescarga", "LocalDescarga", TipoMembro::texto, 60},
    {"DataCarga", "DataCarga", TipoMembro::data_texto},
    {"HoraCarga", "HoraCarga", TipoMembro::texto, 8},
    {"DataDescarga", "DataDescarga", TipoMembro::data_texto},
    {"HoraDescarga", "HoraDescarga", TipoMembro::texto, 8},
    {"IvaIncluido", "IvaIncluido", TipoMembro::logico},
    {"NumeroViasemitidas", "NVias", TipoMembro::inteiro_16},
    {"convertido", "Convert", TipoMembro::inteiro_16},
};

constexpr Membro tabela_linha[] = {
    {"NumeroDaLinha", "NumLinha", TipoMembro::inteiro_16},
    {"TipoDeLinha", "TipoLinha", TipoMembro::inteiro_16},
    {"Artigo", "Artigo", TipoMembro::texto, 15},
    {"descricao", "Descr", TipoMembro::texto, 80},
    {"Quantidade", "Quant", TipoMembro::decimal},
    {"QuantidadeOrigem", "QuantOrig", TipoMembro::decimal},
    {"Armazem", "Armazem", TipoMembro::texto, 4},
    {"ArmazemDestino", "ArmDestino", TipoMembro::texto, 4},
    {"Unidade", "Unidade", TipoMembro::texto, 5},
    {"DataMvStock", "DataMvStock", TipoMembro::data_texto},
    {"PrecoUnitario", "PrecoUnit", TipoMembro::decimal},
    {"Sector", "Sector", TipoMembro::texto, 5},
    {"Desconto", "Desconto", TipoMembro::decimal},
    {"TaxaDesconto", "TxDesconto", TipoMembro::decimal},
    {"TaxaIVA", "TxIva", TipoMembro::decimal},
};

Variante inicial(TipoMembro tipo) {
    switch (tipo) {
    case TipoMembro::texto:
        return "";
    case TipoMembro::inteiro_16:
    case TipoMembro::inteiro_32:
        return 0;
    case TipoMembro::decimal:
        return base::Moeda();
    case TipoMembro::logico:
        return false;
    case TipoMembro::data:
    case TipoMembro::data_texto:
        break;
    }
    return {};
}

template <typename Inteiro>
Variante inteiro_de(const Variante& valor) {
    const std::int64_t numero = valor.inteiro();
    if (numero < std::numeric_limits<Inteiro>::min() || numero > std::numeric_limits<Inteiro>::max())
        throw base::Falha("«" + valor.texto() + "» é um número demasiado grande.",
                          base::numeros_falha::valor_excessivo);
    return numero;
}

Variante convertido(TipoMembro tipo, const Variante& valor) {
    switch (tipo) {
    case TipoMembro::texto:
        return valor.texto();
    case TipoMembro::inteiro_16:
        return inteiro_de<std::int16_t>(valor);
    case TipoMembro::inteiro_32:
        return inteiro_de<std::int32_t>(valor);
    case TipoMembro::decimal:
        return valor.moeda();
    case TipoMembro::logico:
        return valor.logico();
    case TipoMembro::data:
    case TipoMembro::data_texto:
        break;
    }
    return valor.vazio() ? Variante() : Variante(valor.data());
}

} // namespace

const std::span<const Membro> membros_cabecalho = tabela_cabecalho;
const std::span<const Membro> membros_linha = tabela_linha;

Registo::Registo(std::span<const Membro> membros, const char* de_que) : membros_(membros), de_que_(de_que) {
    valores_.reserve(membros_.size());
    for (const Membro& membro : membros_)
        valores_.push_back(inicial(membro.tipo));
}

std::size_t Registo::indice(std::string_view nome) const {
    for (std::size_t i = 0; i < membros_.size(); ++i)
        if (base::mesmo_nome(membros_[i].nome, nome)) return i;
    throw base::Falha("O ERP não conhece o membro «" + std::string(nome) + "» " + de_que_ + ".");
}

base::Variante Registo::obtem(std::string_view nome) const {
    const std::size_t i = indice(nome);
    if (membros_[i].tipo != TipoMembro::data_texto) return valores_[i];
    return valores_[i].nulo() ? Variante("") : Variante(valores_[i].data().data());
}

void Registo::poe(std::string_view nome, const base::Variante& valor) {
    const std::size_t i = indice(nome);
    try {
        valores_[i] = convertido(membros_[i].tipo, valor);
    } catch (const base::Falha& falha) {
        throw base::Falha("O membro " + std::string(membros_[i].nome) + " " + de_que_ +
                              " não aceita o valor: " + falha.what(),
                          falha.numero());
    }
}

const Membro* Registo::texto_excessivo() const {
    for (std::size_t i = 0; i < membros_.size(); ++i)
        if (membros_[i].tipo == TipoMembro::texto &&
            base::excede(std::get<std::string>(valores_[i].valor()),
                         static_cast<std::size_t>(membros_[i].comprimento)))
            return &membros_[i];
    return nullptr;
}

} // namespace orvex::platform::erp
