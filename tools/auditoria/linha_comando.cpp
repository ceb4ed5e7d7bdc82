#include "linha_comando.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "base/texto.h"
#include "tools/comum/valor_da_opcao.h"

namespace orvex::auditoria {

std::string uso() {
    return "Uso: orvex-auditoria [PASTA] [opções]\n"
           "Compara o livro da instalação em PASTA, ou na pasta deste programa, consigo próprio e com o ERP, "
           "sem "
           "nada alterar.\n\n"
           "  --cliente CÓDIGO            só os achados deste cliente\n"
           "  --artigo CÓDIGO             só os achados deste artigo\n"
           "  --desde AAAA-MM-DD          só os achados de documentos deste dia em diante\n"
           "  --aceites FICHEIRO          não mostra os achados que este ficheiro aceita\n"
           "  --escreve-aceites FICHEIRO  escreve nele os achados de agora, para os aceitar\n"
           "  --espera SEGUNDOS           antes de reler o que encontrou (20)\n"
           "  --json                      o resultado para outros programas\n\n"
           "Acaba com 0 se está tudo certo, 2 se há o que corrigir, 1 se não pôde verificar tudo.";
}

Opcoes le_argumentos(std::span<const std::string> argumentos) {
    constexpr int maximo_de_segundos = 3600;
    Opcoes opcoes;
    for (std::size_t i = 0; i < argumentos.size(); ++i) {
        const std::string& argumento = argumentos[i];
        const auto valor = [&] { return valor_da_opcao(argumentos, i); };
        if (argumento == "--json") {
            opcoes.json = true;
        } else if (argumento == "--help" || argumento == "--ajuda") {
            opcoes.ajuda = true;
        } else if (argumento == "--cliente") {
            opcoes.filtro.cliente = valor();
        } else if (argumento == "--artigo") {
            opcoes.filtro.artigo = valor();
        } else if (argumento == "--aceites") {
            opcoes.aceites = base::caminho_de(valor());
        } else if (argumento == "--escreve-aceites") {
            opcoes.escreve_aceites = base::caminho_de(valor());
        } else if (argumento == "--desde") {
            opcoes.filtro.desde = base::DataHora::le(valor());
            if (!opcoes.filtro.desde) throw base::Falha("«" + argumentos[i] + "» não é uma data.");
        } else if (argumento == "--espera") {
            const auto segundos = base::le_inteiro(valor());
            if (!segundos || *segundos < 0 || *segundos > maximo_de_segundos)
                throw base::Falha("A opção --espera precisa de um número de segundos.");
            opcoes.espera = static_cast<int>(*segundos);
        } else if (!argumento.starts_with("-") && opcoes.pasta.empty()) {
            opcoes.pasta = base::caminho_de(argumento);
        } else {
            throw base::Falha("Argumento desconhecido: «" + argumento + "».");
        }
    }
    return opcoes;
}

} // namespace orvex::auditoria
