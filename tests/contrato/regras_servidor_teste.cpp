// What the server does to values on their way in, as tables.
#include "tests/contrato/empresa_vazia.h"

namespace orvex::testes {
namespace {

using RegrasServidor = Contrato;

TEST_F(RegrasServidor, OsValoresFicamComoAColunaOsGuardaEOsQueNaoCabemSaoRecusados) {
    constexpr std::int32_t outro_tipo = base::numeros_falha::tipo_diferente;
    const struct {
        const char* coluna;
        Variante dado, lido;
        std::int32_t recusa = 0;
    } casos[] = {
        {"Quantidade", m("1.2345"), m("1.235")},
        {"Quantidade", m("-1.2345"), m("-1.235")},
        {"Quantidade", 0.1 + 0.2, m("0.3")},
        {"Preco", m("2.345"), m("2.35")},
        {"Preco", m("899999999999.99"), m("899999999999.99")},
        {"Serie", 32767, 32767},
        {"Serie", "-12", -12},
        {"Obs", std::string(100, 'x'), std::string(100, 'x')},
        {"Cliente", "C1  ", "C1  "},
        {"Funcionario", "", ""},
        {"Data", DataHora{2024, 2, 29, 23, 59, 58}, DataHora{2024, 2, 29, 23, 59, 58}},
        {"Data", "2024-02-29 01:02:03", DataHora{2024, 2, 29, 1, 2, 3}},
        {"Data", Variante(), Variante()},
        {"TpDoc", "GRXX", {}, numeros::valor_truncado},
        {"TpDoc", "a😀b", {}, numeros::valor_truncado}, // two UTF-16 units for one character
        {"Serie", 32768, {}, numeros::valor_truncado},
        {"Serie", -32769, {}, numeros::valor_truncado},
        {"NNumDoc", std::int64_t{1} << 31, {}, numeros::valor_truncado},
        {"NNumDoc", 1e300, {}, numeros::valor_truncado},
        {"Preco", 9e11, {}, numeros::valor_truncado},
        {"Preco", -9e11, {}, numeros::valor_truncado},
        {"Data", DataHora{1752, 12, 31}, {}, numeros::valor_truncado},
        {"Obs", "a\xED\xA0\x80", {}, outro_tipo},
        {"Obs", std::string("a\0b", 3), {}, outro_tipo},
        {"Serie", "um", {}, outro_tipo},
        {"Preco", "1,5", {}, outro_tipo},
        {"Preco", "", {}, outro_tipo},
        {"Data", "31-12-2024", {}, outro_tipo},
        {"Data", "2024-2-3", {}, outro_tipo},
        {"Data", 45000, {}, outro_tipo},
        {"Registo", 5, {}, numeros::instrucao_errada},
        {"Nenhuma", 5, {}, numeros::instrucao_errada},
    };
    std::int64_t registo = 0;
    for (const auto& [coluna, dado, lido, recusa] : casos) {
        SCOPED_TRACE(coluna + (" = " + dado.texto()));
        const auto conjunto = BD.AbreActualizavel("Select * from xel_ORVEX where Ano=-1");
        conjunto->acrescenta();
        conjunto->define("NumSerie", "B1");
        EXPECT_EQ(
            numero_da_falha([&, nome = coluna, valor_dado = dado] { conjunto->define(nome, valor_dado); }),
            recusa);
        if (recusa != 0) continue;
        EXPECT_THAT(falha([&] { conjunto->define("Preco", 9e11 + 0.5); }), HasSubstr("900000000000,5"));
        conjunto->actualiza();
        const std::string onde = " from xel_ORVEX where Registo=" + std::to_string(++registo);
        EXPECT_EQ(valor("select " + std::string(coluna) + onde), lido);
    }
    for (const std::string& mau : {std::string("'\xC0\xA7'"), std::string("'a\0'", 4)}) {
        const std::string sql = "Select * from xel_ORVEX where Obs=" + mau;
        for (const std::string& texto : {falha([&] { BD.Executa(sql); }), falha([&] { BD.Consulta(sql); }),
                                         falha([&] { BD.AbreActualizavel(sql); })})
            EXPECT_THAT(texto, HasSubstr("caracteres"));
    }
}

TEST_F(RegrasServidor, AsChavesSaoUnicasSemMaiusculasETemTodasAsPartesEAsDatasPerdemAHora) {
    junta_movimento(1, {{"Data", DataHora{2024, 5, 6, 7, 8, 9}}});
    EXPECT_EQ(valor("select convert(nvarchar(19),Data,120) from xel_ORVEX_Mov"), Variante("2024-05-06"));
    for (const Variante& tipo : {Variante("fa "), Variante()})
        EXPECT_EQ(numero_da_falha([&] { junta_movimento(1, {{"TpDoc", tipo}}); }), numeros::chave_violada);
    EXPECT_EQ(numero_da_falha([&] { insere(BD, "xel_ORVEX", {"Ano"}, {{2024}}); }), numeros::chave_violada);
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 1);
}

TEST_F(RegrasServidor, UmNumeroDeIdentidadeNuncaVoltaASerUsado) {
    for (int numero = 1; numero <= 4; ++numero) {
        insere(BD, "xel_ORVEX", {"NumSerie"}, {{"B1"}});
        EXPECT_EQ(valor("select max(Registo) from xel_ORVEX"), Variante(numero));
        if (numero > 1) BD.Executa(numero == 2 ? "Delete xel_ORVEX where registo=2 " : "Delete xel_ORVEX");
    }
}

} // namespace
} // namespace orvex::testes
