#include "diagnostico_parametros.h"

namespace orvex::diagnostico {
namespace {

startup::ListaParametros le(const startup::Parametros& parametros, const ChaveExigida& exigida) {
    if (!exigida.em_grupos) return parametros.lista(exigida.chave);
    startup::ListaParametros lista = parametros.lista_de_grupos(exigida.chave);
    if (!lista.elementos.empty() && lista.elementos.back().empty()) lista.elementos.pop_back();
    return lista;
}

// Throws FalhaParametro.
void exige(const startup::ListaParametros& lista, const ChaveExigida& exigida) {
    for (std::size_t i = 0; i == 0 || (exigida.em_grupos && i < lista.elementos.size());
         i += exigida.elementos) {
        if (exigida.com_serie) lista.serie(i + 1);
        lista[i + exigida.elementos - 1];
    }
}

} // namespace

const std::vector<ChaveExigida>& chaves_exigidas() {
    static constexpr const char* todos = "guias, ajustes e transferências";
    static constexpr const char* stocks = "ajustes e transferências";
    static const std::vector<ChaveExigida> chaves{
        {"GUIASREMESSA", 3, true, false, "guias"},
        {"GUIADEVOLUCAO", 3, true, false, "guias"},
        {"FACTURAS", 3, true, true, "guias e transferências"},
        {"SOBRAS", 3, true, false, stocks},
        {"QUEBRAS", 3, true, false, stocks},
        {"CONSUMOS", 3, true, false, "ajustes"},
        {"TRF", 3, true, false, "transferências"},
        {"ARMAZEM", 2, false, false, todos},
        {"ARMAZEMORVEX", 2, false, false, todos},
        {"CLIENTEORVEX", 1, false, false, todos},
    };
    return chaves;
}

void verifica_parametros(const startup::Parametros& parametros, const std::filesystem::path& pasta,
                         Resultados& resultados) {
    const std::string ficheiro = (pasta / startup::ficheiro_parametros).string();
    try {
        parametros.LerParametros(""); // the file itself
    } catch (const base::Falha& falha) {
        resultados.push_back(
            {"parâmetros", Estado::erro, std::string(falha.what()) + " Crie-o, ou dê permissão para o ler."});
        return;
    }
    resultados.push_back({"parâmetros", Estado::ok, ficheiro});
    for (const ChaveExigida& exigida : chaves_exigidas()) {
        const std::string nome = std::string("parâmetro ") + exigida.chave;
        try {
            exige(le(parametros, exigida), exigida);
            resultados.push_back({nome, Estado::ok, parametros.LerParametros(exigida.chave)});
        } catch (const startup::FalhaParametro& falha) {
            resultados.push_back({nome, Estado::erro,
                                  std::string(falha.what()) + " Corrija «" + ficheiro +
                                      "»; precisam dele: " + exigida.ecras + "."});
        }
    }
}

} // namespace orvex::diagnostico
