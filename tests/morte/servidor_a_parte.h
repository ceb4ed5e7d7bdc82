// The server on the wire in a process of its own, which can die while its clients live, and outlives those
// that die.
#pragma once

#include "tests/fio/servidor_tds.h"

#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvex::testes {

class ServidorAParte {
  public:
    // Serves the companies in the folders of `raiz`.
    explicit ServidorAParte(const std::filesystem::path& raiz) {
        if (::socketpair(AF_UNIX, SOCK_STREAM, 0, canal_) != 0) throw std::runtime_error("no channel");
        processo_ = ::fork();
        if (processo_ < 0) throw std::runtime_error("no process");
        if (processo_ == 0) serve(raiz);
        ::close(canal_[1]);
        if (!le(canal_[0], porta_)) throw std::runtime_error("the server did not begin");
    }
    ~ServidorAParte() {
        ::kill(processo_, SIGKILL);
        ::waitpid(processo_, nullptr, 0);
        ::close(canal_[0]);
    }
    ServidorAParte(ServidorAParte&&) = delete;

    int porta() const { return porta_; }

    // At the n-th request from now; none is 0. False when it is dead. Whoever was forked may ask for it too.
    bool morre_no(int pedido, bool depois_de_cumprido) const {
        int visto = 0;
        return escreve(canal_[0], depois_de_cumprido ? -pedido : pedido) && le(canal_[0], visto);
    }
    bool vive() const { return morre_no(0, false); }

  private:
    static bool le(int descritor, int& numero) {
        return ::recv(descritor, &numero, sizeof numero, MSG_WAITALL) == static_cast<ssize_t>(sizeof numero);
    }
    static bool escreve(int descritor, int numero) {
        return ::send(descritor, &numero, sizeof numero, MSG_NOSIGNAL) == static_cast<ssize_t>(sizeof numero);
    }
    [[noreturn]] void serve(const std::filesystem::path& raiz) const noexcept { // whatever it throws ends it
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::close(canal_[0]);
        ServidorTDS servidor(raiz);
        escreve(canal_[1], servidor.porta());
        using Efeito = Avaria::Efeito;
        for (int pedido = 0; le(canal_[1], pedido); escreve(canal_[1], pedido))
            servidor.avaria_no(std::abs(pedido),
                               {.efeito = pedido < 0 ? Efeito::morre_depois : Efeito::morre});
        ::_exit(0);
    }

    int canal_[2]{};
    pid_t processo_ = 0;
    int porta_ = 0;
};

} // namespace orvex::testes
