// Invoices and adjustments against the ERP. The ledger's rows of invoices are written by others, so what is
// wrong with them is a warning; an invoice that was cancelled is nobody's business once nothing of it is
// open.
#include "documentos.h"
#include "livro/leitura.h"
#include "ponto.h"

#include <algorithm>

namespace orvex::auditoria {
namespace {

using base::Moeda;
using Linhas = std::vector<LinhaDoc>;
constexpr int casas_dos_detentores = 3;

// The two sides, document by document.
template <typename Documento>
void percorre(DoERP& erp, DoLivro& livro, Documento documento) {
    for (;;) {
        std::optional<NumeroDoc> este = erp.proximo();
        if (livro.proximo() && (!este || *livro.proximo() < *este)) este = livro.proximo();
        if (!este) break;
        documento(*este, erp.retira(*este), livro.retira(*este));
    }
    erp.acaba();
}

Linhas do_livro(const Contexto& contexto, const Linhas& linhas) {
    Linhas dele;
    const auto& artigos = contexto.artigos_do_livro;
    for (const LinhaDoc& linha : linhas)
        if (std::binary_search(artigos.begin(), artigos.end(), resumo(linha.Artigo))) dele.push_back(linha);
    return dele;
}

} // namespace

void examina_facturas(Contexto& contexto, const Numeracao& qual) {
    DoERP erp(contexto, 0, qual);
    DoLivro livro(contexto, 1, livro::movimentos_dos_documentos(qual.TpDoc, qual.Serie), false);
    Comparacao comparacao(contexto, qual, Gravidade::aviso);
    percorre(erp, livro, [&](const NumeroDoc& numero, const DocERP& doc, Linhas linhas) {
        if (!doc.existe || doc.anulado) {
            std::erase_if(linhas, [&](const LinhaDoc& l) { return doc.anulado && l.aberto <= Moeda(); });
            if (!linhas.empty())
                comparacao.fora_do_erp(numero, doc, !doc.existe && erp.arquivou(numero.Ano), linhas);
            return;
        }
        for (LinhaDoc& linha : linhas)
            linha.PesoBruto.reset(); // what is open of it, which L1 compares
        Linhas em_falta;
        for (const LinhaDoc& no_erp : doc.linhas)
            if (const LinhaDoc* linha = procura(linhas, no_erp.linha))
                comparacao.linha(numero, linha, &no_erp, Moeda::casas);
            else
                em_falta.push_back(no_erp);
        for (const LinhaDoc& linha : linhas)
            if (procura(doc.linhas, linha.linha) == nullptr)
                comparacao.linha(numero, &linha, nullptr, Moeda::casas);
        em_falta = do_livro(contexto, em_falta);
        if (em_falta.empty()) return;
        if (linhas.empty()) return comparacao.fora_do_livro(numero, doc, em_falta);
        for (const LinhaDoc& linha : em_falta)
            comparacao.linha(numero, nullptr, &linha, Moeda::casas);
    });
    comparacao.acaba();
    // Which articles are in the ledger was not seen: an invoice without any may have been taken for good.
    if (!contexto.com_historia)
        contexto.exame.nao_vistos.push_back({"E1 de " + qual.texto(), "depende dos detentores"});
}

// One holder row for a document of one line.
void examina_ajustes(Contexto& contexto, const Numeracao& qual) {
    DoERP erp(contexto, 0, qual);
    DoLivro livro(contexto, 1, livro::detentores_dos_documentos(qual.TpDoc, qual.Serie), true);
    Comparacao comparacao(contexto, qual, Gravidade::erro);
    const bool de_transferencias = contexto.casa.transferencias.e(qual.TpDoc, qual.Serie);
    percorre(erp, livro, [&](const NumeroDoc& numero, const DocERP& doc, const Linhas& linhas) {
        if (linhas.empty()) {
            if (doc.existe && !doc.anulado && !doc.linhas.empty() && !de_transferencias)
                comparacao.fora_do_livro(numero, doc, doc.linhas);
            return;
        }
        if (!doc.existe || doc.anulado)
            return comparacao.fora_do_erp(numero, doc, !doc.existe && erp.arquivou(numero.Ano), linhas);
        for (std::size_t i = 0; i < std::max(linhas.size(), doc.linhas.size()); ++i) {
            const LinhaDoc* linha = i < linhas.size() ? &linhas[i] : nullptr;
            const LinhaDoc* no_erp = i < doc.linhas.size() ? &doc.linhas[i] : nullptr;
            comparacao.linha(numero, linha, no_erp, casas_dos_detentores);
            if (linha != nullptr && no_erp != nullptr) comparacao.armazem(numero, *linha, *no_erp);
        }
    });
    comparacao.acaba();
}

} // namespace orvex::auditoria
