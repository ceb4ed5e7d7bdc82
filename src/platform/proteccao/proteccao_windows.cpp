#include "platform/proteccao/proteccao.h"

#include "base/caminho.h"
#include "base/falha.h"

#include <windows.h>
// What it declares stands on the system's types.
#include <wincrypt.h>

#include <array>
#include <memory>
#include <vector>

namespace orvex::platform::proteccao {
namespace {

namespace fs = std::filesystem;

std::error_code erro_do_sistema() { return {static_cast<int>(::GetLastError()), std::system_category()}; }

[[noreturn]] void falha(const char* o_que) {
    throw base::Falha(std::string(o_que) + " (erro " + std::to_string(::GetLastError()) + " do sistema).");
}

DATA_BLOB bloco_de(std::string& bytes) {
    return {static_cast<DWORD>(bytes.size()), reinterpret_cast<BYTE*>(bytes.data())};
}

// What the system hands out is wiped before it is given back: it may be a password.
std::string retira(DATA_BLOB& bloco) {
    std::string bytes(reinterpret_cast<const char*>(bloco.pbData), bloco.cbData);
    ::SecureZeroMemory(bloco.pbData, bloco.cbData);
    ::LocalFree(bloco.pbData);
    return bytes;
}

// Who may do what with a file, in the system's own form.
std::vector<char> direitos_de(const fs::path& ficheiro) {
    DWORD tamanho = 0;
    ::GetFileSecurityW(ficheiro.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &tamanho);
    std::vector<char> direitos(tamanho);
    if (tamanho == 0 || ::GetFileSecurityW(ficheiro.c_str(), DACL_SECURITY_INFORMATION, direitos.data(),
                                           tamanho, &tamanho) == 0)
        throw base::Falha(base::causa(ficheiro, erro_do_sistema()) + ".");
    return direitos;
}

// On the disk when this returns.
std::error_code escreve(const fs::path& novo, std::vector<char> direitos, std::string_view bytes) {
    SECURITY_ATTRIBUTES atributos{sizeof atributos, direitos.data(), FALSE};
    const HANDLE aberto =
        ::CreateFileW(novo.c_str(), GENERIC_WRITE, 0, &atributos, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (aberto == INVALID_HANDLE_VALUE) return erro_do_sistema();
    DWORD escritos = 0;
    std::error_code erro;
    if (::WriteFile(aberto, bytes.data(), static_cast<DWORD>(bytes.size()), &escritos, nullptr) == 0 ||
        ::FlushFileBuffers(aberto) == 0)
        erro = erro_do_sistema();
    ::CloseHandle(aberto);
    return erro;
}

} // namespace

// What another machine reads it could not open.
std::string impedimento(const fs::path& ficheiro) {
    std::vector<wchar_t> raiz(32'768);
    if (::GetVolumePathNameW(ficheiro.c_str(), raiz.data(), static_cast<DWORD>(raiz.size())) == 0)
        return base::causa(ficheiro, erro_do_sistema()) + ".";
    if (::GetDriveTypeW(raiz.data()) != DRIVE_REMOTE) return {};
    return "«" + base::texto_de(ficheiro) +
           "» está numa partilha, e o que se protege só se abre na máquina onde foi protegido: os outros "
           "postos deixariam de entrar. Limite antes quem pode ler a partilha, ou dê a cada posto as suas "
           "definições.";
}

std::string protege(const std::string& claro) {
    std::string copia = claro;
    DATA_BLOB entrada = bloco_de(copia), saida{};
    if (::CryptProtectData(&entrada, L"ORVEX", nullptr, nullptr, nullptr,
                           CRYPTPROTECT_LOCAL_MACHINE | CRYPTPROTECT_UI_FORBIDDEN, &saida) == 0)
        falha("O sistema não protegeu a palavra-passe");
    const std::string bytes = retira(saida);
    constexpr DWORD forma = CRYPT_STRING_BASE64 | CRYPT_STRING_NOCRLF;
    const auto* dados = reinterpret_cast<const BYTE*>(bytes.data());
    const auto quantos = static_cast<DWORD>(bytes.size());
    DWORD tamanho = 0; // with the zero at the end
    ::CryptBinaryToStringA(dados, quantos, forma, nullptr, &tamanho);
    std::string texto(tamanho, '\0');
    if (::CryptBinaryToStringA(dados, quantos, forma, texto.data(), &tamanho) == 0)
        falha("O sistema não escreveu a palavra-passe protegida");
    texto.resize(tamanho);
    return texto;
}

std::string abre(const std::string& protegido) {
    std::string bytes(protegido.size(), '\0');
    auto tamanho = static_cast<DWORD>(bytes.size());
    if (protegido.empty() ||
        ::CryptStringToBinaryA(protegido.data(), static_cast<DWORD>(protegido.size()), CRYPT_STRING_BASE64,
                               reinterpret_cast<BYTE*>(bytes.data()), &tamanho, nullptr, nullptr) == 0)
        throw base::Falha("o texto protegido está estragado.");
    bytes.resize(tamanho);
    DATA_BLOB entrada = bloco_de(bytes), saida{};
    if (::CryptUnprotectData(&entrada, nullptr, nullptr, nullptr, nullptr, CRYPTPROTECT_UI_FORBIDDEN,
                             &saida) == 0)
        falha("o sistema não a abriu");
    return retira(saida);
}

// A file of its own beside it, which takes its name in one step.
void substitui(const fs::path& ficheiro, std::string_view bytes) {
    fs::path novo = ficheiro;
    novo += L".novo";
    std::error_code erro = escreve(novo, direitos_de(ficheiro), bytes);
    if (erro == std::errc::file_exists)
        throw base::Falha("«" + base::texto_de(novo) + "» já existe: veja o que é, e apague-o.");
    if (!erro && ::MoveFileExW(novo.c_str(), ficheiro.c_str(),
                               MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0)
        erro = erro_do_sistema();
    if (!erro) return;
    ::DeleteFileW(novo.c_str());
    throw base::Falha(base::causa(ficheiro, erro) + ".");
}

} // namespace orvex::platform::proteccao
