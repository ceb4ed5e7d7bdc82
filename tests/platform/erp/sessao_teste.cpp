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

TEST_F(SessaoErp, RecusaAEntradaSemDizerQualDosValoresEstaErrado) {
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

TEST_F(SessaoErp, DizOQueFaltaQuandoAEmpresaNaoAbre) {
    const PastaTemporaria pasta;
    pasta.escreve("danificada/erp.db", std::string(4096, 'x'));
    pasta.escreve("vazia/erp.db", "");
    for (const auto& [onde, texto] :
         {std::pair{"", "Falta a pasta da empresa do ERP."}, // not the folder we are in
          {"nenhuma", "Não existe uma empresa na pasta"},
          {"danificada", "A empresa do ERP está danificada"},
          {"vazia", "Falha na empresa do ERP"}}) {
        auto outros = valores();
        outros[DefinicoesERP::base] = *onde == '\0' ? "" : (pasta.pasta() / onde).string();
        espera_falha([&] { SessaoERPEmbebida().Liga(outros); }, texto);
    }
}

TEST_F(SessaoErp, OsMembrosNaoDistinguemMaiusculasEOQueNaoSeConheceOuNaoCabeFalhaComOSeuNome) {
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

TEST_F(SessaoErp, UmDocumentoRecebeOCabecalhoDeOutroEFinalizarDevolveONumeroNoSeuArgumento) {
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
