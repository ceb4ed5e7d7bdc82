#include "documentos.h"

#include "erp.h"
#include "livro/leitura.h"
#include "ponto.h"

#include <algorithm>

namespace orvex::auditoria {

using base::Moeda;

base::Moeda soma(const std::vector<LinhaDoc>& linhas) {
    Moeda total;
    for (const LinhaDoc& linha : linhas)
        total += linha.Quantidade.value_or(Moeda()).absoluta();
    return total;
}

const LinhaDoc* procura(const std::vector<LinhaDoc>& linhas, std::int64_t numero) {
    const auto encontrada = std::find_if(linhas.begin(), linhas.end(),
                                         [=](const LinhaDoc& esta) { return esta.linha == numero; });
    return encontrada == linhas.end() ? nullptr : &*encontrada;
}

// --- The ledger --------------------------------------------------------------------------------------------

namespace L = livro::linha_lida;

void DoLivro::ve() {
    proximo_.reset();
    if (leitura_.ha()) proximo_ = NumeroDoc{leitura_.inteiro(L::Ano), leitura_.inteiro(L::Numero)};
}

std::vector<LinhaDoc> DoLivro::retira(const NumeroDoc& documento) {
    std::vector<LinhaDoc> linhas;
    for (; proximo_ == documento; leitura_.seguinte(), ve()) {
        LinhaDoc& nova = linhas.emplace_back();
        nova.linha = leitura_.inteiro(L::Linha);
        nova.Artigo = leitura_.texto(L::Artigo);
        nova.Cliente = leitura_.texto(L::Cliente);
        nova.Quantidade = leitura_.moeda(L::Quantidade);
        nova.Data = leitura_.data(L::Data);
        if (detentores_) {
            nova.Registo = leitura_.inteiro(L::Registo);
        } else {
            nova.PesoBruto = leitura_.moeda(L::PesoBruto);
            nova.aberto = leitura_.moeda(L::Aberto).value_or(Moeda());
        }
    }
    return linhas;
}

// --- The ERP -----------------------------------------------------------------------------------------------

namespace E = documento_lido;

DoERP::DoERP(Contexto& contexto, std::size_t sessao, const Numeracao& qual)
    : contexto_(contexto), qual_(qual),
      leitura_(contexto.sessoes[sessao], documentos(qual), contexto.progresso) {
    ve();
    if (proximo_) primeiro_ano_ = proximo_->Ano;
}

DoERP::DoERP(Contexto& contexto, std::size_t sessao, const Numeracao& qual, const NumeroDoc& so_este)
    : contexto_(contexto), qual_(qual),
      leitura_(contexto.sessoes[sessao], documento(qual, so_este.Ano, so_este.Numero), contexto.progresso) {
    ve();
}

void DoERP::ve() {
    proximo_.reset();
    if (leitura_.ha()) proximo_ = NumeroDoc{leitura_.inteiro(E::Ano), leitura_.inteiro(E::NNumDoc)};
}

DocERP DoERP::retira(const NumeroDoc& documento) {
    DocERP lido;
    constexpr std::int64_t anulado = -1;
    std::int64_t ultima = -1;
    for (; proximo_ == documento; leitura_.seguinte(), ve()) {
        if (!lido.existe) {
            numera(documento);
            lido.existe = true;
            lido.anulado = leitura_.inteiro(E::NVias) == anulado;
            lido.Terceiro = leitura_.texto(E::Terceiro);
            lido.Data = leitura_.data(E::Data);
        }
        const std::string artigo = leitura_.texto(E::Artigo);
        const std::int64_t linha = leitura_.inteiro(E::NumLinha);
        if (artigo.empty() || linha == ultima) continue; // a text; a gross weight that is there twice
        ultima = linha;
        LinhaDoc& nova = lido.linhas.emplace_back();
        nova.linha = linha;
        nova.Artigo = artigo;
        nova.Cliente = lido.Terceiro;
        nova.Armazem = leitura_.texto(E::Armazem);
        nova.Quantidade = leitura_.moeda(E::Quant).value_or(Moeda());
        nova.PesoBruto = leitura_.moeda(E::PesoBruto);
        nova.Data = lido.Data;
    }
    return lido;
}

void DoERP::numera(const NumeroDoc& documento) {
    constexpr std::size_t bastam = 60;
    if (anterior_ && anterior_->Ano != documento.Ano) conta_faltas();
    const std::int64_t esperado =
        (anterior_ && anterior_->Ano == documento.Ano ? anterior_->Numero : documento.Numero - 1) + 1;
    anterior_ = documento;
    if (documento.Numero <= esperado) return;
    total_faltas_ += documento.Numero - esperado;
    if (faltas_.size() > bastam) {
        if (!faltas_.ends_with("...")) faltas_ += ", ...";
        return;
    }
    faltas_ += (faltas_.empty() ? "" : ", ") + std::to_string(esperado);
    if (documento.Numero - 1 > esperado) faltas_ += "-" + std::to_string(documento.Numero - 1);
}

void DoERP::conta_faltas() {
    if (total_faltas_ > 0)
        contexto_.junta({.gravidade = Gravidade::informacao,
                         .verificacao = "E6",
                         .chave = std::to_string(anterior_->Ano) + "/" + qual_.texto(),
                         .esperado = "números seguidos",
                         .encontrado = (total_faltas_ == 1 ? "falta " : "faltam ") + faltas_,
                         .que_fazer = "nada, se o ERP saltou ou apagou estes números; o livro não tem linhas "
                                      "deles, ou E2 di-lo"});
    faltas_.clear();
    total_faltas_ = 0;
}

void DoERP::acaba() {
    if (anterior_) conta_faltas();
}

// --- What both say -----------------------------------------------------------------------------------------

Achado Comparacao::achado(const char* verificacao, const NumeroDoc& documento, const LinhaDoc* linha) const {
    Achado novo{.gravidade = gravidade_,
                .verificacao = verificacao,
                .chave = std::to_string(documento.Ano) + "/" + qual_.documento(documento.Numero),
                .desde = qual_.documento(documento.Numero)};
    if (linha == nullptr) return novo;
    if (linha->linha != 0) novo.chave += "/" + std::to_string(linha->linha);
    novo.artigo = linha->Artigo;
    novo.cliente = linha->Cliente;
    novo.peso = linha->Quantidade.value_or(Moeda()).absoluta();
    novo.data = linha->Data;
    return novo;
}

namespace {

// The article of a document is told where it has but one.
void do_documento(Achado& achado, const std::string& chave, const std::vector<LinhaDoc>& linhas) {
    achado.chave = chave;
    achado.peso = soma(linhas);
    const std::string primeiro = achado.artigo;
    for (const LinhaDoc& linha : linhas) {
        achado.artigos.push_back(linha.Artigo);
        if (!mesmo_codigo(linha.Artigo, primeiro)) achado.artigo = std::to_string(linhas.size()) + " artigos";
    }
}

} // namespace

void Comparacao::fora_do_livro(const NumeroDoc& documento, const DocERP& erp,
                               const std::vector<LinhaDoc>& linhas) {
    Achado novo = achado("E1", documento, &linhas.front());
    do_documento(novo, achado("E1", documento, nullptr).chave, linhas);
    novo.cliente = erp.Terceiro;
    novo.data = erp.Data;
    novo.esperado = "anulado no ERP, ou no livro";
    novo.encontrado = "em vigor no ERP, sem linhas no livro";
    novo.que_fazer =
        gravidade_ == Gravidade::erro
            ? "se a mercadoria não saiu nem entrou, anule o documento no ERP e repita-o no programa; se "
              "saiu ou entrou, peça que as linhas sejam acrescentadas ao livro"
            : "veja porque é que esta factura não chegou ao livro: as suas linhas não aparecem para guia";
    contexto_.junta(std::move(novo));
}

void Comparacao::fora_do_erp(const NumeroDoc& documento, const DocERP& erp, bool arquivado,
                             const std::vector<LinhaDoc>& linhas) {
    if (arquivado) {
        auto& [quantos, peso] = arquivados_[documento.Ano];
        ++quantos;
        peso += soma(linhas);
        return;
    }
    Achado novo = achado("E2", documento, &linhas.front());
    do_documento(novo, achado("E2", documento, nullptr).chave, linhas);
    novo.esperado = "o documento em vigor no ERP";
    novo.encontrado = erp.anulado ? "anulado no ERP, e ainda no livro" : "no livro, e não existe no ERP";
    novo.que_fazer =
        erp.anulado
            ? "se o documento foi mesmo anulado, peça que as suas linhas saiam do livro e o peso volte às "
              "linhas de onde saiu; se a mercadoria saiu, volte a emiti-lo"
            : "procure o documento no ERP pelo número e pela data; se foi apagado, peça que as suas linhas "
              "saiam do livro, ou volte a emiti-lo";
    contexto_.junta(std::move(novo));
}

void Comparacao::linha(const NumeroDoc& documento, const LinhaDoc* no_livro, const LinhaDoc* no_erp,
                       int casas) {
    Achado novo = achado("E3", documento, no_livro != nullptr ? no_livro : no_erp);
    novo.que_fazer = "confira pela guia em papel qual dos dois está certo, e peça a correcção do outro";
    const auto diz = [](const LinhaDoc* esta) {
        return esta == nullptr
                   ? std::string("sem a linha")
                   : esta->Artigo + " " + toneladas(esta->Quantidade.value_or(Moeda()).absoluta());
    };
    const auto junta = [&] {
        novo.esperado = "no ERP " + novo.esperado;
        novo.encontrado = "no livro " + novo.encontrado;
        contexto_.junta(std::move(novo));
    };
    novo.esperado = diz(no_erp);
    novo.encontrado = diz(no_livro);
    if (no_livro == nullptr || no_erp == nullptr) return junta();
    const Moeda livro = no_livro->Quantidade.value_or(Moeda()).absoluta();
    const Moeda erp = no_erp->Quantidade.value_or(Moeda()).absoluta();
    const bool outro_artigo = !mesmo_codigo(no_livro->Artigo, no_erp->Artigo);
    if (livro.arredondada(casas) != erp.arredondada(casas)) {
        if (!outro_artigo) novo.peso = (livro - erp).absoluta();
        return junta();
    }
    if (outro_artigo) return junta();
    if (!no_livro->PesoBruto || !no_erp->PesoBruto || *no_livro->PesoBruto == *no_erp->PesoBruto) return;
    novo.gravidade = Gravidade::aviso;
    novo.peso = (*no_livro->PesoBruto - *no_erp->PesoBruto).absoluta();
    novo.esperado = "peso bruto " + toneladas(no_erp->PesoBruto);
    novo.encontrado = "peso bruto " + toneladas(no_livro->PesoBruto);
    junta();
}

void Comparacao::armazem(const NumeroDoc& documento, const LinhaDoc& detentor, const LinhaDoc& no_erp) {
    const Casa& casa = contexto_.casa;
    if (detentor.Cliente.empty()) return;
    const std::string& dele = casa.armazem(detentor.Cliente);
    const std::string& outro =
        casa.e_orvex(detentor.Cliente) ? casa.lugares.Armazem : casa.lugares.ArmazemOrvex;
    if (mesmo_codigo(no_erp.Armazem, dele) || !mesmo_codigo(no_erp.Armazem, outro)) return;
    Achado novo = achado("E4", documento, &detentor);
    novo.esperado = "movimento no armazém " + dele + ", do detentor " + detentor.Cliente;
    novo.encontrado = "o documento move o armazém " + outro;
    novo.que_fazer =
        "veja quem tem o artigo: o livro ou o armazém da linha do documento está errado, e o stock "
        "dos dois armazéns também";
    contexto_.junta(std::move(novo));
}

void Comparacao::acaba() {
    for (const auto& [ano, o_que] : arquivados_)
        contexto_.junta({.gravidade = Gravidade::informacao,
                         .verificacao = "E2",
                         .chave = std::to_string(ano) + "/" + qual_.texto(),
                         .esperado = "os documentos no ERP",
                         .encontrado = std::to_string(o_que.first) +
                                       (o_que.first == 1 ? " documento" : " documentos") +
                                       " no livro, de um ano que o ERP já não mostra",
                         .peso = o_que.second,
                         .que_fazer = "nada, se o ano foi arquivado no ERP"});
}

} // namespace orvex::auditoria
