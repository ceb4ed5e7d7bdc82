// What each event of the user runs.
#include "common/eventos.h"

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

void Eventos::utilizador_abre() {
    corre([this] { SetFocus(primeiro_campo()); });
}

void Eventos::utilizador_edita(Campo& campo, const std::string& texto) {
    if (em_curso_ || !campo.Enabled || campo.so_leitura) return;
    campo.Text = texto;
    bDigitado = true;
}

void Eventos::utilizador_tecla(Campo& campo, int codigo) {
    corre([&] {
        if (codigo == tecla_enter) {
            xelSendkeys("{TAB}");
            return;
        }
        campo_KeyPress(campo, codigo);
    });
}

void Eventos::utilizador_lista(Campo& campo) {
    corre([&] { campo_BotaoLista(campo.Index); });
}

void Eventos::utilizador_avanca(int passos) {
    corre([&] { foco_.envia(passos, Foco::Tecla::do_utilizador); });
}

bool Eventos::utilizador_foca(Controlo& controlo) {
    const auto foca = [&] { SetFocus(controlo); };
    if (foco_.actual() == &controlo) return !em_curso_;
    corre(foca);
    if (!em_curso_ && aceite_ && foco_.actual() != &controlo && dynamic_cast<Botao*>(&controlo) != nullptr)
        corre(foca);
    return !em_curso_ && foco_.actual() == &controlo;
}

void Eventos::utilizador_prime(Botao& botao) {
    if (em_curso_ || !botao.recebe_foco()) return;
    if (botao.papel != Botao::Papel::faz) larga_o_digitado();
    if (!utilizador_foca(botao)) return;
    corre([&] {
        if (botao.Click) botao.Click();
    });
}

bool Eventos::utilizador_esc(Controlo& controlo) {
    Botao* cancela = controlo.cancela();
    if (em_curso_) return cancela != nullptr;
    if (auto* selector = dynamic_cast<SelectorData*>(&controlo)) desiste(*selector);
    if (cancela != nullptr) utilizador_prime(*cancela);
    return cancela != nullptr;
}

void Eventos::utilizador_edita(SelectorData& selector, const std::string& texto) {
    if (!em_curso_ && selector.Enabled) selector.Texto = texto;
}

void Eventos::utilizador_data(SelectorData& selector, const base::DataHora& valor) {
    if (em_curso_ || !selector.Enabled) return;
    selector.Texto.reset();
    selector.Value = valor;
    selector.escolhida = valor;
}

std::optional<base::DataHora> Eventos::data_escrita(const SelectorData& selector) const {
    if (!selector.Texto) return selector.Value;
    return selector.Value.digitada(*selector.Texto, selector.com_hora, servicos_.agora());
}

void Eventos::utilizador_tecla(SelectorData& selector, int codigo, int shift) {
    corre([&] {
        if (codigo == tecla_esc && foco_.actual() == &selector) desiste(selector);
        if (selector.KeyDown) selector.KeyDown(codigo, shift);
    });
}

void Eventos::utilizador_escolhe(Combo& combo, int indice) {
    if (indice == combo.ListIndex) return;
    corre([&] {
        const int anterior = std::exchange(combo.ListIndex, indice);
        if (combo.Change) combo.Change(anterior);
    });
}

void Eventos::utilizador_pagina(Separadores& separadores, int pagina) {
    decorre([&] {
        // The field left behind on the other page is validated before the page goes out of sight.
        SetFocus(separadores);
        if (foco_.resolve()) separadores.Tab = pagina;
    });
}

void Eventos::utilizador_celula(Grelha& grelha, int linha, int coluna) {
    if (linha == grelha.linha_actual && coluna == grelha.coluna_actual) return;
    corre([&] {
        const int linha_anterior = grelha.linha_actual;
        const int coluna_anterior = grelha.coluna_actual;
        grelha.linha_actual = linha;
        grelha.coluna_actual = coluna;
        if (grelha.RowColChange) grelha.RowColChange(linha_anterior, coluna_anterior);
    });
}

bool Eventos::utilizador_tecla(Grelha& grelha, int codigo, int shift) {
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

void Eventos::utilizador_duplo_clique(Grelha& grelha) {
    corre([&] {
        if (grelha.DblClick) grelha.DblClick();
    });
}

bool Eventos::utilizador_edita_celula(Grelha& grelha, const std::string& texto) {
    const int linha = grelha.linha_actual - 1;
    const int coluna = grelha.coluna_actual;
    const ColunaGrelha& descricao = grelha.colunas()[static_cast<std::size_t>(coluna)];
    if (descricao.so_leitura || !grelha.Enabled) return false;

    bool aceite = false;
    corre([&] {
        bool Cancel = false;
        bDigitado = true;
        grelha.texto_editado = texto;
        if (grelha.BeforeColUpdate)
            grelha.BeforeColUpdate(linha + 1, coluna, Variante(grelha.valor(linha, coluna)), Cancel);
        if (!Cancel) aceite = grelha.guarda_edicao(linha, coluna, servicos_.formato());
    });
    return aceite;
}

void Eventos::utilizador_apaga_linha(Grelha& grelha) {
    corre([&] {
        bool Cancel = !grelha.permite_apagar;
        if (!Cancel && grelha.BeforeDelete) grelha.BeforeDelete(Cancel);
        if (Cancel) return;
        grelha.apaga_linha(grelha.linha_actual - 1);
        if (grelha.AfterDelete) grelha.AfterDelete();
    });
}

void Eventos::utilizador_ordena(Grelha& grelha, int coluna) {
    if (grelha.ordenavel && grelha.Enabled) corre([&] { grelha.ordena(coluna); });
}

} // namespace orvex::common
