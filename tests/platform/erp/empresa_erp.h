// The ERP emulation at work on the small company, with the types of document that the screens ask for, and
// documents built on it the way the screens build them.
#pragma once

#include "platform/sqlite/empresa.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/apoio/tabela.h"

#include <gmock/gmock.h>

namespace orvex::testes {

using platform::erp::SessaoERPEmbebida;
using startup::ReferenciaERP;

// One line of a document; without an article it is a text line.
struct Linha {
    std::string artigo;
    const char* quantidade = "0";
    std::string armazem = "OR";
};

class EmpresaErp : public testing::Test {
  protected:
    EmpresaErp() {
        insere(empresa.outra(), "TiposDocumento", {"Codigo", "MovStock"},
               {{"FA", 0}, {"SB", 1}, {"QB", -1}, {"TR", 2}});
        insere(empresa.outra(), "Series", {"TpDoc", "Serie"}, {{"FA", 1}, {"SB", 1}, {"QB", 1}, {"TR", 1}});
        insere(empresa.outra(), "Artigos", {"CODIGO", "Nome", "ULTPRCOM"}, {{"SEM", "Sem stock", m("50")}});
        empresa.outra().Executa("Update Utilizadores set PalavraPasse='Segredo'");
        liga(sessao);
    }

    std::array<std::string, 5> valores() const {
        return {"E", "Segredo", "ana", "sqlite", empresa.pasta().string()};
    }
    void liga(SessaoERPEmbebida& outra) const { ASSERT_TRUE(outra.Liga(valores())); }

    static ReferenciaERP documento(SessaoERPEmbebida& na, const std::vector<Linha>& linhas) {
        auto novo = na.CriaObjecto("SageApiNextPlus.DocumentoComercial");
        auto cab = novo->obtem("Cab").objecto;
        for (const auto& membro :
             tabela("Ano => 2026 | Data => 05-03-2026 | Serie => 1 | TipoDocumento => GR | "
                    "TipoTerceiro => 2 | Terceiro => CL'1"))
            cab->poe(membro[0], membro[1]);
        for (const Linha& pedida : linhas) {
            auto linha = na.CriaObjecto("SageApiNextPlus.DocumentosGcLin");
            linha->poe("TipoDeLinha", 1);
            linha->poe("Artigo", pedida.artigo);
            linha->poe("Armazem", pedida.armazem);
            linha->poe("Quantidade", m(pedida.quantidade));
            novo->chama("AdicionaLinha", {linha});
        }
        return novo;
    }

    // Submits and finishes; the message of a refusal, empty when it was saved.
    static std::string emite(SessaoERPEmbebida& na, const ReferenciaERP& novo) {
        if (na.SubmeteDocumento(3, novo) != 0) return na.ResultadoUltimo().mensagem;
        const auto erro = na.DocumentoSubmetido()->chama("Finalizar", {0, 0, "GR", 2026});
        return erro.valor.inteiro() == 0 ? std::string() : novo->obtem("UltimaMensagem").valor.texto();
    }
    static std::int64_t numero(const ReferenciaERP& do_documento) {
        return do_documento->obtem("Cab").objecto->obtem("NossoNoDocumento").valor.inteiro();
    }
    // Of an article: what is in warehouses CL and OR, the whole and its value.
    std::string stock(const std::string& artigo) {
        return empresa.linhas("select Existenc from artarm where Artigo='" + artigo + "' order by Armazem") +
               " = " + empresa.linhas("select STDISP, VLREXIST from Artigos where CODIGO='" + artigo + "'");
    }

    EmpresaTeste empresa;
    SessaoERPEmbebida sessao{50};
};

} // namespace orvex::testes
