// A disk that forgets: what it would hold if the power went now. Under the engine's files (as its default
// VFS, over the real one) and the journals.
//
// A file's bytes are on it once they were flushed; a new name, and a file's new one, once its folder was. The
// engine flushes the folder of a new log itself. Of what came later, nothing is there, or any part.
#pragma once

#include "platform/diario/disco.h"

#include <functional>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace orvex::testes {

class DiscoQueEsquece final : public platform::diario::Disco {
  public:
    using Caminho = std::filesystem::path;
    using Trancado = std::unique_ptr<platform::diario::FicheiroTrancado>;

    struct Conteudo {
        struct Escrita {
            std::size_t onde;
            std::string bytes;
            bool corta = false; // there, instead of writing
        };
        bool existe = false; // on the disk
        std::string descarregado{};
        std::vector<Escrita> por_descarregar{};
    };

    // From now on the engine writes through it. One at a time.
    explicit DiscoQueEsquece(Caminho raiz_dos_diarios);
    ~DiscoQueEsquece() override;

    // Told of every flush, before it is done.
    std::function<void()> antes_de_descarregar = [] {};

    // Made anew in that folder, as a program that died leaves company and journals. With a seed, parts of
    // what was not flushed are there too.
    void guarda(const Caminho& empresa, const Caminho& onde, std::optional<unsigned> semente) const;

    Trancado cria(const Caminho& novo) override;
    Trancado tranca(const Caminho& ficheiro) override { return real().tranca(ficheiro); }
    std::string le(const Caminho& ficheiro) override { return real().le(ficheiro); }
    std::vector<Caminho> ficheiros(const Caminho& pasta) override { return real().ficheiros(pasta); }
    void descarrega_pasta(const Caminho& pasta) override;

    // For the engine.
    Conteudo& do_motor(const char* nome);
    void descarrega(Conteudo& conteudo);

  private:
    class Ficheiro;
    static Disco& real() { return platform::diario::disco_do_sistema(); }

    Caminho raiz_;
    std::map<Caminho, Conteudo> livros_;
    std::map<Caminho, std::shared_ptr<Conteudo>> nomes_, nomes_no_disco_;
    std::set<Caminho> pastas_no_disco_;
};

} // namespace orvex::testes
