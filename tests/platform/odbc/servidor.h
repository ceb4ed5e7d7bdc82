// A session on a company behind the server on the wire, with little patience.
#pragma once

#include "startup/construtor_ligacao.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/apoio/falhas.h"

#include <memory>

namespace orvex::testes {

using base::Falha;
using platform::odbc::SessaoODBC;
using C = startup::ConstrutorLigacao;
using Efeito = Avaria::Efeito;
namespace numeros = startup::numeros_bd;

class Servidor : public testing::Test {
  protected:
    Servidor() { EXPECT_TRUE(BD.Abre(ligacao(servidor))); }

    // To the server, but for the settings given.
    std::string ligacao_com(const std::vector<std::pair<std::string C::*, std::string>>& outras) const {
        C c{.servidor = "127.0.0.1," + std::to_string(servidor.porta()),
            .base = servidor.base,
            .utilizador = servidor.utilizador,
            .palavra_passe = servidor.palavra_passe,
            .encriptacao = "nao"};
        for (const auto& [qual, valor] : outras)
            c.*qual = valor;
        return c.constroi();
    }
    void junta(const char* serie) { insere(BD, "xel_ORVEX", {"NumSerie"}, {{serie}}); }
    void apaga() { BD.Executa("Delete xel_ORVEX where NumSerie='B1'"); }
    std::string series() { return empresa.linhas("select NumSerie from xel_ORVEX"); }
    void usa() { EXPECT_EQ(BD.Consulta("select count(*) from xel_ORVEX_Mov")->valor(0).inteiro(), 8); }
    // At its next request.
    void avaria(Efeito efeito, int numero = 0) {
        servidor.avaria_no(1, {efeito, numero, "The server's text.", 3'000});
    }

    EmpresaTeste empresa;
    std::unique_ptr<ServidorTDS> maquina = std::make_unique<ServidorTDS>(empresa.pasta());
    ServidorTDS& servidor = *maquina;
    SessaoODBC BD{{.ligacao = 2, .instrucao = 1, .bloqueio = 1}};
};

} // namespace orvex::testes
