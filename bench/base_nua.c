#include "bench/base_nua.h"

#include <stdio.h>
#include <stdlib.h>
#include <time.h>

void falha(sqlite3* bd, const char* onde) {
    fprintf(stderr, "%s: %s\n", onde, bd ? sqlite3_errmsg(bd) : "");
    exit(1);
}

static sqlite3* abre(const char* pasta, const char* ficheiro) {
    char caminho[4096];
    sqlite3* bd = NULL;
    snprintf(caminho, sizeof caminho, "%s/%s", pasta, ficheiro);
    if (sqlite3_open_v2(caminho, &bd, SQLITE_OPEN_READWRITE, NULL) != SQLITE_OK) falha(bd, caminho);
    sqlite3_busy_timeout(bd, 5000);
    sqlite3_create_collation(bd, "SERVIDOR", SQLITE_UTF8, NULL, compara_como_o_servidor);
    return bd;
}

sqlite3* abre_empresa(const char* pasta) {
    char anexa[4096];
    sqlite3* bd = abre(pasta, "livro.db");
    snprintf(anexa, sizeof anexa, "attach '%s/erp.db' as erp", pasta);
    executa(bd, anexa);
    return bd;
}

sqlite3* abre_erp(const char* pasta) { return abre(pasta, "erp.db"); }

sqlite3_stmt* prepara(sqlite3* bd, const char* sql) {
    sqlite3_stmt* comando = NULL;
    if (sqlite3_prepare_v2(bd, sql, -1, &comando, NULL) != SQLITE_OK) falha(bd, sql);
    return comando;
}

void executa(sqlite3* bd, const char* sql) {
    if (sqlite3_exec(bd, sql, NULL, NULL, NULL) != SQLITE_OK) falha(bd, sql);
}

void da_um_passo(sqlite3_stmt* comando) {
    if (sqlite3_step(comando) != SQLITE_DONE) falha(sqlite3_db_handle(comando), sqlite3_sql(comando));
    sqlite3_reset(comando);
}

double milissegundos(void) {
    struct timespec agora;
    clock_gettime(CLOCK_MONOTONIC, &agora);
    return (double)agora.tv_sec * 1e3 + (double)agora.tv_nsec / 1e6;
}
