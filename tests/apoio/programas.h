// The program, once for each workstation, on one company in which the eight writing flows concern the same
// item, line and documents. What its user does is one flow from its first key to its last box; what the
// screen refuses on the way he takes for an answer, and leaves.
//
//     REEL'1    held by CL'1, 10 t at the clients', of which later documents took some
//     FA/1/500  4 t of it, for CL'1; with two lines, 4 t of REEL2 too, which is as REEL'1 is
//     GR/1/1    took 2.5 t of each line; all 4 t where the line is to have nothing open
//     CI/3/1    a consumption of 1 t of REEL'1
//
// The auditor has nothing to say of it.
#pragma once

#include "platform/diario/diario.h"
#include "platform/diario/recuperacao.h"
#include "tests/apoio/empresa_teste.h"

#include <functional>
#include <memory>

namespace orvex::testes {

using Fluxos = std::vector<confirmacao::Fluxo>;

enum class Linha { aberta, fechada, duas };
// An item with open lines cannot be transferred; one without cannot be sent.
Linha linha_para(const Fluxos& fluxos);

// Ready to be copied (EmpresaTeste). Where another process has made them already, they are in its folder: one
// that forks must not have opened any.
std::filesystem::path empresa_disputada(Linha linha);
void faz_disputadas(const std::filesystem::path& pasta);
inline std::filesystem::path disputadas_feitas;

// What a program is given: sessions of its own, and the journals' folder that all share.
struct Posto {
    std::filesystem::path empresa;
    platform::diario::Gaveta& gaveta;
    std::function<std::unique_ptr<startup::SessaoBD>()> abre_bd;
    std::function<std::shared_ptr<startup::SessaoERP>()> abre_erp;
    // Settles a journal of its own that was left open.
    std::function<platform::diario::Tratamento(platform::diario::FicheiroDiario&)> resolve = [](auto&) {
        return platform::diario::Tratamento();
    };
};
// With recording sessions, on the engine that is asked for.
Posto posto(const std::filesystem::path& empresa, platform::diario::Gaveta& gaveta, Diario& gravacao);

class Programa {
  public:
    // With its screen open. The quantity is one to be issued or consumed.
    Programa(const Posto& posto, confirmacao::Fluxo fluxo, const std::string& quantidade = "");

    // Up to the last press; false when the screen refused something on the way.
    bool prepara() { return (ultimo_ = prepara_()) != nullptr; }
    void prime() { prime_(); }
    void age() {
        if (prepara()) prime();
    }
    std::string retrato() { return retrato_(); } // what the screen shows
    startup::SessaoBD& BD() { return *BD_; }
    startup::SessaoERP& ERP() { return *ERP_; }
    platform::diario::Diario& diario() { return diario_; }
    void junta(confirmacao::Observador& outro) { observadores_.junta(outro); } // told after the journal

    JanelaGuiao janela;

  private:
    void abre_para(const Posto& posto, confirmacao::Fluxo fluxo, const std::string& quantidade);
    template <typename TEcra, typename TPrepara, typename... Modo>
    void abre(const Posto& posto, TPrepara como, Modo... modo);

    std::unique_ptr<startup::SessaoBD> BD_;
    std::shared_ptr<startup::SessaoERP> ERP_;
    platform::diario::Diario diario_;
    confirmacao::Observadores observadores_;
    common::Botao* ultimo_ = nullptr;
    std::function<common::Botao*()> prepara_;
    std::function<void()> prime_;
    std::function<std::string()> retrato_;
};

// The next start of the program: what it does about the journals that were left. Its user answers every
// question in the same way.
class Arranque : public platform::diario::Atendimento {
  public:
    Arranque(const std::filesystem::path& empresa, platform::diario::Gaveta& gaveta, bool aceita,
             std::shared_ptr<startup::SessaoERP> ERP = nullptr);

    startup::SessaoERP& ERP() { return *ERP_; }
    // Looks for what was left, so many minutes after it began. Gives what the user is told, "first|second".
    std::string recupera(int minutos);
    // What was left, as the table of decisions calls it. None when nothing was.
    std::string janela();
    platform::diario::Recuperacao& recuperacao() { return recuperacao_; }

    Diario gravacao;
    bool aceita_tudo;
    std::string serie_das_guias = "1"; // as the parameters file writes it
    bool le = true;                    // what he is shown; otherwise the program is ending
    std::string caixas;                // of the last time
    int perguntas = 0;                 // of all of them
    std::function<void(const std::string& texto)> com_a_caixa_aberta = [](auto&) {};

  private:
    bool diz(const std::string& texto) override;
    bool aceita(const std::string& texto, const char* sim, const char* nao) override;

    SessaoDeTeste BD_{gravacao};
    std::shared_ptr<startup::SessaoERP> ERP_;
    int minutos_ = 0;
    base::FormatoRegional formato_;
    platform::diario::Gaveta& gaveta_;
    platform::diario::Recuperacao recuperacao_;
};

} // namespace orvex::testes
