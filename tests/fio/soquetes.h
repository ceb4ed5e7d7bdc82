// Sockets of either system under one name: what the server of the tests asks of them.
#pragma once

#ifdef _WIN32
#include <winsock2.h>
// What it declares stands on the sockets.
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <csignal>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

#include <thread>

namespace orvex::testes::tds {

#ifdef _WIN32
constexpr int MSG_NOSIGNAL = 0;
using Tamanho = int;
using socklen_t = int;
using pollfd = WSAPOLLFD;

inline void inicia_soquetes() {
    static WSADATA dados;
    static const int iniciados = WSAStartup(MAKEWORD(2, 2), &dados);
    static_cast<void>(iniciados);
}
inline SOCKET abre_soquete() { return socket(AF_INET, SOCK_STREAM, 0); }
inline SOCKET aceita_em(SOCKET escuta) { return accept(escuta, nullptr, nullptr); }
inline bool valido(SOCKET soquete) { return soquete != INVALID_SOCKET; }
inline void fecha(SOCKET soquete) { closesocket(soquete); }
inline int espera_por(WSAPOLLFD& qual, int milissegundos) { return WSAPoll(&qual, 1, milissegundos); }
inline void acaba_processo() { TerminateProcess(GetCurrentProcess(), 1); }

// Who waits for more of it is not always woken by its end.
inline void acaba_conversa(SOCKET soquete) {
    shutdown(soquete, SD_BOTH);
    CancelIoEx(reinterpret_cast<HANDLE>(soquete), nullptr); // NOLINT(performance-no-int-to-ptr)
}

// Only closing wakes who waits for a client.
inline void acaba_escuta(SOCKET escuta, std::thread& quem) {
    closesocket(escuta);
    quem.join();
}
#else
using Tamanho = std::size_t;

inline void inicia_soquetes() {}
inline int abre_soquete() { return socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0); }
inline int aceita_em(int escuta) { return accept4(escuta, nullptr, nullptr, SOCK_CLOEXEC); }
inline bool valido(int soquete) { return soquete >= 0; }
inline void fecha(int soquete) { close(soquete); }
inline int espera_por(pollfd& qual, int milissegundos) { return poll(&qual, 1, milissegundos); }
inline void acaba_processo() { kill(getpid(), SIGKILL); }

inline void acaba_conversa(int soquete) { shutdown(soquete, SHUT_RDWR); }

inline void acaba_escuta(int escuta, std::thread& quem) {
    shutdown(escuta, SHUT_RDWR);
    quem.join();
    close(escuta);
}
#endif

} // namespace orvex::testes::tds
