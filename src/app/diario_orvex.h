// The journal of the program that runs: where it is, who answers when something was left unfinished, and what
// it holds back.
#pragma once

#include "platform/diario/diario.h"
#include "platform/diario/recuperacao.h"
#include "platform/operacoes/registo_operacoes.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace orvex::app {

class DiarioOrvex {
  public:
    struct Meios {
        startup::SessaoBD& BD;
        startup::SessaoERP& gERP;
        platform::diario::Gaveta gaveta;
        std::filesystem::path programa; // of the parameters file
        std::string empresa;
        std::function<std::unique_ptr<startup::SessaoBD>()> abre_sessao; // another one on the same company
        platform::operacoes::RegistoOperacoes& registo;
    };

    explicit DiarioOrvex(const Meios& meios);
    ~DiarioOrvex();

    // What earlier runs left.
    void recupera() { recuperacao_.trata_tudo(); }

    confirmacao::Observador& observador() { return diario_; }
    bool a_meio() const { return diario_.a_meio(); }
    std::filesystem::path em_curso() const { return diario_.caminho(); }

  private:
    class Sessao;

    base::FormatoRegional formato_;
    std::unique_ptr<platform::diario::Atendimento> atendimento_;
    platform::diario::Gaveta gaveta_;
    platform::diario::Recuperacao recuperacao_;
    platform::diario::Diario diario_;
    std::unique_ptr<Sessao> sessao_; // of the desktop
};

} // namespace orvex::app
