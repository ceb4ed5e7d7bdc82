#include "linha_comando.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "base/texto.h"

namespace orvex::demo {
namespace {

std::int64_t inteiro(const std::string& opcao, const std::string* texto, std::int64_t menor,
                     std::int64_t maior) {
    const auto numero = texto == nullptr ? std::nullopt : base::le_inteiro(*texto);
    if (numero && *numero >= menor && *numero <= maior) return *numero;
    throw base::Falha("A opção " + opcao + " precisa de um número entre " + std::to_string(menor) + " e " +
                      std::to_string(maior) + ".");
}

} // namespace

std::string uso() {
    return "Uso: orvex-empresa PASTA [--clientes N] [--artigos N] [--linhas N] [--semente S]\n"
           "Cria em PASTA, que não pode ter nada, uma instalação com uma empresa de treino.";
}

OpcoesEmpresa le_argumentos(std::span<const std::string> argumentos) {
    constexpr std::int64_t milhao = 1'000'000;
    OpcoesEmpresa opcoes;
    opcoes.hoje = base::DataHora::agora();
    for (std::size_t i = 0; i < argumentos.size(); ++i) {
        const std::string& argumento = argumentos[i];
        const std::string* seguinte = i + 1 < argumentos.size() ? &argumentos[i + 1] : nullptr;
        if (!argumento.starts_with("-") && opcoes.pasta.empty()) {
            opcoes.pasta = base::caminho_de(argumento);
            continue;
        }
        ++i;
        if (argumento == "--clientes")
            opcoes.clientes = inteiro(argumento, seguinte, 1, milhao);
        else if (argumento == "--artigos")
            opcoes.artigos = inteiro(argumento, seguinte, 1, milhao);
        else if (argumento == "--linhas")
            opcoes.linhas = inteiro(argumento, seguinte, 0, 10 * milhao);
        else if (argumento == "--semente")
            opcoes.semente = static_cast<std::uint64_t>(inteiro(argumento, seguinte, 0, 1'000 * milhao));
        else
            throw base::Falha("Argumento desconhecido: «" + argumento + "».");
    }
    if (opcoes.pasta.empty()) throw base::Falha("Falta a pasta da instalação.");
    return opcoes;
}

} // namespace orvex::demo
