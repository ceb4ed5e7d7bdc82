#include "ponto.h"

#include "base/texto.h"

#include <algorithm>

namespace orvex::auditoria {

std::uint64_t resumo(const std::string& codigo) {
    std::uint64_t valor = 14'695'981'039'346'656'037U; // FNV-1a
    for (const char c : livro::codigo_normal(codigo))
        valor = (valor ^ static_cast<unsigned char>(c)) * 1'099'511'628'211U;
    return valor;
}

Ponto Ponto::de(std::int64_t ano, std::string_view tipo, std::int64_t serie, std::int64_t numero,
                std::int64_t linha) {
    Ponto ponto;
    const std::string texto = livro::codigo_normal(tipo);
    std::copy_n(texto.begin(), std::min(texto.size(), ponto.tipo.size() - 1), ponto.tipo.begin());
    ponto.serie = static_cast<std::int16_t>(serie);
    ponto.ano = static_cast<std::int16_t>(ano);
    ponto.numero = static_cast<std::int32_t>(numero);
    ponto.linha = static_cast<std::int32_t>(linha);
    return ponto;
}

Ponto Ponto::de(const livro::ChaveLinha& chave) {
    const auto inteiro = [](const std::string& texto) { return base::le_inteiro(texto).value_or(0); };
    return de(inteiro(chave.Ano), chave.TpDoc, inteiro(chave.Serie), inteiro(chave.NumDoc),
              inteiro(chave.NumLinha));
}

std::string Ponto::documento() const {
    return TpDoc() + "/" + std::to_string(serie) + "/" + std::to_string(numero);
}

std::string Ponto::texto() const {
    return std::to_string(ano) + "/" + documento() + (linha != 0 ? "/" + std::to_string(linha) : "");
}

} // namespace orvex::auditoria
