// A screen without widgets: the window answers boxes and lists from a script and records what was shown; the
// operator does what a user does.
#pragma once

#include "base/falha.h"
#include "common/ecra.h"

#include <deque>
#include <functional>
#include <regex>
#include <string>
#include <vector>

namespace orvex::testes {

struct Caixa {
    std::string texto, titulo;
    common::Icone icone = common::Icone::nenhum;
    common::Botoes botoes = common::Botoes::ok;

    friend bool operator==(const Caixa&, const Caixa&) = default;
};

struct ListaMostrada {
    std::string forma;                        // "title, width, 1:width 2:hidden"
    std::vector<std::string> primeira_coluna; // of every row the query gave
};

class JanelaGuiao : public common::Janela {
  public:
    using Predicado = std::function<bool(startup::ConjuntoRegistos&)>;

    std::deque<int> respostas;      // to the next boxes that ask; the confirming button once they are used up
    std::deque<Predicado> escolhas; // rows of the next lists; Esc once they are used up
    std::vector<Caixa> caixas;
    std::vector<ListaMostrada> listas;
    common::Controlo* foco = nullptr;
    bool ocupada = false, descarregada = false;
    std::function<void()> com_a_caixa_aberta;
    std::string desiste_em; // the progress at which a long handler is given up
    std::string falha_em;   // what is asked of the window that fails: "mostra", "desocupa"

    void escolhe_a_primeira_com(const char* coluna, const char* valor) {
        escolhas.push_back([=](auto& linha) { return linha.valor(coluna).texto() == valor; });
    }
    // The texts shown since the last time they were taken, "first|second".
    std::string retira_caixas() {
        std::string textos;
        for (const Caixa& mostrada : caixas)
            textos += (textos.empty() ? "" : "|") + mostrada.texto;
        caixas.clear();
        return textos;
    }

    void mostra() override { pede("mostra"); }
    void da_foco(common::Controlo& controlo) override {
        if (pede("da_foco")) foco = &controlo;
    }
    void ocupado(bool sim) override { pede((ocupada = sim) ? "ocupa" : "desocupa"); }
    bool prossegue(const std::string& progresso) override { return progresso != desiste_em; }
    void descarrega() override { descarregada = pede("descarrega"); }
    int caixa(const std::string& texto, const std::string& titulo, common::Icone icone,
              common::Botoes botoes) override {
        pede("caixa");
        caixas.push_back({sem_nomes(texto), titulo, icone, botoes});
        if (com_a_caixa_aberta) com_a_caixa_aberta();
        const int primeira = botoes == common::Botoes::sim_nao ? common::resposta_sim : common::resposta_ok;
        return botoes == common::Botoes::ok ? primeira : retira(respostas, primeira);
    }
    std::string escolhe(const common::ListaPesquisa& lista) override {
        const Predicado escolhida = retira(escolhas, Predicado());
        ListaMostrada mostrada{lista.titulo + ", " + std::to_string(lista.largura) + ",", {}};
        for (const auto& coluna : lista.colunas)
            mostrada.forma += " " + std::to_string(coluna.numero) + ":" +
                              (coluna.oculta ? "hidden" : std::to_string(coluna.largura));
        std::string resultado;
        const auto linhas = lista.ligacao.Consulta(lista.sql);
        for (; !linhas->fim(); linhas->move_seguinte()) {
            mostrada.primeira_coluna.push_back(linhas->valor(0).texto());
            if (escolhida && resultado.empty() && escolhida(*linhas))
                resultado = mostrada.primeira_coluna.back();
        }
        listas.push_back(std::move(mostrada));
        return resultado;
    }

  private:
    // What a component says stands between the operation that it says it of and its own name.
    static std::string sem_nomes(const std::string& texto) {
        static const std::regex dito(R"(([A-Z]\w+\.)?[A-Z]\w+: ([^:]*) \(Orvex\.SessaoERP\))");
        return std::regex_replace(texto, dito, "$2");
    }
    bool pede(const char* coisa) const {
        return falha_em != coisa ? true : throw base::Falha("A janela falhou.");
    }
    template <typename Valor>
    static Valor retira(std::deque<Valor>& fila, Valor senao) {
        if (fila.empty()) return senao;
        Valor primeiro = std::move(fila.front());
        fila.pop_front();
        return primeiro;
    }
};

class Operador {
  public:
    explicit Operador(common::Ecra& ecra) : ecra_(ecra) {}

    void escreve(auto& controlo, const std::string& texto) { // a field or a date picker
        ecra_.utilizador_foca(controlo);
        ecra_.utilizador_edita(controlo, texto);
    }
    void sai() { ecra_.utilizador_avanca(+1); }
    void preenche(auto& controlo, const std::string& texto) {
        escreve(controlo, texto);
        sai();
    }
    void prime(common::Botao& botao) { ecra_.utilizador_prime(botao); }
    void tecla(common::Campo& campo, int codigo) {
        ecra_.utilizador_foca(campo);
        ecra_.utilizador_tecla(campo, codigo);
    }
    // Rows of a grid count from 1.
    void vai(common::Grelha& grelha, int linha, int coluna = 0) {
        ecra_.utilizador_foca(grelha);
        ecra_.utilizador_celula(grelha, linha, coluna);
    }
    void duplo_clique(common::Grelha& grelha, int linha) {
        vai(grelha, linha);
        ecra_.utilizador_duplo_clique(grelha);
    }
    // Types into a cell; false when the edit was refused.
    bool edita(common::Grelha& grelha, int linha, std::string_view coluna, const std::string& texto) {
        vai(grelha, linha, grelha.coluna(coluna));
        ecra_.utilizador_tecla(grelha, '0', 0);
        return ecra_.utilizador_edita_celula(grelha, texto);
    }
    void apaga(common::Grelha& grelha, int linha) {
        vai(grelha, linha);
        ecra_.utilizador_apaga_linha(grelha);
    }

  private:
    common::Ecra& ecra_;
};

} // namespace orvex::testes
