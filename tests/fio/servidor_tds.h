// A database server for tests, on the loopback, with an embedded company behind it. It speaks the real
// server's protocol, so that the real driver talks to it, and fails on request as servers and networks fail.
//
// Each connection has a thread and an engine session of its own; one that drops rolls its transaction back.
#pragma once

#include "tests/fio/canal.h"

#include <atomic>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace orvex::testes {

namespace tds {
struct Entrada;
}

struct Avaria {
    enum class Efeito {
        nenhuma,
        corta,        // the connection drops before the request is carried out
        corta_depois, // it is carried out, and the connection drops before the answer
        demora,       // the answer waits, unless the client gives up meanwhile
        surdez,       // the answer waits, whatever the client does
        erro,         // refused with `numero` and `texto`, nothing carried out
        aviso,        // the same, told as information only
        tranca,       // a lock that it asks for is answered with `numero`
        vitima,       // the connection's transaction is rolled back as the victim of a deadlock
        morre,        // the server's process ends, before the request is carried out
        morre_depois  // it is carried out, and the process ends before the answer
    };
    Efeito efeito = Efeito::nenhuma;
    int numero = 0;
    std::string texto{};
    int milissegundos = 0;
};

class ServidorTDS {
  public:
    explicit ServidorTDS(std::filesystem::path pasta_empresa, const char* morada = "127.0.0.1",
                         int porta = 0); // any that is free
    ~ServidorTDS();
    ServidorTDS(ServidorTDS&&) = delete;

    int porta() const { return porta_; }

    // What log-in accepts. Set while nobody is logging in.
    std::string utilizador = "orvex";
    std::string palavra_passe = "segredo";
    std::string base = "EMPRESA"; // "master" is it too; those that clients create lie in folders inside it
    std::atomic<bool> cala_se = false; // to whoever logs in

    // At the n-th request from now, over all connections. Log-ins and the client's giving up are none.
    void avaria_no(int pedido, Avaria avaria);
    void recomeca() { avaria_no(0, {}); }
    int pedidos() const { return sob_tranca(pedidos_); } // since avaria_no or recomeca
    // At the n-th statement from now that is one of several in a request. One that is refused lets those
    // after it be carried out; the victim of a deadlock does not.
    void avaria_na_instrucao(int instrucao, Avaria avaria);
    int instrucoes() const { return sob_tranca(instrucoes_); } // of such requests

    // A slow line: each answer comes so much later, that of a log-in too. May be changed at any time.
    std::atomic<int> atraso_ms = 0;

    std::size_t ligacoes() const { // since the server began
        const std::lock_guard guarda(tranca_);
        return ligacoes_.size();
    }

    // The texts received since the server began, in order, with the values of their parameters after.
    std::vector<std::string> textos() const { return sob_tranca(textos_); }

  private:
    struct Ligacao;

    template <typename Valor>
    Valor sob_tranca(const Valor& valor) const {
        const std::lock_guard guarda(tranca_);
        return valor;
    }
    void aceita();
    void serve(Ligacao& ligacao);
    void entra(Ligacao& ligacao, const tds::Entrada& entrada);
    Avaria regista(const std::string& texto);
    Avaria regista_instrucao();
    void arma(int pedido, int instrucao, Avaria avaria);

    std::filesystem::path pasta_;
    tds::Soquete escuta_;
    int porta_ = 0;
    mutable std::mutex tranca_; // guards what follows
    std::vector<std::unique_ptr<Ligacao>> ligacoes_;
    std::vector<std::string> textos_;
    int pedidos_ = 0, instrucoes_ = 0;
    int pedido_da_avaria_ = 0, instrucao_da_avaria_ = 0;
    Avaria avaria_;
    std::thread aceitador_;
};

} // namespace orvex::testes
