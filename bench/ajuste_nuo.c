/* The statements of consuming a little of one item, the program's and the ERP's, prepared once and bound,
   with nothing around them. ajuste_nuo FOLDER TIMES prints the milliseconds; the item is that of the newest
   ledger row. */
#include "bench/base_nua.h"

#include <stdio.h>
#include <stdlib.h>

typedef struct {
    sqlite3_stmt *ultimo, *stock, *preco, *registo, *acrescenta; /* of the program */
    sqlite3_stmt *sentido, *sugere, *serie, *artigo, *armazem, *numera, *cabecalho, *linha, *existencia,
        *move, *ficha, *valoriza; /* of the ERP */
} Comandos;

static const double quantidade = 0.001;

static Comandos prepara_todos(sqlite3* bd, sqlite3* erp) {
    Comandos c;
    c.ultimo = prepara(bd, "Select * from xel_ORVEX where NumSerie = ?1 order by Registo desc limit 1");
    c.stock = prepara(bd, "SELECT * FROM artarm where Artigo = ?1 and Armazem = 'A1'");
    c.preco = prepara(bd, "SELECT VLREXIST, STDISP, ULTPRCOM From Artigos WHERE CODIGO = ?1");
    c.registo = prepara(bd, "select max(Registo) from xel_ORVEX");
    c.acrescenta = prepara(bd, "insert into xel_ORVEX (NumSerie, Registo, Cliente, Data, Quantidade, Obs,"
                               " Funcionario, CliFinal, Preco, Ano, TpDoc, NNumDoc, Serie, NumLin) values"
                               " (?1, ?2, 'ORVEX', '2026-01-02 00:00:00', ?3, 'Consumo Interno', '',"
                               " 'ORVEX', 0, 2026, 'CI', ?4, 1, 1)");
    c.sentido = prepara(erp, "select MovStock from TiposDocumento where Codigo = 'CI'");
    c.sugere = prepara(erp, "select Nome, UnBase, TaxaIva from Artigos where CODIGO = ?1");
    c.serie = prepara(erp, "select 1 from TiposDocumento t join Series s on s.TpDoc = t.Codigo"
                           " where t.Codigo = 'CI' and s.Serie = 1");
    c.artigo = prepara(erp, "select 1 from Artigos where CODIGO = ?1");
    c.armazem = prepara(erp, "select 1 from Armazens where Codigo = 'A1'");
    c.numera =
        prepara(erp, "insert into Numeradores (Ano, TpDoc, Serie, Ultimo) values (2026, 'CI', 1, 1)"
                     " on conflict (Ano, TpDoc, Serie) do update set Ultimo = Ultimo + 1 returning Ultimo");
    c.cabecalho = prepara(erp, "insert into DocGcCab (Ano, TpDoc, Serie, NNumDoc, Data, TpTerc, Processo)"
                               " values (2026, 'CI', 1, ?1, '2026-01-02 00:00:00', 1, '')");
    c.linha = prepara(erp, "insert into DocGcLin (Ano, TpDocum, Serie, NNumDoc, NumLinha, Artigo, Descr,"
                           " Quant, QuantOrig, Armazem, Unidade, DataMvStock) values (2026, 'CI', 1, ?2,"
                           " 1, ?1, 'Bobine', ?3, ?3, 'A1', 'TN', '2026-01-02 00:00:00')");
    c.existencia = prepara(erp, "select Existenc from artarm where Artigo = ?1 and Armazem = 'A1'");
    c.move = prepara(erp, "update artarm set Existenc = ?2 where Artigo = ?1 and Armazem = 'A1'");
    c.ficha = prepara(erp, "select STDISP, VLREXIST, ULTPRCOM from Artigos where CODIGO = ?1");
    c.valoriza = prepara(erp, "update Artigos set STDISP = ?2, VLREXIST = ?3 where CODIGO = ?1");
    return c;
}

static double le(sqlite3_stmt* comando, const char* item) {
    double valor = 0;
    if (item != NULL) sqlite3_bind_text(comando, 1, item, -1, SQLITE_STATIC);
    if (sqlite3_step(comando) == SQLITE_ROW) valor = sqlite3_column_double(comando, 0);
    sqlite3_reset(comando);
    return valor;
}

static int erp_cria(sqlite3* erp, Comandos* c, const char* item) {
    executa(erp, "begin immediate");
    le(c->sentido, NULL);
    le(c->sugere, item);
    le(c->serie, NULL);
    le(c->sentido, NULL);
    le(c->artigo, item);
    le(c->armazem, NULL);
    const int numero = (int)le(c->numera, NULL);
    sqlite3_bind_int(c->cabecalho, 1, numero);
    da_um_passo(c->cabecalho);
    le(c->sentido, NULL);
    sqlite3_bind_text(c->move, 1, item, -1, SQLITE_STATIC);
    sqlite3_bind_double(c->move, 2, le(c->existencia, item) - quantidade);
    da_um_passo(c->move);
    sqlite3_bind_text(c->valoriza, 1, item, -1, SQLITE_STATIC);
    sqlite3_bind_double(c->valoriza, 2, le(c->ficha, item) - quantidade);
    sqlite3_bind_double(c->valoriza, 3, 100);
    da_um_passo(c->valoriza);
    sqlite3_bind_text(c->linha, 1, item, -1, SQLITE_STATIC);
    sqlite3_bind_int(c->linha, 2, numero);
    sqlite3_bind_double(c->linha, 3, quantidade);
    da_um_passo(c->linha);
    executa(erp, "commit");
    return numero;
}

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const int vezes = (int)strtol(argv[2], NULL, 10);
    char item[32];
    sqlite3* bd = abre_empresa(argv[1]);
    sqlite3* erp = abre_erp(argv[1]);
    sqlite3_stmt* mais_novo = prepara(bd, "select NumSerie from xel_ORVEX order by Registo desc limit 1");
    if (sqlite3_step(mais_novo) != SQLITE_ROW) falha(bd, "xel_ORVEX");
    snprintf(item, sizeof item, "%s", (const char*)sqlite3_column_text(mais_novo, 0));
    sqlite3_finalize(mais_novo);
    Comandos c = prepara_todos(bd, erp);

    const double inicio = milissegundos();
    for (int i = 0; i < vezes; ++i) {
        executa(bd, "begin");
        le(c.ultimo, item);
        le(c.stock, item);
        le(c.preco, item);
        const int numero = erp_cria(erp, &c, item);
        sqlite3_bind_text(c.acrescenta, 1, item, -1, SQLITE_STATIC);
        sqlite3_bind_int64(c.acrescenta, 2, (sqlite3_int64)le(c.registo, NULL) + 1);
        sqlite3_bind_double(c.acrescenta, 3, -quantidade);
        sqlite3_bind_int(c.acrescenta, 4, numero);
        da_um_passo(c.acrescenta);
        executa(bd, "commit");
    }
    printf("%.3f %d\n", (milissegundos() - inicio) / vezes, vezes);
    return 0;
}
