#include "auditoria.h"

#include "ponto.h"
#include "tools/comum/empresa_para_ler.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace orvex::auditoria {
namespace {

Exame examina_em_repouso(const Pedido& pedido, Progresso& progresso) {
    Exame exame;
    const bool inteiro = le_em_repouso(pedido.aspecto, [&] {
        Sessoes sessoes(pedido.abre);
        exame =
            examina(pedido.casa, pedido.hoje, pedido.gaveta ? &*pedido.gaveta : nullptr, sessoes, progresso);
    });
    if (!inteiro)
        exame.nao_vistos.push_back({"tudo", "A empresa foi aberta e fechada por outros durante a leitura."});
    return exame;
}

bool mais_pesado(const Achado& a, const Achado& b) {
    const auto ordem = [](const Achado& este) {
        return std::tuple(este.gravidade == Gravidade::informacao, -este.peso, este.gravidade,
                          std::tie(este.verificacao, este.chave, este.artigo, este.encontrado));
    };
    return ordem(a) < ordem(b);
}

struct Separados {
    Achados novos, aceites;
};

Separados separa(const Pedido& pedido, Achados achados) {
    Separados dois;
    for (Achado& achado : achados)
        if (pedido.filtro.passa(achado))
            (pedido.aceites.contains(achado.identidade()) ? dois.aceites : dois.novos)
                .push_back(std::move(achado));
    return dois;
}

bool ha_graves(const Achados& achados) {
    return std::any_of(achados.begin(), achados.end(),
                       [](const Achado& este) { return este.gravidade != Gravidade::informacao; });
}

// Those that were there before, as they are now; and whether each is still the same.
bool confirma(const Achados& antes, Achados& agora) {
    std::map<std::tuple<std::string, std::string, std::string>, std::string> sitios;
    for (const Achado& este : antes)
        sitios[{este.verificacao, este.chave, este.artigo}] = este.identidade();
    bool iguais = true;
    std::erase_if(agora, [&](const Achado& este) {
        if (este.gravidade == Gravidade::informacao) return false;
        const auto sitio = sitios.find({este.verificacao, este.chave, este.artigo});
        if (sitio == sitios.end()) return true;
        iguais = iguais && sitio->second == este.identidade();
        return false;
    });
    return iguais;
}

} // namespace

bool Filtro::passa(const Achado& achado) const {
    if (!cliente.empty() && !mesmo_codigo(cliente, achado.cliente)) return false;
    const auto este = [&](const std::string& outro) { return mesmo_codigo(artigo, outro); };
    if (!artigo.empty() && !este(achado.artigo) &&
        std::none_of(achado.artigos.begin(), achado.artigos.end(), este))
        return false;
    return !desde || !achado.data || *achado.data >= *desde;
}

bool Relatorio::limpo() const { return !ha_graves(achados); }

Relatorio audita(const Pedido& pedido, Progresso& progresso) {
    constexpr int leituras = 3;
    Exame exame = examina_em_repouso(pedido, progresso);
    Separados vistos = separa(pedido, std::move(exame.achados));
    for (int leitura = 2; leitura <= leituras && ha_graves(vistos.novos); ++leitura) {
        progresso.espera(pedido.espera);
        Exame outra = examina_em_repouso(pedido, progresso);
        const bool inteira = outra.nao_vistos.size() <= exame.nao_vistos.size();
        if (!inteira) { // what cannot be read again stays as it was found
            exame.nao_vistos = std::move(outra.nao_vistos);
            break;
        }
        Separados agora = separa(pedido, std::move(outra.achados));
        const bool iguais = confirma(vistos.novos, agora.novos);
        vistos = std::move(agora);
        exame.nao_vistos = std::move(outra.nao_vistos);
        if (iguais) break;
    }
    std::sort(vistos.novos.begin(), vistos.novos.end(), mais_pesado);
    std::sort(vistos.aceites.begin(), vistos.aceites.end(), mais_pesado);
    return {std::move(vistos.novos), std::move(vistos.aceites), std::move(exame.nao_vistos)};
}

} // namespace orvex::auditoria
