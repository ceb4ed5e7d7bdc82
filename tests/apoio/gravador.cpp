#include "tests/apoio/gravador.h"

#include <algorithm>
#include <iterator>

namespace orvex::testes {
namespace {

using Especie = Diario::Especie;

template <std::size_t N>
bool um_de(const Diario::Operacao& esta, const Especie (&especies)[N]) {
    return std::find(std::begin(especies), std::end(especies), esta.especie) != std::end(especies);
}

bool e_passo(const Diario::Operacao& esta) {
    return !um_de(esta, {Especie::abre, Especie::le, Especie::conta, Especie::comprimento, Especie::desfaz,
                         Especie::em_transaccao, Especie::liga});
}

bool recusavel(const Diario::Operacao& esta) {
    return um_de(esta, {Especie::cria_stock, Especie::submete, Especie::anula}) || esta.membro == "Finalizar";
}

[[noreturn]] void lanca() { throw base::Falha("Falha provocada."); }
[[noreturn]] void perde() {
    throw startup::ConfirmacaoDesconhecida("Não se sabe se o que estava a ser gravado ficou.");
}

class DocumentoQueRecusa : public startup::ObjectoERP {
  public:
    DocumentoQueRecusa(startup::ReferenciaERP real, Diario& diario)
        : real_(std::move(real)), diario_(diario) {}

    startup::ValorERP obtem(std::string_view membro) override { return real_->obtem(membro); }
    void poe(std::string_view membro, const startup::ValorERP& valor) override { real_->poe(membro, valor); }
    const startup::ReferenciaERP& real() const { return real_; }

  private:
    startup::ValorERP invoca(std::string_view membro, Argumentos& argumentos) override {
        if (recusado_ && membro == "UltimaMensagem") return "O ERP recusou.";
        recusado_ = std::exchange(diario_.a_recusar, false);
        if (recusado_) return -1;
        return real_->chama(membro, argumentos);
    }

    startup::ReferenciaERP real_;
    Diario& diario_;
    bool recusado_ = false;
};

} // namespace

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
    if (++passos != falha_no) return escreve(esta);
    falhou = true;
    if (maneira == Maneira::perde && esta.especie == Especie::confirma) perde();
    a_recusar = maneira == Maneira::recusa && recusavel(esta);
    if (!a_recusar && maneira != Maneira::faz_e_lanca) lanca();
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
    if (um_de(esta, {Especie::obtem, Especie::submetido, Especie::resultado})) return;
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

startup::ReferenciaERP SessaoERPQueRecusa::CriaObjecto(const std::string& classe) {
    startup::ReferenciaERP real = SessaoERPEmbebida::CriaObjecto(classe);
    if (!classe.ends_with("Comercial")) return real;
    return std::make_shared<DocumentoQueRecusa>(real, diario_);
}

std::int16_t SessaoERPQueRecusa::SubmeteDocumento(std::int16_t especie,
                                                  const startup::ReferenciaERP& documento) {
    if (recusa()) return -1;
    return SessaoERPEmbebida::SubmeteDocumento(especie, dynamic_cast<DocumentoQueRecusa&>(*documento).real());
}

startup::ReferenciaERP SessaoERPQueRecusa::DocumentoSubmetido() {
    return std::make_shared<DocumentoQueRecusa>(SessaoERPEmbebida::DocumentoSubmetido(), diario_);
}

} // namespace orvex::testes
