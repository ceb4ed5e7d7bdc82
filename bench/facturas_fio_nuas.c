/* The requests of a client's open invoice lines over ODBC, each sent as it stands and the rows of all its
   results fetched, with nothing around them. facturas_fio_nuas PORT FILE prints the milliseconds and the
   rows. The file has one request a line. */
#include "bench/base_nua.h"

#include <sql.h>
#include <sqlext.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define MAXIMO 1000

static SQLHSTMT comando;

static void exige(SQLRETURN resultado, const char* onde) {
    SQLCHAR estado[6], texto[512] = "";
    if (SQL_SUCCEEDED(resultado)) return;
    SQLGetDiagRec(SQL_HANDLE_STMT, comando, 1, estado, NULL, texto, sizeof texto, NULL);
    fprintf(stderr, "%s: %s\n", onde, texto);
    exit(1);
}

static long le_linhas(void) {
    long linhas = 0;
    do {
        SQLSMALLINT colunas = 0;
        SQLNumResultCols(comando, &colunas);
        for (; colunas > 0 && SQL_SUCCEEDED(SQLFetch(comando)); ++linhas)
            for (SQLSMALLINT i = 1; i <= colunas; ++i) {
                char texto[256];
                SQLLEN tamanho;
                SQLGetData(comando, (SQLUSMALLINT)i, SQL_C_CHAR, texto, sizeof texto, &tamanho);
            }
    } while (SQL_SUCCEEDED(SQLMoreResults(comando)));
    SQLFreeStmt(comando, SQL_CLOSE);
    return linhas;
}

int main(int argc, char** argv) {
    SQLHENV ambiente;
    SQLHDBC ligacao;
    char texto[512];
    static char* pedidos[MAXIMO];
    size_t total = 0, tamanho = 0;
    long linhas = 0;
    FILE* ficheiro;
    if (argc != 3 || (ficheiro = fopen(argv[2], "r")) == NULL) return 2;
    for (; total < MAXIMO && getline(&pedidos[total], &tamanho, ficheiro) > 0; ++total, tamanho = 0)
        pedidos[total][strcspn(pedidos[total], "\n")] = '\0';
    fclose(ficheiro);

    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &ambiente);
    SQLSetEnvAttr(ambiente, SQL_ATTR_ODBC_VERSION, (SQLPOINTER)SQL_OV_ODBC3, 0);
    SQLAllocHandle(SQL_HANDLE_DBC, ambiente, &ligacao);
    snprintf(
        texto, sizeof texto,
        "DRIVER=FreeTDS;SERVER=127.0.0.1,%s;DATABASE=EMPRESA;UID=orvex;PWD=segredo;APP=ORVEX;TDS_Version=7.4;"
        "ClientCharset=UTF-8;Encryption=off;",
        argv[1]);
    exige(SQLDriverConnect(ligacao, NULL, (SQLCHAR*)texto, SQL_NTS, NULL, 0, NULL, SQL_DRIVER_NOPROMPT),
          "connect");
    SQLAllocHandle(SQL_HANDLE_STMT, ligacao, &comando);

    const double inicio = milissegundos();
    for (size_t i = 0; i < total; ++i) {
        exige(SQLExecDirect(comando, (SQLCHAR*)pedidos[i], SQL_NTS), pedidos[i]);
        linhas += le_linhas();
    }
    printf("%.3f %ld\n", milissegundos() - inicio, linhas);
    return 0;
}
