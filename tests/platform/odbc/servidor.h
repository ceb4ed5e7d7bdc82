// A session on a company behind the server on the wire, with little patience.
#pragma once

#include "startup/construtor_ligacao.h"
#include "tests/apoio/empresa_teste.h"

#include <gmock/gmock.h>

#include <memory>

namespace orvex::testes {

using base::Falha;
using platform::odbc::SessaoODBC;
using startup::ConfirmacaoDesconhecida;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using Especie = Avaria::Especie;
namespace numeros = startup::numeros_bd;

// What a procedure fails with; empty when it does not.
template <typename Procedimento>
std::string falha(Procedimento procedimento) {
    try {
        procedimento();
    } catch (const Falha& apanhada) {
        return apanhada.what();
    }
    return {};
}

inline std::string ligacao_a(const std::string& servidor, const std::string& controlador,
                             const std::string& encriptacao) {
    return startup::ConstrutorLigacao{.servidor = servidor,
                                      .base = "EMPRESA",
                                      .utilizador = "orvex",
                                      .palavra_passe = "segredo",
                                      .controlador = controlador,
                                      .encriptacao = encriptacao}
        .constroi();
}

class Servidor : public testing::Test {
  protected:
    Servidor() { EXPECT_TRUE(BD.Abre(ligacao(servidor))); }

    void junta(const char* serie) {
        const auto conjunto = BD.AbreActualizavel("Select * from xel_ORVEX where Ano=-1");
        conjunto->acrescenta();
        conjunto->define("NumSerie", serie);
        conjunto->actualiza();
    }
    void apaga() { BD.Executa("Delete xel_ORVEX where NumSerie='B1'"); }
    std::string series() { return empresa.linhas("select NumSerie from xel_ORVEX"); }
    void usa() { EXPECT_EQ(BD.Consulta("select count(*) from xel_ORVEX_Mov")->valor(0).inteiro(), 8); }

    EmpresaTeste empresa;
    std::unique_ptr<ServidorTDS> maquina = std::make_unique<ServidorTDS>(empresa.pasta());
    ServidorTDS& servidor = *maquina;
    SessaoODBC BD{{.ligacao = 2, .instrucao = 1, .bloqueio = 1}};
};

} // namespace orvex::testes
