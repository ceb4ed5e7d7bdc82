// A statement on a connection: run once, its rows read one by one. Rows not read are given up when it is
// destroyed.
#pragma once

#include "platform/odbc/ligacao.h"
#include "platform/odbc/parametro.h"
#include "platform/registos/conjunto.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orvex::platform::odbc {

class Instrucao final : public registos::Cursor {
  public:
    Instrucao(const LigacaoODBC& ligacao, int espera); // in seconds, for the server to answer
    ~Instrucao() override;
    Instrucao(const Instrucao&) = delete;
    Instrucao& operator=(const Instrucao&) = delete;

    // Runs the text and stands before the first row of its first result that has columns.
    void consulta(const std::string& sql, std::vector<Parametro> parametros = {});
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

    void corre(const std::string& sql, std::vector<Parametro>& parametros);
    std::vector<std::string> nomes(std::size_t coluna);
    void esgota(); // passes over what is left of the rows and of other results
    void exige_certo(SQLRETURN resultado) const;
    SQLSMALLINT numero_colunas() const;
    void prepara_linha();
    void le(std::size_t coluna);
    bool le_texto(SQLUSMALLINT coluna, std::string& texto);

    const LigacaoODBC& ligacao_;
    SQLHSTMT punho_ = SQL_NULL_HSTMT;
    std::vector<Lida> linha_; // the row the cursor stands on
    bool ha_linhas_ = false;  // that were not read yet
};

} // namespace orvex::platform::odbc
