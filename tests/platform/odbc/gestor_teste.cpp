// A driver manager that keeps connections and gives them out again, with drivers under names of its own.
#include "tests/platform/odbc/servidor.h"

#include <unistd.h>

#include <cstdlib>

// What the manager keeps is never given back.
extern "C" const char* __lsan_default_suppressions() { return "leak:iconv_open"; } // NOLINT

namespace orvex::testes {
namespace {

// The manager reads its files once in a process.
class Gestor : public Servidor {
  protected:
    static const std::filesystem::path& outro() {
        static const PastaTemporaria pasta;
        static const std::filesystem::path biblioteca = pasta.pasta() / "outro.so";
        if (std::filesystem::exists(biblioteca)) return biblioteca;
        std::filesystem::create_symlink(ORVEX_TDSODBC, biblioteca);
        const std::string freetds = "Driver=" ORVEX_TDSODBC "\nCPTimeout=60\n";
        pasta.escreve("odbcinst.ini", "[ODBC]\nPooling=Yes\n[FreeTDS]\n" + freetds + "[SQL Server]\n" +
                                          freetds + "[Outro]\nDriver=" + biblioteca.string() + "\n");
        setenv("ODBCSYSINI", pasta.pasta().c_str(), 1);
        return biblioteca;
    }
    static void SetUpTestSuite() { outro(); }
};

TEST_F(Gestor, UmaLigacaoQueVoltaComecaSemNadaAberto) {
    BD.IniciaTransaccao();
    junta("B1");
    avaria(Efeito::demora);
    EXPECT_THAT(falha([&] { junta("B2"); }), HasSubstr("não respondeu a tempo"));
    insere(empresa.outra(), "xel_ORVEX", {"NumSerie"}, {{"B3"}}); // nothing is locked any more
    EXPECT_FALSE(BD.EmTransaccao());
    BD.IniciaTransaccao();
    junta("B4");
    BD.ConfirmaTransaccao();
    BD.IniciaTransaccao();
    junta("B5");
    BD.EmExclusivo([] {});
    BD.Fecha();
    EXPECT_EQ(servidor.ligacoes(), 1u) << "the manager kept it";
    insere(empresa.outra(), "xel_ORVEX", {"NumSerie"}, {{"B6"}});
    EXPECT_EQ(series(), "B3; B4; B6");
}

TEST_F(Gestor, UmControladorEOQueETenhaONomeQueTiverENuncaPassaPorCimaDaEncriptacao) {
    SessaoODBC outra;
    for (const char* qual : {"FreeTDS", "SQL Server", "Outro", ORVEX_TDSODBC, outro().c_str()}) {
        EXPECT_TRUE(outra.Abre(ligacao_com({{&C::controlador, qual}}))) << qual;
        EXPECT_FALSE(outra.Abre(ligacao_com({{&C::controlador, qual}, {&C::encriptacao, "sim"}}))) << qual;
    }
    // The usual port is nobody's at an address that is this process's own.
    const std::string morada =
        "127." + std::to_string(getpid() % 200 + 20) + "." + std::to_string(getpid() / 200 % 250) + ".9";
    const ServidorTDS com_porta_normal(empresa.pasta(), morada.c_str(), 1433);
    for (const std::string& onde : {morada, morada + ",1433", morada + "\\INST,1433"})
        EXPECT_TRUE(outra.Abre(ligacao_com({{&C::servidor, onde}, {&C::controlador, "SQL Server"}}))) << onde;
}

} // namespace
} // namespace orvex::testes
