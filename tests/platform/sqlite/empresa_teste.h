// A company in a folder of its own that goes with it, with the ledger as start-up makes it and the few ERP
// tables and columns the statements name.
#pragma once

#include "platform/sqlite/empresa.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "startup/construtor_ligacao.h"
#include "startup/esquema_livro.h"
#include "tests/apoio/pasta_temporaria.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace orvex::teste {

using base::DataHora;
using base::Falha;
using base::Moeda;
using base::Variante;
using platform::sqlite::SessaoSQLite;
using startup::ConjuntoRegistos;
namespace numeros = startup::numeros_bd;

inline Moeda moeda(const char* texto) { return Moeda::le(texto).value(); }

// The number of the failure a procedure ends in, 0 for none.
template <typename Procedimento>
std::int32_t numero_da_falha(Procedimento procedimento) {
    try {
        procedimento();
    } catch (const Falha& falha) {
        return falha.numero();
    }
    return 0;
}

inline constexpr const char* tabelas_erp = R"sql(
    CREATE TABLE Clientes(CODIGO nvarchar(15) COLLATE SERVIDOR PRIMARY KEY, Nome nvarchar(60) COLLATE SERVIDOR,
        Inactivo smallint);
    CREATE TABLE Artigos(CODIGO nvarchar(15) COLLATE SERVIDOR PRIMARY KEY, Nome nvarchar(60) COLLATE SERVIDOR,
        Inactivo smallint, artoudes smallint, VLREXIST money, STDISP money, ULTPRCOM money,
        Observ nvarchar(35) COLLATE SERVIDOR);
    CREATE TABLE DocGcCab(Ano smallint, TpDoc nvarchar(3) COLLATE SERVIDOR, Serie smallint, NNumDoc int,
        Data datetime, Terceiro nvarchar(15) COLLATE SERVIDOR, NVIAS smallint, TPTERC smallint,
        [Convert] smallint, Processo nvarchar(20) COLLATE SERVIDOR);
    CREATE TABLE DocGcLin(Ano smallint, TpDocum nvarchar(3) COLLATE SERVIDOR, Serie smallint, NNumDoc int,
        NumLinha smallint, Armazem nvarchar(3) COLLATE SERVIDOR);
    INSERT INTO Clientes VALUES ('C1', 'D''Ávila & Filhos', 0), ('C2', 'Zé', -1);
    INSERT INTO Artigos VALUES ('B1', 'Bobina 1', 0, 0, 150, 3, 12.5, NULL),
        ('B2', 'Bobina 2', 0, 0, 0, 0, 7, NULL);
    INSERT INTO DocGcCab VALUES (2024, 'GR', 1, 12, '2024-03-05 10:20:30', 'C1', 1, 2, 0, 'P1'),
        (2024, 'GR', 1, 13, '2024-03-06 00:00:00', 'C1', -1, 2, 0, 'P2'),
        (2024, 'GR', 1, 14, '2024-03-04 00:00:00', 'C1', 1, 2, -1, '');
    INSERT INTO DocGcLin VALUES (2024, 'GR', 1, 12, 1, 'A1'))sql";

class EmpresaTeste : public ::testing::Test {
  protected:
    EmpresaTeste() {
        platform::sqlite::cria_livro(pasta);
        auto erp = platform::sqlite::abre_base(pasta / platform::sqlite::ficheiro_erp,
                                               SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        erp.exec(tabelas_erp);
        BD.Abre(ligacao());
        startup::VerificaTabelas(BD);
        startup::VerificaPesos(BD);
    }

    std::string ligacao() const {
        startup::ConstrutorLigacao construtor;
        construtor.base = pasta.string();
        return construtor.constroi();
    }

    SQLite::Database outra_ligacao(const char* ficheiro = platform::sqlite::ficheiro_livro) const {
        return platform::sqlite::abre_base(pasta / ficheiro, SQLite::OPEN_READWRITE, 50);
    }

    using Campos = std::map<std::string, Variante>;

    void junta(const std::string& tabela, const Campos& campos) {
        const auto conjunto = BD.AbreActualizavel("Select * from " + tabela + " where Ano=-1");
        conjunto->acrescenta();
        for (const auto& [nome, valor] : campos)
            conjunto->define(nome, valor);
        conjunto->actualiza();
    }

    static Campos movimento(int linha, Campos outros = {}) {
        outros.merge(Campos{{"Ano", 2024},
                            {"TpDoc", "FA"},
                            {"NumDoc", 7},
                            {"SerieDoc", 1},
                            {"NumLinha", linha},
                            {"Artigo", "B1"},
                            {"Cliente", "C1"},
                            {"Qtd", moeda("1.5")}});
        return outros;
    }

    Variante valor(const std::string& sql) { return BD.Consulta(sql)->valor(0); }
    std::int64_t linhas(const std::string& tabela) {
        return valor("select count(*) from " + tabela).inteiro();
    }

    testes::PastaTemporaria temporaria;
    std::filesystem::path pasta = temporaria.pasta();
    SessaoSQLite BD{50};
};

} // namespace orvex::teste
