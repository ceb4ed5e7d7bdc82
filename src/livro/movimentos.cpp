#include "livro/movimentos.h"

#include "base/falha.h"
#include "base/texto.h"
#include "livro/perguntas.h"

namespace orvex::livro {

using base::Moeda;
using base::Variante;

namespace {

Moeda moeda_ou_zero(const Variante& valor) { return valor.nulo() ? Moeda() : valor.moeda(); }

template <typename Valor>
Variante ou_nulo(const std::optional<Valor>& valor) {
    return valor ? Variante(*valor) : Variante();
}

void soma(startup::ConjuntoRegistos& linha, const char* coluna, Moeda peso) {
    const Variante valor = linha.valor(coluna);
    if (!valor.nulo()) linha.define(coluna, valor.moeda() + peso);
}

void soma(startup::SessaoBD& BD, const ChaveLinha& origem, const Pesos& pesos) {
    const auto linha = BD.AbreActualizavel(perguntas::linha(origem));
    if (linha->fim()) return;
    if (pesos.Qtd < Moeda() && moeda_ou_zero(linha->valor("Qtd")) + pesos.Qtd < Moeda())
        throw base::FalhaGuarda("A linha " + origem.texto() + " já não tem em aberto a quantidade pedida.");
    soma(*linha, "Qtd", pesos.Qtd);
    soma(*linha, "PesoLiquido", pesos.Liquido);
    soma(*linha, "PesoBruto", pesos.Bruto);
    linha->actualiza();
}

std::string condicao(const Documento& documento, const char* coluna_serie, const char* coluna_numero) {
    return " where Ano=" + std::to_string(documento.Ano) +
           " and TpDoc=" + base::entre_plicas(documento.TpDoc) + "     and " + coluna_numero + "=" +
           std::to_string(documento.Numero) + " and " + coluna_serie + "=" + documento.Serie + " ";
}

std::vector<MovimentoLido> le_guia(startup::SessaoBD& BD, const Documento& guia, const std::string& sql) {
    std::vector<MovimentoLido> linhas;
    const auto M = BD.Consulta(sql);
    for (; !M->fim(); M->move_seguinte())
        linhas.push_back({guia.linha(M->valor("NumLinha").texto()),
                          M->valor("Artigo").texto(),
                          {moeda_ou_zero(M->valor("Qtd")), moeda_ou_zero(M->valor("PesoLiquido")),
                           moeda_ou_zero(M->valor("PesoBruto"))},
                          M->valor("Origem").texto()});
    return linhas;
}

} // namespace

namespace perguntas {

std::string linha(const ChaveLinha& linha) {
    return "Select * from xel_ORVEX_MOV where Ano=" + linha.Ano +
           " and TpDoc=" + base::entre_plicas(linha.TpDoc) + "     and NumDoc=" + linha.NumDoc +
           " and SerieDoc=" + linha.Serie + " and NumLinha=" + linha.NumLinha;
}

std::string peso_bruto(const startup::ChaveDocumento& documento, const std::string& NumLinha) {
    return "Select * from U_DocGcLin1 where Ano=" + std::to_string(documento.Ano) +
           " and NumLinha=" + NumLinha + "  and TpDocum=" + base::entre_plicas(documento.TipoDocumento) +
           " and Serie=" + std::to_string(documento.Serie) +
           "  and NNumdoc=" + std::to_string(documento.NossoNoDocumento) + "  ";
}

std::string linhas_no_erp(const Documento& documento) {
    return "Select * from DocGcLin where ano=" + std::to_string(documento.Ano) +
           " and tpDocum=" + base::entre_plicas(documento.TpDoc) + " and Serie=" + documento.Serie +
           " and NnumDoc=" + std::to_string(documento.Numero);
}

std::string devolvida_pelo_cliente(const std::string& Cliente, const std::string& TpDoc,
                                   const std::string& Artigo) {
    return "Select * from xel_ORVEX_MOV where  Cliente = " + base::entre_plicas(Cliente) +
           " and TpDoc=" + base::entre_plicas(TpDoc) + " and Artigo=" + base::entre_plicas(Artigo) + " ";
}

std::string devolvida(const std::string& TpDoc, const ChaveLinha& linha) {
    return "Select * from xel_ORVEX_MOV where TpDoc=" + base::entre_plicas(TpDoc) +
           " and Origem=" + base::entre_plicas(linha.origem());
}

} // namespace perguntas

void Perguntas::junta_linha(const ChaveLinha& linha) {
    std::string qual = base::maiusculas(base::apara(linha.TpDoc));
    for (const std::string& parte : {linha.Ano, linha.Serie, linha.NumDoc, linha.NumLinha})
        qual += "/" + std::to_string(base::le_inteiro(parte).value_or(0));
    junta_uma_vez(perguntas::linha(linha), qual);
}

void retira(startup::SessaoBD& BD, const ChaveLinha& origem, const Pesos& pesos) {
    soma(BD, origem, {-pesos.Qtd, -pesos.Liquido, -pesos.Bruto});
}

void repoe(startup::SessaoBD& BD, const ChaveLinha& origem, const Pesos& pesos) { soma(BD, origem, pesos); }

void acrescenta_movimento(startup::SessaoBD& BD, const LinhaMovimento& linha) {
    const auto mov = BD.AbreActualizavel("Select * from xel_ORVEX_MOV where Ano=-1");
    mov->acrescenta();
    mov->define("Ano", linha.Documento.Ano);
    mov->define("TpDoc", linha.Documento.TipoDocumento);
    mov->define("NumDoc", linha.Documento.NossoNoDocumento);
    mov->define("SerieDoc", linha.Documento.Serie);
    mov->define("NumLinha", linha.NumLinha);
    mov->define("Data", linha.Data);
    mov->define("Artigo", linha.Artigo);
    mov->define("Cliente", linha.Cliente);
    mov->define("Descritivo", ou_nulo(linha.Descritivo));
    mov->define("QtdOrig", linha.Quantidade);
    mov->define("Qtd", linha.Quantidade);
    mov->define("Origem", linha.Origem);
    mov->define("PesoLiquido", ou_nulo(linha.PesoLiquido));
    mov->define("PesoBruto", ou_nulo(linha.PesoBruto));
    mov->actualiza();
}

void acrescenta_peso_bruto(startup::SessaoBD& BD, const startup::ChaveDocumento& documento,
                           std::int32_t NumLinha, Moeda peso) {
    const auto extensao = BD.AbreActualizavel("Select * from U_DocGcLin1 where ano=-1");
    extensao->acrescenta();
    extensao->define("TpDocUM", documento.TipoDocumento);
    extensao->define("NNumDoc", documento.NossoNoDocumento);
    extensao->define("NumLinha", NumLinha);
    extensao->define("Serie", documento.Serie);
    extensao->define("Ano", documento.Ano);
    extensao->define("PesoBruto", peso);
    extensao->actualiza();
}

Moeda peso_bruto(startup::SessaoBD& BD, const startup::ChaveDocumento& documento,
                 const std::string& NumLinha) {
    const auto extensao = BD.Consulta(perguntas::peso_bruto(documento, NumLinha));
    return extensao->fim() ? Moeda() : moeda_ou_zero(extensao->valor("PesoBruto"));
}

std::vector<LinhaERP> linhas_no_erp(startup::SessaoBD& BD, const Documento& documento) {
    std::vector<LinhaERP> linhas;
    const auto L = BD.Consulta(perguntas::linhas_no_erp(documento));
    for (; !L->fim(); L->move_seguinte()) {
        const Variante Artigo = L->valor("artigo");
        if (Artigo.vazio()) continue;
        const Variante Descr = L->valor("Descr");
        linhas.push_back({{.Ano = static_cast<std::int16_t>(L->valor("Ano").inteiro()),
                           .TipoDocumento = L->valor("TpDocum").texto(),
                           .Serie = static_cast<std::int16_t>(L->valor("Serie").inteiro()),
                           .NossoNoDocumento = static_cast<std::int32_t>(L->valor("NNumDoc").inteiro())},
                          static_cast<std::int32_t>(L->valor("Numlinha").inteiro()),
                          Artigo.texto(),
                          Descr.nulo() ? std::nullopt : std::optional(Descr.texto()),
                          moeda_ou_zero(L->valor("Quant"))});
    }
    return linhas;
}

bool anulado_no_erp(startup::SessaoBD& BD, const Documento& documento) {
    const auto cabecalho =
        BD.Consulta("Select NVias from DocGcCab" + condicao(documento, "Serie", "NNumDoc"));
    return !cabecalho->fim() && cabecalho->valor("NVias").inteiro() == startup::documento_anulado;
}

std::vector<MovimentoLido> linhas_a_anular(startup::SessaoBD& BD, const Documento& guia) {
    return le_guia(BD, guia, "Select * from xel_ORVEX_MOV" + condicao(guia, "SerieDoc", "NumDoc"));
}

std::vector<MovimentoLido> linhas_a_devolver(startup::SessaoBD& BD, const Documento& guia) {
    return le_guia(BD, guia,
                   "Select * from xel_ORVEX_MOV where Ano=" + std::to_string(guia.Ano) +
                       " and TpDoc=" + base::entre_plicas(guia.TpDoc) +
                       " and NumDoc= " + std::to_string(guia.Numero) + " and SerieDoc=" + guia.Serie + " ");
}

void apaga_linhas(startup::SessaoBD& BD, const Documento& guia) {
    BD.Executa("Delete xel_ORVEX_MOV" + condicao(guia, "SerieDoc", "NumDoc"));
    BD.Executa("Delete xel_ORVEX" + condicao(guia, "Serie", "NNumDoc"));
}

void retira_guia(startup::SessaoBD& BD, const Documento& guia, const std::string& TpDocDevolucao) {
    const std::vector<MovimentoLido> linhas = linhas_a_anular(BD, guia);
    Perguntas anunciadas;
    for (const MovimentoLido& linha : linhas) {
        if (const auto origem = le_chave(linha.Origem)) anunciadas.junta_linha(*origem);
        anunciadas.junta(perguntas::devolvida(TpDocDevolucao, linha.chave));
    }
    BD.EmPasso(anunciadas.todas(), [&] {
        for (const MovimentoLido& linha : linhas) {
            if (const auto origem = linha.origem()) repoe(BD, *origem, linha.pesos);
            if (devolvida(BD, TpDocDevolucao, linha.chave))
                throw base::FalhaGuarda("O artigo " + linha.Artigo + " da guia " +
                                        std::to_string(guia.Numero) + " já foi devolvido.");
        }
        apaga_linhas(BD, guia);
    });
}

void retira_devolucao(startup::SessaoBD& BD, const Documento& devolucao) {
    for (const MovimentoLido& linha : linhas_a_anular(BD, devolucao)) {
        const auto da_guia = linha.origem();
        if (!da_guia) continue;
        const auto guia = BD.Consulta(perguntas::linha(*da_guia));
        if (guia->fim()) continue;
        if (const auto origem = le_origem(guia->valor("Origem").texto(), *da_guia))
            retira(BD, *origem, linha.pesos);
    }
    apaga_linhas(BD, devolucao);
}

bool devolvida_pelo_cliente(startup::SessaoBD& BD, const std::string& Cliente, const std::string& TpDoc,
                            const std::string& Artigo, const ChaveLinha& linha) {
    const auto devolucoes = BD.Consulta(perguntas::devolvida_pelo_cliente(Cliente, TpDoc, Artigo));
    for (; !devolucoes->fim(); devolucoes->move_seguinte())
        if (devolucoes->valor("Origem").texto() == linha.origem()) return true;
    return false;
}

bool devolvida(startup::SessaoBD& BD, const std::string& TpDoc, const ChaveLinha& linha) {
    return !BD.Consulta(perguntas::devolvida(TpDoc, linha))->fim();
}

} // namespace orvex::livro
