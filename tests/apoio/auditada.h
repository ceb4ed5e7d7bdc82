// What the auditor says of a test's company, on the engine that is asked for.
#pragma once

#include "tests/apoio/empresa_teste.h"
#include "tools/auditoria/auditoria.h"

namespace orvex::testes {

struct SemProgresso : auditoria::Progresso {
    std::function<void()> enquanto_espera;

    void fase(const std::string&) override {}
    void linhas(std::int64_t) override {}
    void espera(int) override {
        if (enquanto_espera) enquanto_espera();
    }
};

inline auditoria::Pedido pedido_de_auditoria(const std::filesystem::path& pasta, const base::DataHora& hoje) {
    return {.casa = auditoria::Casa::le(startup::Parametros(pasta)),
            .hoje = hoje,
            .abre = [pasta]() -> std::unique_ptr<startup::SessaoBD> {
                auto sessao = std::make_unique<SessaoDeTeste>();
                if (!sessao->Abre(ligacao(pasta))) throw base::Falha("A empresa não abriu.");
                return sessao;
            },
            .espera = 0};
}

// Errors and warnings, "erro L1 2019/FA/1/10/1 100 kg; ...", and what could not be looked at.
inline std::string resumo_de(const auditoria::Relatorio& relatorio) {
    std::string texto;
    for (const auto& este : relatorio.nao_vistos)
        texto += (texto.empty() ? "" : "; ") + ("? " + este.verificacoes + ": " + este.porque);
    for (const auto& este : relatorio.achados)
        if (este.gravidade != auditoria::Gravidade::informacao)
            texto += (texto.empty() ? "" : "; ") +
                     (auditoria::nome(este.gravidade) + (" " + este.verificacao)) + " " + este.chave + " " +
                     auditoria::quilos(este.peso);
    return texto;
}

inline std::string auditada(const std::filesystem::path& pasta, const base::DataHora& hoje) {
    SemProgresso progresso;
    return resumo_de(auditoria::audita(pedido_de_auditoria(pasta, hoje), progresso));
}

} // namespace orvex::testes
