/* The statements of a client's open invoice lines, prepared once and bound, with nothing around them.
   facturas_nuas FOLDER CLIENT WAREHOUSE prints the milliseconds and the lines found. */
#include "bench/base_nua.h"

#include <stdio.h>
#include <string.h>

#define FILTRO " and Qtd>0 and artoudes=0 and ( (TpDoc='FA' and SerieDoc=1) OR  (TpDoc='FR' and SerieDoc=1) )"

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    sqlite3* bd = abre_empresa(argv[1]);

    const double inicio = milissegundos();
    sqlite3_stmt* pesos = prepara(
        bd,
        "Select m.*,l.PESOBRUTO as 'PB' from xel_ORVEX_Mov as m inner join artigos as a on a.codigo=m.Artigo"
        " left outer  join U_Docgclin1 as l ON l.ano=m.ano and  l.TPDOCUM =m.tpdoc and l.SERIE =m.seriedoc"
        " and l.nnumdoc=m.numdoc and l.NUMLINHA =m.numlinha where Cliente =?1" FILTRO);
    sqlite3_bind_text(pesos, 1, argv[2], -1, SQLITE_STATIC);
    long por_reparar = 0;
    while (sqlite3_step(pesos) == SQLITE_ROW)
        por_reparar +=
            sqlite3_column_type(pesos, 14) != SQLITE_NULL && sqlite3_column_type(pesos, 13) == SQLITE_NULL;
    sqlite3_finalize(pesos);

    sqlite3_stmt* linhas =
        prepara(bd, "Select * from xel_ORVEX_Mov INNER JOIN Artigos ON Artigos.Codigo=xel_ORVEX_Mov.Artigo"
                    " where Cliente =?1" FILTRO);
    sqlite3_stmt* origem =
        prepara(bd, "Select * from DocGcLin where TpDocum=?1 and Serie=?2 and Nnumdoc=?3 and "
                    "Ano=?4 and NumLinha=?5");
    int armazem = -1;
    for (int i = 0; i < sqlite3_column_count(origem); ++i)
        if (strcmp(sqlite3_column_name(origem, i), "Armazem") == 0) armazem = i;

    sqlite3_bind_text(linhas, 1, argv[2], -1, SQLITE_STATIC);
    long mostradas = 0;
    while (sqlite3_step(linhas) == SQLITE_ROW) {
        const int chave[] = {1, 3, 2, 0, 4}; /* TpDoc, SerieDoc, NumDoc, Ano, NumLinha */
        for (int i = 0; i < 5; ++i)
            sqlite3_bind_text(origem, i + 1, (const char*)sqlite3_column_text(linhas, chave[i]), -1,
                              SQLITE_TRANSIENT);
        if (sqlite3_step(origem) == SQLITE_ROW &&
            strcmp((const char*)sqlite3_column_text(origem, armazem), argv[3]) == 0)
            ++mostradas;
        sqlite3_reset(origem);
    }
    const double fim = milissegundos();
    sqlite3_finalize(linhas);
    sqlite3_finalize(origem);
    printf("%.3f %ld %ld\n", fim - inicio, mostradas, por_reparar);
    return sqlite3_close(bd);
}
