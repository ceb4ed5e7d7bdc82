#include "common/ecra.h"

#include "base/texto.h"
#include "livro/artigos.h"

#include <utility>

namespace orvex::common {

Ecra::Ecra(ServicosEcra servicos, std::string titulo_janela)
    : Servicos(std::move(servicos)), Eventos(static_cast<Servicos&>(*this)),
      titulo_janela_(std::move(titulo_janela)) {}

void Ecra::regista(Controlo& controlo, std::string nome) {
    controlo.nome = std::move(nome);
    controlos_.push_back(&controlo);
}

void Ecra::regista(Vector<Campo>& vector, std::initializer_list<DescricaoCampo> descricoes) {
    for (const auto& [Index, ToolTip, Legenda] : descricoes) {
        Campo& campo = regista(vector, Index);
        campo.Index = Index;
        campo.ToolTip = ToolTip;
        campo.Legenda = Legenda;
    }
}

void Ecra::regista_botao(Botao& botao, std::string nome, const char* Caption, const char* ToolTip,
                         std::function<void()> Click, Botao::Papel papel) {
    regista(botao, std::move(nome));
    botao.papel = papel;
    botao.Caption = Caption;
    botao.ToolTip = ToolTip;
    botao.Click = std::move(Click);
}

void Ecra::regista_lista(Vector<Botao>& vector, int Index, const char* ToolTip) {
    regista_botao(vector.cria(Index), vector.nome(Index), "...", ToolTip,
                  [this, Index] { btFx_Click(Index); });
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
    falta_o_controlo(nome);
}

std::optional<CodigoEscrito> Ecra::codigo_actual() {
    CodigoDe de = CodigoDe::nada;
    std::string escrito;
    if (const auto* campo = dynamic_cast<const Campo*>(foco().actual())) {
        de = campo->codigo_de;
        escrito = campo->Text;
    } else if (const auto* grelha = dynamic_cast<const Grelha*>(foco().actual());
               grelha != nullptr && grelha->linha_actual <= grelha->linhas()) {
        de = CodigoDe::artigo;
        escrito = grelha->texto(grelha->linha_actual - 1, "Artigo");
    }
    std::string codigo(base::apara(escrito));
    if (de == CodigoDe::nada || codigo.empty()) return std::nullopt;
    return CodigoEscrito{de, std::move(codigo)};
}

bool Ecra::AceitaDatas(std::initializer_list<SelectorData*> selectores) {
    for (SelectorData* selector : selectores) {
        if (!selector->do_utilizador() || !selector->Value.a_mais_de_um_ano(agora())) continue;
        if (Avisa("",
                  "A data " + selector->Value.data() +
                      " está a mais de um ano de hoje.\r\nPretende continuar?",
                  aviso_ok_cancelar) != resposta_ok) {
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

bool Ecra::recusa(const std::string& aviso, Controlo& onde) {
    Avisa("", aviso, aviso_informacao);
    SetFocus(onde);
    return false;
}

void Ecra::RecomecaEcra() {
    limparform();
    SetFocus(primeiro_campo());
}

double Ecra::PrecoMovimento(const std::string& chave) { return livro::preco_movimento(BD, chave); }

void Ecra::preenche_da_lista(Campo& campo, ListaPesquisa lista) {
    lista.inicial = campo.Text;
    lista.codigo_de = campo.codigo_de;
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
