#include "erp.h"

#include "componente.h"

#include "app/fabrica_erp.h"
#include "platform/sqlite/sessao_sqlite.h"

#include "base/caminho.h"
#include "base/texto.h"

namespace orvex::diagnostico {
namespace {

using startup::DefinicoesBD;
using startup::DefinicoesERP;
using startup::SessaoBD;

// What of it can be seen without loading it; on other systems the log-in itself says that there is none.
void verifica_o_componente([[maybe_unused]] const DefinicoesERP& erp,
                           [[maybe_unused]] Resultados& resultados) {
#ifdef _WIN32
    if (erp.tipo() != startup::TipoERP::producao) return;
    resultados.push_back(
        {"programas que chegam ao ERP", Estado::informacao,
         "os de " + de_bits(bits_do_programa) + (erp.de_32_bits ? ", como diz Bits=32 em [ERP]" : "")});
    resultados.push_back(verifica_componente(erp.componente, classe_registada(erp.componente)));
#endif
}

void verifica_entrada(const Definicoes& definicoes, Resultados& resultados) {
    constexpr const char* nome = "entrada no ERP";
    const std::string em_erp = " em [ERP] de «" + base::texto_de(definicoes.ficheiro) + "»";
    const auto& v = definicoes.erp->valores;
    if (definicoes.erp->incompletas()) {
        resultados.push_back({nome, Estado::erro,
                              "Preencha" + em_erp + ": " +
                                  em_falta({{"Empresa", v[DefinicoesERP::empresa]},
                                            {"Utilizador", v[DefinicoesERP::utilizador]},
                                            {"Servidor", v[DefinicoesERP::servidor]},
                                            {"Base", v[DefinicoesERP::base]}}) +
                                  "."});
        return;
    }
    const std::string quem = v[DefinicoesERP::utilizador] + " na empresa " + v[DefinicoesERP::empresa] +
                             " (servidor " + v[DefinicoesERP::servidor] + ", base " + v[DefinicoesERP::base] +
                             ")";
    try {
        const auto sessao = app::cria_sessao_erp(*definicoes.erp);
        sessao->ModoLigacao(startup::modo_ligacao);
        const bool aceite = sessao->Liga(v);
        if (aceite) sessao->Desliga();
        resultados.push_back({nome, aceite ? Estado::ok : Estado::erro,
                              aceite ? quem
                                     : "O ERP recusou " + quem +
                                           ": corrija Empresa, Utilizador ou PalavraPasse" + em_erp + "."});
    } catch (const std::exception& falha) {
        const char* o_que = definicoes.erp->tipo() == startup::TipoERP::emulacao
                                ? " Corrija Servidor e Base"
                                : " Verifique Componente, Servidor e Base";
        resultados.push_back({nome, Estado::erro, falha.what() + (o_que + em_erp) + "."});
    }
}

// How many of each there are: what one company shows and another hardly does.
std::string quantos(SessaoBD& BD) {
    std::string texto;
    for (const char* tabela : {"DocGcCab", "DocGcLin", "Clientes", "Artigos"})
        texto += BD.Consulta(std::string("Select count(*) as n from ") + tabela)->valor(0).texto() + " " +
                 tabela + " ";
    return texto;
}

// The emulation writes files of its own: no database on a server holds its documents, unless the server shows
// those very files.
Resultado do_servidor_e_da_emulacao(const DefinicoesERP& erp, SessaoBD& BD) {
    const std::string nao_chegam = "o ERP é a emulação, que grava em «" + erp.valores[DefinicoesERP::base] +
                                   "», e os movimentos estão num servidor, ";
    constexpr const char* remedio = "onde os documentos dela não existem: as linhas das guias não chegariam "
                                    "ao livro. Use em [BD] e [ERP] a "
                                    "mesma empresa.";
    const auto emulacao = abre_emulacao(erp);
    if (emulacao != nullptr) {
        try {
            if (quantos(BD) == quantos(*emulacao))
                return {"", Estado::nao_verificado,
                        nao_chegam +
                            "com os mesmos números de documentos, clientes e artigos; só um novo documento "
                            "mostraria se é a mesma empresa"};
        } catch (const std::exception&) { // told where the tables are
        }
    }
    return {"", Estado::erro, nao_chegam + remedio};
}

Resultado compara_bases(const DefinicoesBD& bd, const DefinicoesERP& erp, SessaoBD* BD) {
    if (BD == nullptr) return {"", Estado::nao_verificado, "depende da ligação"};
    const std::string& servidor = erp.valores[DefinicoesERP::servidor];
    const std::string& base = erp.valores[DefinicoesERP::base];
    const bool numa_pasta = bd.servidor == startup::servidor_embebido;
    if (erp.tipo() == startup::TipoERP::emulacao && !numa_pasta) return do_servidor_e_da_emulacao(erp, *BD);
    std::error_code erro;
    const bool mesma =
        numa_pasta ? std::filesystem::equivalent(base::caminho_de(bd.base), base::caminho_de(base), erro)
                   : base::mesmo_nome(bd.base, base);
    if (!mesma)
        return {"", Estado::erro,
                "o ERP grava os documentos em " + base + " (servidor " + servidor +
                    "), e o programa procura-os em " + bd.base + " (servidor " + bd.servidor +
                    "). Use em [BD] e [ERP] a mesma empresa."};
    // Of a folder the ERP's server is a component's affair.
    if (numa_pasta || base::mesmo_nome(bd.servidor, servidor))
        return {"", Estado::ok, "a mesma que a dos movimentos"};
    return {"", Estado::aviso,
            "a base " + base + " está em [BD] no servidor " + bd.servidor + " e em [ERP] no servidor " +
                servidor + ": confirme que são dois nomes do mesmo."};
}

} // namespace

void verifica_erp(const Definicoes& definicoes, SessaoBD* BD, const std::string& sem_32_bits,
                  Resultados& resultados) {
    if (!definicoes.erp) {
        resultados.push_back({"entrada no ERP", Estado::nao_verificado, "depende das definições"});
        return;
    }
    if (sem_32_bits.empty()) {
        verifica_o_componente(*definicoes.erp, resultados);
        verifica_entrada(definicoes, resultados);
    } else {
        resultados.push_back({"programas que chegam ao ERP", Estado::erro, sem_32_bits});
    }
    if (!definicoes.bd || definicoes.erp->incompletas()) return;
    resultados.push_back(compara_bases(*definicoes.bd, *definicoes.erp, BD));
    resultados.back().o_que = "base de dados do ERP";
}

std::unique_ptr<SessaoBD> abre_emulacao(const DefinicoesERP& definicoes) {
    if (definicoes.tipo() != startup::TipoERP::emulacao) return nullptr;
    auto sessao = std::make_unique<platform::sqlite::SessaoSQLite>();
    DefinicoesBD da_emulacao;
    da_emulacao.base = definicoes.valores[DefinicoesERP::base];
    if (!sessao->Abre(startup::texto_ligacao(da_emulacao))) return nullptr;
    return sessao;
}

} // namespace orvex::diagnostico
