#include "base/falha.h"
#include "startup/definicoes.h"
#include "tests/platform/erp/empresa_erp.h"

namespace orvex::testes {
namespace {

using base::Falha;
using startup::DefinicoesERP;

using SessaoErp = EmpresaErp;

void espera_falha(const std::function<void()>& procedimento, const std::string& texto) {
    EXPECT_THAT(procedimento, testing::ThrowsMessage<Falha>(testing::HasSubstr(texto)));
}

TEST_F(SessaoErp, recusa_a_entrada_sem_dizer_qual_dos_valores_esta_errado) {
    for (const auto& [posicao, errado] : {std::pair{DefinicoesERP::empresa, "outra"},
                                          {DefinicoesERP::utilizador, "outro"},
                                          {DefinicoesERP::palavra_passe, "outra"},
                                          {DefinicoesERP::palavra_passe, "SEGREDO"}}) {
        auto errados = valores();
        errados[posicao] = errado;
        EXPECT_FALSE(sessao.Liga(errados));
        EXPECT_EQ(sessao.Empresa(), nullptr);
        EXPECT_EQ(sessao.ResultadoUltimo().mensagem, "O ERP recusou a entrada.");
    }
}

TEST_F(SessaoErp, diz_o_que_falta_quando_a_empresa_nao_abre) {
    auto outros = valores();
    const auto espera_ao_ligar = [&](const char* texto) {
        espera_falha([&] { SessaoERPEmbebida().Liga(outros); }, texto);
    };
    outros[DefinicoesERP::base].clear(); // not the folder we are in
    espera_ao_ligar("Falta a pasta da empresa do ERP.");
    const PastaTemporaria pasta;
    outros = valores();
    outros[DefinicoesERP::base] = pasta.pasta().string();
    espera_ao_ligar("Não existe uma empresa na pasta");
    pasta.escreve(platform::sqlite::ficheiro_erp, std::string(4096, 'x'));
    espera_ao_ligar("A empresa do ERP está danificada");
    pasta.escreve(platform::sqlite::ficheiro_erp, "");
    espera_ao_ligar("Falha na empresa do ERP"); // no tables
}

TEST_F(SessaoErp,
       os_membros_nao_distinguem_maiusculas_e_o_que_nao_se_conhece_ou_nao_cabe_falha_com_o_seu_nome) {
    auto novo = documento(sessao, {{"BOB2", "1"}});
    auto cab = novo->obtem("CAB").objecto;
    cab->poe("PROCESSO", "P7");
    EXPECT_EQ(cab->obtem("processo").valor.texto(), "P7");
    for (const auto& [membro, errado] : {std::pair<const char*, base::Variante>{"Procesos", "P7"},
                                         {"Serie", "um"},
                                         {"Serie", 40000},
                                         {"Data", "31-02-2026"},
                                         {"Ano", base::Variante()}})
        espera_falha([&] { cab->poe(membro, errado); }, membro);
    espera_falha([&] { cab->poe("Terceiro", novo); }, "O membro «Terceiro» não recebe um objecto.");
    espera_falha([&] { novo->poe("Origem", cab); }, "Origem");
    for (const startup::ValorERP& outro : {startup::ValorERP(novo), startup::ValorERP("GR")})
        espera_falha([&] { novo->poe("Cab", outro); }, "só recebe o cabeçalho de um documento");
    espera_falha([&] { cab->obtem("Linhas"); }, "Linhas");
    espera_falha([&] { novo->chama("Gravar", {}); }, "Gravar");
    espera_falha([&] { novo->chama("Finalizar", {0, 0}); }, ""); // too few arguments
    espera_falha([&] { novo->obtem("Linhas").objecto->chama("Item", {2}); }, "");
    espera_falha([&] { sessao.CriaObjecto("SageApiNextPlus.Outro"); }, "SageApiNextPlus.Outro");

    EXPECT_EQ(sessao.Empresa()->obtem("nome").valor.texto(), "Empresa");
    sessao.Desliga();
    EXPECT_EQ(sessao.Empresa(), nullptr);
    espera_falha([&] { sessao.CriaObjecto("SageApiNextPlus.DocumentoComercial"); }, "");
    espera_falha([&] { sessao.SubmeteDocumento(3, novo); }, ""); // an object of the session that was
}

TEST_F(SessaoErp, um_documento_recebe_o_cabecalho_de_outro_e_finalizar_devolve_o_numero_no_seu_argumento) {
    auto novo = documento(sessao, {{"BOB2", "1"}});
    auto copia = sessao.CriaObjecto("SageApiNextPlus.DocumentoComercial");
    copia->poe("Cab", novo->obtem("Cab"));
    copia->chama("AdicionaLinha", {novo->chama("Linhas", {1})});
    ASSERT_EQ(sessao.SubmeteDocumento(3, copia), 0) << sessao.ResultadoUltimo().mensagem;
    startup::ObjectoERP::Argumentos argumentos{0, 0, "GR", 2026};
    EXPECT_EQ(copia->chama("Finalizar", argumentos).valor.inteiro(), 0);
    EXPECT_GT(numero(copia), 0);
    EXPECT_EQ(argumentos[0].valor.inteiro(), numero(copia));
    EXPECT_EQ(numero(novo), 0); // its header was taken by value
}

} // namespace
} // namespace orvex::testes
