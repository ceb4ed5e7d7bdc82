/* What the bare programs share: an embedded company opened with the C library alone. */
#ifndef ORVEX_BENCH_BASE_NUA_H
#define ORVEX_BENCH_BASE_NUA_H

#include <sqlite3.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The order of the company's texts: the one function both sides use, so that they walk the same indexes. */
int compara_como_o_servidor(void* nada, int tamanho_a, const void* a, int tamanho_b, const void* b);

sqlite3* abre_empresa(const char* pasta); /* the ledger, with the ERP's tables attached */
sqlite3* abre_erp(const char* pasta);     /* the ERP's tables alone, as the ERP opens them */
sqlite3_stmt* prepara(sqlite3* bd, const char* sql);
void executa(sqlite3* bd, const char* sql);
void da_um_passo(sqlite3_stmt* comando); /* runs a statement without rows, ready for the next binding */
double milissegundos(void);
void falha(sqlite3* bd, const char* onde);

#ifdef __cplusplus
}
#endif

#endif
