#include "platform/registos/linhas.h"

#include <cstdint>
#include <cstring>

namespace orvex::platform::registos {
namespace {

constexpr std::size_t tamanho_bloco = std::size_t{256} * 1024;

enum Marca : char { nulo, inteiro_8, inteiro_32, inteiro_64, real, texto_curto, texto_longo };

template <typename Numero>
void escreve(std::string& bloco, Marca marca, Numero numero) {
    char bytes[1 + sizeof numero] = {static_cast<char>(marca)};
    std::memcpy(bytes + 1, &numero, sizeof numero);
    bloco.append(bytes, sizeof bytes);
}

template <typename Numero>
Numero le(const char* bytes) {
    Numero numero{};
    std::memcpy(&numero, bytes, sizeof numero);
    return numero;
}

struct Escritor {
    std::string& bloco;

    void operator()(std::monostate) const { bloco += static_cast<char>(nulo); }
    void operator()(std::int64_t valor) const {
        if (valor == static_cast<std::int8_t>(valor)) {
            escreve(bloco, inteiro_8, static_cast<std::int8_t>(valor));
        } else if (valor == static_cast<std::int32_t>(valor)) {
            escreve(bloco, inteiro_32, static_cast<std::int32_t>(valor));
        } else {
            escreve(bloco, inteiro_64, valor);
        }
    }
    void operator()(double valor) const { escreve(bloco, real, valor); }
    void operator()(std::string_view valor) const {
        if (valor.size() <= UINT8_MAX) {
            escreve(bloco, texto_curto, static_cast<std::uint8_t>(valor.size()));
        } else {
            escreve(bloco, texto_longo, static_cast<std::uint32_t>(valor.size()));
        }
        bloco += valor;
    }
};

std::size_t tamanho(const char* valor) {
    switch (static_cast<Marca>(*valor)) {
    case nulo:
        return 1;
    case inteiro_8:
        return 1 + sizeof(std::int8_t);
    case inteiro_32:
        return 1 + sizeof(std::int32_t);
    case inteiro_64:
        return 1 + sizeof(std::int64_t);
    case real:
        return 1 + sizeof(double);
    case texto_curto:
        return 1 + sizeof(std::uint8_t) + le<std::uint8_t>(valor + 1);
    case texto_longo:
        return 1 + sizeof(std::uint32_t) + le<std::uint32_t>(valor + 1);
    }
    return 0;
}

} // namespace

void Linhas::junta_linha() {
    if (blocos_.empty() || blocos_.back().size() >= tamanho_bloco) blocos_.emplace_back();
    ++total_;
}

void Linhas::junta(const Celula& celula) { std::visit(Escritor{blocos_.back()}, celula); }

bool Linhas::avanca() {
    if (!blocos_.empty() && posicao_ == blocos_.front().size()) {
        blocos_.pop_front();
        posicao_ = 0;
    }
    if (blocos_.empty()) return false;
    for (std::size_t& inicio : colunas_) {
        inicio = posicao_;
        posicao_ += tamanho(blocos_.front().data() + posicao_);
    }
    return true;
}

Celula Linhas::celula(std::size_t coluna) const {
    const char* valor = blocos_.front().data() + colunas_[coluna];
    const char* dados = valor + 1;
    switch (static_cast<Marca>(*valor)) {
    case inteiro_8:
        return std::int64_t{le<std::int8_t>(dados)};
    case inteiro_32:
        return std::int64_t{le<std::int32_t>(dados)};
    case inteiro_64:
        return le<std::int64_t>(dados);
    case real:
        return le<double>(dados);
    case texto_curto:
        return std::string_view(dados + sizeof(std::uint8_t), le<std::uint8_t>(dados));
    case texto_longo:
        return std::string_view(dados + sizeof(std::uint32_t), le<std::uint32_t>(dados));
    case nulo:
        break;
    }
    return {};
}

} // namespace orvex::platform::registos
