// A session on a company with an empty ledger, and a few rows in the ERP's tables.
#pragma once

#include "platform/sqlite/empresa.h"
#include "startup/esquema_livro.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/apoio/falhas.h"

#include <map>

namespace orvex::testes {

using base::DataHora;
using base::Falha;
using base::Moeda;
using base::Variante;
using startup::ConjuntoRegistos;
namespace numeros = startup::numeros_bd;

template <typename TSessao>
class EmpresaVazia : public testing::Test {
  protected:
    template <typename... Argumentos>
    explicit EmpresaVazia(Argumentos... argumentos) : BD(argumentos...) {
        cria_empresa_vazia(pasta);
        outra_ligacao(platform::sqlite::ficheiro_erp).exec(R"(
            INSERT INTO Clientes (CODIGO, Nome) VALUES ('C1', 'D''Ávila & Filhos'), ('C2', 'Zé');
            INSERT INTO Artigos (CODIGO, Nome, STDISP, ULTPRCOM)
                VALUES ('B1', 'Bobina 1', 3, 12.5), ('B2', 'Bobina 2', 0, 7);
            INSERT INTO DocGcCab (Ano, TpDoc, Serie, NNumDoc, Data)
                VALUES (2024, 'GR', 1, 12, '2024-03-05 10:20:30'), (2024, 'GR', 1, 13, '2024-03-06 00:00:00'))");
        BD.Abre(ligacao(pasta));
        startup::VerificaTabelas(BD);
        startup::VerificaPesos(BD);
    }

    SQLite::Database outra_ligacao(const char* ficheiro = platform::sqlite::ficheiro_livro) const {
        return platform::sqlite::abre_base(pasta / ficheiro, SQLite::OPEN_READWRITE, 50);
    }

    // A row of the ledger's open lines: one more of FA/1/7, but for the columns given.
    void junta_movimento(int linha, std::map<std::string, Variante> campos = {}) {
        campos.merge(decltype(campos){{"TpDoc", "FA"}, {"NumDoc", 7}, {"Artigo", "B1"}, {"Qtd", m("1.5")}});
        campos.merge(decltype(campos){{"Ano", 2024}, {"SerieDoc", 1}, {"NumLinha", linha}});
        const auto conjunto = BD.AbreActualizavel("Select * from xel_ORVEX_MOV where Ano=-1");
        conjunto->acrescenta();
        for (const auto& [nome, dado] : campos)
            conjunto->define(nome, dado);
        conjunto->actualiza();
    }

    Variante valor(const std::string& sql) { return BD.Consulta(sql)->valor(0); }
    std::int64_t linhas(const std::string& tabela) {
        return valor("select count(*) from " + tabela).inteiro();
    }

    PastaTemporaria temporaria;
    std::filesystem::path pasta = temporaria.pasta();
    TSessao BD;
};

// On any engine: what every session does, whatever is behind it.
class Contrato : public EmpresaVazia<SessaoDeTeste> {
  protected:
    startup::SessaoBD& outra() { return *outra_; } // a session of its own, as another workstation has

  private:
    std::unique_ptr<startup::SessaoBD> outra_ = abre_empresa(pasta);
};

} // namespace orvex::testes
