#include "platform/consola/consola.h"

#include <algorithm>
#include <iostream>
#include <streambuf>
#include <string>
#include <windows.h>

namespace orvex::platform::consola {
namespace {

// A console gives its mode; files and pipes have none.
bool e_consola(HANDLE saida) {
    DWORD modo = 0;
    return saida != nullptr && saida != INVALID_HANDLE_VALUE && ::GetConsoleMode(saida, &modo) != 0;
}

// How many of the bytes are whole letters: at most three at the end belong to one that is still to come.
std::size_t inteiros(const std::string& bytes) {
    const auto no_meio = [&](std::size_t i) {
        return (static_cast<unsigned char>(bytes[i]) & 0xC0U) == 0x80U;
    };
    std::size_t inicio = bytes.size();
    while (inicio > 0 && bytes.size() - inicio < 3 && no_meio(inicio - 1))
        --inicio;
    if (inicio == 0) return bytes.size();
    const auto primeiro = static_cast<unsigned char>(bytes[inicio - 1]);
    const std::size_t letra = primeiro >= 0xF0 ? 4 : primeiro >= 0xE0 ? 3 : primeiro >= 0xC0 ? 2 : 1;
    return bytes.size() - (inicio - 1) < letra ? inicio - 1 : bytes.size();
}

} // namespace

class Consola::Saida : public std::streambuf {
  public:
    Saida(std::ostream& de, HANDLE para) : de_(de), antes_(de.rdbuf(this)), para_(para) {}
    ~Saida() override {
        escreve(bytes_.size());
        de_.rdbuf(antes_);
    }
    Saida(const Saida&) = delete;
    Saida& operator=(const Saida&) = delete;

  protected:
    int_type overflow(int_type letra) override {
        if (!traits_type::eq_int_type(letra, traits_type::eof())) bytes_ += traits_type::to_char_type(letra);
        return traits_type::not_eof(letra);
    }
    std::streamsize xsputn(const char* texto, std::streamsize tamanho) override {
        bytes_.append(texto, static_cast<std::size_t>(tamanho));
        return bytes_.size() < bastante || escreve(inteiros(bytes_)) ? tamanho : 0;
    }
    int sync() override { return escreve(inteiros(bytes_)) ? 0 : -1; }

  private:
    static constexpr std::size_t bastante = 4096; // less than a console takes at once

    bool escreve(std::size_t quantos) {
        std::wstring largas(quantos, L'\0');
        largas.resize(static_cast<std::size_t>(::MultiByteToWideChar(
            CP_UTF8, 0, bytes_.data(), static_cast<int>(quantos), largas.data(), static_cast<int>(quantos))));
        bytes_.erase(0, quantos);
        for (std::size_t escritas = 0; escritas < largas.size();) {
            DWORD agora = 0;
            const auto resto = static_cast<DWORD>(std::min(largas.size() - escritas, bastante));
            if (::WriteConsoleW(para_, largas.data() + escritas, resto, &agora, nullptr) == 0) return false;
            escritas += agora;
        }
        return true;
    }

    std::ostream& de_;
    std::streambuf* antes_;
    HANDLE para_;
    std::string bytes_;
};

// A program with windows has no console; started from one, it tells there why it shows no window.
Consola::Consola() {
    HANDLE normal = ::GetStdHandle(STD_OUTPUT_HANDLE), erros = ::GetStdHandle(STD_ERROR_HANDLE);
    if (erros == nullptr && ::AttachConsole(ATTACH_PARENT_PROCESS) != 0)
        normal = erros =
            ::CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                          nullptr, OPEN_EXISTING, 0, nullptr);
    if (e_consola(normal)) normal_ = std::make_unique<Saida>(std::cout, normal);
    if (e_consola(erros)) erros_ = std::make_unique<Saida>(std::cerr, erros);
}

Consola::~Consola() = default;

} // namespace orvex::platform::consola
