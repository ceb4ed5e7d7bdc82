#include "common/grelha.h"

#include "base/falha.h"
#include "base/ordem.h"

#include <algorithm>

namespace orvex::common {

void Grelha::define(std::vector<ColunaGrelha> colunas, int linhas_em_branco) {
    colunas_ = std::move(colunas);
    valores_.assign(static_cast<std::size_t>(linhas_em_branco), std::vector<base::Variante>(colunas_.size()));
    linha_actual = 1;
    coluna_actual = 0;
    for (int i = static_cast<int>(colunas_.size()) - 1; i >= 0; --i)
        if (const ColunaGrelha& coluna = colunas_[static_cast<std::size_t>(i)];
            !coluna.oculta && coluna.recebe_foco)
            coluna_actual = i;
    texto_editado.clear();
    estilo.reset();
    ++versao_;
}

int Grelha::coluna(std::string_view chave) const {
    for (std::size_t i = 0; i < colunas_.size(); ++i)
        if (colunas_[i].chave == chave) return static_cast<int>(i);
    throw base::Falha("A grelha " + nome + " não tem a coluna " + std::string(chave) + ".");
}

void Grelha::garante_linha(int linha) {
    while (linhas() <= linha)
        valores_.emplace_back(colunas_.size());
    ++versao_;
}

void Grelha::apaga_linha(int linha) {
    valores_.erase(valores_.begin() + linha);
    linha_actual = std::min(linha_actual, linhas());
    ++versao_;
}

void Grelha::ordena(int coluna) {
    ordem_ = Ordem{coluna, ordem_ && ordem_->coluna == coluna && !ordem_->descendente};
    reordena();
}

void Grelha::reordena() {
    if (!ordem_) return;
    struct Linha {
        base::ChaveOrdem chave;
        std::vector<base::Variante> valores;
        bool em_branco;
        bool actual;
    };
    std::vector<Linha> ordenadas;
    for (auto& valores : valores_)
        ordenadas.push_back({base::ChaveOrdem(valores[static_cast<std::size_t>(ordem_->coluna)]),
                             std::move(valores), false,
                             static_cast<int>(ordenadas.size()) == linha_actual - 1});
    for (Linha& linha : ordenadas)
        linha.em_branco = std::all_of(linha.valores.begin(), linha.valores.end(),
                                      [](const base::Variante& valor) { return valor.nulo(); });
    std::stable_sort(ordenadas.begin(), ordenadas.end(), [this](const Linha& a, const Linha& b) {
        if (a.em_branco || b.em_branco) return !a.em_branco && b.em_branco;
        return ordem_->descendente ? b.chave < a.chave : a.chave < b.chave;
    });
    for (std::size_t i = 0; i < ordenadas.size(); ++i) {
        if (ordenadas[i].actual) linha_actual = static_cast<int>(i) + 1;
        valores_[i] = std::move(ordenadas[i].valores);
    }
    ++versao_;
}

const base::Variante& Grelha::valor(int linha, int coluna) const {
    return valores_.at(static_cast<std::size_t>(linha)).at(static_cast<std::size_t>(coluna));
}

base::Moeda Grelha::moeda(int linha, int coluna) const {
    const base::Variante& celula = valor(linha, coluna);
    return celula.vazio() ? base::Moeda() : celula.moeda();
}

void Grelha::define_valor(int linha, int coluna, base::Variante valor) {
    valores_.at(static_cast<std::size_t>(linha)).at(static_cast<std::size_t>(coluna)) = std::move(valor);
    ++versao_;
}

std::string Grelha::texto_mostrado(int linha, int coluna, const base::FormatoRegional& formato) const {
    const base::Variante& celula = valor(linha, coluna);
    if (celula.vazio()) return {};
    if (colunas_[static_cast<std::size_t>(coluna)].formato_peso) return formato.peso_inteiro(celula.moeda());
    return formato.texto(celula);
}

std::string Grelha::texto_para_editar(int linha, int coluna, const base::FormatoRegional& formato) const {
    return formato.texto(valor(linha, coluna));
}

bool Grelha::guarda_edicao(int linha, int coluna, const base::FormatoRegional& formato) {
    switch (colunas_[static_cast<std::size_t>(coluna)].tipo) {
    case TipoCelula::texto:
        define_valor(linha, coluna, texto_editado);
        return true;
    case TipoCelula::logico:
        define_valor(linha, coluna, texto_editado == com_visto);
        return true;
    case TipoCelula::decimal:
    case TipoCelula::inteiro:
        break;
    }
    const auto numero = formato.le(texto_editado);
    if (!numero && !texto_editado.empty()) return false;
    define_valor(linha, coluna, numero ? base::Variante(*numero) : base::Variante(""));
    return true;
}

bool Grelha::pintada(int linha) const { return estilo && valor(linha, estilo->coluna) == estilo->valor; }

} // namespace orvex::common
