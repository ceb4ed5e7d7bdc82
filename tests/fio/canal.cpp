#include "tests/fio/canal.h"

#include "base/texto.h"
#include "tests/fio/soquetes.h"

#include <cstring>
#include <utility>

namespace orvex::testes::tds {

Escrita& Escrita::texto(std::string_view utf8, std::size_t tamanho) {
    const std::string unidades = utf16_de(utf8);
    return numero(unidades.size() / 2, tamanho).junta(unidades);
}

std::string_view Leitura::bytes(std::uint64_t pedidos) {
    if (pedidos > bytes_.size()) throw LigacaoPerdida();
    const auto quantos = static_cast<std::size_t>(pedidos);
    const std::string_view lidos = bytes_.substr(0, quantos);
    bytes_.remove_prefix(quantos);
    return lidos;
}

std::uint64_t Leitura::numero(std::size_t tamanho) {
    std::uint64_t valor = 0;
    std::memcpy(&valor, bytes(tamanho).data(), tamanho);
    return valor;
}

std::string Leitura::texto(std::size_t tamanho) {
    Leitura unidades(bytes(tamanho));
    std::string utf8;
    while (unidades.resto() > 0) {
        char32_t caracter = unidades.u16();
        if (caracter >= 0xD800 && caracter < 0xDC00)
            caracter = 0x10000 + ((caracter - 0xD800) << 10) + (unidades.u16() & 0x3FFu);
        base::acrescenta_caracter(utf8, caracter);
    }
    return utf8;
}

std::string utf16_de(std::string_view utf8) {
    Escrita escrita;
    while (!utf8.empty()) {
        const char32_t caracter = base::retira_caracter(utf8);
        if (caracter >= 0x10000) escrita.u16(0xD800 + ((caracter - 0x10000) >> 10));
        escrita.u16(caracter >= 0x10000 ? 0xDC00 + (caracter & 0x3FF) : caracter);
    }
    return escrita.bytes;
}

Canal::~Canal() { fecha(descritor_); }

void Canal::corta() { acaba_conversa(descritor_); }

std::string Canal::recebe(std::size_t quantos) {
    std::string bytes(quantos, '\0');
    for (std::size_t lidos = 0; lidos < quantos;) {
        const auto agora = recv(descritor_, bytes.data() + lidos, static_cast<Tamanho>(quantos - lidos), 0);
        if (agora <= 0) throw LigacaoPerdida();
        lidos += static_cast<std::size_t>(agora);
    }
    return bytes;
}

Mensagem Canal::le() {
    Mensagem mensagem;
    for (bool ultimo = false; !ultimo;) {
        const std::string cabecalho = recebe(8);
        const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(cabecalho[i]); };
        const std::size_t tamanho = byte(2) * 256u + byte(3); // the one number with its big end first
        mensagem.tipo = byte(0);
        ultimo = (byte(1) & 1) != 0;
        if (tamanho > cabecalho.size()) mensagem.bytes += recebe(tamanho - cabecalho.size());
    }
    return mensagem;
}

void Canal::envia(std::string_view bytes, bool ultimo) {
    const std::size_t tamanho = bytes.size() + 8;
    Escrita pacote;
    pacote.u8(resposta).u8(ultimo ? 1 : 0).u8(tamanho >> 8).u8(tamanho).u32(0).junta(bytes);
    const auto enviados =
        send(descritor_, pacote.bytes.data(), static_cast<Tamanho>(pacote.bytes.size()), MSG_NOSIGNAL);
    if (!std::in_range<std::size_t>(enviados) || static_cast<std::size_t>(enviados) != pacote.bytes.size())
        throw LigacaoPerdida();
}

bool Canal::desistiu(int espera_ms) {
    pollfd escuta{descritor_, POLLIN, 0};
    if (espera_por(escuta, espera_ms) <= 0) return false;
    if (le().tipo != atencao) throw LigacaoPerdida(); // nothing else may come before the answer
    return true;
}

void Canal::espera(int milissegundos) {
    pollfd so_o_fim{descritor_, 0, 0};
    espera_por(so_o_fim, milissegundos);
}

} // namespace orvex::testes::tds
