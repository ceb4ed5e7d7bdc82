// How an event runs, and the moves of the keyboard that it asks for.
#include "common/eventos.h"

#include "base/descricao.h"
#include "base/falha.h"
#include "startup/arranque.h"

namespace orvex::common {

// The running of an event, and its end: however it comes, the screen listens again and the cursor rests.
class Eventos::EmCurso {
  public:
    explicit EmCurso(Eventos& eventos) : eventos_(eventos) { eventos_.em_curso_ = true; }
    ~EmCurso() {
        if (!eventos_.em_curso_) return;
        eventos_.foco_.desiste();
        try {
            termina();
        } catch (...) { // what is on its way to the caller already says that the window fails
        }
    }
    EmCurso(const EmCurso&) = delete;

    void termina() {
        eventos_.em_curso_ = false;
        eventos_.servicos_.janela().ocupado(false);
    }

  private:
    Eventos& eventos_;
};

void Eventos::decorre(const std::function<void()>& evento) {
    const bool correu = sem_outros([&] {
        evento();
        resolve_foco();
    });
    if (correu && !a_fechar_) servicos_.janela().mostra();
}

bool Eventos::sem_outros(const std::function<void()>& trabalho) {
    if (em_curso_ || a_fechar_) return false;
    EmCurso em_curso(*this);
    servicos_.janela().ocupado(true);
    trabalho();
    em_curso.termina();
    return true;
}

bool Eventos::trata(const std::function<void()>& manipulador) {
    try {
        manipulador();
        return true;
    } catch (const std::exception& falha) {
        foco_.desiste(); // the cursor stays where it was
        conta(falha);
    } catch (...) {
        foco_.desiste();
        conta(base::Falha("Ocorreu um erro inesperado."));
    }
    return false;
}

// Where it cannot be shown, the caller learns of both.
void Eventos::conta(const std::exception& falha) {
    try {
        falha_sem_tratamento(falha);
    } catch (const std::exception& ao_mostrar) {
        throw base::Falha(base::descricao(falha) + "\r\n" + base::descricao(ao_mostrar));
    } catch (...) {
        throw base::Falha(base::descricao(falha));
    }
}

void Eventos::resolve_foco() {
    aceite_ = foco_.resolve();
    if (foco_.actual() != nullptr && !a_fechar_) servicos_.janela().da_foco(*foco_.actual());
}

bool Eventos::valida_ao_sair(Controlo& controlo) {
    auto* selector = dynamic_cast<SelectorData*>(&controlo);
    auto* campo = dynamic_cast<Campo*>(&controlo);
    bool Cancel = false;
    const bool validado = trata([&] {
        if (selector != nullptr) Cancel = !le_texto(*selector);
        if (campo != nullptr) campo_Validate(campo->Index, Cancel);
    });
    if (validado && !Cancel) return true;
    if (campo != nullptr) campo->selecciona_tudo(); // what is typed next replaces what was refused
    return false;
}

void Eventos::perdeu(Controlo& controlo) {
    if (auto* selector = dynamic_cast<SelectorData*>(&controlo)) selector->Texto.reset();
    const auto* grelha = dynamic_cast<Grelha*>(&controlo);
    if (grelha == nullptr) return;
    bDigitado = false; // keys typed in a grid are no reason to validate a field
    if (grelha->LostFocus) trata(grelha->LostFocus);
}

void Eventos::ganhou(Controlo& controlo) {
    if (const auto* grelha = dynamic_cast<Grelha*>(&controlo); grelha != nullptr && grelha->GotFocus)
        trata(grelha->GotFocus);
    if (auto* campo = dynamic_cast<Campo*>(&controlo)) campo->selecciona_tudo();
    if (auto* selector = dynamic_cast<SelectorData*>(&controlo)) {
        selector->ao_entrar = selector->Value;
        selector->escolhida_ao_entrar = selector->escolhida;
    }
}

bool Eventos::le_texto(SelectorData& selector) {
    if (!selector.Texto) return true;
    const auto lida = data_escrita(selector);
    if (!lida) {
        servicos_.Avisa("", "Data inválida!", Servicos::aviso_informacao);
        return false;
    }
    selector.Texto.reset();
    selector.Value = *lida;
    selector.escolhida = lida;
    return true;
}

void Eventos::falha_sem_tratamento(const std::exception& falha) {
    servicos_.janela().mostra();
    servicos_.janela().caixa(base::descricao(falha), startup::descricao_programa, Icone::critico, Botoes::ok);
}

void Eventos::campo_KeyPress(Campo& campo, int& KeyAscii) {
    bDigitado = true;
    if (KeyAscii != tecla_esc) return;
    xelSendkeys("+{TAB}");
    KeyAscii = 0;
    bDigitado = false;
    if (&campo == campo_de_fecho()) Unload();
}

void Eventos::xelSendkeys(const std::string& sKey) {
    foco_.envia(sKey == "+{TAB}" ? -1 : +1, Foco::Tecla::enviada);
}

void Eventos::larga_o_digitado() {
    bDigitado = false;
    if (auto* selector = dynamic_cast<SelectorData*>(foco_.actual())) selector->Texto.reset();
}

void Eventos::Unload() {
    servicos_.janela().descarrega();
    a_fechar_ = true;
}

} // namespace orvex::common
