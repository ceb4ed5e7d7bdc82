#include "erp.h"

#include "base/texto.h"

namespace orvex::auditoria {
namespace {

constexpr const char* linhas_do_cabecalho =
    "DocGcLin l on l.Ano=c.Ano and l.TpDocum=c.TpDoc and l.Serie=c.Serie and l.NNumDoc=c.NNumDoc ";

std::string com_linhas(const Numeracao& qual) {
    return std::string("Select c.Ano, c.NNumDoc, c.NVias, c.Data, c.Terceiro, l.NumLinha, l.Artigo, l.Quant, "
                       "l.Armazem, u.PesoBruto from DocGcCab c left outer join ") +
           linhas_do_cabecalho +
           "left outer join U_DocGcLin1 u on u.Ano=l.Ano and u.TpDocUM=l.TpDocum and u.Serie=l.Serie and "
           "u.NNumDoc=l.NNumDoc and u.NumLinha=l.NumLinha where c.TpDoc=" +
           base::entre_plicas(qual.TpDoc) + " and c.Serie=" + std::to_string(qual.Serie);
}

} // namespace

std::string documentos(const Numeracao& qual) {
    return com_linhas(qual) + " order by c.Ano, c.NNumDoc, l.NumLinha";
}

std::string documento(const Numeracao& qual, std::int64_t Ano, std::int64_t NNumDoc) {
    return com_linhas(qual) + " and c.Ano=" + std::to_string(Ano) +
           " and c.NNumDoc=" + std::to_string(NNumDoc) + " order by l.NumLinha";
}

std::string linhas_anuladas() {
    return std::string(
               "Select c.TpDoc, c.Serie, c.Terceiro, l.Artigo, l.Armazem from DocGcCab c inner join ") +
           linhas_do_cabecalho + "where c.NVias=-1";
}

} // namespace orvex::auditoria
