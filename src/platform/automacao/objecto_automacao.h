// An object of the component's, as the rules know objects of the ERP.
#pragma once

#include "platform/automacao/ligacao.h"

namespace orvex::platform::automacao {

// Lives wherever its holder does; what it stands for lives in the apartment, and is released there when this
// one goes or when the session does.
class ObjectoAutomacao : public startup::ObjectoERP {
  public:
    ObjectoAutomacao(std::shared_ptr<Ligacao> ligacao, Componente::Objecto objecto, std::string de_onde)
        : ligacao_(std::move(ligacao)), objecto_(objecto), de_onde_(std::move(de_onde)) {}
    ObjectoAutomacao(const ObjectoAutomacao&) = delete;
    ObjectoAutomacao& operator=(const ObjectoAutomacao&) = delete;
    ~ObjectoAutomacao() override { ligacao_->larga(objecto_); }

    startup::ValorERP obtem(std::string_view membro) override;
    void poe(std::string_view membro, const startup::ValorERP& valor) override;

    const Ligacao* ligacao() const { return ligacao_.get(); }
    Componente::Objecto objecto() const { return objecto_; }

  private:
    startup::ValorERP invoca(std::string_view membro, Argumentos& argumentos) override;

    std::string membro_de(std::string_view membro) const { return de_onde_ + "." + std::string(membro); }

    std::shared_ptr<Ligacao> ligacao_;
    Componente::Objecto objecto_;
    std::string de_onde_;
};

} // namespace orvex::platform::automacao
