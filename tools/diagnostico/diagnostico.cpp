#include "diagnostico.h"

#include "base/versao.h"
#include "base_de_dados.h"
#include "codigos.h"
#include "definicoes.h"
#include "erp.h"
#include "parametros.h"

#include "app/gaveta_da_empresa.h"
#include "base/caminho.h"
#include "platform/operacoes/ficheiro_rotativo.h"
#include "platform/operacoes/sistema.h"

#include <algorithm>

namespace orvex::diagnostico {
namespace {

// Of the user who asks: each has his own.
Resultado verifica_registo() {
    constexpr const char* nome = "registo de operações";
    const platform::operacoes::FicheiroRotativo registo(platform::operacoes::pasta_do_registo());
    const std::string defeito = registo.defeito();
    if (defeito.empty()) return {nome, Estado::ok, base::texto_de(registo.caminho())};
    return {nome, Estado::aviso,
            "não pode ser escrito, e o programa trabalha sem ele: " + defeito +
                ". Dê ao utilizador uma pasta "
                "sua onde possa escrever."};
}

// Confirmations that the next start of the program settles, or its user puts off.
Resultado verifica_diario(const startup::DefinicoesBD& definicoes) {
    constexpr const char* nome = "diário das confirmações";
    const auto gaveta = app::gaveta_da_empresa(definicoes);
    const auto& pasta = gaveta.pasta();
    try {
        const std::size_t por_acabar = gaveta.por_acabar().size();
        if (const auto erro = platform::operacoes::pode_acrescentar(pasta / "novo"))
            return {nome, Estado::erro,
                    "não pode ser escrito, e sem ele nada se confirma: " + base::causa(pasta, erro) + "."};
        if (por_acabar == 0) return {nome, Estado::ok, base::texto_de(pasta)};
        return {nome, Estado::aviso,
                std::to_string(por_acabar) + " por acabar em «" + base::texto_de(pasta) +
                    "». Se o programa não está a confirmar nada, volte a abri-lo: diz o que é feito delas."};
    } catch (const base::Falha& falha) {
        return {nome, Estado::erro, std::string("não pode ser lido: ") + falha.what()};
    }
}

} // namespace

Resultados diagnostica(const startup::PastasInstalacao& pastas, const std::string& sem_32_bits) {
    Resultados resultados{{"programa", Estado::informacao,
                           std::string("ORVEX ") + base::versao() + ", " + de_bits(bits_do_programa)}};
    const Definicoes definicoes = verifica_definicoes(pastas, resultados);
    const auto BD = verifica_base_de_dados(definicoes.bd, resultados);
    const startup::Parametros parametros(pastas.programa);
    const bool com_parametros = verifica_parametros(parametros, pastas.programa, resultados);
    verifica_erp(definicoes, BD.get(), sem_32_bits, resultados);
    if (com_parametros) verifica_codigos(parametros, definicoes.erp, BD.get(), resultados);
    resultados.push_back(verifica_registo());
    if (definicoes.bd) resultados.push_back(verifica_diario(*definicoes.bd));
    return resultados;
}

bool tem_erros(const Resultados& resultados) {
    return std::any_of(resultados.begin(), resultados.end(),
                       [](const Resultado& este) { return este.estado == Estado::erro; });
}

std::string texto(const Resultados& resultados) {
    constexpr const char* inicios[] = {"ok    ", "ERRO  ", "aviso ", "info  ", "?     "};
    std::string linhas;
    for (const Resultado& este : resultados)
        linhas += inicios[static_cast<int>(este.estado)] + este.o_que + ": " +
                  (este.estado == Estado::nao_verificado ? "não verificado: " : "") + este.texto + "\n";
    return linhas;
}

std::string enumera(const std::vector<std::string>& nomes) {
    std::string texto;
    for (const std::string& nome : nomes)
        texto += (texto.empty() ? "" : ", ") + nome;
    return texto;
}

} // namespace orvex::diagnostico
