#include "tests/apoio/gravador.h"

#include <algorithm>

namespace orvex::testes {
namespace {

using Especie = Diario::Especie;

template <typename Valor, std::size_t N>
bool um_de(const Valor& este, const Valor (&valores)[N]) {
    return std::find(std::begin(valores), std::end(valores), este) != std::end(valores);
}

bool so_da_automacao(Diario::Maneira maneira) { return maneira >= Diario::Maneira::sem_descricao; }

bool conta_sempre(const Diario::Operacao& esta) {
    return !um_de(esta.especie, {Especie::abre, Especie::le, Especie::conta, Especie::comprimento,
                                 Especie::desfaz, Especie::em_transaccao, Especie::liga});
}

} // namespace

bool Diario::sai_do_programa(const Operacao& esta) {
    return !um_de(esta.especie,
                  {Especie::abre, Especie::le, Especie::conta, Especie::comprimento, Especie::em_transaccao,
                   Especie::liga, Especie::cria_objecto, Especie::obtem, Especie::poe, Especie::prepara_stock,
                   Especie::submetido, Especie::resultado});
}

namespace {

bool recusavel(const Diario::Operacao& esta) {
    return um_de(esta.especie, {Especie::cria_stock, Especie::submete, Especie::anula}) ||
           esta.membro == "Finalizar";
}

[[noreturn]] void lanca() { throw base::Falha("Falha provocada."); }
[[noreturn]] void perde() {
    throw startup::ConfirmacaoDesconhecida("Não se sabe se o que estava a ser gravado ficou.");
}

class DocumentoDesviado : public startup::ObjectoERP {
  public:
    DocumentoDesviado(startup::ReferenciaERP real, SessaoERPDesviada& sessao)
        : real_(std::move(real)), sessao_(sessao) {}

    startup::ValorERP obtem(std::string_view membro) override { return real_->obtem(membro); }
    void poe(std::string_view membro, const startup::ValorERP& valor) override { real_->poe(membro, valor); }
    const startup::ReferenciaERP& real() const { return real_; }

  private:
    startup::ValorERP invoca(std::string_view membro, Argumentos& argumentos) override {
        return sessao_.chama(real_, membro, argumentos);
    }

    startup::ReferenciaERP real_;
    SessaoERPDesviada& sessao_;
};

} // namespace

bool Diario::e_passo(const Operacao& esta) const {
    return conta_sempre(esta) &&
           (!so_do_erp || (esta.especie >= Especie::liga && esta.especie != Especie::poe));
}

void Diario::antes(const Operacao& esta) {
    if (momento) momento(esta);
    if (esta.especie == Especie::em_transaccao && tambem(Depois::tudo_lanca)) lanca();
    if (esta.especie == Especie::anula) {
        if (tambem(Depois::tudo_lanca)) lanca();
        a_recusar = tambem(Depois::anulacao_recusada);
        if (a_recusar) return;
    }
    if (!e_passo(esta)) return;
    if (espia) espia(esta.texto());
    if (esta.especie == Especie::confirma && do_commit) {
        falha_no = passos + 1;
        maneira = *do_commit;
    }
    if (++passos != falha_no) return escreve(esta);
    falhou = true;
    if (maneira == Maneira::perde && esta.especie == Especie::confirma) perde();
    a_recusar = maneira == Maneira::recusa && recusavel(esta);
    if (so_da_automacao(maneira)) a_estragar = maneira;
    const bool feito =
        maneira == Maneira::faz_e_lanca ||
        (so_da_automacao(maneira) && !um_de(maneira, {Maneira::sem_descricao, Maneira::termina}));
    if (!a_recusar && !feito) lanca();
}

void Diario::depois(const Operacao& esta, const platform::operacoes::Fim& fim) {
    if (fim.falha != nullptr) return;
    if (recusavel(esta)) espelha();
    // A connection that breaks is rolled back by the server, and still reports a failure.
    if (esta.especie == Especie::desfaz && tambem(Depois::tudo_lanca)) lanca();
    if (!falhou || passos != falha_no || maneira != Maneira::faz_e_lanca || !e_passo(esta)) return;
    if (esta.especie == Especie::confirma) perde();
    lanca();
}

// Values put one after the other into one object share a line; what is only asked for has none.
void Diario::escreve(const Operacao& esta) {
    if (um_de(esta.especie, {Especie::obtem, Especie::submetido, Especie::resultado})) return;
    if (esta.especie != Especie::poe) return linhas.push_back(esta.texto());
    const std::string objecto(esta.nome);
    if (linhas.empty() || !linhas.back().starts_with(objecto + " ")) linhas.push_back(objecto);
    linhas.back() += " " + esta.texto();
}

std::string Diario::texto() const {
    std::string tudo = "\n";
    for (const std::string& linha : linhas)
        tudo += linha + "\n";
    return tudo;
}

startup::ReferenciaERP SessaoERPDesviada::CriaObjecto(const std::string& classe) {
    startup::ReferenciaERP real = SessaoERPEmbebida::CriaObjecto(classe);
    if (!classe.ends_with("Comercial")) return real;
    return std::make_shared<DocumentoDesviado>(real, *this);
}

std::int16_t SessaoERPDesviada::SubmeteDocumento(std::int16_t especie,
                                                 const startup::ReferenciaERP& documento) {
    return SessaoERPEmbebida::SubmeteDocumento(especie, dynamic_cast<DocumentoDesviado&>(*documento).real());
}

startup::ReferenciaERP SessaoERPDesviada::DocumentoSubmetido() {
    return std::make_shared<DocumentoDesviado>(SessaoERPEmbebida::DocumentoSubmetido(), *this);
}

startup::ValorERP SessaoERPQueRecusa::chama(const startup::ReferenciaERP& real, std::string_view membro,
                                            Argumentos& argumentos) {
    if (documento_ && membro == "UltimaMensagem") return recusado.mensagem;
    documento_ = std::exchange(diario_.a_recusar, false);
    return documento_ ? startup::ValorERP(-1) : real->chama(membro, argumentos);
}

std::unique_ptr<startup::SessaoERP> erp_gravado(Diario& diario) {
    return pelo_caminho_pedido(std::make_unique<platform::operacoes::SessaoERPOuvida>(
                                   std::make_unique<SessaoERPQueRecusa>(diario), diario),
                               diario);
}

} // namespace orvex::testes
