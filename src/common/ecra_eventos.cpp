// The events of the user: what each runs, and where the keyboard goes.
#include "common/ecra.h"

#include <exception>
#include <utility>

namespace orvex::common {

using base::Variante;

namespace {

// Puts back what the picker showed when the keyboard came.
void desiste(SelectorData& selector) {
    selector.Texto.reset();
    selector.Value = selector.ao_entrar;
    selector.escolhida = selector.escolhida_ao_entrar;
}

} // namespace

void Ecra::corre(const std::function<void()>& manipulador) {
    if (em_curso_ || a_fechar_) return;
    em_curso_ = true;
    janela().ocupado(true);
    try {
        manipulador();
    } catch (const std::exception& falha) {
        foco_.desiste(); // the cursor stays where it was
        falha_sem_tratamento(falha);
    }
    resolve_foco();
    janela().ocupado(false);
    em_curso_ = false;
    if (!a_fechar_) janela().mostra();
}

void Ecra::resolve_foco() {
    foco_.resolve();
    if (foco_.actual() != nullptr && !a_fechar_) janela().da_foco(*foco_.actual());
}

bool Ecra::valida_ao_sair(Controlo& controlo) {
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

void Ecra::perdeu(Controlo& controlo) {
    if (auto* selector = dynamic_cast<SelectorData*>(&controlo)) selector->Texto.reset();
    const auto* grelha = dynamic_cast<Grelha*>(&controlo);
    if (grelha == nullptr) return;
    bDigitado = false; // keys typed in a grid are no reason to validate a field
    if (grelha->LostFocus) grelha->LostFocus();
}

void Ecra::ganhou(Controlo& controlo) {
    if (const auto* grelha = dynamic_cast<Grelha*>(&controlo); grelha != nullptr && grelha->GotFocus)
        grelha->GotFocus();
    if (auto* campo = dynamic_cast<Campo*>(&controlo)) campo->selecciona_tudo();
    if (auto* selector = dynamic_cast<SelectorData*>(&controlo)) {
        selector->ao_entrar = selector->Value;
        selector->escolhida_ao_entrar = selector->escolhida;
    }
}

void Ecra::utilizador_abre() {
    corre([this] { SetFocus(primeiro_campo()); });
}

void Ecra::utilizador_edita(Campo& campo, const std::string& texto) {
    if (em_curso_ || !campo.Enabled || campo.so_leitura) return;
    campo.Text = texto;
    bDigitado = true;
}

void Ecra::utilizador_tecla(Campo& campo, int codigo) {
    corre([&] {
        if (codigo == tecla_enter) {
            xelSendkeys("{TAB}");
            return;
        }
        campo_KeyPress(campo, codigo);
    });
}

void Ecra::utilizador_lista(Campo& campo) {
    corre([&] { campo_BotaoLista(campo.Index); });
}

void Ecra::utilizador_avanca(int passos) {
    corre([&] { foco_.envia(passos); });
}

bool Ecra::utilizador_foca(Controlo& controlo) {
    if (foco_.actual() != &controlo) corre([&] { SetFocus(controlo); });
    return foco_.actual() == &controlo;
}

void Ecra::utilizador_prime(Botao& botao) {
    if (em_curso_ || !botao.recebe_foco() || !utilizador_foca(botao)) return;
    corre([&] {
        if (botao.Click) botao.Click();
    });
}

bool Ecra::utilizador_esc(Controlo& controlo) {
    Botao* cancela = controlo.cancela();
    if (auto* selector = dynamic_cast<SelectorData*>(&controlo)) desiste(*selector);
    if (cancela != nullptr) utilizador_prime(*cancela);
    return cancela != nullptr;
}

void Ecra::utilizador_edita(SelectorData& selector, const std::string& texto) {
    if (!em_curso_ && selector.Enabled) selector.Texto = texto;
}

void Ecra::utilizador_data(SelectorData& selector, const base::DataHora& valor) {
    if (em_curso_ || !selector.Enabled) return;
    selector.Texto.reset();
    selector.Value = valor;
    selector.escolhida = valor;
}

std::optional<base::DataHora> Ecra::data_escrita(const SelectorData& selector) const {
    if (!selector.Texto) return selector.Value;
    return selector.Value.digitada(*selector.Texto, selector.com_hora, agora());
}

bool Ecra::le_texto(SelectorData& selector) {
    if (!selector.Texto) return true;
    const auto lida = data_escrita(selector);
    if (!lida) {
        Avisa("", "Data inválida!", 2);
        return false;
    }
    selector.Texto.reset();
    selector.Value = *lida;
    selector.escolhida = lida;
    return true;
}

void Ecra::utilizador_tecla(SelectorData& selector, int codigo, int shift) {
    corre([&] {
        if (codigo == tecla_esc && foco_.actual() == &selector) desiste(selector);
        if (selector.KeyDown) selector.KeyDown(codigo, shift);
    });
}

void Ecra::utilizador_escolhe(Combo& combo, int indice) {
    if (indice == combo.ListIndex) return;
    corre([&] {
        const int anterior = std::exchange(combo.ListIndex, indice);
        if (combo.Change) combo.Change(anterior);
    });
}

void Ecra::utilizador_pagina(Separadores& separadores, int pagina) {
    corre([&] {
        // The field left behind on the other page is validated before the page goes out of sight.
        SetFocus(separadores);
        if (foco_.resolve()) separadores.Tab = pagina;
    });
}

void Ecra::utilizador_celula(Grelha& grelha, int linha, int coluna) {
    if (linha == grelha.linha_actual && coluna == grelha.coluna_actual) return;
    corre([&] {
        const int linha_anterior = grelha.linha_actual;
        const int coluna_anterior = grelha.coluna_actual;
        grelha.linha_actual = linha;
        grelha.coluna_actual = coluna;
        if (grelha.RowColChange) grelha.RowColChange(linha_anterior, coluna_anterior);
    });
}

bool Ecra::utilizador_tecla(Grelha& grelha, int codigo, int shift) {
    bool engolida = false;
    corre([&] {
        const bool escolhe = grelha.DblClick && (codigo == tecla_enter || codigo == ' ');
        if (grelha.KeyDown) grelha.KeyDown(codigo, shift);
        if (escolhe && codigo != 0) {
            grelha.DblClick();
            codigo = 0;
        }
        engolida = codigo == 0;
    });
    return engolida;
}

void Ecra::utilizador_duplo_clique(Grelha& grelha) {
    corre([&] {
        if (grelha.DblClick) grelha.DblClick();
    });
}

bool Ecra::utilizador_edita_celula(Grelha& grelha, const std::string& texto) {
    const int linha = grelha.linha_actual - 1;
    const int coluna = grelha.coluna_actual;
    const Coluna& descricao = grelha.colunas()[static_cast<std::size_t>(coluna)];
    if (descricao.so_leitura || !grelha.Enabled) return false;

    bool aceite = false;
    corre([&] {
        bool Cancel = false;
        bDigitado = true;
        grelha.texto_editado = texto;
        if (grelha.BeforeColUpdate)
            grelha.BeforeColUpdate(linha + 1, coluna, Variante(grelha.valor(linha, coluna)), Cancel);
        if (!Cancel) aceite = grelha.guarda_edicao(linha, coluna, formato());
    });
    return aceite;
}

void Ecra::utilizador_apaga_linha(Grelha& grelha) {
    corre([&] {
        bool Cancel = !grelha.permite_apagar;
        if (!Cancel && grelha.BeforeDelete) grelha.BeforeDelete(Cancel);
        if (Cancel) return;
        grelha.apaga_linha(grelha.linha_actual - 1);
        if (grelha.AfterDelete) grelha.AfterDelete();
    });
}

} // namespace orvex::common
