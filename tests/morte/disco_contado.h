// The system's disk, each of whose operations is a step; or, of the journal's own files, what is written to
// them and their new names alone.
#pragma once

#include "platform/diario/disco.h"

#include <functional>
#include <utility>

namespace orvex::testes {

class DiscoContado final : public platform::diario::Disco {
  public:
    using Caminho = std::filesystem::path;
    using Trancado = std::unique_ptr<platform::diario::FicheiroTrancado>;

    DiscoContado(const std::function<void()>& momento, bool todas)
        : escrita_(momento), outra_(todas ? momento : [] {}) {}

    Trancado cria(const Caminho& novo) override { return conta(real().cria(passo(novo))); }
    Trancado tranca(const Caminho& ficheiro) override { return conta(real().tranca(passo(ficheiro))); }
    std::string le(const Caminho& ficheiro) override { return real().le(passo(ficheiro)); }
    std::vector<Caminho> ficheiros(const Caminho& pasta) override { return real().ficheiros(passo(pasta)); }
    void descarrega_pasta(const Caminho& pasta) override { real().descarrega_pasta(passo(pasta)); }

  private:
    class Ficheiro final : public platform::diario::FicheiroTrancado {
      public:
        Ficheiro(Trancado real, const DiscoContado& disco) : real_(std::move(real)), disco_(disco) {}

        std::string le() override { return disco_.outra_(), real_->le(); }
        void corta(std::size_t bytes) override { disco_.outra_(), real_->corta(bytes); }
        // Its line may be torn.
        void acrescenta(std::string_view bytes) override {
            disco_.escrita_();
            real_->acrescenta(bytes.substr(0, bytes.size() / 2));
            disco_.outra_();
            real_->acrescenta(bytes.substr(bytes.size() / 2));
        }
        void descarrega() override { disco_.outra_(), real_->descarrega(); }
        void muda_nome(const Caminho& novo) override { disco_.escrita_(), real_->muda_nome(novo); }

      private:
        Trancado real_;
        const DiscoContado& disco_;
    };

    static Disco& real() { return platform::diario::disco_do_sistema(); }
    const Caminho& passo(const Caminho& caminho) const { return outra_(), caminho; }
    Trancado conta(Trancado real) const {
        return real == nullptr ? nullptr : std::make_unique<Ficheiro>(std::move(real), *this);
    }

    std::function<void()> escrita_, outra_;
};

} // namespace orvex::testes
