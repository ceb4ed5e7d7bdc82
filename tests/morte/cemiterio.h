// Programs that die, and where. Nothing of a company is opened in the test's own process: who forks must not
// have any (an engine that was forked has wrong ideas of its locks).
#pragma once

#include "tests/morte/perito.h"
#include "tests/morte/servidor_a_parte.h"

namespace orvex::testes {

// What becomes of the COMMIT; where it fails, the failing path is taken.
struct Commit {
    const char* nome;
    std::optional<Diario::Maneira> falha{};
};

// The windows that occurred, and what the judge found wrong.
struct Sentenca {
    std::map<std::string, std::filesystem::path> janelas{};
    std::string defeitos{};

    std::string nomes() const;
};

class Cemiterio : public testing::TestWithParam<confirmacao::Fluxo> {
  protected:
    using Pastas = std::vector<std::filesystem::path>;
    struct Fim {
        bool morreu;       // by SIGKILL
        std::string texto; // what the work gave back
    };

    Cemiterio();
    ~Cemiterio() override;

    // From now on everything goes over the wire, to a server in another process; the one before is killed.
    void novo_servidor();

    // A process that works in that folder, and neither throws nor ends otherwise than by dying.
    Fim em(const std::filesystem::path& pasta, const std::function<std::string()>& trabalho) const;
    std::filesystem::path pasta(const std::string& nome) const { return raiz_.pasta() / nome; }

    // The flow, dying at every moment, from the COMMIT on where that fails.
    Pastas mata(const Commit& commit) const;
    // The flow, living, while the server dies at each of its requests.
    Pastas mata_servidor(bool depois_de_cumprido);
    // The recovery of what died there, told yes to everything, dying at every moment. Told to decide later,
    // it takes none but these steps.
    Pastas mata_recuperacao(const std::filesystem::path& morto) const;
    Sentenca julga(const Pastas& mortos) const;

  private:
    static std::filesystem::path onde_ha_muito_espaco();
    std::filesystem::path modelo() const { return pasta("modelo"); }
    void olha_logo(const std::filesystem::path& morto) const;

    PastaTemporaria raiz_{onde_ha_muito_espaco()};
    std::optional<ServidorAParte> servidor_;
};

} // namespace orvex::testes
