// How an event runs, and the moves of the keyboard that it asks for.
#include "common/eventos.h"

#include "base/descricao.h"
#include "startup/arranque.h"

namespace orvex::common {

void Eventos::corre(const std::function<void()>& manipulador) {
    if (em_curso_ || a_fechar_) return;
    em_curso_ = true;
    servicos_.janela().ocupado(true);
    try {
        manipulador();
    } catch (const std::exception& falha) {
        foco_.desiste(); // the cursor stays where it was
        falha_sem_tratamento(falha);
    }
    resolve_foco();
    servicos_.janela().ocupado(false);
    em_curso_ = false;
    if (!a_fechar_) servicos_.janela().mostra();
}

void Eventos::resolve_foco() {
    foco_.resolve();
    if (foco_.actual() != nullptr && !a_fechar_) servicos_.janela().da_foco(*foco_.actual());
}

bool Eventos::valida_ao_sair(Controlo& controlo) {
    if (auto* selector = dynamic_cast<SelectorData*>(&controlo)) return le_texto(*selector);
    auto* campo = dynamic_cast<Campo*>(&controlo);
    if (campo == nullptr) return true;
    bool Cancel = false;
    try {
        campo_Validate(campo->Index, Cancel);
    } catch (const std::exception& falha) {
        falha_sem_tratamento(falha);
        Cancel = true;
    }
    if (Cancel) campo->selecciona_tudo(); // what is typed next replaces what was refused
    return !Cancel;
}

void Eventos::perdeu(Controlo& controlo) {
    if (auto* selector = dynamic_cast<SelectorData*>(&controlo)) selector->Texto.reset();
    const auto* grelha = dynamic_cast<Grelha*>(&controlo);
    if (grelha == nullptr) return;
    bDigitado = false; // keys typed in a grid are no reason to validate a field
    if (grelha->LostFocus) grelha->LostFocus();
}

void Eventos::ganhou(Controlo& controlo) {
    if (const auto* grelha = dynamic_cast<Grelha*>(&controlo); grelha != nullptr && grelha->GotFocus)
        grelha->GotFocus();
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
        servicos_.Avisa("", "Data inválida!", 2);
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

void Eventos::xelSendkeys(const std::string& sKey) { foco_.envia(sKey == "+{TAB}" ? -1 : +1); }

void Eventos::Unload() {
    a_fechar_ = true;
    servicos_.janela().descarrega();
}

} // namespace orvex::common
