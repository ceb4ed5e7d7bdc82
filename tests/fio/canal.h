// The lowest layer of the wire: numbers and texts as they lie in a packet (little end first, as in memory
// here; UTF-16), and packets on a connection.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvex::testes::tds {

// The other side has gone, or what it sent is no packet.
struct LigacaoPerdida {};

class Escrita {
  public:
    std::string bytes;

    Escrita& numero(std::uint64_t valor, std::size_t tamanho) { // the low bytes of it
        bytes.append(reinterpret_cast<const char*>(&valor), tamanho);
        return *this;
    }
    Escrita& u8(std::uint64_t valor) { return numero(valor, 1); }
    Escrita& u16(std::uint64_t valor) { return numero(valor, 2); }
    Escrita& u32(std::uint64_t valor) { return numero(valor, 4); }
    Escrita& junta(std::string_view outros) {
        bytes += outros;
        return *this;
    }
    Escrita& texto(std::string_view utf8, std::size_t tamanho = 1); // after its length, in so many bytes
    Escrita& bloco(const Escrita& corpo) { return u16(corpo.bytes.size()).junta(corpo.bytes); }
};

class Leitura {
  public:
    explicit Leitura(std::string_view bytes) : bytes_(bytes) {}

    std::string_view bytes(std::uint64_t pedidos);
    std::uint64_t numero(std::size_t tamanho);
    std::uint16_t u16() { return static_cast<std::uint16_t>(numero(2)); }
    std::string texto(std::size_t tamanho); // of so many bytes
    std::size_t resto() const { return bytes_.size(); }

  private:
    std::string_view bytes_;
};

std::string utf16_de(std::string_view utf8);

// What a packet is part of.
constexpr unsigned char lote = 1, chamada = 3, resposta = 4, atencao = 6, entrada = 16, saudacao = 18;

struct Mensagem {
    unsigned char tipo = 0;
    std::string bytes; // of all its packets
};

#ifdef _WIN32
using Soquete = std::uintptr_t;
#else
using Soquete = int;
#endif

// A connection. Everything but `corta` belongs to the thread that serves it; all throw LigacaoPerdida.
class Canal {
  public:
    static constexpr std::size_t cabe = 4096 - 8; // in a packet, after its header

    explicit Canal(Soquete descritor) : descritor_(descritor) {}
    ~Canal();
    Canal(Canal&&) = delete;

    Mensagem le();
    void envia(std::string_view bytes, bool ultimo); // one packet
    bool desistiu(int espera_ms);   // the client asked, within that time, for the request to stop
    void espera(int milissegundos); // deaf to the client, but not to `corta`
    void corta();

  private:
    std::string recebe(std::size_t quantos);

    Soquete descritor_;
};

} // namespace orvex::testes::tds
