#include "livro/leitura.h"

#include "base/texto.h"

namespace orvex::livro {
namespace {

std::string do_tipo(const std::string& TpDoc, std::int16_t Serie, const char* coluna_serie) {
    return "TpDoc=" + base::entre_plicas(TpDoc) + " and " + coluna_serie + "=" + std::to_string(Serie);
}

constexpr const char* movimentos_com_o_erp =
    "Select m.Ano, m.TpDoc, m.SerieDoc, m.NumDoc, m.NumLinha, m.Data, m.Artigo, m.Cliente, m.QtdOrig, m.Qtd, "
    "m.PesoLiquido, m.PesoBruto, m.Origem, a.CODIGO, c.CODIGO, u.PesoBruto from xel_ORVEX_Mov m "
    "left outer join Artigos a on a.CODIGO=m.Artigo left outer join Clientes c on c.CODIGO=m.Cliente "
    "left outer join U_DocGcLin1 u on u.Ano=m.Ano and u.TpDocUM=m.TpDoc and u.Serie=m.SerieDoc "
    "and u.NNumDoc=m.NumDoc and u.NumLinha=m.NumLinha";

} // namespace

std::string movimentos() { return movimentos_com_o_erp; }

std::string movimento(std::int64_t Ano, const std::string& TpDoc, std::int64_t SerieDoc, std::int64_t NumDoc,
                      std::int64_t NumLinha) {
    std::string sql = movimentos_com_o_erp;
    sql += " where m.Ano=" + std::to_string(Ano) + " and m.TpDoc=" + base::entre_plicas(TpDoc);
    sql += " and m.SerieDoc=" + std::to_string(SerieDoc) + " and m.NumDoc=" + std::to_string(NumDoc);
    sql += " and m.NumLinha=" + std::to_string(NumLinha);
    return sql;
}

std::string movimentos_dos_documentos(const std::string& TpDoc, std::int16_t Serie) {
    return "Select Ano, NumDoc, NumLinha, Data, Artigo, Cliente, QtdOrig, PesoBruto, Qtd from xel_ORVEX_Mov "
           "where " +
           do_tipo(TpDoc, Serie, "SerieDoc") + " order by Ano, NumDoc, NumLinha";
}

std::string detentores_dos_documentos(const std::string& TpDoc, std::int16_t Serie) {
    return "Select Ano, NNumDoc, NumLin, Data, NumSerie, Cliente, Quantidade, Registo from xel_ORVEX where " +
           do_tipo(TpDoc, Serie, "Serie") + " and NNumDoc>0 order by Ano, NNumDoc, NumLin, Registo";
}

std::string historias(const std::string& armazem1, const std::string& armazem2) {
    return "Select x.NumSerie, x.Registo, x.Cliente, x.CliFinal, x.Data, x.Quantidade, x.Ano, x.TpDoc, "
           "x.Serie, x.NNumDoc, a.CODIGO, c.CODIGO, a.Observ, s.Existenc, t.Existenc from xel_ORVEX x "
           "left outer join Artigos a on a.CODIGO=x.NumSerie left outer join Clientes c on "
           "c.CODIGO=x.Cliente "
           "left outer join artarm s on s.Artigo=x.NumSerie and s.Armazem=" +
           base::entre_plicas(armazem1) +
           " left outer join artarm t on t.Artigo=x.NumSerie and t.Armazem=" + base::entre_plicas(armazem2) +
           " order by x.NumSerie, x.Registo";
}

} // namespace orvex::livro
