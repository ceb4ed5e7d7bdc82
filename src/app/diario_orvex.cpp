#include "app/diario_orvex.h"

#include "platform/operacoes/sistema.h"
#include "platform/qt/aplicacao.h"
#include "platform/qt/caixa.h"
#include "startup/arranque.h"
#include "startup/parametros.h"

#include <QApplication>
#include <QSessionManager>

namespace orvex::app {
namespace {

using platform::diario::Recuperacao;
using platform::operacoes::RegistoOperacoes;

// Without the busy cursor of the handler that a box may be shown in.
class CursorNormal {
  public:
    CursorNormal() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~CursorNormal() { QGuiApplication::restoreOverrideCursor(); }
    CursorNormal(const CursorNormal&) = delete;
    CursorNormal& operator=(const CursorNormal&) = delete;
};

// Boxes that are in the log before they are read.
class AtendimentoQt : public platform::diario::Atendimento {
  public:
    explicit AtendimentoQt(RegistoOperacoes& registo) : registo_(registo) {}

    bool diz(const std::string& texto) override {
        registo_.caixa(texto);
        const CursorNormal cursor;
        return platform::qt::mostra_caixa(QApplication::activeWindow(), texto, startup::titulo_programa,
                                          common::Icone::exclamacao,
                                          common::Botoes::ok) == common::resposta_ok;
    }

    bool aceita(const std::string& texto, const char* sim, const char* nao) override {
        registo_.caixa(texto);
        const CursorNormal cursor;
        const bool aceite = platform::qt::mostra_escolha(QApplication::activeWindow(), texto,
                                                         startup::titulo_programa, sim, nao);
        registo_.resposta(aceite ? sim : nao);
        return aceite;
    }

  private:
    RegistoOperacoes& registo_;
};

std::chrono::sys_seconds agora() {
    return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
}

} // namespace

// A session of the desktop that ends (log-off, shut-down) while a confirmation or one of its boxes is open is
// held back, where the system lets a program ask for that.
class DiarioOrvex::Sessao : public QObject {
  public:
    explicit Sessao(const platform::diario::Diario& diario) {
        connect(
            qApp, &QGuiApplication::commitDataRequest, this,
            [&diario](QSessionManager& sessao) {
                if (diario.a_meio()) sessao.cancel();
            },
            Qt::DirectConnection);
    }
};

DiarioOrvex::DiarioOrvex(const Meios& meios)
    : formato_(platform::qt::formato_do_sistema()),
      atendimento_(std::make_unique<AtendimentoQt>(meios.registo)), gaveta_(meios.gaveta),
      recuperacao_(
          gaveta_,
          {.BD = meios.BD,
           .gERP = meios.gERP,
           .atendimento = *atendimento_,
           .formato = formato_,
           .empresa = meios.empresa,
           .guias =
               [programa = meios.programa] {
                   const startup::Parametros parametros(programa);
                   const startup::ParametroDocumento guias = parametros.lista("GUIASREMESSA"),
                                                     devolucoes = parametros.lista("GUIADEVOLUCAO");
                   return platform::diario::DocumentosDeGuias{guias.SerieEscrita(), devolucoes.TpDoc()};
               },
           .observador = meios.registo,
           .agora = agora}),
      diario_(gaveta_,
              {.identidade = {.empresa = meios.empresa,
                              .utilizador = platform::operacoes::utilizador_da_maquina(),
                              .maquina = platform::operacoes::nome_da_maquina()},
               .abre_sessao = meios.abre_sessao,
               .resolve = [this](auto& ficheiro) { return recuperacao_.trata(ficheiro); },
               .engole = [&registo = meios.registo](const std::string& texto) { registo.engolida(texto); }}) {
    sessao_ = std::make_unique<Sessao>(diario_);
}

DiarioOrvex::~DiarioOrvex() = default;

} // namespace orvex::app
