#include "progresso_terminal.h"

#include "base/texto.h"

#include <chrono>
#include <iostream>
#include <thread>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace orvex::auditoria {
namespace {

bool e_terminal() {
#ifdef _WIN32
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

} // namespace

ProgressoTerminal::ProgressoTerminal() : terminal_(e_terminal()) {}

void ProgressoTerminal::mostra(const std::string& texto) {
    if (!terminal_) return;
    const std::size_t largura = base::comprimento(texto);
    std::cerr << '\r' << texto << std::string(largura < largura_ ? largura_ - largura : 0, ' ') << std::flush;
    largura_ = largura;
}

void ProgressoTerminal::fase(const std::string& qual) {
    fase_ = qual;
    mostra(fase_ + " ...");
}

void ProgressoTerminal::linhas(std::int64_t lidas) {
    lidas_ += lidas;
    mostra(fase_ + " ... " + std::to_string(lidas_) + " linhas lidas");
}

void ProgressoTerminal::espera(int segundos) {
    for (int falta = segundos; falta > 0; --falta) {
        mostra("o que se encontrou é relido daqui a " + std::to_string(falta) + " s");
        std::this_thread::sleep_for(std::chrono::seconds(1));
    }
}

void ProgressoTerminal::acaba() {
    if (!terminal_) return;
    mostra("");
    std::cerr << '\r' << std::flush;
}

} // namespace orvex::auditoria
