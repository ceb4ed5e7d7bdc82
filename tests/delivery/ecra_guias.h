// The delivery-note screen at work on the small company.
#pragma once

#include "delivery/guias_remessa.h"
#include "tests/apoio/empresa_teste.h"

namespace orvex::testes {

struct EcraGuias : Bancada<delivery::GuiasRemessa> {
    EcraGuias() { abre(); }
    // One more workstation of this company.
    explicit EcraGuias(EmpresaTeste& partilhada) : Bancada(&partilhada) { abre(); }

    void cliente(const std::string& codigo) { op.preenche(ecra.campo(0), codigo); }
    void escolhe(int linha) { op.duplo_clique(ecra.Detalhe, linha); }
    bool edita(int linha, const std::string& coluna, const std::string& texto) {
        return op.edita(ecra.Gr, linha, coluna, texto);
    }
    void confirma() { op.prime(ecra.btConf(0)); }
    void anula() { op.prime(ecra.btConf(1)); }
    void carrega(const std::string& numero) { op.preenche(ecra.campo(1), numero); }
    // Issues a note of these open lines of client CL'1.
    void emite(std::initializer_list<int> linhas) {
        cliente("CL'1");
        for (const int linha : linhas)
            escolhe(linha);
        confirma();
    }
    void carrega_uma(std::initializer_list<int> linhas) {
        emite(linhas);
        carrega("1");
        caixas();
    }

    void abre_devolucao() { op.prime(ecra.btGV(0)); }
    bool marca(int linha) {
        op.edita(ecra.Final, linha, "Transf", "-1");
        const base::Variante& marca = ecra.Final.valor(linha - 1, "Transf");
        return !marca.vazio() && marca.logico();
    }
    // Returns these lines of the note that is loaded.
    void devolve(std::initializer_list<int> linhas) {
        abre_devolucao();
        for (const int linha : linhas)
            marca(linha);
        op.prime(ecra.btGV(1));
    }

    // Each of these fields, with its number.
    void preenche_com(const std::string& texto, std::initializer_list<int> campos) {
        for (const int i : campos)
            ecra.campo(i).Text = texto + std::to_string(i);
    }
    std::string textos(std::initializer_list<int> campos) {
        std::string todos;
        for (const int i : campos)
            todos += ecra.campo(i).Text + "|";
        return todos;
    }
    // The rows in use, "a|b; c|d".
    static std::string linhas(const common::Grelha& grelha, std::initializer_list<const char*> colunas) {
        std::string resultado;
        for (int linha = 0; linha < grelha.linhas(); ++linha) {
            if (grelha.texto(linha, "Artigo").empty() && grelha.texto(linha, "Nome").empty()) continue;
            for (const char* coluna : colunas)
                resultado += (coluna != *colunas.begin() ? "|"
                              : resultado.empty()        ? ""
                                                         : "; ") +
                             grelha.texto(linha, coluna);
        }
        return resultado;
    }
    // Which of Confirmar, Anular and Devolução are enabled: "C--".
    std::string botoes() {
        return std::string(ecra.btConf(0).Enabled ? "C" : "-") + (ecra.btConf(1).Enabled ? "A" : "-") +
               (ecra.btGV(0).Enabled ? "D" : "-");
    }
    bool vazio() {
        return ecra.campo(0).Text.empty() && linhas(ecra.Gr, {"Nome"}).empty() && botoes() == "C--" &&
               !ecra.Frame3.Visible;
    }
};

struct Guias : testing::Test, EcraGuias {};

} // namespace orvex::testes
