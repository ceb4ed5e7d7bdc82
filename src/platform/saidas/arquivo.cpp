#include "platform/saidas/arquivo.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string>

namespace orvex::platform::saidas {
namespace {

struct Parte {
    std::uint64_t bytes = 0;
    std::string fim; // its last letters
};

// Nothing of what cannot be read whole.
Parte le_parte(std::istream& arquivo, std::size_t comprimidos) {
    constexpr std::size_t pedaco = 65536, letras = 12;
    std::string lidos(pedaco, ' '), folha(pedaco, ' ');
    Parte parte;
    z_stream fluxo{};
    if (inflateInit2(&fluxo, -MAX_WBITS) != Z_OK) return {};
    int estado = Z_OK;
    while (estado == Z_OK) {
        if (fluxo.avail_in == 0) {
            arquivo.read(lidos.data(), static_cast<std::streamsize>(std::min(comprimidos, pedaco)));
            comprimidos -= static_cast<std::size_t>(arquivo.gcount());
            fluxo.next_in = reinterpret_cast<Bytef*>(lidos.data());
            fluxo.avail_in = static_cast<uInt>(arquivo.gcount());
        }
        fluxo.next_out = reinterpret_cast<Bytef*>(folha.data());
        fluxo.avail_out = static_cast<uInt>(pedaco);
        estado = inflate(&fluxo, Z_NO_FLUSH);
        const std::size_t novos = pedaco - fluxo.avail_out;
        parte.bytes += novos;
        parte.fim.append(folha, 0, novos);
        if (parte.fim.size() > letras) parte.fim.erase(0, parte.fim.size() - letras);
    }
    inflateEnd(&fluxo);
    return estado == Z_STREAM_END ? parte : Parte{};
}

} // namespace

bool arquivo_inteiro(const std::filesystem::path& arquivo, const std::vector<std::uint64_t>& das_linhas) {
    std::ifstream ficheiro(arquivo, std::ios::binary);
    std::array<char, 30> cabeca{};
    const auto numero = [&](std::size_t onde, std::size_t bytes) {
        std::size_t valor = 0;
        while (bytes-- > 0)
            valor = valor << 8 | static_cast<unsigned char>(cabeca.at(onde + bytes));
        return valor;
    };
    std::size_t folhas = 0;
    while (ficheiro.read(cabeca.data(), cabeca.size()) && numero(0, 4) == 0x04034B50) {
        std::string nome(numero(26, 2), ' ');
        ficheiro.read(nome.data(), static_cast<std::streamsize>(nome.size()));
        ficheiro.ignore(static_cast<std::streamsize>(numero(28, 2)));
        const Parte parte = le_parte(ficheiro, numero(18, 4));
        if (!nome.starts_with("xl/worksheets/sheet")) {
            if (!parte.fim.ends_with('>') && !parte.fim.ends_with(">\n")) return false;
        } else if (folhas == das_linhas.size() || parte.fim != "</worksheet>" ||
                   parte.bytes < das_linhas[folhas++]) {
            return false;
        }
    }
    return folhas == das_linhas.size();
}

} // namespace orvex::platform::saidas
