// Notes and returns: the ledger's two tables against each other (L3) and against the ERP.
#include "documentos.h"
#include "livro/leitura.h"
#include "ponto.h"

#include <algorithm>

namespace orvex::auditoria {
namespace {

using base::Moeda;
constexpr int casas_dos_detentores = 3;

class Guias {
  public:
    Guias(Contexto& contexto, const Numeracao& qual)
        : contexto_(contexto), comparacao_(contexto, qual, Gravidade::erro),
          sai_(qual.e(contexto.casa.guias.TpDoc, contexto.casa.guias.Serie)), erp_(contexto, 0, qual),
          movimentos_(contexto, 1, livro::movimentos_dos_documentos(qual.TpDoc, qual.Serie), false),
          detentores_(contexto, 2, livro::detentores_dos_documentos(qual.TpDoc, qual.Serie), true) {}

    void percorre() {
        for (;;) {
            std::optional<NumeroDoc> este;
            for (const auto* proximo : {&erp_.proximo(), &movimentos_.proximo(), &detentores_.proximo()})
                if (*proximo && (!este || **proximo < *este)) este = *proximo;
            if (!este) break;
            documento(*este, erp_.retira(*este), movimentos_.retira(*este), detentores_.retira(*este));
        }
        erp_.acaba();
        comparacao_.acaba();
    }

  private:
    using Linhas = std::vector<LinhaDoc>;
    void documento(const NumeroDoc& numero, const DocERP& erp, const Linhas& movimentos,
                   const Linhas& detentores);
    void detentores(const NumeroDoc& numero, const Linhas& movimentos, const Linhas& detentores);
    void desigual(const NumeroDoc& numero, const LinhaDoc& linha, std::string esperado,
                  std::string encontrado);

    Contexto& contexto_;
    Comparacao comparacao_;
    bool sai_; // of a note the items leave
    DoERP erp_;
    DoLivro movimentos_, detentores_;
};

void Guias::documento(const NumeroDoc& numero, const DocERP& erp, const Linhas& movimentos,
                      const Linhas& detentores_do_doc) {
    detentores(numero, movimentos, detentores_do_doc);
    if (movimentos.empty() && detentores_do_doc.empty()) {
        if (erp.existe && !erp.anulado && !erp.linhas.empty())
            comparacao_.fora_do_livro(numero, erp, erp.linhas);
        return;
    }
    if (!erp.existe || erp.anulado)
        return comparacao_.fora_do_erp(numero, erp, !erp.existe && erp_.arquivou(numero.Ano),
                                       movimentos.empty() ? detentores_do_doc : movimentos);
    for (const LinhaDoc& linha : erp.linhas) {
        const LinhaDoc* movimento = procura(movimentos, linha.linha);
        const LinhaDoc* detentor = procura(detentores_do_doc, linha.linha);
        if (movimento != nullptr || detentor == nullptr) // a holder row without a movement is L3
            comparacao_.linha(numero, movimento, &linha, Moeda::casas);
        if (detentor != nullptr) comparacao_.armazem(numero, *detentor, linha);
    }
    for (const LinhaDoc& movimento : movimentos)
        if (procura(erp.linhas, movimento.linha) == nullptr)
            comparacao_.linha(numero, &movimento, nullptr, Moeda::casas);
}

void Guias::desigual(const NumeroDoc& numero, const LinhaDoc& linha, std::string esperado,
                     std::string encontrado) {
    Achado novo = comparacao_.achado("L3", numero, &linha);
    novo.esperado = std::move(esperado);
    novo.encontrado = std::move(encontrado);
    novo.que_fazer =
        "peça que as linhas dos detentores e dos movimentos deste documento fiquem iguais, como o "
        "documento em papel as mostra";
    contexto_.junta(std::move(novo));
}

void Guias::detentores(const NumeroDoc& numero, const Linhas& movimentos, const Linhas& detentores) {
    for (const LinhaDoc& movimento : movimentos) {
        const auto dela = [&](const LinhaDoc& detentor) { return detentor.linha == movimento.linha; };
        const auto quantas = std::count_if(detentores.begin(), detentores.end(), dela);
        const Moeda peso = movimento.Quantidade.value_or(Moeda()).arredondada(casas_dos_detentores);
        const std::string esperado =
            "uma linha de detentor de " + movimento.Artigo + " com " + toneladas(sai_ ? -peso : peso);
        if (quantas != 1) {
            desigual(numero, movimento, esperado,
                     quantas == 0 ? "nenhuma" : std::to_string(quantas) + " linhas");
            continue;
        }
        const LinhaDoc& detentor = *std::find_if(detentores.begin(), detentores.end(), dela);
        if (!mesmo_codigo(detentor.Artigo, movimento.Artigo) || detentor.Quantidade != (sai_ ? -peso : peso))
            desigual(numero, movimento, esperado, detentor.Artigo + " com " + toneladas(detentor.Quantidade));
    }
    for (const LinhaDoc& detentor : detentores)
        if (procura(movimentos, detentor.linha) == nullptr)
            desigual(numero, detentor,
                     "uma linha de movimento para o registo " + std::to_string(detentor.Registo), "nenhuma");
}

} // namespace

void examina_guias(Contexto& contexto, const Numeracao& qual) { Guias(contexto, qual).percorre(); }

} // namespace orvex::auditoria
