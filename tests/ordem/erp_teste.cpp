// Whatever the ERP does beside what it says: what ERP and ledger do not agree in is named to the user, by a
// box of the confirmation or by the next start; and once the ERP does what it is told, he can have all of it
// settled.
#include "tests/apoio/documentos_perdidos.h"
#include "tests/apoio/programas.h"
#include "tests/ordem/erp_teimoso.h"

#include <gtest/gtest.h>

using namespace orvex;
using namespace orvex::testes;
using confirmacao::Fluxo;

namespace {

struct Caso {
    const char* nome;
    Manha manha;
    bool falha_ao_confirmar = false;
};
const Caso casos[] = {
    {"skips numbers", Manha::nenhuma},
    {"skips numbers, and the commit fails", Manha::nenhuma, true},
    {"creates, and raises", Manha::cria_e_lanca},
    {"raises, and creates later", Manha::lanca_e_cria_depois},
    {"refuses, and creates", Manha::recusa_e_cria},
    {"numbers the lines otherwise", Manha::multiplica_linhas},
    {"turns the lines round", Manha::troca_linhas},
    {"cancels, and raises", Manha::anula_e_lanca},
    {"cancels and raises, and the commit fails", Manha::anula_e_lanca, true},
    {"raises, and cancels later", Manha::lanca_e_anula_depois},
    {"raises and cancels later, and the commit fails", Manha::lanca_e_anula_depois, true},
    {"refuses, and cancels", Manha::recusa_e_anula},
    {"refuses and cancels, and the commit fails", Manha::recusa_e_anula, true},
    {"refuses to cancel, and the commit fails", Manha::recusa_anular, true},
    {"says that it cancels", Manha::diz_que_anula},
    {"says that it cancels, and the commit fails", Manha::diz_que_anula, true},
};

void percorre(Fluxo fluxo, const Caso& caso) {
    SCOPED_TRACE(std::string(nome(fluxo)) + ": " + caso.nome);
    EmpresaTeste empresa(empresa_disputada(linha_para({fluxo})));
    platform::diario::Gaveta gaveta(empresa.pasta() / "diario");
    Diario gravacao;
    const auto teimoso = std::make_shared<ErpTeimoso>(caso.manha, empresa.pasta());
    Posto este = posto(empresa.pasta(), gaveta, gravacao);
    este.abre_erp = [&] { return teimoso; };
    std::optional<Programa> programa(std::in_place, este, fluxo);
    if (caso.falha_ao_confirmar) gravacao.do_commit = Diario::Maneira::lanca;
    programa->age();
    gravacao.recomeca();
    EXPECT_FALSE(programa->BD().EmTransaccao());
    const std::string caixas = programa->janela.retira_caixas();
    programa.reset();

    // The list for manual cancellation was dismissed: nothing is left to be found out.
    EXPECT_TRUE(caso.manha != Manha::recusa_anular || gaveta.por_acabar().empty());
    const std::string antes = empresa.livro() + empresa.stock();
    const auto recupera = [&](bool aceita_tudo, int minutos, std::shared_ptr<ErpTeimoso> erp = nullptr) {
        return Arranque(empresa.pasta(), gaveta, aceita_tudo, std::move(erp)).recupera(minutos);
    };
    const std::string ditos = recupera(false, 0);
    EXPECT_EQ(empresa.livro() + empresa.stock(), antes);
    EXPECT_EQ(ditos.find("Cliente: \r"), std::string::npos) << ditos;
    const auto nomeia = [&](const std::string& chaves) {
        for (const std::string& chave : partes(chaves, " ")) {
            if (chave.empty()) continue;
            const auto p = partes(chave, "|");
            EXPECT_NE((caixas + ditos).find(p[0] + "/" + p[1] + "/" + p[2] + "/" + p[3]), std::string::npos)
                << chave << " is named neither in\n"
                << caixas << "\nnor in\n"
                << ditos;
        }
    };
    nomeia(documentos_perdidos(empresa, caixas));
    nomeia(linhas_sem_documento(empresa, caixas));

    teimoso->faz_o_que_falta();
    // One that is asked to settle it, and does not do it either, leaves it for the next.
    if (caso.manha == Manha::diz_que_anula) {
        recupera(true, 10, teimoso);
        EXPECT_EQ(gaveta.por_acabar().empty(), documentos_perdidos(empresa, caixas).empty());
    }
    recupera(true, 10);
    recupera(true, 20);
    const bool a_mao = caixas.find("devem ser anulados manualmente") != std::string::npos;
    EXPECT_EQ(documentos_perdidos(empresa, a_mao ? caixas : ""), "") << caixas << "\n" << ditos;
    EXPECT_EQ(linhas_sem_documento(empresa, ""), "") << caixas << "\n" << ditos;
    EXPECT_EQ(gaveta.por_acabar().size(), 0) << caixas << "\n" << ditos;
}

} // namespace

TEST(ErpTeimoso, OQueFazSemODizerOuDizSemOFazerENomeadoEPodeSerResolvido) {
    for (const Fluxo fluxo : confirmacao::fluxos)
        for (const Caso& caso : casos)
            percorre(fluxo, caso);
}
