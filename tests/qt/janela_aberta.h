// The small screen in an open window.
#pragma once

#include "platform/qt/vista_grelha.h"
#include "tests/common/ecra_ensaio.h"
#include "tests/qt/na_janela.h"

#include <QTabWidget>
#include <QVBoxLayout>

namespace orvex::testes {

class JanelaEnsaio : public platform::qt::JanelaQt {
  public:
    JanelaEnsaio(EcraEnsaio& ecra, const platform::qt::EstadoSessao& sessao) : JanelaQt(ecra, sessao) {
        auto* disposicao = new QVBoxLayout(this);
        disposicao->addWidget(liga_com_lista(ecra.campo[0], 10, ecra.lista_0));
        for (const int i : {1, 2})
            disposicao->addWidget(liga(ecra.campo[i], 10));
        disposicao->addWidget(liga(ecra.data));
        disposicao->addWidget(liga(ecra.combo));
        QTabWidget* paginas = liga(ecra.paginas);
        paginas->addTab(liga(ecra.grelha), {});
        paginas->addTab(new QWidget, {});
        disposicao->addWidget(paginas);
        disposicao->addWidget(liga(ecra.nome));
        disposicao->addWidget(liga(ecra.confirmar));
        disposicao->addWidget(&linha_estado());
    }
};

using JanelaAberta = NaJanela<Bancada<EcraEnsaio>, JanelaEnsaio>;

} // namespace orvex::testes
