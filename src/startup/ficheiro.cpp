#include "startup/ficheiro.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "base/pagina_codigo.h"
#include "base/texto.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>

namespace orvex::startup {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t maior_ficheiro = 1 << 20; // far more than settings and parameters ever need
constexpr const char* demasiado_grande = "é demasiado grande: não deve ter mais de 1 MB";

std::string causa(std::error_code erro) {
    if (erro == std::errc::permission_denied) return "não pode ser lido: não há permissão";
    if (erro == std::errc::too_many_symbolic_link_levels) return "é uma ligação que volta a si mesma";
    if (erro == std::errc::filename_too_long) return "tem um nome ou um caminho demasiado longo";
    if (erro == std::errc::no_such_file_or_directory || erro == std::errc::not_a_directory)
        return "não existe";
    return "não pode ser lido (erro " + std::to_string(erro.value()) + " do sistema)";
}

std::string defeito(const fs::path& caminho, bool pasta) {
    std::error_code erro;
    switch (fs::status(caminho, erro).type()) {
    case fs::file_type::regular:
        return pasta ? "é um ficheiro, e não uma pasta" : "";
    case fs::file_type::directory:
        return pasta ? "" : "é uma pasta, e não um ficheiro";
    case fs::file_type::not_found:
    case fs::file_type::none:
        return causa(erro ? erro : std::make_error_code(std::errc::no_such_file_or_directory));
    default:
        return pasta ? "não é uma pasta" : "não é um ficheiro comum";
    }
}

// Bytes that no text of either encoding we read has.
std::string defeito_dos_bytes(const std::string& bytes) {
    const bool zero_no_inicio = bytes.substr(0, 2).find('\0') != std::string::npos; // beside a plain letter
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") || zero_no_inicio)
        return "está gravado em UTF-16: grave-o em UTF-8 ou em Windows-1252 (ANSI)";
    return bytes.find('\0') == std::string::npos ? "" : "não é um ficheiro de texto";
}

std::string le_se(const fs::path& ficheiro, std::string& bytes) {
    std::error_code erro;
    if (std::string este = defeito_do_ficheiro(ficheiro); !este.empty()) return este;
    if (fs::file_size(ficheiro, erro) > maior_ficheiro) return erro ? causa(erro) : demasiado_grande;
    errno = 0;
    std::ifstream entrada(ficheiro, std::ios::binary);
    if (!entrada.is_open()) return causa({errno, std::generic_category()});
    bytes.assign(std::istreambuf_iterator<char>(entrada), {});
    if (entrada.bad()) return causa({errno, std::generic_category()});
    return defeito_dos_bytes(bytes);
}

} // namespace

std::string defeito_do_ficheiro(const fs::path& caminho) { return defeito(caminho, false); }
std::string defeito_da_pasta(const fs::path& caminho) { return defeito(caminho, true); }

std::string le_bytes(const fs::path& ficheiro, const std::string& qual) {
    std::string bytes;
    if (const std::string este = le_se(ficheiro, bytes); !este.empty())
        throw base::Falha("Não foi possível abrir o ficheiro " + qual + " «" + base::texto_de(ficheiro) +
                          "»: " + este + ".");
    return bytes;
}

std::vector<std::string> le_linhas(const fs::path& ficheiro, const std::string& qual) {
    std::vector<std::string> linhas = base::divide(base::texto_de_ficheiro(le_bytes(ficheiro, qual)), '\n');
    for (std::string& linha : linhas)
        if (!linha.empty() && linha.back() == '\r') linha.pop_back();
    return linhas;
}

std::vector<LinhaINI> linhas_ini(std::string_view texto) {
    std::vector<LinhaINI> linhas;
    std::string seccao;
    for (std::size_t inicio = 0; inicio < texto.size();) {
        const std::size_t fim = std::min(texto.find('\n', inicio), texto.size());
        std::string_view linha = texto.substr(inicio, fim - inicio);
        inicio = fim + 1;
        if (linha.ends_with('\r')) linha.remove_suffix(1);
        const std::string_view util = base::apara(linha);
        if (util.empty() || util.front() == ';' || util.front() == '#') continue;
        if (util.front() == '[' && util.back() == ']') {
            seccao = base::maiusculas(util.substr(1, util.size() - 2)) + ".";
            continue;
        }
        const std::size_t igual = util.find('=');
        if (igual == std::string_view::npos) continue;
        linhas.push_back({seccao + base::maiusculas(base::apara(util.substr(0, igual))),
                          base::apara(util.substr(igual + 1))});
    }
    return linhas;
}

std::map<std::string, std::string> le_ini(const std::filesystem::path& ficheiro) {
    std::map<std::string, std::string> valores;
    const std::string texto = base::texto_de_ficheiro(le_bytes(ficheiro, "de definições"));
    for (const auto& [chave, valor] : linhas_ini(texto))
        valores.try_emplace(chave, valor);
    return valores;
}

} // namespace orvex::startup
