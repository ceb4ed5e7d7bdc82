#include "livro/documentos.h"

#include "base/texto.h"

namespace orvex::livro {
namespace {

using base::Variante;
using startup::ChaveDocumento;

std::string serie_de(const char* coluna_serie, const ChaveDocumento& chave) {
    return " where Ano=" + std::to_string(chave.Ano) +
           " and TpDoc=" + base::entre_plicas(chave.TipoDocumento) + " and " + coluna_serie + "=" +
           std::to_string(chave.Serie);
}

bool ha(startup::SessaoBD& BD, const std::string& sql) { return !BD.Consulta(sql)->fim(); }

} // namespace

Documento documento_de(const ChaveDocumento& chave) {
    return {chave.Ano, chave.TipoDocumento, std::to_string(chave.Serie), chave.NossoNoDocumento};
}

EstadoERP estado_no_erp(startup::SessaoBD& BD, const ChaveDocumento& chave) {
    const auto cabecalho = BD.Consulta("Select NVias from DocGcCab" + serie_de("Serie", chave) +
                                       " and NNumDoc=" + std::to_string(chave.NossoNoDocumento));
    if (cabecalho->fim()) return EstadoERP::inexistente;
    const Variante NVias = cabecalho->valor("NVias");
    return !NVias.nulo() && NVias.inteiro() == startup::documento_anulado ? EstadoERP::anulado
                                                                          : EstadoERP::em_vigor;
}

std::string perguntas::ultimo_numero(const ChaveDocumento& chave) {
    return "Select top 1 NNumDoc from DocGcCab" + serie_de("Serie", chave) + " order by NNumDoc desc";
}

std::string perguntas::ultimo_registo() {
    return "Select top 1 Registo from xel_ORVEX order by Registo desc";
}

std::int32_t ultimo_numero(startup::SessaoBD& BD, const ChaveDocumento& chave) {
    const auto ultimo = BD.Consulta(perguntas::ultimo_numero(chave));
    return ultimo->fim() ? 0 : static_cast<std::int32_t>(ultimo->valor("NNumDoc").inteiro());
}

std::int64_t ultimo_registo(startup::SessaoBD& BD) {
    const auto ultimo = BD.Consulta(perguntas::ultimo_registo());
    return ultimo->fim() ? 0 : ultimo->valor("Registo").inteiro();
}

std::vector<DocumentoERP> documentos_depois_de(startup::SessaoBD& BD, const ChaveDocumento& depois_de) {
    std::vector<DocumentoERP> documentos;
    const auto cabecalhos =
        BD.Consulta("Select NNumDoc, Terceiro, Data, NVias from DocGcCab" + serie_de("Serie", depois_de) +
                    " and NNumDoc>" + std::to_string(depois_de.NossoNoDocumento) + " order by NNumDoc");
    for (; !cabecalhos->fim(); cabecalhos->move_seguinte()) {
        const Variante NVias = cabecalhos->valor("NVias"), Data = cabecalhos->valor("Data");
        if (!NVias.nulo() && NVias.inteiro() == startup::documento_anulado) continue;
        DocumentoERP documento{depois_de, cabecalhos->valor("Terceiro").texto(), {}};
        documento.chave.NossoNoDocumento = static_cast<std::int32_t>(cabecalhos->valor("NNumDoc").inteiro());
        if (!Data.nulo()) documento.Data = Data.data();
        documentos.push_back(std::move(documento));
    }
    return documentos;
}

bool no_livro(startup::SessaoBD& BD, const ChaveDocumento& chave) {
    const std::string numero = std::to_string(chave.NossoNoDocumento);
    return ha(BD, "Select top 1 Ano from xel_ORVEX" + serie_de("Serie", chave) + " and NNumDoc=" + numero) ||
           ha(BD,
              "Select top 1 Ano from xel_ORVEX_Mov" + serie_de("SerieDoc", chave) + " and NumDoc=" + numero);
}

bool transferencia_no_livro(startup::SessaoBD& BD, const std::string& NumSerie, const std::string& Destino,
                            base::Moeda Quantidade, std::int64_t depois_de) {
    constexpr int casas_do_livro = 3;
    const auto linhas = BD.Consulta(
        "Select top 2 NNumDoc, Cliente, Quantidade from xel_ORVEX where NumSerie=" +
        base::entre_plicas(NumSerie) + " and Registo>" + std::to_string(depois_de) + " order by Registo");
    const auto move = [&](base::Moeda quantidade) {
        if (linhas->fim()) return false;
        const Variante numero = linhas->valor("NNumDoc"), movida = linhas->valor("Quantidade");
        return !numero.nulo() && numero.inteiro() == 0 && !movida.nulo() &&
               movida.moeda() == quantidade.arredondada(casas_do_livro);
    };
    if (!move(-Quantidade)) return false;
    linhas->move_seguinte();
    return move(Quantidade) && linhas->valor("Cliente").texto() == Destino;
}

} // namespace orvex::livro
