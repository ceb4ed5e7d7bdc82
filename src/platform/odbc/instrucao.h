// A statement on a connection: run once, its rows read one by one. Rows not read are given up when it is
// destroyed.
#pragma once

#include "platform/odbc/falhas.h"
#include "platform/odbc/ligacao.h"
#include "platform/odbc/parametro.h"
#include "platform/registos/conjunto.h"

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

namespace orvex::platform::odbc {

class Instrucao final : public registos::Cursor {
  public:
    // Waits so many seconds for the server to answer.
    Instrucao(const LigacaoODBC& ligacao, int espera, espera::Motivo motivo = espera::Motivo::servidor);
    ~Instrucao() override;
    Instrucao(const Instrucao&) = delete;
    Instrucao& operator=(const Instrucao&) = delete;

    // Runs the text and stands before the first row of its first result that has columns.
    void consulta(const std::string& sql, std::vector<Parametro> parametros = {});
    // Goes on to the next result that has columns; false when there is none. Throws for a statement of the
    // text that failed on the way: asked again, it goes on after that one.
    bool seguinte();
    // The failure of this number. Its text is the server's own, where that came as information with the last
    // result.
    FalhaODBC avisada(int nativo) const;
    // Runs the text to its end, whatever results it has. Tells how many rows were changed.
    std::int64_t executa(const std::string& sql, std::vector<Parametro> parametros = {});
    // The number in the first column of the first row; 0 without a row. Reads to the end.
    std::int64_t pergunta(const std::string& sql, std::vector<Parametro> parametros = {});
    // The columns of a table's primary key, or of another key that has no nulls.
    std::vector<std::string> chave_primaria(const std::string& tabela);
    std::vector<std::string> chave_sem_nulos(const std::string& tabela);

    std::vector<registos::Coluna> le_colunas();
    bool avanca() override;
    registos::Celula celula(std::size_t coluna) const override;

  private:
    struct Lida {
        SQLSMALLINT tipo_c = SQL_C_WCHAR;
        bool nula = true;
        std::int64_t inteiro = 0;
        double real = 0;
        std::string texto;
    };

    void chama(const espera::Linha::Trabalho& chamada) const { ligacao_.chama(motivo_, chamada); }
    void corre(const std::string& sql, std::vector<Parametro>& parametros);
    std::vector<std::string> nomes(std::size_t coluna);
    void esgota(); // passes over what is left of the rows and of other results
    void exige_certo(SQLRETURN resultado) const;
    void exige_certo_e_avisos(SQLRETURN resultado);
    SQLSMALLINT numero_colunas() const;
    void prepara_linha();
    void le(std::size_t coluna, Lida& lida);
    bool le_texto(SQLUSMALLINT coluna, std::string& texto);
    void le_linhas();
    void exige_lidas(); // those that were read at once, and what came of the next one

    const LigacaoODBC& ligacao_;
    espera::Motivo motivo_;
    SQLHSTMT punho_ = SQL_NULL_HSTMT;
    std::vector<Lida> nova_;                // a row of which nothing was read
    std::vector<std::vector<Lida>> linhas_; // room for those that are read at once
    std::size_t lidas_ = 0;                 // of them
    std::size_t linha_ = 0;                 // the one that the cursor stands on counts from 1
    std::exception_ptr falha_;              // of the row after those
    std::vector<Diagnostico> avisos_;       // that came with the last result
    bool ha_linhas_ = false;                // that were not read yet
};

} // namespace orvex::platform::odbc
