// Transfers to ORVEX: their rows carry no number, so they meet their document by article, quantity and date.
#include "documentos.h"
#include "livro/detentores.h"
#include "ponto.h"

#include <algorithm>

namespace orvex::auditoria {
namespace {

constexpr int casas_dos_detentores = 3;

class Transferencias {
  public:
    explicit Transferencias(Contexto& contexto)
        : contexto_(contexto), qual_(contexto.casa.transferencias),
          comparacao_(contexto, qual_, Gravidade::erro),
          // Documents of adjustments cannot be told from those of transfers where they share a numbering.
          partilhada_(contexto.casa.ajuste(qual_.TpDoc, qual_.Serie)) {}

    void percorre() {
        le_erp();
        auto& todas = contexto_.transferencias;
        todas.comeca();
        while (todas.ha())
            artigo();
        comparacao_.acaba();
    }

  private:
    using Grupo = std::vector<Transferencia>;
    void le_erp();
    void artigo();
    LinhaDoc linha(const Transferencia& qual, DocERP& doc);
    void so_no_livro(const Transferencia& qual);
    void so_no_erp(const Transferencia& qual);
    void diferentes(const Transferencia& no_livro, const Transferencia& no_erp);

    Contexto& contexto_;
    const Numeracao& qual_;
    Comparacao comparacao_;
    bool partilhada_;
    std::int64_t primeiro_ano_ = 0;
};

void Transferencias::le_erp() {
    DoERP erp(contexto_, 0, qual_);
    if (erp.proximo()) primeiro_ano_ = erp.proximo()->Ano;
    while (erp.proximo()) {
        const NumeroDoc numero = *erp.proximo();
        const DocERP doc = erp.retira(numero);
        if (doc.anulado) continue;
        for (const LinhaDoc& linha : doc.linhas)
            contexto_.transferencias.junta(
                {.artigo = resumo(linha.Artigo),
                 .quantidade =
                     linha.Quantidade->absoluta().arredondada(casas_dos_detentores).decimos_milesimos(),
                 .dia = doc.Data ? dia(*doc.Data) : 0,
                 .no_erp = true,
                 .ano = static_cast<std::int32_t>(numero.Ano),
                 .numero = static_cast<std::int32_t>(numero.Numero)});
    }
    if (!partilhada_) erp.acaba();
}

// All transfers of one article: equal ones meet, and of what is left over, one of each side is one that
// differs.
void Transferencias::artigo() {
    auto& todas = contexto_.transferencias;
    Grupo livro, erp;
    const std::uint64_t este = todas.actual().artigo;
    for (; todas.ha() && todas.actual().artigo == este; todas.avanca())
        (todas.actual().no_erp ? erp : livro).push_back(todas.actual());
    const auto igual = [](const Transferencia& a, const Transferencia& b) {
        return a.quantidade == b.quantidade && a.dia == b.dia;
    };
    std::erase_if(livro, [&](const Transferencia& uma) {
        const auto par = std::find_if(erp.begin(), erp.end(),
                                      [&](const Transferencia& outra) { return igual(uma, outra); });
        if (par == erp.end()) return false;
        erp.erase(par);
        return true;
    });
    std::size_t i = 0;
    for (; i < std::min(livro.size(), erp.size()) && !partilhada_; ++i)
        diferentes(livro[i], erp[i]);
    for (std::size_t j = i; j < livro.size(); ++j)
        so_no_livro(livro[j]);
    for (std::size_t j = i; j < erp.size() && !partilhada_; ++j)
        so_no_erp(erp[j]);
}

LinhaDoc Transferencias::linha(const Transferencia& qual, DocERP& doc) {
    LinhaDoc lida;
    lida.Quantidade = base::Moeda::de_decimos_milesimos(qual.quantidade);
    if (!qual.no_erp) {
        const auto registo = livro::movimento(contexto_.sessoes[0], qual.numero);
        if (!registo) return lida; // taken out meanwhile
        lida.Artigo = registo->NumSerie;
        lida.Cliente = registo->Cliente;
        lida.Data = registo->Data;
        return lida;
    }
    const NumeroDoc numero{qual.ano, qual.numero};
    doc = DoERP(contexto_, 0, qual_, numero).retira(numero);
    for (const LinhaDoc& esta : doc.linhas)
        if (resumo(esta.Artigo) == qual.artigo) return esta;
    return lida;
}

void Transferencias::so_no_livro(const Transferencia& qual) {
    DocERP doc;
    const LinhaDoc esta = linha(qual, doc);
    if (esta.Data && esta.Data->ano < primeiro_ano_)
        return comparacao_.fora_do_erp({esta.Data->ano, 0}, {}, true, {esta});
    Achado novo = comparacao_.achado("E2", {}, &esta);
    novo.chave = "registo " + std::to_string(qual.numero);
    novo.desde = "transferência para a ORVEX";
    novo.esperado = "um documento " + qual_.texto() + " em vigor, do mesmo artigo, peso e dia";
    novo.encontrado = "nenhum";
    novo.que_fazer =
        "o stock continua no armazém dos clientes: se o artigo voltou, crie no ERP o documento da "
        "transferência; se não, peça que as duas linhas saiam do livro";
    contexto_.junta(std::move(novo));
}

void Transferencias::so_no_erp(const Transferencia& qual) {
    DocERP doc;
    const LinhaDoc esta = linha(qual, doc);
    comparacao_.fora_do_livro({qual.ano, qual.numero}, doc, {esta});
}

void Transferencias::diferentes(const Transferencia& no_livro, const Transferencia& no_erp) {
    DocERP doc;
    const LinhaDoc livro = linha(no_livro, doc), erp = linha(no_erp, doc);
    Achado novo = comparacao_.achado("E3", {no_erp.ano, no_erp.numero}, &livro);
    novo.chave = comparacao_.achado("E3", {no_erp.ano, no_erp.numero}, nullptr).chave;
    novo.peso = (*livro.Quantidade - *erp.Quantidade).absoluta();
    const auto diz = [](const LinhaDoc& uma) {
        return toneladas(uma.Quantidade->absoluta()) + (uma.Data ? " em " + uma.Data->data() : "");
    };
    novo.esperado = "no ERP " + diz(erp);
    novo.encontrado = "no livro " + diz(livro);
    novo.que_fazer = "confira qual dos dois está certo, e peça a correcção do outro";
    contexto_.junta(std::move(novo));
}

} // namespace

void examina_transferencias(Contexto& contexto) {
    if (!contexto.com_historia) throw base::Falha("Dependem dos detentores.");
    Transferencias(contexto).percorre();
}

} // namespace orvex::auditoria
