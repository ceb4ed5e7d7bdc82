// The program, once for each workstation, on one company in which the eight writing flows concern the same
// item, line and documents. What its user does is one flow from its first key to its last box; what the
// screen refuses on the way he takes for an answer, and leaves.
//
//     REEL'1      held by CL'1, 10 t at the clients', of which later documents took some
//     FA/1/500/1  4 t of it, for CL'1
//     GR/1/1      took 2.5 t of that line; all 4 t where the line is to have nothing open
//     CI/3/1      a consumption of 1 t
#pragma once

#include "platform/diario/diario.h"
#include "platform/diario/recuperacao.h"
#include "tests/apoio/empresa_teste.h"

#include <functional>
#include <memory>

namespace orvex::testes {

enum class Linha { aberta, fechada };

// Ready to be copied (EmpresaTeste).
const std::filesystem::path& empresa_disputada(Linha linha);

// What a program is given: sessions of its own, and the journals' folder that all share.
struct Posto {
    EmpresaTeste& empresa;
    platform::diario::Gaveta& gaveta;
    std::function<std::unique_ptr<startup::SessaoBD>()> abre_bd;
    std::function<std::shared_ptr<startup::SessaoERP>()> abre_erp;
};

class Programa {
  public:
    virtual ~Programa() = default;

    virtual void age() = 0;
    startup::SessaoBD& BD() { return *BD_; }

    JanelaGuiao janela;

  protected:
    explicit Programa(const Posto& posto);
    common::ServicosEcra servicos(const Posto& posto);

  private:
    std::unique_ptr<startup::SessaoBD> BD_;
    std::shared_ptr<startup::SessaoERP> ERP_;
    platform::diario::Diario diario_;
};

// Logs in to the company's ERP.
void liga(startup::SessaoERP& gERP, EmpresaTeste& empresa);

// With its screen open.
std::unique_ptr<Programa> programa(confirmacao::Fluxo fluxo, const Posto& posto);

// What a program does at its start about the journals of those that died, its user agreeing to all that is
// offered, or putting it off. Gives what he was told, "first|second".
enum class Resposta { sim, depois };
std::string recupera(EmpresaTeste& empresa, platform::diario::Gaveta& gaveta, startup::SessaoERP& gERP,
                     Resposta resposta, std::chrono::sys_seconds agora);

} // namespace orvex::testes
