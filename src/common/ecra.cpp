#include "common/ecra.h"

#include "base/falha.h"
#include "base/texto.h"

#include <exception>
#include <utility>

namespace orvex::common {

using base::Variante;

namespace {

void selecciona_tudo(Campo& campo) {
    campo.SelStart = 0;
    campo.SelLength = static_cast<int>(base::comprimento(campo.Text));
}

} // namespace

Ecra::Ecra(ServicosEcra servicos, std::string titulo_janela)
    : BD(servicos.BD), gERP(servicos.gERP), servicos_(std::move(servicos)),
      titulo_janela_(std::move(titulo_janela)) {}

void Ecra::regista(Controlo& controlo, std::string nome) {
    controlo.nome = std::move(nome);
    controlos_.push_back(&controlo);
}

void Ecra::regista_campo(Campo& campo, int Index, const char* ToolTip, const char* Legenda, int comprimento) {
    regista(campo, "campo(" + std::to_string(Index) + ")");
    campo.Index = Index;
    campo.ToolTip = ToolTip;
    campo.Legenda = Legenda;
    campo.MaxLength = comprimento;
}

void Ecra::regista_botao(Botao& botao, std::string nome, const char* Caption, const char* ToolTip,
                         std::function<void()> Click) {
    regista(botao, std::move(nome));
    botao.Caption = Caption;
    botao.ToolTip = ToolTip;
    botao.Click = std::move(Click);
}

void Ecra::regista_selector(SelectorData& selector, std::string nome, const char* ToolTip,
                            const char* Legenda) {
    regista(selector, std::move(nome));
    selector.ToolTip = ToolTip;
    selector.Legenda = Legenda;
    selector.KeyDown = [this](int& KeyCode, int) {
        if (KeyCode != tecla_enter && KeyCode != tecla_esc) return;
        xelSendkeys(KeyCode == tecla_enter ? "{TAB}" : "+{TAB}");
        if (KeyCode == tecla_esc) bDigitado = false;
        KeyCode = 0;
    };
}

Controlo& Ecra::controlo(std::string_view nome) {
    for (Controlo* controlo : controlos_)
        if (controlo->nome == nome) return *controlo;
    throw base::Falha("O ecrã não tem o controlo " + std::string(nome) + ".");
}

Janela& Ecra::janela() {
    if (janela_ == nullptr) throw base::Falha("O ecrã ainda não tem janela.");
    return *janela_;
}

// Events

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
    auto* campo = dynamic_cast<Campo*>(&controlo);
    if (campo == nullptr) return true;
    bool Cancel = false;
    try {
        campo_Validate(campo->Index, Cancel);
    } catch (const std::exception& falha) {
        falha_sem_tratamento(falha);
        Cancel = true;
    }
    if (Cancel) selecciona_tudo(*campo); // what is typed next replaces what was refused
    return !Cancel;
}

void Ecra::perdeu(Controlo& controlo) {
    const auto* grelha = dynamic_cast<Grelha*>(&controlo);
    if (grelha == nullptr) return;
    bDigitado = false; // keys typed in a grid are no reason to validate a field
    if (grelha->LostFocus) grelha->LostFocus();
}

void Ecra::ganhou(Controlo& controlo) {
    if (const auto* grelha = dynamic_cast<Grelha*>(&controlo); grelha != nullptr && grelha->GotFocus)
        grelha->GotFocus();
    if (auto* campo = dynamic_cast<Campo*>(&controlo)) selecciona_tudo(*campo);
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
    if (cancela != nullptr) utilizador_prime(*cancela);
    return cancela != nullptr;
}

void Ecra::utilizador_data(SelectorData& selector, const base::DataHora& valor) {
    if (!em_curso_) selector.Value = valor;
}

void Ecra::utilizador_tecla(SelectorData& selector, int codigo, int shift) {
    corre([&] {
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
    if (texto == grelha.texto_para_editar(linha, coluna, formato())) return true; // nothing to store
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

void Ecra::falha_sem_tratamento(const std::exception& falha) {
    janela().mostra();
    janela().caixa(falha.what(), startup::descricao_programa, Icone::critico, Botoes::ok);
}

// Services

void Ecra::campo_KeyPress(Campo& campo, int& KeyAscii) {
    bDigitado = true;
    if (KeyAscii != tecla_esc) return;
    xelSendkeys("+{TAB}");
    KeyAscii = 0;
    bDigitado = false;
    if (&campo == campo_de_fecho()) Unload();
}

std::int32_t Ecra::Avisa(const std::string& campo, const std::string& Aviso, std::int16_t Tipo) {
    constexpr const char* titulo = "Informação";
    janela().mostra();
    switch (Tipo) {
    case 1:
        janela().caixa("Campo obrigatório [" + campo + "].", titulo, Icone::exclamacao, Botoes::ok);
        return 0;
    case 2:
        janela().caixa(Aviso, titulo, Icone::informacao, Botoes::ok);
        return 0;
    case 3:
        return janela().caixa(Aviso, titulo, Icone::informacao, Botoes::ok_cancelar);
    case 4:
        return janela().caixa(Aviso, titulo, Icone::informacao, Botoes::sim_nao);
    default:
        return 0;
    }
}

std::int16_t Ecra::MostraMensagem(const std::string& Texto, int Tipo) {
    constexpr Icone icones[] = {Icone::exclamacao, Icone::informacao, Icone::critico};
    if (Tipo < 0 || Tipo > 2) return 0;
    janela().mostra();
    return static_cast<std::int16_t>(
        janela().caixa(Texto, startup::descricao_programa, icones[Tipo], Botoes::ok));
}

void Ecra::xelSendkeys(const std::string& sKey) { foco_.envia(sKey == "+{TAB}" ? -1 : +1); }

void Ecra::Unload() {
    a_fechar_ = true;
    janela().descarrega();
}

double Ecra::PrecoMovimento(const std::string& chave) {
    const auto registos = BD.AbreActualizavel(
        "SELECT VLREXIST , STDISP , ULTPRCOM  From Artigos WHERE     (CODIGO = " + base::entre_plicas(chave) +
        ")");
    if (registos->fim()) return 0;
    const double disponivel = registos->valor("Stdisp").real();
    return disponivel != 0 ? registos->valor("VLREXIST").real() / disponivel
                           : registos->valor("UltPrcom").real();
}

std::string Ecra::escolhe_da_lista(const ListaPesquisa& lista) {
    janela().mostra();
    return janela().escolhe(lista);
}

std::string Ecra::filtro_documentos(const startup::ListaParametros& FACTURAS) {
    std::string filtro;
    for (std::size_t i = 0; i == 0 || i < FACTURAS.elementos.size(); i += 3) {
        FACTURAS.serie(i + 1);
        FACTURAS[i + 2];
        if (i > 0) filtro += " OR ";
        filtro += " (TpDoc=" + base::entre_plicas(FACTURAS[i]) + " and SerieDoc=" + FACTURAS[i + 1] + ")";
    }
    return filtro;
}

void Ecra::preenche_da_lista(Campo& campo, const ListaPesquisa& lista) {
    const std::string escolha = escolhe_da_lista(lista);
    if (escolha.empty()) {
        SetFocus(campo);
        return;
    }
    campo.Text = escolha;
    selecciona_tudo(campo);
    SetFocus(campo);
    xelSendkeys("{TAB}");
    bDigitado = true;
}

} // namespace orvex::common
