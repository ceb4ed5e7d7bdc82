/* The statements of an audit, read to their ends one after the other with every column, and nothing else.
   auditoria_nua FOLDER prints the milliseconds and the rows read. */
#include "bench/base_nua.h"

#include <stdio.h>

static long lidas = 0;
static long bytes = 0;

static void le(sqlite3* bd, const char* sql, const char* tipo) {
    sqlite3_stmt* comando = prepara(bd, sql);
    if (tipo != NULL) sqlite3_bind_text(comando, 1, tipo, -1, SQLITE_STATIC);
    const int colunas = sqlite3_column_count(comando);
    while (sqlite3_step(comando) == SQLITE_ROW) {
        ++lidas;
        for (int i = 0; i < colunas; ++i) {
            switch (sqlite3_column_type(comando, i)) {
            case SQLITE_INTEGER:
                bytes += sqlite3_column_int64(comando, i) != 0;
                break;
            case SQLITE_FLOAT:
                bytes += sqlite3_column_double(comando, i) > 0;
                break;
            case SQLITE_TEXT:
                bytes += sqlite3_column_text(comando, i)[0] != 0;
                bytes += sqlite3_column_bytes(comando, i);
                break;
            default:
                break;
            }
        }
    }
    sqlite3_finalize(comando);
}

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    sqlite3* bd = abre_empresa(argv[1]);
    const char* guias[] = {"GR", "GD"};
    const char* facturas[] = {"FA", "FR"};
    const char* ajustes[] = {"SB", "QB", "CI"};
    const char* do_erp =
        "Select c.Ano, c.NNumDoc, c.NVias, c.Data, c.Terceiro, l.NumLinha, l.Artigo, l.Quant, l.Armazem, "
        "u.PesoBruto from DocGcCab c left outer join DocGcLin l on l.Ano=c.Ano and l.TpDocum=c.TpDoc and "
        "l.Serie=c.Serie and l.NNumDoc=c.NNumDoc left outer join U_DocGcLin1 u on u.Ano=l.Ano and "
        "u.TpDocUM=l.TpDocum and u.Serie=l.Serie and u.NNumDoc=l.NNumDoc and u.NumLinha=l.NumLinha where "
        "c.TpDoc=?1 and c.Serie=1 order by c.Ano, c.NNumDoc, l.NumLinha";
    const char* movimentos =
        "Select Ano, NumDoc, NumLinha, Data, Artigo, Cliente, QtdOrig, PesoBruto, Qtd from "
        "xel_ORVEX_Mov where TpDoc=?1 and SerieDoc=1 order by Ano, NumDoc, NumLinha";
    const char* detentores =
        "Select Ano, NNumDoc, NumLin, Data, NumSerie, Cliente, Quantidade, Registo from "
        "xel_ORVEX where TpDoc=?1 and Serie=1 and NNumDoc>0 order by Ano, NNumDoc, NumLin, "
        "Registo";

    const double inicio = milissegundos();
    le(bd,
       "Select c.TpDoc, c.Serie, c.Terceiro, l.Artigo, l.Armazem from DocGcCab c inner join DocGcLin l on "
       "l.Ano=c.Ano and l.TpDocum=c.TpDoc and l.Serie=c.Serie and l.NNumDoc=c.NNumDoc where c.NVias=-1",
       NULL);
    le(bd,
       "Select x.NumSerie, x.Registo, x.Cliente, x.CliFinal, x.Data, x.Quantidade, x.Ano, x.TpDoc, x.Serie, "
       "x.NNumDoc, a.CODIGO, c.CODIGO, (select o.Observ from ObservArtigos o where o.CODIGO=a.CODIGO), "
       "s.Existenc, t.Existenc from xel_ORVEX x left outer join "
       "Artigos a on a.CODIGO=x.NumSerie left outer join Clientes c on c.CODIGO=x.Cliente left outer join "
       "artarm s on s.Artigo=x.NumSerie and s.Armazem='A1' left outer join artarm t on t.Artigo=x.NumSerie "
       "and t.Armazem='A2' order by x.NumSerie, x.Registo",
       NULL);
    le(bd,
       "Select m.Ano, m.TpDoc, m.SerieDoc, m.NumDoc, m.NumLinha, m.Data, m.Artigo, m.Cliente, m.QtdOrig, "
       "m.Qtd, m.PesoLiquido, m.PesoBruto, m.Origem, a.CODIGO, c.CODIGO, u.PesoBruto from xel_ORVEX_Mov m "
       "left outer join Artigos a on a.CODIGO=m.Artigo left outer join Clientes c on c.CODIGO=m.Cliente left "
       "outer join U_DocGcLin1 u on u.Ano=m.Ano and u.TpDocUM=m.TpDoc and u.Serie=m.SerieDoc and "
       "u.NNumDoc=m.NumDoc and u.NumLinha=m.NumLinha",
       NULL);
    for (int i = 0; i < 2; ++i) {
        le(bd, do_erp, guias[i]);
        le(bd, movimentos, guias[i]);
        le(bd, detentores, guias[i]);
        le(bd, do_erp, facturas[i]);
        le(bd, movimentos, facturas[i]);
    }
    for (int i = 0; i < 3; ++i) {
        le(bd, do_erp, ajustes[i]);
        le(bd, detentores, ajustes[i]);
    }
    le(bd, do_erp, "TR");
    printf("%.3f %ld %ld\n", milissegundos() - inicio, lidas, bytes);
    return sqlite3_close(bd);
}
