// A small ERP company in a folder of its own, and documents built on it the way the screens build them.
#pragma once

#include "platform/erp/base_erp.h"
#include "platform/erp/esquema_erp.h"
#include "platform/erp/sessao_erp_embebida.h"
#include "platform/sqlite/empresa.h"
#include "tests/apoio/pasta_temporaria.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvex::testes {

using base::Moeda;
using base::Variante;
using platform::erp::Sentido;
using platform::erp::SessaoERPEmbebida;
using startup::ChaveDocumento;
using startup::ReferenciaERP;

inline Moeda moeda(const char* texto) { return Moeda::le(texto).value(); }

// One line of a document; without an article it is a text line.
struct Linha {
    std::string artigo;
    const char* quantidade = "0";
    std::string armazem = "A1";
    std::string descricao = "Bobine";
};

class EmpresaErp : public testing::Test {
  protected:
    EmpresaErp()
        : base(platform::sqlite::abre_base(ficheiro(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)) {
        platform::erp::cria_esquema_erp(base.bd());
        base.bd().exec(
            "insert into Empresa values ('ORVEX', 'ORVEX, S.A.');"
            "insert into Utilizadores values ('demo', 'Segredo');"
            "insert into Armazens values ('A1', ''), ('A2', '');"
            "insert into Clientes (CODIGO, Nome, NContrib, Vendedor, RegIva, Inactivo) values"
            " ('C1', 'Sá', '500000000', 'V1', 'NAC', 0), ('C9', 'Antigo', '', '', 'NAC', -1);"
            "insert into Artigos (CODIGO, Nome, UnBase, TaxaIva, STDISP, VLREXIST, ULTPRCOM) values"
            " ('B1', 'Bobine um', 'TN', 23, 10, 1000, 90), ('B2', 'Bobine dois', 'TN', 6, 0, 0, 50);"
            "insert into artarm values ('B1', 'A1', 10)");
        const std::pair<const char*, Sentido> tipos[] = {
            {"FA", Sentido::nenhum},       {"GR", Sentido::saida}, {"GD", Sentido::entrada},
            {"SB", Sentido::entrada},      {"QB", Sentido::saida}, {"CI", Sentido::saida},
            {"TR", Sentido::transferencia}};
        for (const auto& [tipo, sentido] : tipos)
            platform::erp::acrescenta_tipo_documento(base.bd(), tipo, tipo, sentido, 1);
        liga(sessao);
    }

    std::filesystem::path ficheiro() const { return pasta.pasta() / platform::sqlite::ficheiro_erp; }
    std::array<std::string, 5> valores() const {
        return {"ORVEX", "Segredo", "demo", "sqlite", pasta.pasta().string()};
    }
    void liga(SessaoERPEmbebida& outra) const { ASSERT_TRUE(outra.Liga(valores())); }

    static ReferenciaERP nova_linha(SessaoERPEmbebida& na, const ReferenciaERP& documento,
                                    const Linha& pedida) {
        auto linha = na.CriaObjecto("SageApiNextPlus.DocumentosGcLin");
        linha->poe("TipoDeLinha", 1);
        linha->poe("Artigo", pedida.artigo);
        linha->poe("Armazem", pedida.artigo.empty() ? "" : pedida.armazem);
        documento->chama("SugereValoresLin", {linha, true, true, true, true, true, false, true});
        linha->poe("descricao", pedida.descricao);
        linha->poe("Quantidade", moeda(pedida.quantidade));
        return linha;
    }

    static ReferenciaERP documento(SessaoERPEmbebida& na, const std::vector<Linha>& linhas,
                                   const char* tipo = "GR", int ano = 2026) {
        auto novo = na.CriaObjecto("SageApiNextPlus.DocumentoComercial");
        auto cab = novo->obtem("Cab").objecto;
        cab->poe("Ano", ano);
        cab->poe("Data", "05-03-" + std::to_string(ano));
        cab->poe("Serie", "1");
        cab->poe("TipoDocumento", tipo);
        cab->poe("TipoTerceiro", 2);
        cab->poe("Terceiro", "C1");
        for (const Linha& linha : linhas)
            novo->chama("AdicionaLinha", {nova_linha(na, novo, linha)});
        return novo;
    }

    // Submits and finishes; the message of a refusal, empty when it was saved.
    static std::string emite(SessaoERPEmbebida& na, const ReferenciaERP& novo) {
        if (na.SubmeteDocumento(3, novo) != 0) return na.ResultadoUltimo().mensagem;
        auto cab = novo->obtem("Cab").objecto;
        const Variante erro = na.DocumentoSubmetido()
                                  ->chama("Finalizar", {cab->obtem("NossoNoDocumento"), 0,
                                                        cab->obtem("TipoDocumento"), cab->obtem("Ano")})
                                  .valor;
        return erro.inteiro() == 0 ? std::string() : novo->obtem("UltimaMensagem").valor.texto();
    }

    static std::int64_t numero(const ReferenciaERP& do_documento) {
        return do_documento->obtem("Cab").objecto->obtem("NossoNoDocumento").valor.inteiro();
    }

    std::int64_t emitido(SessaoERPEmbebida& na, const std::vector<Linha>& linhas, const char* tipo = "GR",
                         int ano = 2026) {
        auto novo = documento(na, linhas, tipo, ano);
        EXPECT_EQ(emite(na, novo), "");
        return numero(novo);
    }

    Variante valor(const std::string& sql) {
        platform::erp::Comando procura(base, sql);
        return procura.linha() ? procura.valor(0) : Variante();
    }
    Moeda no_armazem(const std::string& artigo, const std::string& armazem) {
        const Variante existencia =
            valor("select Existenc from artarm where Artigo='" + artigo + "' and Armazem='" + armazem + "'");
        return existencia.nulo() ? Moeda() : existencia.moeda();
    }
    Moeda total(const std::string& artigo) {
        return valor("select STDISP from Artigos where CODIGO='" + artigo + "'").moeda();
    }
    Moeda custo(const std::string& artigo) {
        return valor("select VLREXIST from Artigos where CODIGO='" + artigo + "'").moeda();
    }

    PastaTemporaria pasta;
    platform::erp::BaseErp base;
    SessaoERPEmbebida sessao{50};
};

} // namespace orvex::testes
