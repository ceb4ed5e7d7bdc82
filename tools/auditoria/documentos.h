// The rows of one document after the other, of several tables side by side.
#pragma once

#include "exame.h"

#include <compare>
#include <map>

namespace orvex::auditoria {

struct NumeroDoc {
    std::int64_t Ano = 0, Numero = 0;
    friend auto operator<=>(const NumeroDoc&, const NumeroDoc&) = default;
};

struct LinhaDoc {
    std::int64_t linha = 0;
    std::string Artigo, Cliente, Armazem;
    std::optional<base::Moeda> Quantidade, PesoBruto;
    base::Moeda aberto; // of a movement line
    std::optional<base::DataHora> Data;
    std::int64_t Registo = 0;
};

struct DocERP {
    bool existe = false, anulado = false;
    std::string Terceiro;
    std::optional<base::DataHora> Data;
    std::vector<LinhaDoc> linhas; // those with an article
};

// Rows of the ledger, document by document.
class DoLivro {
  public:
    DoLivro(Contexto& contexto, std::size_t sessao, const std::string& sql, bool detentores)
        : leitura_(contexto.sessoes[sessao], sql, contexto.progresso), detentores_(detentores) {
        ve();
    }
    const std::optional<NumeroDoc>& proximo() const { return proximo_; }
    // The rows of this document, if it is the next one.
    std::vector<LinhaDoc> retira(const NumeroDoc& documento);

  private:
    void ve();

    Leitura leitura_;
    bool detentores_;
    std::optional<NumeroDoc> proximo_;
};

// The ERP's documents of a type and series. Tells on the way which numbers are missing (E6).
class DoERP {
  public:
    DoERP(Contexto& contexto, std::size_t sessao, const Numeracao& qual);
    // One document alone.
    DoERP(Contexto& contexto, std::size_t sessao, const Numeracao& qual, const NumeroDoc& so_este);
    const std::optional<NumeroDoc>& proximo() const { return proximo_; }
    DocERP retira(const NumeroDoc& documento);
    // The ERP shows documents of this numbering, and none so old: it put the year away.
    bool arquivou(std::int64_t Ano) const { return primeiro_ano_ && Ano < *primeiro_ano_; }
    void acaba();

  private:
    void ve();
    void numera(const NumeroDoc& documento);
    void conta_faltas();

    Contexto& contexto_;
    const Numeracao& qual_;
    Leitura leitura_;
    std::optional<NumeroDoc> proximo_, anterior_;
    std::optional<std::int64_t> primeiro_ano_;
    std::string faltas_;
    std::int64_t total_faltas_ = 0;
};

// What documents of one kind have in common when they are compared with the ledger.
class Comparacao {
  public:
    Comparacao(Contexto& contexto, const Numeracao& qual, Gravidade gravidade)
        : contexto_(contexto), qual_(qual), gravidade_(gravidade) {}

    Achado achado(const char* verificacao, const NumeroDoc& documento, const LinhaDoc* linha) const;
    void fora_do_livro(const NumeroDoc& documento, const DocERP& erp, const std::vector<LinhaDoc>& linhas);
    void fora_do_erp(const NumeroDoc& documento, const DocERP& erp, bool arquivado,
                     const std::vector<LinhaDoc>& linhas);
    // One of them may be missing.
    void linha(const NumeroDoc& documento, const LinhaDoc* no_livro, const LinhaDoc* no_erp, int casas);
    void armazem(const NumeroDoc& documento, const LinhaDoc& detentor, const LinhaDoc& no_erp);
    void acaba(); // what was archived, year by year

  private:
    Contexto& contexto_;
    const Numeracao& qual_;
    Gravidade gravidade_;
    std::map<std::int64_t, std::pair<int, base::Moeda>> arquivados_;
};

base::Moeda soma(const std::vector<LinhaDoc>& linhas);
const LinhaDoc* procura(const std::vector<LinhaDoc>& linhas, std::int64_t numero);

} // namespace orvex::auditoria
