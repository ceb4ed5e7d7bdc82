#include "tests/ordem/escalonador.h"

#include "base/falha.h"

#include <algorithm>
#include <thread>

namespace orvex::testes {

std::string texto(const Ordem& ordem) {
    std::string todas;
    for (const Troca& troca : ordem)
        todas += (todas.empty() ? "" : " ") + std::to_string(troca.passo) + ">" + std::to_string(troca.para);
    return todas;
}

void Escalonador::corre(const std::vector<std::function<void()>>& programas) {
    estados_.assign(programas.size(), Estado::pronto);
    std::vector<std::thread> fios;
    for (std::size_t este = 0; este < programas.size(); ++este)
        vez_.emplace_back(este == 0 ? 1 : 0);
    for (std::size_t este = 0; este < programas.size(); ++este)
        fios.emplace_back([this, este, &programa = programas[este]] {
            vez_[este].acquire();
            programa();
            acaba();
        });
    for (std::thread& fio : fios)
        fio.join();
}

std::size_t Escalonador::pronto() const {
    const auto primeiro = std::find(estados_.begin(), estados_.end(), Estado::pronto);
    return static_cast<std::size_t>(primeiro - estados_.begin());
}

void Escalonador::da_a_vez(std::size_t a_quem) {
    const std::size_t este = quem_;
    if (a_quem == este) return;
    const bool acabou = estados_[este] == Estado::acabou;
    quem_ = a_quem;
    vez_[a_quem].release();
    if (!acabou) vez_[este].acquire();
}

void Escalonador::passo() {
    ++passos_;
    if (quem_ == 0) ++do_primeiro_;
    std::size_t seguinte = quem_;
    if (!chamados_.empty()) {
        seguinte = chamados_.front();
        chamados_.erase(chamados_.begin());
    }
    for (; proxima_ < ordem_.size() && ordem_[proxima_].passo <= passos_; ++proxima_)
        if (pode(ordem_[proxima_].para)) seguinte = ordem_[proxima_].para;
    da_a_vez(seguinte);
}

void Escalonador::espera() {
    estados_[quem_] = Estado::a_espera;
    const std::size_t seguinte = pronto();
    if (seguinte == estados_.size()) {
        encravou_ = true;
        estados_[quem_] = Estado::pronto;
        throw base::Falha("Todos esperam pela tranca.");
    }
    da_a_vez(seguinte);
}

void Escalonador::larga() {
    for (std::size_t outro = 0; outro < estados_.size(); ++outro)
        if (estados_[outro] == Estado::a_espera) {
            estados_[outro] = Estado::pronto;
            chamados_.push_back(outro);
        }
}

void Escalonador::acaba() {
    larga();
    estados_[quem_] = Estado::acabou;
    if (pronto() < estados_.size()) da_a_vez(pronto());
}

} // namespace orvex::testes
