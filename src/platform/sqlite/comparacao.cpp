// The SERVIDOR collation, and the server's LIKE.
#include "base/texto.h"
#include "platform/sqlite/empresa.h"
#include "platform/sqlite/traducao.h"

namespace orvex::platform::sqlite {
namespace {

std::string_view sem_brancos_finais(std::string_view texto) {
    while (!texto.empty() && texto.back() == ' ')
        texto.remove_suffix(1);
    return texto;
}

bool ascii(char c) { return static_cast<unsigned char>(c) < 0x80; }

char32_t maiuscula_ascii(char c) { return static_cast<unsigned char>(c >= 'a' && c <= 'z' ? c - 32 : c); }

// The plain letter an upper-case letter of the code page is ordered with; any other character is its own.
char32_t letra_base(char32_t c) {
    constexpr std::u32string_view bases = U"AAAAAAÆCEEEEIIIIÐNOOOOO×OUUUUYÞ"; // from A with grave, 0xC0
    if (c >= 0xC0 && c < 0xC0 + bases.size()) return bases[c - 0xC0];
    switch (c) {
    case 0x160:
        return U'S';
    case 0x178:
        return U'Y';
    case 0x17D:
        return U'Z';
    default:
        return c;
    }
}

char32_t retira_maiuscula(std::string_view& texto) {
    if (ascii(texto.front())) {
        const char32_t c = maiuscula_ascii(texto.front());
        texto.remove_prefix(1);
        return c;
    }
    return base::maiuscula(base::retira_caracter(texto));
}

// One letter of a pattern: itself, or the one between brackets.
char32_t retira_do_padrao(std::string_view& padrao) {
    if (padrao.front() != '[') return retira_maiuscula(padrao);
    std::string_view dentro = padrao.substr(1);
    if (dentro.empty()) return retira_maiuscula(padrao);
    const char32_t c = retira_maiuscula(dentro);
    if (!dentro.starts_with(']')) return retira_maiuscula(padrao);
    padrao = dentro.substr(1);
    return c;
}

// To where the pattern's first letter stands, if it is a plain one: no other letter has its form.
void avanca_ate(std::string_view& texto, std::string_view padrao) {
    if (padrao.empty() || !ascii(padrao.front()) ||
        std::string_view("%_[").find(padrao.front()) != std::string_view::npos)
        return;
    const char32_t primeira = maiuscula_ascii(padrao.front());
    std::size_t i = 0;
    while (i < texto.size() && (!ascii(texto[i]) || maiuscula_ascii(texto[i]) != primeira))
        ++i;
    texto.remove_prefix(i);
}

} // namespace

bool semelhante(std::string_view texto, std::string_view padrao) {
    std::string_view depois_do_curinga, por_tentar; // where to begin again: one letter further
    bool curinga = false;
    for (;;) {
        if (padrao.starts_with('%')) {
            padrao.remove_prefix(1);
            if (padrao.empty()) return true;
            depois_do_curinga = padrao;
            avanca_ate(texto, padrao);
            por_tentar = texto;
            curinga = true;
            continue;
        }
        if (texto.empty() && padrao.empty()) return true;
        bool igual = !texto.empty() && !padrao.empty();
        if (igual && padrao.front() == '_') {
            padrao.remove_prefix(1);
            retira_maiuscula(texto);
        } else if (igual) {
            igual = retira_maiuscula(texto) == retira_do_padrao(padrao);
        }
        if (igual) continue;
        if (!curinga || por_tentar.empty()) return false;
        retira_maiuscula(por_tentar);
        avanca_ate(por_tentar, depois_do_curinga);
        texto = por_tentar;
        padrao = depois_do_curinga;
    }
}

int compara_servidor(std::string_view a, std::string_view b) {
    a = sem_brancos_finais(a);
    b = sem_brancos_finais(b);
    int acento = 0; // decides only between texts of the same plain letters
    while (!a.empty() && !b.empty()) {
        if (a.front() == b.front() && ascii(a.front())) {
            a.remove_prefix(1);
            b.remove_prefix(1);
            continue;
        }
        const char32_t x = retira_maiuscula(a);
        const char32_t y = retira_maiuscula(b);
        if (x == y) continue;
        const char32_t base_x = letra_base(x);
        const char32_t base_y = letra_base(y);
        if (base_x != base_y) return base_x < base_y ? -1 : 1;
        if (acento == 0) acento = x < y ? -1 : 1;
    }
    if (!a.empty()) return 1;
    return b.empty() ? acento : -1;
}

} // namespace orvex::platform::sqlite
