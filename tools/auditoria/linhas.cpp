// The movement lines against one another: L1, L2, L5; each in itself: L7.
//
// Two passes over the lines in the order of their keys. Beside the first come the lines that name them as
// their origin: what came back of each note is then known, and with it what each note took for good. Beside
// the second comes that, in the order of the lines it was taken from.
#include "exame.h"
#include "livro/leitura.h"
#include "ponto.h"
#include "valores.h"

#include <map>

namespace orvex::auditoria {
namespace {

namespace C = livro::movimento_lido;
using base::Moeda;

enum class Papel : std::uint8_t { outro, guia, devolucao };

struct Linha {
    Ponto propria, origem;
    Moeda original, aberto, liquido, bruto, bruto_no_erp;
    bool sem_quantidade = false; // which L7 tells
    bool tem_origem = false, tem_liquido = false, tem_bruto = false, tem_bruto_no_erp = false;
    Papel papel = Papel::outro;
    friend bool operator<(const Linha& a, const Linha& b) { return a.propria < b.propria; }
};

// What a line took of another one, or gave back to it.
struct Parte {
    Ponto origem, propria;
    Moeda liquido, bruto;
    bool devolucao = false;
    friend bool operator<(const Parte& a, const Parte& b) {
        return a.origem != b.origem ? a.origem < b.origem : a.propria < b.propria;
    }
};

class Linhas {
  public:
    explicit Linhas(Contexto& contexto) : contexto_(contexto) {}
    void percorre() {
        le();
        devolucoes();
        abertos();
        explica();
    }

  private:
    void le();
    void junta(const Leitura& l);
    void devolucoes();
    void abertos();
    void explica();
    void compara(const Linha& l, const Parte& enviado);
    Achado achado(const char* verificacao, const Ponto& linha);
    // Over a line that the ERP has two gross weights of, too.
    template <typename Registos>
    static void passa(Registos& registos) {
        for (const Ponto esta = registos.actual().propria;
             registos.ha() && registos.actual().propria == esta;)
            registos.avanca();
    }

    Contexto& contexto_;
    Ordenados<Linha> linhas_;
    Ordenados<Parte> partes_, tiradas_;
    std::size_t primeiro_ = contexto_.exame.achados.size();
};

// With what the row itself says of article, client and date.
Achado Linhas::achado(const char* verificacao, const Ponto& p) {
    Achado novo{.verificacao = verificacao, .chave = p.texto(), .desde = p.documento()};
    const Leitura l(contexto_.sessoes[0], livro::movimento(p.ano, p.TpDoc(), p.serie, p.numero, p.linha),
                    contexto_.progresso);
    if (!l.ha()) return novo; // taken out meanwhile
    novo.artigo = l.texto(C::Artigo);
    novo.cliente = l.texto(C::Cliente);
    novo.data = l.data(C::Data);
    novo.peso = l.moeda(C::QtdOrig).value_or(Moeda()).absoluta();
    return novo;
}

void Linhas::le() {
    Valores valores(contexto_);
    for (Leitura l(contexto_.sessoes[0], livro::movimentos(), contexto_.progresso); l.ha(); l.seguinte()) {
        valores.confere_movimento(l);
        junta(l);
    }
}

void Linhas::junta(const Leitura& l) {
    const std::string TpDoc = l.texto(C::TpDoc);
    Linha nova;
    nova.propria = Ponto::de(l.inteiro(C::Ano), TpDoc, l.inteiro(C::SerieDoc), l.inteiro(C::NumDoc),
                             l.inteiro(C::NumLinha));
    const auto peso = [&](C::Coluna coluna, Moeda& onde) {
        const auto lido = l.moeda(coluna);
        onde = lido.value_or(Moeda());
        return lido.has_value();
    };
    nova.sem_quantidade = !peso(C::QtdOrig, nova.original) || !peso(C::Qtd, nova.aberto);
    nova.tem_liquido = peso(C::PesoLiquido, nova.liquido);
    nova.tem_bruto = peso(C::PesoBruto, nova.bruto);
    nova.tem_bruto_no_erp = peso(C::PesoBrutoNoERP, nova.bruto_no_erp);
    // Of invoices, which others write, the origin may be anything.
    if (mesmo_codigo(TpDoc, contexto_.casa.guias.TpDoc)) nova.papel = Papel::guia;
    if (mesmo_codigo(TpDoc, contexto_.casa.devolucoes.TpDoc)) nova.papel = Papel::devolucao;
    if (nova.papel != Papel::outro) {
        const std::string Origem = l.texto(C::Origem);
        if (const auto chave = livro::le_chave(Origem)) {
            nova.origem = Ponto::de(*chave);
            nova.tem_origem = true;
            partes_.junta(
                {nova.origem, nova.propria, nova.original, nova.bruto, nova.papel == Papel::devolucao});
        } else if (!Origem.empty() || nova.papel == Papel::devolucao) {
            // The row is at hand, but no other query may run now.
            Achado este{
                .verificacao = "L2", .chave = nova.propria.texto(), .desde = nova.propria.documento()};
            este.artigo = l.texto(C::Artigo);
            este.cliente = l.texto(C::Cliente);
            este.data = l.data(C::Data);
            este.peso = nova.original;
            este.esperado = "a chave de uma linha dos movimentos";
            este.encontrado = Origem.empty() ? "nenhuma origem" : "«" + Origem + "»";
            contexto_.junta(std::move(este));
        }
    }
    linhas_.junta(nova);
}

void Linhas::devolucoes() {
    linhas_.comeca();
    partes_.comeca();
    const auto sem_linha = [&] {
        Achado este = achado("L2", partes_.actual().propria);
        este.esperado = "a linha " + partes_.actual().origem.texto();
        este.encontrado = "não existe";
        contexto_.junta(std::move(este));
    };
    for (; linhas_.ha(); passa(linhas_)) {
        const Linha& l = linhas_.actual();
        for (; partes_.ha() && partes_.actual().origem < l.propria; passa(partes_))
            sem_linha();
        Parte fica{l.origem, l.propria, l.original, l.bruto, false};
        std::string devolvida;
        int vezes = 0;
        for (; partes_.ha() && partes_.actual().origem == l.propria; passa(partes_)) {
            const Parte& parte = partes_.actual();
            if (!parte.devolucao) continue;
            fica.liquido -= parte.liquido;
            fica.bruto -= parte.bruto;
            devolvida += (devolvida.empty() ? "" : " e ") + parte.propria.documento();
            ++vezes;
        }
        if (vezes > 1) {
            Achado este = achado("L5", l.propria);
            este.esperado = "uma devolução";
            este.encontrado = "devolvida em " + devolvida;
            este.que_fazer = "uma das devoluções está a mais: veja no armazém quantas vezes o artigo voltou, "
                             "anule a outra no ERP e peça que saia do livro";
            contexto_.junta(std::move(este));
        }
        if (l.papel == Papel::guia && l.tem_origem) tiradas_.junta(fica);
    }
    for (; partes_.ha(); passa(partes_))
        sem_linha();
}

void Linhas::abertos() {
    linhas_.comeca();
    tiradas_.comeca();
    for (; linhas_.ha(); passa(linhas_)) {
        const Linha& l = linhas_.actual();
        while (tiradas_.ha() && tiradas_.actual().origem < l.propria)
            tiradas_.avanca(); // told by L2
        Parte enviado;
        for (; tiradas_.ha() && tiradas_.actual().origem == l.propria; tiradas_.avanca()) {
            enviado.liquido += tiradas_.actual().liquido;
            enviado.bruto += tiradas_.actual().bruto;
        }
        compara(l, enviado);
    }
}

// Of an invoice's line the gross weight it began with is in the ERP's line; of the others it never changes
// but by what is taken, and nobody kept what it was.
void Linhas::compara(const Linha& l, const Parte& enviado) {
    const Moeda aberto = l.original - enviado.liquido;
    const Moeda bruto = l.bruto_no_erp - enviado.bruto;
    const bool em_falta = l.aberto != aberto;
    const bool liquido_errado = l.tem_liquido && l.liquido != aberto;
    const bool bruto_errado =
        l.papel == Papel::outro && l.tem_bruto && l.tem_bruto_no_erp && l.bruto != bruto;
    if (l.sem_quantidade) return;
    if (!em_falta && !liquido_errado && !bruto_errado) return;
    Achado este = achado("L1", l.propria);
    const std::string conta =
        " (" + toneladas(l.original) + " menos " + toneladas(enviado.liquido) + " que ficaram enviadas)";
    const std::string linha = "da linha " + l.propria.texto();
    if (em_falta) {
        este.esperado = toneladas(aberto) + " em aberto" + conta;
        este.encontrado = toneladas(l.aberto) + " em aberto";
        este.peso = (l.aberto - aberto).absoluta();
        este.que_fazer = "confira com as guias em papel tiradas " + linha +
                         "; se nenhuma falta no livro, peça que a "
                         "quantidade em aberto passe a " +
                         toneladas(aberto);
    } else {
        este.gravidade = Gravidade::aviso;
        const bool e_bruto = bruto_errado;
        este.esperado = (e_bruto ? "peso bruto " : "peso líquido ") + toneladas(e_bruto ? bruto : aberto);
        este.encontrado =
            (e_bruto ? "peso bruto " : "peso líquido ") + toneladas(e_bruto ? l.bruto : l.liquido);
        este.peso = (e_bruto ? l.bruto - bruto : l.liquido - aberto).absoluta();
        este.que_fazer =
            "confira os pesos das guias tiradas " + linha +
            "; a quantidade em aberto está certa, e só o peso proposto na próxima guia sai errado";
    }
    contexto_.junta(std::move(este));
}

// A line whose origin points nowhere was not counted where it was taken: that the weight is missing there is
// the same fact, and says what the origin was.
void Linhas::explica() {
    Achados& todos = contexto_.exame.achados;
    std::map<std::pair<std::string, Moeda>, std::size_t> perdidas;
    for (std::size_t i = primeiro_; i < todos.size(); ++i)
        if (todos[i].verificacao == "L2") {
            todos[i].que_fazer =
                "peça a correcção da origem desta linha pela guia em papel: anulada ou devolvida "
                "assim, o seu peso não voltaria a nenhuma linha";
            perdidas.emplace(std::pair{todos[i].artigo, todos[i].peso}, i);
        }
    if (perdidas.empty()) return;
    for (std::size_t i = primeiro_; i < todos.size();) {
        const auto perdida = todos[i].verificacao == "L1" && todos[i].gravidade == Gravidade::erro
                                 ? perdidas.find({todos[i].artigo, todos[i].peso})
                                 : perdidas.end();
        if (perdida == perdidas.end()) {
            ++i;
            continue;
        }
        todos[perdida->second].que_fazer +=
            "; a linha " + todos[i].chave + " difere exactamente deste peso, e deve ser ela a origem";
        perdidas.erase(perdida);
        todos.erase(todos.begin() + static_cast<std::ptrdiff_t>(i));
        for (auto& [peso, onde] : perdidas)
            if (onde > i) --onde;
    }
}

} // namespace

void examina_linhas(Contexto& contexto) { Linhas(contexto).percorre(); }

} // namespace orvex::auditoria
