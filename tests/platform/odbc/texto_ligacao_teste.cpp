// What the driver is told of a connection.
#include "platform/odbc/texto_ligacao.h"
#include "startup/construtor_ligacao.h"

#include <gtest/gtest.h>

namespace orvex::testes {
namespace {

using C = startup::ConstrutorLigacao;

TEST(TextoDeLigacao, DizAoControladorOMesmoQueAsDefinicoesNasPalavrasDele) {
    using platform::odbc::Fala;
    const std::string inicio = "DRIVER={C};SERVER={s\\I};DATABASE={b};",
                      entrada = "UID={u};PWD={p}}w};APP={ORVEX};",
                      do_sistema = "Trusted_Connection={Yes};APP={ORVEX};";
    const struct {
        Fala fala;
        int opcao;
        const char* encriptacao;
        std::string texto;
    } casos[] = {
        {Fala::servidor, C::com_palavra_passe, "", entrada + "Encrypt=yes;TrustServerCertificate=no;"},
        {Fala::servidor, C::do_sistema, "nao", do_sistema + "Encrypt=no;TrustServerCertificate=yes;"},
        {Fala::servidor, C::do_sistema, "Sem_Certificado",
         do_sistema + "Encrypt=yes;TrustServerCertificate=yes;"},
        {Fala::freetds, C::do_sistema, "sim",
         do_sistema + "TDS_Version=7.4;ClientCharset=UTF-8;Encryption=require;"},
    };
    for (const auto& caso : casos) {
        const C ligacao{.opcao = caso.opcao,
                        .servidor = "s\\I",
                        .base = "b",
                        .utilizador = "u",
                        .palavra_passe = "p}w",
                        .controlador = "C",
                        .encriptacao = caso.encriptacao};
        EXPECT_EQ(platform::odbc::texto_odbc(ligacao.constroi(), caso.fala), inicio + caso.texto);
    }
}

} // namespace
} // namespace orvex::testes
