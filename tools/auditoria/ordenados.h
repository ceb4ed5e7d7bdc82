// Records put in order in bounded memory: what does not fit lies in temporary files, which are gone with it.
#pragma once

#include "base/falha.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <type_traits>
#include <vector>

namespace orvex::auditoria {

template <typename T>
class Ordenados {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    void junta(const T& registo) {
        if (memoria_.size() == capacidade) despeja();
        if (memoria_.capacity() == 0) memoria_.reserve(capacidade);
        memoria_.push_back(registo);
    }
    // From here on they are read, from the first one; as often as they are begun.
    void comeca() {
        if (!corridas_.empty() && !memoria_.empty()) despeja();
        std::sort(memoria_.begin(), memoria_.end());
        if (!corridas_.empty()) std::vector<T>().swap(memoria_);
        posicao_ = 0;
        fila_.clear();
        for (Corrida& corrida : corridas_) {
            corrida.lidos = 0;
            corrida.janela.clear();
            corrida.na_janela = 0;
            if (enche(corrida)) fila_.push_back(&corrida);
        }
        std::make_heap(fila_.begin(), fila_.end(), depois);
    }
    bool ha() const { return corridas_.empty() ? posicao_ < memoria_.size() : !fila_.empty(); }
    const T& actual() const { return corridas_.empty() ? memoria_[posicao_] : fila_.front()->primeiro(); }
    void avanca() {
        if (corridas_.empty()) {
            ++posicao_;
            return;
        }
        std::pop_heap(fila_.begin(), fila_.end(), depois);
        Corrida& corrida = *fila_.back();
        ++corrida.na_janela;
        if (corrida.na_janela < corrida.janela.size() || enche(corrida))
            std::push_heap(fila_.begin(), fila_.end(), depois);
        else
            fila_.pop_back();
    }

  private:
    static constexpr std::size_t capacidade = (std::size_t{6} << 20) / sizeof(T);
    static constexpr std::size_t tamanho_da_janela = (std::size_t{64} << 10) / sizeof(T);

    struct Fecha {
        void operator()(std::FILE* ficheiro) const { std::fclose(ficheiro); }
    };
    struct Corrida { // one sorted file
        std::unique_ptr<std::FILE, Fecha> ficheiro;
        std::size_t total = 0, lidos = 0, na_janela = 0;
        std::vector<T> janela;
        const T& primeiro() const { return janela[na_janela]; }
    };
    static bool depois(const Corrida* a, const Corrida* b) { return b->primeiro() < a->primeiro(); }

    [[noreturn]] static void falhou() {
        throw base::Falha("Não foi possível usar um ficheiro temporário: verifique o espaço em disco.");
    }
    void despeja() {
        std::sort(memoria_.begin(), memoria_.end());
        Corrida corrida;
        corrida.ficheiro.reset(std::tmpfile());
        corrida.total = memoria_.size();
        if (corrida.ficheiro == nullptr ||
            std::fwrite(memoria_.data(), sizeof(T), memoria_.size(), corrida.ficheiro.get()) !=
                memoria_.size() ||
            std::fflush(corrida.ficheiro.get()) != 0)
            falhou();
        corridas_.push_back(std::move(corrida));
        memoria_.clear();
    }
    bool enche(Corrida& corrida) {
        if (corrida.lidos == 0) std::rewind(corrida.ficheiro.get());
        corrida.na_janela = 0;
        corrida.janela.resize(std::min(tamanho_da_janela, corrida.total - corrida.lidos));
        if (std::fread(corrida.janela.data(), sizeof(T), corrida.janela.size(), corrida.ficheiro.get()) !=
            corrida.janela.size())
            falhou();
        corrida.lidos += corrida.janela.size();
        return !corrida.janela.empty();
    }

    std::vector<T> memoria_;
    std::size_t posicao_ = 0;
    std::vector<Corrida> corridas_;
    std::vector<Corrida*> fila_; // a heap by what is first in each
};

} // namespace orvex::auditoria
