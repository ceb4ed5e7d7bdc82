// Start-up: one start serves one task, chosen by a one-digit argument.
#pragma once

#include "startup/instalacao.h"
#include "startup/sessao_bd.h"
#include "startup/sessao_erp.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace orvex::startup {

inline constexpr const char* titulo_programa = "ORVEX - Movimentos"; // caption of the log-in failure box
inline constexpr const char* descricao_programa = titulo_programa;

enum class TipoEcra { MovStocks, GuiasRemessa, TrfBobines };

// What start-up needs of a screen.
class EcraArranque {
  public:
    virtual ~EcraArranque() = default;
    virtual void Load() = 0;
    virtual void Show() = 0; // not modal; the screen lives until the user closes it
};

// Makes sessions and screens; the composition root implements it, so start-up knows no adapter and no screen
// class.
class Fabrica {
  public:
    virtual ~Fabrica() = default;
    // A password of the settings that the system keeps (AbreProtegida).
    virtual std::string abre_protegida(const std::string& protegida) = 0;
    virtual std::unique_ptr<SessaoERP> cria_sessao_erp(const DefinicoesERP& definicoes) = 0;
    virtual std::unique_ptr<SessaoBD> cria_sessao_bd(const DefinicoesBD& definicoes) = 0;
    // Before a screen is made, once the tables were checked: what earlier runs of the program left unfinished
    // is settled.
    virtual void recupera(SessaoBD& /*BD*/, SessaoERP& /*gERP*/) {}
    // `modo` as in modos.h; sem_modo for the screen without modes.
    virtual std::shared_ptr<EcraArranque> cria_ecra(TipoEcra tipo, SessaoBD& BD, SessaoERP& gERP,
                                                    int modo) = 0;
    // A box with one OK button and no icon.
    virtual void mostra_caixa(const std::string& texto, const std::string& titulo) = 0;
};

// The process-wide state: one ERP session and one database session, for as long as the process lives.
class Arranque {
  public:
    Arranque(Fabrica& fabrica, PastasInstalacao pastas) : fabrica_(fabrica), pastas_(std::move(pastas)) {}

    // Whether the argument names a screen.
    static bool abre_ecra(const std::string& argumento);

    // Returns the screen that was shown, or none when the argument names none or the ERP refused the log-in.
    // Any other failure is thrown to the caller, which reports its text and ends the program.
    std::shared_ptr<EcraArranque> Main(const std::string& argumento);

    const std::filesystem::path& ficheiro_definicoes() const { return gFicheiroDefinicoes; }

  private:
    AbreProtegida abre_protegidas() const;
    bool LigaERP();
    void AbreBaseDados();

    Fabrica& fabrica_;
    PastasInstalacao pastas_;
    std::filesystem::path gFicheiroDefinicoes;
    std::unique_ptr<SessaoERP> gERP;
    std::unique_ptr<SessaoBD> gBD;
};

} // namespace orvex::startup
