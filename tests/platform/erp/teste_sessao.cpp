#include "tests/platform/erp/empresa_erp.h"

#include "base/falha.h"
#include "startup/definicoes.h"

namespace orvex::testes {
namespace {

using base::Falha;
using startup::DefinicoesERP;

using SessaoErp = EmpresaErp;

std::string falha_ao_ligar(const std::array<std::string, 5>& valores) {
    try {
        SessaoERPEmbebida().Liga(valores);
    } catch (const Falha& falha) {
        return falha.what();
    }
    return {};
}

TEST_F(SessaoErp, recusa_a_entrada_sem_dizer_qual_dos_valores_esta_errado) {
    for (const auto posicao :
         {DefinicoesERP::empresa, DefinicoesERP::palavra_passe, DefinicoesERP::utilizador}) {
        auto errados = valores();
        errados[posicao] = "outro";
        EXPECT_FALSE(sessao.Liga(errados));
        EXPECT_EQ(sessao.Empresa(), nullptr);
        EXPECT_EQ(sessao.ResultadoUltimo().mensagem, "O ERP recusou a entrada.");
    }
    auto maiusculas = valores();
    maiusculas[DefinicoesERP::palavra_passe] = "SEGREDO";
    EXPECT_FALSE(sessao.Liga(maiusculas)) << "a palavra-passe distingue maiúsculas";
}

TEST_F(SessaoErp, diz_o_que_falta_quando_a_empresa_nao_abre) {
    auto outros = valores();
    outros[DefinicoesERP::servidor] = "SRV01";
    EXPECT_EQ(falha_ao_ligar(outros), "O ERP de produção só está disponível em Windows.");

    outros = valores();
    outros[DefinicoesERP::base] = (pasta.pasta() / "nada").string();
    EXPECT_THAT(falha_ao_ligar(outros), testing::HasSubstr("Não existe uma empresa na pasta"));

    const std::filesystem::path estragada =
        std::filesystem::path("estragada") / platform::sqlite::ficheiro_erp;
    outros[DefinicoesERP::base] = pasta.escreve(estragada, std::string(4096, 'x')).parent_path().string();
    EXPECT_THAT(falha_ao_ligar(outros), testing::HasSubstr("A empresa do ERP está danificada"));

    pasta.escreve(estragada, "");
    EXPECT_THAT(falha_ao_ligar(outros), testing::HasSubstr("Falha na empresa do ERP")) << "sem tabelas";
}

TEST_F(SessaoErp, depois_de_desligada_nada_se_faz_nem_com_objectos_antigos) {
    auto antigo = documento(sessao, {{"B1", "1"}});
    EXPECT_EQ(sessao.Empresa()->obtem("nome").valor.texto(), "ORVEX, S.A.");
    sessao.Desliga();
    EXPECT_EQ(sessao.Empresa(), nullptr);
    EXPECT_THROW(sessao.CriaObjecto("SageApiNextPlus.DocumentoComercial"), Falha);
    EXPECT_THROW(sessao.SubmeteDocumento(3, antigo), Falha);
}

TEST_F(SessaoErp, classes_e_membros_desconhecidos_falham_e_os_conhecidos_nao_distinguem_maiusculas) {
    EXPECT_THROW(sessao.CriaObjecto("SageApiNextPlus.Outro"), Falha);
    auto novo = documento(sessao, {{"B1", "1"}});
    auto cab = novo->obtem("CAB").objecto;
    cab->poe("PROCESSO", "P7");
    EXPECT_EQ(cab->obtem("processo").valor.texto(), "P7");
    EXPECT_THROW(cab->poe("Procesos", "P7"), Falha);
    EXPECT_THROW(cab->obtem("Linhas"), Falha);
    EXPECT_THROW(novo->chama("Gravar", {}), Falha);
    EXPECT_THROW(novo->chama("Finalizar", {0, 0}), Falha) << "argumentos a menos";
    EXPECT_THROW(novo->obtem("Linhas").objecto->chama("Item", {2}), Falha);
}

TEST_F(SessaoErp, um_valor_que_nao_cabe_no_membro_falha_com_o_nome_dele) {
    auto cab = documento(sessao, {})->obtem("Cab").objecto;
    for (const auto& [membro, errado] : {std::pair<const char*, Variante>{"Serie", "um"},
                                         {"Serie", 40000},
                                         {"Data", "31-02-2026"},
                                         {"Ano", Variante()}}) {
        try {
            cab->poe(membro, errado);
            ADD_FAILURE() << membro;
        } catch (const Falha& falha) {
            EXPECT_THAT(falha.what(), testing::HasSubstr(membro));
        }
    }
}

TEST_F(SessaoErp, um_erp_ocupado_recusa_com_mensagem_e_nao_grava_nada) {
    auto novo = documento(sessao, {{"B1", "1"}});
    base.bd().exec("begin immediate");
    EXPECT_THAT(emite(sessao, novo), testing::HasSubstr("ocupada por outro posto"));
    EXPECT_FALSE(sessao.AnulaDocumento(1, {2026, "GR", 1, 1}).sucesso);
    base.bd().exec("rollback");
    EXPECT_EQ(numero(novo), 0) << "um número que não ficou gravado não fica no documento";
    EXPECT_EQ(emite(sessao, novo), "");
    EXPECT_EQ(numero(novo), 1);
}

} // namespace
} // namespace orvex::testes
