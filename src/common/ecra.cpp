#include "common/ecra.h"

#include "base/descricao.h"
#include "base/falha.h"
#include "livro/artigos.h"

#include <exception>
#include <utility>

namespace orvex::common {

Ecra::Ecra(ServicosEcra servicos, std::string titulo_janela)
    : BD(servicos.BD), gERP(servicos.gERP), servicos_(std::move(servicos)),
      titulo_janela_(std::move(titulo_janela)) {}

void Ecra::regista(Controlo& controlo, std::string nome) {
    controlo.nome = std::move(nome);
    controlos_.push_back(&controlo);
}

void Ecra::regista_campo(Campo& campo, int Index, const char* ToolTip, const char* Legenda) {
    regista(campo, "campo(" + std::to_string(Index) + ")");
    campo.Index = Index;
    campo.ToolTip = ToolTip;
    campo.Legenda = Legenda;
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

void Ecra::falha_sem_tratamento(const std::exception& falha) {
    janela().mostra();
    janela().caixa(base::descricao(falha), startup::descricao_programa, Icone::critico, Botoes::ok);
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

bool Ecra::AceitaDatas(std::initializer_list<SelectorData*> selectores) {
    for (SelectorData* selector : selectores) {
        if (!selector->do_utilizador() || !selector->Value.a_mais_de_um_ano(agora())) continue;
        if (Avisa("",
                  "A data " + selector->Value.data() +
                      " está a mais de um ano de hoje.\r\nPretende continuar?",
                  3) != resposta_ok) {
            poe_a_vista(*selector);
            SetFocus(*selector);
            return false;
        }
        selector->escolhida.reset();
    }
    return true;
}

void Ecra::poe_a_vista(const Controlo& controlo) {
    for (Controlo* candidato : controlos_)
        if (auto* separadores = dynamic_cast<Separadores*>(candidato);
            separadores != nullptr && separadores == controlo.dentro_de)
            separadores->Tab = controlo.pagina;
}

int Ecra::Comprimento(std::initializer_list<ColunaBD> colunas) {
    std::size_t menor = 0;
    for (const auto& [tabela, coluna] : colunas)
        if (const std::size_t este = BD.Comprimento(tabela, coluna); este > 0 && (menor == 0 || este < menor))
            menor = este;
    return static_cast<int>(menor);
}

void Ecra::xelSendkeys(const std::string& sKey) { foco_.envia(sKey == "+{TAB}" ? -1 : +1); }

void Ecra::Unload() {
    a_fechar_ = true;
    janela().descarrega();
}

double Ecra::PrecoMovimento(const std::string& chave) { return livro::preco_movimento(BD, chave); }

std::string Ecra::escolhe_da_lista(const ListaPesquisa& lista) {
    janela().mostra();
    return janela().escolhe(lista);
}

void Ecra::preenche_da_lista(Campo& campo, const ListaPesquisa& lista) {
    const std::string escolha = escolhe_da_lista(lista);
    if (escolha.empty()) {
        SetFocus(campo);
        return;
    }
    campo.Text = escolha;
    campo.selecciona_tudo();
    SetFocus(campo);
    xelSendkeys("{TAB}");
    bDigitado = true;
}

} // namespace orvex::common
