// Steps over the wire: how few requests they are, and what becomes of them when one fails or is lost.
#include "tests/platform/odbc/servidor.h"

namespace orvex::testes {
namespace {

class PassosNoFio : public Servidor {
  protected:
    // How many requests it takes.
    int pedidos(const std::function<void()>& faz) {
        servidor.recomeca();
        faz();
        return servidor.pedidos();
    }
    void escreve(int primeira, int ultima) {
        for (int i = primeira; i <= ultima; ++i)
            insere_linha(BD, {"PS", 1, 1, i, "BOB2", m("1"), m("1"), "", "C", m("2")});
    }
    std::string escritas() { return empresa.linhas("select NumLinha from xel_ORVEX_MOV where TpDoc='PS'"); }
    // The text of what fails in a step that writes three rows, of which one thing goes wrong.
    std::string falha_do_passo(const std::function<void()>& no_fim = [] {}) {
        return falha([&] {
            BD.EmPasso({}, [&] {
                escreve(1, 3);
                no_fim();
            });
        });
    }
};

TEST_F(PassosNoFio, OsPedidosNaoCrescemComAsLinhasEDividemSePeloQueOServidorAceita) {
    std::vector<std::string> perguntas(1001);
    for (std::size_t i = 0; i < perguntas.size(); ++i)
        perguntas[i] = "select CODIGO from Artigos where CODIGO='" + std::to_string(i) + "'";
    const auto le = [&] {
        for (const std::string& pergunta : perguntas)
            EXPECT_TRUE(BD.AbreActualizavel(pergunta)->fim());
    };
    EXPECT_EQ(pedidos([&] { BD.EmPasso(perguntas, le); }), 3 + 1) << "the table's key, once";
    EXPECT_EQ(pedidos([&] { BD.EmPasso(perguntas, [] {}); }), 3);
    perguntas.resize(100);
    EXPECT_EQ(pedidos([&] { BD.EmPasso(perguntas, le); }), 1);
    for (std::string& pergunta : perguntas)
        pergunta += std::string(9'000, ' ');
    EXPECT_EQ(pedidos([&] { BD.EmPasso(perguntas, le); }), 4) << "by their size";

    escreve(1, 1);
    EXPECT_EQ(pedidos([&] { BD.EmPasso({}, [&] { escreve(2, 31); }); }), 1)
        << "without asking for the columns";
    BD.IniciaTransaccao();
    EXPECT_EQ(pedidos([&] { BD.EmPasso({}, [&] { escreve(32, 400); }); }), 4) << "with the lock";
    EXPECT_EQ(pedidos([&] { BD.ConfirmaTransaccao(); }), 1);
    EXPECT_EQ(empresa.linhas("select count(*) from xel_ORVEX_MOV where TpDoc='PS'"), "400");
    for (const std::string& texto : servidor.textos())
        EXPECT_THAT(texto, Not(HasSubstr("@P2001")));
    EXPECT_EQ(pedidos([&] { BD.EmPasso({}, [] {}); }), 0);
    EXPECT_EQ(pedidos([&] { // half-read, and a text as long as a column takes
                  const auto meio_lido = BD.Consulta("select * from xel_ORVEX_MOV");
                  BD.EmPasso({"select CODIGO from Artigos"}, [&] {
                      BD.Executa("Update xel_ORVEX_MOV set Qtd=Qtd where TpDoc='" +
                                 std::string(300'000, 'x') + "'");
                      BD.Executa("Delete xel_ORVEX_MOV where TpDoc='PS'");
                      EXPECT_FALSE(BD.Consulta("select CODIGO from Artigos")->fim());
                  });
                  EXPECT_EQ(meio_lido->contagem(), 408);
              }),
              4)
        << servidor.textos().back().substr(0, 50);
}

// The statements of the request: a mark, and each write with its mark after it.
TEST_F(PassosNoFio, UmaInstrucaoQueFalhaNoMeioEADelaEAsOutrasFicamSoForaDeUmaTransaccao) {
    const std::string segunda =
        "Registo: xel_ORVEX_MOV, Ano=2019, TpDoc=PS, NumDoc=1, SerieDoc=1, NumLinha=2.";
    const struct {
        int instrucao;
        Avaria avaria;
        std::string texto, ficam; // outside a transaction
        bool viva = true;         // the transaction, inside of one
    } casos[] = {
        {4, {Efeito::erro, 2627, "No."}, "mesma chave. (No.) " + segunda, "1; 3; 9"},
        {4, {Efeito::aviso, 2627, "No."}, "mesma chave. (No.) " + segunda, "1; 3; 9"},
        {4, {Efeito::erro, 1222, "No."}, "usados por outro posto. Tente novamente. (No.)", "1; 3; 9"},
        {4, {Efeito::vitima, 1205, "No."}, "deixar passar a de outro posto", "1; 3; 9", false},
        {4, {Efeito::corta}, "perdeu-se", "1; 9", false},
        {5, {Efeito::corta}, "perdeu-se", "1; 2; 9", false}, // done, and its answer lost
    };
    for (const auto& [instrucao, avaria, texto, ficam, viva] : casos)
        for (const bool em_transaccao : {true, false}) {
            SCOPED_TRACE(texto);
            BD.Executa("Delete xel_ORVEX_MOV where TpDoc='PS'");
            escreve(9, 9);
            if (em_transaccao) {
                BD.IniciaTransaccao();
                BD.Tranca();
            }
            servidor.avaria_na_instrucao(instrucao, avaria);
            const std::string dita = falha_do_passo();
            EXPECT_THAT(dita, HasSubstr(texto));
            const std::string incerto = "Não se sabe", nada = "Nada do que estava a ser gravado ficou";
            EXPECT_EQ(dita.find(nada) != std::string::npos, em_transaccao && !viva) << dita;
            EXPECT_EQ(dita.find(incerto) != std::string::npos,
                      !em_transaccao && avaria.efeito == Efeito::corta);
            const bool so_ela = avaria.efeito == Efeito::erro || avaria.efeito == Efeito::aviso;
            EXPECT_EQ(dita.find(segunda) != std::string::npos, avaria.efeito != Efeito::corta) << dita;
            if (so_ela) {
                EXPECT_EQ(servidor.instrucoes(), em_transaccao ? 5 : 7) << "under the lock it stops there";
            }
            if (!em_transaccao) {
                EXPECT_EQ(escritas(), ficam);
                if (so_ela) {
                    EXPECT_EQ(servidor.pedidos(), 1) << "those after it were not sent again";
                }
                continue;
            }
            for (const auto& depois : std::vector<std::function<void()>>{
                     [&] { escreve(4, 4); }, [&] { usa(); }, [&] { BD.ConfirmaTransaccao(); },
                     [&] { falha_do_passo().empty() ? void() : throw Falha(falha_do_passo()); }})
                EXPECT_THAT(falha(depois),
                            HasSubstr(viva ? dita : "A transacção foi anulada pelo servidor."));
            EXPECT_EQ(BD.EmTransaccao(), viva);
            BD.AnulaTransaccao();
            EXPECT_EQ(escritas(), "9");
        }
}

TEST_F(PassosNoFio, ORecusadoPorInteiroVaiUmAUmEOQueOTrabalhoDeixaAMeioFicaSoForaDeUmaTransaccao) {
    EXPECT_THAT(falha_do_passo([&] {
                    BD.Executa("Delete xel_ORVEX_MOV where Nada=1");
                    escreve(4, 4);
                }),
                HasSubstr("Falta uma coluna"));
    EXPECT_EQ(escritas(), "1; 2; 3; 4");
    EXPECT_THAT(falha_do_passo([&] {
                    BD.Executa("Delete Nenhuma");
                    escreve(5, 6);
                }),
                HasSubstr("mesma chave"))
        << "the first that failed";
    EXPECT_EQ(escritas(), "1; 2; 3; 4; 5; 6") << "those after the one that ended the request too";
    const std::string primeira = " xel_ORVEX_MOV where TpDoc='PS' and NumLinha=1";
    const auto lida = BD.AbreActualizavel("Select * from" + primeira);
    BD.Executa("Delete" + primeira);
    EXPECT_THAT(falha([&] {
                    BD.EmPasso({}, [&] {
                        lida->define("Qtd", m("3"));
                        lida->actualiza();
                        escreve(2, 2);
                    });
                }),
                HasSubstr("NumLinha=2"))
        << "before that of a row that others changed";
    BD.Executa("Delete xel_ORVEX_MOV where TpDoc='PS'");
    const auto larga = [] { throw Falha("Da regra."); };
    BD.IniciaTransaccao();
    EXPECT_EQ(falha_do_passo(larga), "Da regra.");
    EXPECT_THAT(falha([&] { BD.ConfirmaTransaccao(); }), HasSubstr("tem de ser anulada"));
    BD.AnulaTransaccao();
    EXPECT_EQ(escritas(), "");
    avaria(Efeito::corta);
    EXPECT_EQ(falha_do_passo(larga), "Da regra.");
    EXPECT_EQ(falha_do_passo(larga), "Da regra.");
    EXPECT_EQ(escritas(), "1; 2; 3");
}

TEST_F(PassosNoFio, ALeituraAdiantadaRepeteSeOndePodeEFalhaLogoOndeNaoPode) {
    const std::vector<std::string> perguntas{"select count(*) from Artigos", "select count(*) from Clientes"};
    const std::vector<base::Variante> certas{BD.Consulta(perguntas[0])->valor(0),
                                             BD.Consulta(perguntas[1])->valor(0)};
    ASSERT_NE(certas[0], certas[1]);
    const auto le = [&] {
        BD.EmPasso(perguntas, [&] {
            for (const std::size_t i : {0u, 1u})
                EXPECT_EQ(BD.Consulta(perguntas[i])->valor(0), certas[i]);
        });
    };
    for (const auto& [efeito, numero] : {std::pair{Efeito::corta, 0},
                                         {Efeito::erro, 1222},
                                         {Efeito::vitima, 1205},
                                         {Efeito::erro, 8650},
                                         {Efeito::aviso, 8650}})
        for (const int instrucao : {0, 1, 2, 3}) {
            const Avaria esta{efeito, numero, "No."};
            const auto arma = [&, i = instrucao] {
                i == 0 ? servidor.avaria_no(1, esta) : servidor.avaria_na_instrucao(i, esta);
            };
            usa();
            arma();
            EXPECT_EQ(falha(le), "");
            BD.IniciaTransaccao();
            arma();
            EXPECT_EQ(falha(le).empty(), numero == 8650) << numero; // then it is asked alone, and answered
            BD.AnulaTransaccao();
        }
}

} // namespace
} // namespace orvex::testes
