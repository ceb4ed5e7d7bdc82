// The locks that sessions take by name, and hold until they let go of them or drop.
#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <string>

namespace orvex::testes::tds {

class Trancas {
  public:
    // What the server's procedure returns: 0 at once, 1 after waiting, -1 when it did not come in time.
    int pede(const std::string& recurso, const void* sessao, std::chrono::milliseconds espera) {
        std::unique_lock guarda(tranca_);
        const auto livre = [&] { return donos_.try_emplace(recurso, sessao).first->second == sessao; };
        if (livre()) return 0;
        return mudou_.wait_for(guarda, espera, livre) ? 1 : -1;
    }
    void larga(const void* sessao) {
        const std::lock_guard guarda(tranca_);
        std::erase_if(donos_, [&](const auto& par) { return par.second == sessao; });
        mudou_.notify_all();
    }

  private:
    std::mutex tranca_;
    std::condition_variable mudou_;
    std::map<std::string, const void*> donos_;
};

} // namespace orvex::testes::tds
