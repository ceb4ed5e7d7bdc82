#include "tools/consulta/fonte.h"

#include <chrono>

namespace orvex::consulta {

using livro::consultas::Destino;
using livro::consultas::Meios;
using platform::qt::consulta::Consulta;

bool FonteDaEmpresa::responde(const Consulta& consulta, Destino& destino,
                              const std::function<void()>& recomeca) {
    if (!empresa_.aspecto) return do_servidor(consulta, destino);
    bool ha = false;
    int vezes = 0;
    le_da_empresa(empresa_, casa_, [&](const Meios& meios) {
        if (vezes++ > 0) recomeca();
        ha = consulta(meios, destino);
    });
    return ha;
}

// One that was given up keeps its place until the server lets go of it, at its timeout at the latest; those
// that wait for a place are not told when they are given up, and look now and then.
bool FonteDaEmpresa::toma_lugar(Destino& destino) {
    constexpr int lugares = 4;
    constexpr std::chrono::milliseconds de_vez_em_quando{50};
    while (destino.prossegue()) {
        std::unique_lock guarda(tranca_);
        if (!ha_lugar_.wait_for(guarda, de_vez_em_quando, [this] { return a_responder_ < lugares; }))
            continue;
        ++a_responder_;
        return true;
    }
    return false;
}

void FonteDaEmpresa::deixa_lugar() {
    {
        const std::lock_guard guarda(tranca_);
        --a_responder_;
    }
    ha_lugar_.notify_one();
}

// One that was lost while nobody used it opens its connection again with the first statement; one on which
// anything failed is not used again.
bool FonteDaEmpresa::do_servidor(const Consulta& consulta, Destino& destino) {
    constexpr std::size_t bastantes = 3;
    if (!toma_lugar(destino)) return false;
    const auto deixa = [this](FonteDaEmpresa*) { deixa_lugar(); };
    const std::unique_ptr<FonteDaEmpresa, decltype(deixa)> lugar(this, deixa);
    std::unique_ptr<startup::SessaoBD> BD;
    {
        const std::lock_guard guarda(tranca_);
        if (!paradas_.empty()) {
            BD = std::move(paradas_.back());
            paradas_.pop_back();
        }
    }
    if (BD == nullptr) BD = empresa_.abre();
    const bool ha = consulta({*BD, casa_, base::DataHora::agora()}, destino);
    const std::lock_guard guarda(tranca_);
    if (paradas_.size() < bastantes) paradas_.push_back(std::move(BD));
    return ha;
}

} // namespace orvex::consulta
