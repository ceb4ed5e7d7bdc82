// The views gone through, back and forward: each stays as it was left. Few are kept, fewer where they are
// large; the oldest go first.
#pragma once

#include "platform/qt/consulta/pagina.h"

#include <QPointer>
#include <QStackedWidget>

#include <vector>

namespace orvex::platform::qt::consulta {

class Caminho {
  public:
    explicit Caminho(QStackedWidget& pilha) : pilha_(pilha) {}

    Pagina* actual() const { return paginas_.empty() ? nullptr : paginas_[lugar_]; }
    bool ha_atras() const { return lugar_ > 0; }
    bool ha_a_frente() const { return lugar_ + 1 < paginas_.size(); }
    void segue(Pagina* nova); // what lay ahead is forgotten
    void anda(int passos);    // where there is something; the keyboard is where it was in it

  private:
    void esquece(std::size_t qual);

    QStackedWidget& pilha_;
    std::vector<Pagina*> paginas_;
    std::size_t lugar_ = 0;
};

} // namespace orvex::platform::qt::consulta
