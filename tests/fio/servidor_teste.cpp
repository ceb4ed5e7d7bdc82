// What the tests of the sessions do not show of the server they talk to.
#include "tests/apoio/empresa_teste.h"

#include <gtest/gtest.h>

namespace orvex::testes {
namespace {

TEST(Fio, rows_stop_when_the_client_has_seen_enough_of_them) {
    EmpresaTeste empresa;
    const ServidorTDS servidor(empresa.pasta());
    platform::odbc::SessaoODBC BD;
    ASSERT_TRUE(BD.Abre(ligacao(servidor)));
    // More than fit in the network's own buffers: they are on their way when the client stops reading.
    const std::vector<base::Variante> linha{"N", std::string(100, 'x')};
    empresa.outra().IniciaTransaccao();
    insere(empresa.outra(), "xel_ORVEX", {"NumSerie", "Obs"}, std::vector(5000, linha));
    empresa.outra().ConfirmaTransaccao();
    EXPECT_EQ(BD.Consulta("select * from xel_ORVEX")->valor(0).texto(), "N");
    EXPECT_EQ(BD.Consulta("select count(*) from xel_ORVEX")->valor(0).inteiro(), 5000);
}

} // namespace
} // namespace orvex::testes
