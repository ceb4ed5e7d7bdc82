/* The statements of issuing a delivery note, the program's and the ERP's, prepared once and bound, with
   nothing around them. emissao_nua FOLDER CLIENT LINES prints the milliseconds and the lines; the note takes
   whole the first open lines that the screen lists for the client, those of goods in the warehouse A1. */
#include "bench/base_nua.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { tamanho_texto = 100 };

typedef struct {
    int ano, numero, serie, linha;
    char tipo[8], artigo[32], descricao[tamanho_texto];
    double quantidade, bruto;
} Linha;

static void copia(char* destino, size_t tamanho, sqlite3_stmt* comando, int coluna) {
    snprintf(destino, tamanho, "%s", (const char*)sqlite3_column_text(comando, coluna));
}

static int le_linhas(sqlite3* bd, const char* cliente, Linha* linhas, int maximo) {
    sqlite3_stmt* abertas =
        prepara(bd, "select m.Ano, m.TpDoc, m.NumDoc, m.SerieDoc, m.NumLinha, m.Artigo, m.Descritivo, m.Qtd,"
                    " m.PesoBruto from xel_ORVEX_Mov m join Artigos a on a.CODIGO = m.Artigo"
                    " join DocGcLin l on l.Ano = m.Ano and l.TpDocum = m.TpDoc and l.Serie = m.SerieDoc"
                    " and l.NNumDoc = m.NumDoc and l.NumLinha = m.NumLinha"
                    " where m.Cliente = ?1 and m.Qtd > 0 and a.artoudes = 0 and l.Armazem = 'A1' and"
                    " ((m.TpDoc='FA' and m.SerieDoc=1) or (m.TpDoc='FR' and m.SerieDoc=1)) limit ?2");
    sqlite3_bind_text(abertas, 1, cliente, -1, SQLITE_STATIC);
    sqlite3_bind_int(abertas, 2, maximo);
    int total = 0;
    while (sqlite3_step(abertas) == SQLITE_ROW) {
        Linha* l = &linhas[total++];
        l->ano = sqlite3_column_int(abertas, 0);
        copia(l->tipo, sizeof l->tipo, abertas, 1);
        l->numero = sqlite3_column_int(abertas, 2);
        l->serie = sqlite3_column_int(abertas, 3);
        l->linha = sqlite3_column_int(abertas, 4);
        copia(l->artigo, sizeof l->artigo, abertas, 5);
        copia(l->descricao, sizeof l->descricao, abertas, 6);
        l->quantidade = sqlite3_column_double(abertas, 7);
        l->bruto = sqlite3_column_double(abertas, 8);
    }
    sqlite3_finalize(abertas);
    return total;
}

static int outro_documento(const Linha* a, const Linha* b) {
    return a->ano != b->ano || a->numero != b->numero || a->serie != b->serie ||
           strcmp(a->tipo, b->tipo) != 0;
}

/* The two lines of text before the first line of each invoice. */
static int insere_textos(sqlite3_stmt* insere, int linha, const Linha* l) {
    char origem[tamanho_texto];
    snprintf(origem, sizeof origem, "%s/%d/%d de 02-01-2026", l->tipo, l->serie, l->numero);
    const char* const textos[] = {"O material constante desta posição foi facturado no documento ", origem};
    for (int i = 0; i < 2; ++i) {
        sqlite3_bind_int(insere, 2, ++linha);
        sqlite3_bind_text(insere, 3, "", -1, SQLITE_STATIC);
        sqlite3_bind_text(insere, 4, textos[i], -1, SQLITE_TRANSIENT);
        sqlite3_bind_double(insere, 5, 0);
        da_um_passo(insere);
    }
    return linha;
}

static void procura(sqlite3_stmt* comando, const char* codigo) {
    sqlite3_bind_text(comando, 1, codigo, -1, SQLITE_STATIC);
    sqlite3_step(comando);
    sqlite3_reset(comando);
}

/* What the ERP asks while the document is built: the defaults of each article. */
static void erp_sugere(sqlite3* erp, const Linha* linhas, int total) {
    sqlite3_stmt* artigo = prepara(erp, "select Nome, UnBase, TaxaIva from Artigos where CODIGO = ?1");
    for (int i = 0; i < total; ++i)
        procura(artigo, linhas[i].artigo);
    sqlite3_finalize(artigo);
}

/* What it checks, when the document is handed over and again when it is saved. */
static void erp_verifica(sqlite3* erp, const Linha* linhas, int total) {
    sqlite3_stmt* artigo = prepara(erp, "select 1 from Artigos where CODIGO = ?1");
    sqlite3_stmt* armazem = prepara(erp, "select 1 from Armazens where Codigo = ?1");
    for (int i = 0; i < total; ++i) {
        procura(artigo, linhas[i].artigo);
        procura(armazem, "A1");
    }
    sqlite3_finalize(artigo);
    sqlite3_finalize(armazem);
}

static int erp_grava(sqlite3* erp, const char* cliente, const Linha* linhas, int total) {
    executa(erp, "begin");
    erp_verifica(erp, linhas, total);
    executa(erp, "commit");
    executa(erp, "begin immediate");
    erp_verifica(erp, linhas, total);
    sqlite3_stmt* numerador =
        prepara(erp, "insert into Numeradores (Ano, TpDoc, Serie, Ultimo) values (2026, 'GR', 1, 1)"
                     " on conflict (Ano, TpDoc, Serie) do update set Ultimo = Ultimo + 1 returning Ultimo");
    if (sqlite3_step(numerador) != SQLITE_ROW) falha(erp, "numerador");
    const int numero = sqlite3_column_int(numerador, 0);
    sqlite3_finalize(numerador);

    sqlite3_stmt* cabecalho =
        prepara(erp, "insert into DocGcCab (Ano, TpDoc, Serie, NNumDoc, Data, TpTerc, Terceiro)"
                     " values (2026, 'GR', 1, ?1, '2026-01-02 00:00:00', 2, ?2)");
    sqlite3_bind_int(cabecalho, 1, numero);
    sqlite3_bind_text(cabecalho, 2, cliente, -1, SQLITE_STATIC);
    da_um_passo(cabecalho);
    sqlite3_finalize(cabecalho);

    sqlite3_stmt* insere =
        prepara(erp, "insert into DocGcLin (Ano, TpDocum, Serie, NNumDoc, NumLinha, Artigo, Descr, Quant,"
                     " QuantOrig, Armazem, Unidade, DataMvStock) values (2026, 'GR', 1, ?1, ?2, ?3, ?4,"
                     " ?5, ?5, ?6, 'TN', '2026-01-02 00:00:00')");
    sqlite3_stmt* existencia = prepara(erp, "select Existenc from artarm where Artigo = ?1 and Armazem = ?2");
    sqlite3_stmt* armazem =
        prepara(erp, "update artarm set Existenc = ?3 where Artigo = ?1 and Armazem = ?2");
    sqlite3_stmt* ficha =
        prepara(erp, "select VLREXIST, STDISP, ULTPRCOM, Inactivo from Artigos where CODIGO = ?1");
    sqlite3_stmt* artigo = prepara(erp, "update Artigos set STDISP = ?2, VLREXIST = ?3 where CODIGO = ?1");
    sqlite3_bind_text(existencia, 2, "A1", -1, SQLITE_STATIC);
    sqlite3_bind_text(armazem, 2, "A1", -1, SQLITE_STATIC);
    sqlite3_bind_text(insere, 6, "A1", -1, SQLITE_STATIC);
    sqlite3_bind_int(insere, 1, numero);
    int linha = 0;
    for (int i = 0; i < total; ++i) {
        const Linha* l = &linhas[i];
        if (i == 0 || outro_documento(l, l - 1)) linha = insere_textos(insere, linha, l);
        sqlite3_bind_int(insere, 2, ++linha);
        sqlite3_bind_text(insere, 3, l->artigo, -1, SQLITE_STATIC);
        sqlite3_bind_text(insere, 4, l->descricao, -1, SQLITE_STATIC);
        sqlite3_bind_double(insere, 5, l->quantidade);
        da_um_passo(insere);

        sqlite3_bind_text(existencia, 1, l->artigo, -1, SQLITE_STATIC);
        double stock = 0;
        if (sqlite3_step(existencia) == SQLITE_ROW) stock = sqlite3_column_double(existencia, 0);
        sqlite3_reset(existencia);
        sqlite3_bind_text(armazem, 1, l->artigo, -1, SQLITE_STATIC);
        sqlite3_bind_double(armazem, 3, stock - l->quantidade);
        da_um_passo(armazem);

        sqlite3_bind_text(ficha, 1, l->artigo, -1, SQLITE_STATIC);
        double disponivel = 0, valor = 0;
        if (sqlite3_step(ficha) == SQLITE_ROW) {
            valor = sqlite3_column_double(ficha, 0);
            disponivel = sqlite3_column_double(ficha, 1);
        }
        sqlite3_reset(ficha);
        sqlite3_bind_text(artigo, 1, l->artigo, -1, SQLITE_STATIC);
        sqlite3_bind_double(artigo, 2, disponivel - l->quantidade);
        sqlite3_bind_double(artigo, 3, valor);
        da_um_passo(artigo);
    }
    sqlite3_stmt* todas[] = {insere, existencia, armazem, ficha, artigo};
    for (size_t i = 0; i < sizeof todas / sizeof todas[0]; ++i)
        sqlite3_finalize(todas[i]);
    executa(erp, "commit");
    return numero;
}

static void livro_grava(sqlite3* bd, const char* cliente, const Linha* linhas, int total, int numero) {
    sqlite3_stmt* origem =
        prepara(bd, "Select * from xel_ORVEX_MOV where Ano=?1 and TpDoc=?2     and NumDoc=?3 and"
                    " SerieDoc=?4 and NumLinha=?5");
    sqlite3_stmt* reduz =
        prepara(bd, "update xel_ORVEX_Mov set Qtd = ?6, PesoLiquido = ?7, PesoBruto = ?8"
                    " where Ano=?1 and TpDoc=?2 and NumDoc=?3 and SerieDoc=?4 and NumLinha=?5");
    for (int i = 0; i < total; ++i) {
        const Linha* l = &linhas[i];
        sqlite3_stmt* ambas[] = {origem, reduz};
        for (int k = 0; k < 2; ++k) {
            sqlite3_bind_int(ambas[k], 1, l->ano);
            sqlite3_bind_text(ambas[k], 2, l->tipo, -1, SQLITE_STATIC);
            sqlite3_bind_int(ambas[k], 3, l->numero);
            sqlite3_bind_int(ambas[k], 4, l->serie);
            sqlite3_bind_int(ambas[k], 5, l->linha);
        }
        if (sqlite3_step(origem) != SQLITE_ROW) falha(bd, "origem");
        sqlite3_bind_double(reduz, 6, sqlite3_column_double(origem, 10) - l->quantidade);
        sqlite3_bind_double(reduz, 7, sqlite3_column_double(origem, 12) - l->quantidade);
        sqlite3_bind_double(reduz, 8, sqlite3_column_double(origem, 13) - l->bruto);
        sqlite3_reset(origem);
        da_um_passo(reduz);
    }
    sqlite3_finalize(origem);
    sqlite3_finalize(reduz);

    sqlite3_stmt* erp =
        prepara(bd, "Select * from DocGcLin where ano=2026 and tpDocum='GR' and Serie=1 and NnumDoc=?1");
    sqlite3_stmt* mov =
        prepara(bd, "insert into xel_ORVEX_Mov (Ano, TpDoc, NumDoc, SerieDoc, NumLinha, Data, Artigo,"
                    " Cliente, Descritivo, QtdOrig, Qtd, Origem, PesoLiquido, PesoBruto) values (2026,"
                    " 'GR', ?1, 1, ?2, '2026-01-02', ?3, ?4, ?5, ?6, ?6, '2026/FA/1/1/1/00000', ?6, ?6)");
    sqlite3_stmt* historico =
        prepara(bd, "insert into xel_ORVEX (NumSerie, Registo, Cliente, Data, Quantidade, Obs,"
                    " Funcionario, CliFinal, Preco, Ano, TpDoc, NNumDoc, Serie, NumLin) values (?3,"
                    " ?7, ?4, '2026-01-02 10:00:00', ?6, ?5, '', ?4, 0, 2026, 'GR', ?1, 1, ?2)");
    sqlite3_stmt* extensao =
        prepara(bd, "insert into U_DocGcLin1 (TpDocUM, NNumDoc, NumLinha, Serie, Ano, PesoBruto)"
                    " values ('GR', ?1, ?2, 1, 2026, ?6)");
    sqlite3_stmt* ultimo = prepara(bd, "select max(Registo) from xel_ORVEX");
    if (sqlite3_step(ultimo) != SQLITE_ROW) falha(bd, "registo");
    sqlite3_int64 registo = sqlite3_column_int64(ultimo, 0);
    sqlite3_finalize(ultimo);

    int coluna_artigo = -1, coluna_linha = -1, coluna_descr = -1, coluna_quant = -1;
    for (int i = 0; i < sqlite3_column_count(erp); ++i) {
        const char* nome = sqlite3_column_name(erp, i);
        if (strcmp(nome, "Artigo") == 0) coluna_artigo = i;
        if (strcmp(nome, "NumLinha") == 0) coluna_linha = i;
        if (strcmp(nome, "Descr") == 0) coluna_descr = i;
        if (strcmp(nome, "Quant") == 0) coluna_quant = i;
    }
    sqlite3_bind_int(erp, 1, numero);
    while (sqlite3_step(erp) == SQLITE_ROW) {
        if (sqlite3_column_bytes(erp, coluna_artigo) == 0) continue;
        sqlite3_stmt* tres[] = {mov, historico, extensao};
        sqlite3_bind_int64(historico, 7, ++registo);
        for (int k = 0; k < 3; ++k) {
            sqlite3_bind_int(tres[k], 1, numero);
            sqlite3_bind_int(tres[k], 2, sqlite3_column_int(erp, coluna_linha));
            sqlite3_bind_double(tres[k], 6, sqlite3_column_double(erp, coluna_quant));
            if (k == 2) break;
            sqlite3_bind_text(tres[k], 3, (const char*)sqlite3_column_text(erp, coluna_artigo), -1,
                              SQLITE_TRANSIENT);
            sqlite3_bind_text(tres[k], 4, cliente, -1, SQLITE_STATIC);
            sqlite3_bind_text(tres[k], 5, (const char*)sqlite3_column_text(erp, coluna_descr), -1,
                              SQLITE_TRANSIENT);
        }
        for (int k = 0; k < 3; ++k)
            da_um_passo(tres[k]);
    }
    sqlite3_stmt* todas[] = {erp, mov, historico, extensao};
    for (size_t i = 0; i < sizeof todas / sizeof todas[0]; ++i)
        sqlite3_finalize(todas[i]);
}

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    const int pedidas = (int)strtol(argv[3], NULL, 10);
    Linha* linhas = calloc((size_t)pedidas, sizeof *linhas);
    sqlite3* bd = abre_empresa(argv[1]);
    sqlite3* erp = abre_erp(argv[1]);
    const int total = le_linhas(bd, argv[2], linhas, pedidas);

    const double inicio = milissegundos();
    executa(bd, "begin");
    erp_sugere(erp, linhas, total);
    const int numero = erp_grava(erp, argv[2], linhas, total);
    livro_grava(bd, argv[2], linhas, total, numero);
    executa(bd, "commit");
    const double fim = milissegundos();

    printf("%.3f %d 0\n", fim - inicio, total);
    free(linhas);
    sqlite3_close(erp);
    return sqlite3_close(bd);
}
