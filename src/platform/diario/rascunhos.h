// The drafts of one user for one company, on the disk of this machine: of each window its own.
//
//     20261123-154000-1f0c77b1.rascunho   the note
//     20261123-154000-1f0c77b1.posto      held by the window that it belongs to, for as long as that lives
//     *.novo                              one that is being written
//     *.estragado                         one that cannot be understood, set aside
//
// A note that is being confirmed is marked with the journal of that before anything is asked of the ERP. It
// is offered again only where that journal says that nothing was made, and goes where it says that all was:
// so wherever the program dies, no note is issued twice. What nobody can tell any more is never offered.
#pragma once

#include "confirmacao/observador.h"
#include "platform/diario/gaveta.h"
#include "platform/diario/texto_rascunho.h"

#include <functional>
#include <list>

namespace orvex::platform::diario {

class Rascunhos : public delivery::GuardaRascunhos, public confirmacao::Observador {
  public:
    struct Meios {
        std::filesystem::path pasta; // of this company; made when it is needed
        std::string empresa{};
        Gaveta diarios; // which tell how a confirmation ended
        // The journal of the confirmation that is beginning.
        std::function<std::filesystem::path()> em_curso;
        std::function<void(const std::string&)> engole; // a failure that changes nothing
        Disco& disco = disco_do_sistema();
    };

    // Takes what no living window holds.
    explicit Rascunhos(Meios meios);

    // The note on the screen could not be written the last time.
    bool avariado() const { return avariado_; }

    void guarda(const std::optional<delivery::Rascunho>& rascunho) noexcept override;
    bool larga() noexcept override;
    const Oferta* oferta() const noexcept override;
    void retoma() noexcept override;
    void deita_fora() noexcept override;

    // To be told after the journal: a mark that cannot be made refuses the confirmation.
    void intencao(const confirmacao::Intencao& intencao) override;
    void feita() noexcept override;
    void compensada(const confirmacao::Compensacao& fim) noexcept override;

  private:
    struct Guardado {
        std::filesystem::path ficheiro{};
        std::unique_ptr<FicheiroTrancado> posto{};
        std::vector<std::string> diarios{};
        Oferta oferta{};
    };

    void procura();
    std::optional<Guardado> toma(const std::filesystem::path& nome);
    std::unique_ptr<FicheiroTrancado> tranca(const std::filesystem::path& posto);
    Guardado novo();
    void escreve(const Guardado& este, Descarga descarga); // throws
    void escreve_ou_diz(const Guardado& este) noexcept;
    bool apaga(Guardado& este) noexcept;      // false when its file stays
    bool ve_diarios(Guardado& este) noexcept; // false once it was found done
    void ve_ofertas() noexcept;
    std::list<Guardado>::iterator oferecido() noexcept;

    Meios meios_;
    std::optional<Guardado> actual_; // of the screen
    std::list<Guardado> ofertas_;    // newest first
    bool a_confirmar_ = false;
    bool falhou_ = false; // the confirmation in the event that runs
    bool avariado_ = false;
};

} // namespace orvex::platform::diario
