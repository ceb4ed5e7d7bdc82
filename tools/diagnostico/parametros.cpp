#include "parametros.h"

#include "base/caminho.h"
#include "base/texto.h"
#include "definicoes.h"
#include "platform/sqlite/empresa.h"

#include <algorithm>
#include <array>

namespace orvex::diagnostico {
namespace {

using platform::sqlite::compara_servidor;
using startup::ListaParametros;

// What one key names: a document type with its series, for one purpose.
struct Uso {
    const char* chave;
    std::string tipo;
    std::int16_t serie;
};

class VerificacaoParametros {
  public:
    VerificacaoParametros(const startup::Parametros& parametros, std::string ficheiro, Resultados& resultados)
        : parametros_(parametros), ficheiro_(std::move(ficheiro)), resultados_(resultados) {}

    void tudo() {
        for (const ChaveExigida& exigida : chaves_exigidas())
            chave(exigida);
        armazens();
        for (std::size_t i = 0; i < usos_.size(); ++i)
            for (std::size_t j = 0; j < i; ++j)
                par(usos_[j], usos_[i]);
    }

  private:
    void junta(const std::string& chave, Estado estado, std::string texto) {
        resultados_.push_back({"parâmetro " + chave, estado, std::move(texto)});
    }
    void chave(const ChaveExigida& exigida);
    void exige(const ListaParametros& lista, const ChaveExigida& exigida); // throws FalhaParametro
    void brancos(const ListaParametros& lista, const ChaveExigida& exigida);
    void armazens();
    void par(const Uso& um, const Uso& outro);

    const startup::Parametros& parametros_;
    std::string ficheiro_;
    Resultados& resultados_;
    std::vector<Uso> usos_;
};

void VerificacaoParametros::chave(const ChaveExigida& exigida) {
    try {
        const ListaParametros lista = le(parametros_, exigida);
        exige(lista, exigida);
        junta(exigida.chave, Estado::ok, parametros_.LerParametros(exigida.chave));
        brancos(lista, exigida);
    } catch (const startup::FalhaParametro& falha) {
        junta(exigida.chave, Estado::erro,
              std::string(falha.what()) + " Corrija «" + ficheiro_ + "»; precisam dele: " + exigida.ecras +
                  ".");
    }
}

void VerificacaoParametros::exige(const ListaParametros& lista, const ChaveExigida& exigida) {
    const auto recusa = [&](std::size_t elemento, const std::string& porque) {
        throw startup::FalhaParametro("O parâmetro " + lista.chave + " tem no elemento " +
                                      std::to_string(elemento + 1) + " " + porque);
    };
    std::vector<Uso> usos;
    for (std::size_t i = 0; i == 0 || (exigida.em_grupos && i < lista.elementos.size());
         i += exigida.elementos) {
        lista[i + exigida.elementos - 1];
        if (base::apara(lista[i]).empty()) recusa(i, "um código vazio.");
        if (!exigida.com_serie) continue;
        if (base::excede(lista[i], comprimento_tipo))
            recusa(i, "o tipo de documento «" + lista[i] + "», e um tipo tem no máximo 3 caracteres.");
        usos.push_back({exigida.chave, lista[i], lista.serie(i + 1)});
    }
    usos_.insert(usos_.end(), usos.begin(), usos.end());
}

// Elements are taken as they stand.
void VerificacaoParametros::brancos(const ListaParametros& lista, const ChaveExigida& exigida) {
    const std::size_t codigos = exigida.com_serie ? lista.elementos.size() : 1; // a name may look as it likes
    for (std::size_t i = 0; i < codigos; ++i)
        if (base::apara(lista[i]) != lista[i])
            junta(
                exigida.chave, Estado::aviso,
                "o elemento " + std::to_string(i + 1) + ", «" + lista[i] +
                    "», tem brancos nas pontas, que contam: retire-os, a não ser que o ERP o escreva assim.");
}

void VerificacaoParametros::armazens() {
    const startup::ParametroArmazem um = parametros_.lista("ARMAZEM"),
                                    outro = parametros_.lista("ARMAZEMORVEX");
    if (um.elementos.empty() || outro.elementos.empty() || compara_servidor(um.Codigo(), outro.Codigo()) != 0)
        return;
    junta(um.chave, Estado::erro,
          "é o mesmo armazém que " + outro.chave +
              ", e o programa vê pelo armazém se um artigo está num cliente ou na ORVEX. Corrija «" +
              ficheiro_ + "».");
}

// Notes, returns and invoices are told apart in the movements by type and series; notes, returns and each
// kind of adjustment in the history.
void VerificacaoParametros::par(const Uso& um, const Uso& outro) {
    using Nomes = std::array<std::string_view, 3>;
    const auto e_um_de = [](const Nomes& nomes, const Uso& uso) {
        return std::find(nomes.begin(), nomes.end(), uso.chave) != nomes.end();
    };
    const std::string_view a = um.chave, b = outro.chave;
    if (a == b || um.serie != outro.serie || compara_servidor(um.tipo, outro.tipo) != 0) return;
    constexpr Nomes guias{"GUIASREMESSA", "GUIADEVOLUCAO", "FACTURAS"},
        ajustes{"SOBRAS", "QUEBRAS", "CONSUMOS"};
    const bool nos_movimentos = e_um_de(guias, um) && e_um_de(guias, outro);
    const bool no_historico = (e_um_de(guias, um) || e_um_de(ajustes, um)) && e_um_de(ajustes, outro) &&
                              a != "FACTURAS" && !(a == "QUEBRAS" && b == "CONSUMOS"); // both take out
    const bool misturados = nos_movimentos || no_historico;
    junta(um.chave, misturados ? Estado::erro : Estado::aviso,
          "o tipo e a série " + um.tipo + "," + std::to_string(um.serie) + " são também os de " +
              outro.chave +
              (misturados
                   ? ": o programa tomaria os documentos de um pelos do outro. Corrija «" + ficheiro_ + "»."
                   : ": no livro, os documentos de um não se distinguem dos do outro."));
}

} // namespace

const std::vector<ChaveExigida>& chaves_exigidas() {
    static constexpr const char* todos = "guias, ajustes e transferências";
    static constexpr const char* stocks = "ajustes e transferências";
    constexpr std::size_t documento = startup::ParametroDocumento::tamanho,
                          grupo = startup::ParametroGrupos::tamanho_grupo,
                          armazem = startup::ParametroArmazem::tamanho,
                          cliente = startup::ParametroCliente::tamanho;
    static const std::vector<ChaveExigida> chaves{
        {"GUIASREMESSA", documento, true, false, "guias"},
        {"GUIADEVOLUCAO", documento, true, false, "guias"},
        {"FACTURAS", grupo, true, true, "guias e transferências"},
        {"SOBRAS", documento, true, false, stocks},
        {"QUEBRAS", documento, true, false, stocks},
        {"CONSUMOS", documento, true, false, "ajustes"},
        {"TRF", documento, true, false, "transferências"},
        {"ARMAZEM", armazem, false, false, todos},
        {"ARMAZEMORVEX", armazem, false, false, todos},
        {"CLIENTEORVEX", cliente, false, false, todos},
    };
    return chaves;
}

startup::ListaParametros le(const startup::Parametros& parametros, const ChaveExigida& exigida) {
    return exigida.em_grupos ? parametros.lista_de_grupos(exigida.chave) : parametros.lista(exigida.chave);
}

bool verifica_parametros(const startup::Parametros& parametros, const std::filesystem::path& pasta,
                         Resultados& resultados) {
    constexpr const char* nome = "parâmetros";
    const auto ficheiro = pasta / startup::ficheiro_parametros;
    try {
        parametros.LerParametros(""); // the file itself
    } catch (const base::Falha& falha) {
        resultados.push_back({nome, Estado::erro, std::string(falha.what()) + " Crie-o, ou corrija-o."});
        return false;
    }
    resultados.push_back({nome, Estado::ok, base::texto_de(ficheiro)});
    VerificacaoParametros(parametros, base::texto_de(ficheiro), resultados).tudo();
    return true;
}

} // namespace orvex::diagnostico
