#include "linha_comando.h"

#include "base/caminho.h"
#include "base/falha.h"

#include <utility>

namespace orvex::conformidade {

std::string uso() {
    return "Uso: orvex-conformidade [PASTA] --cliente CÓDIGO --artigo CÓDIGO --empresa-de-ensaio NOME\n"
           "Experimenta o ERP da instalação em PASTA, ou na pasta deste programa: cria, lê e anula um "
           "documento de "
           "cada\nespécie, tenta o que o ERP tem de recusar, e diz linha a linha o que está certo.\n\n"
           "  --empresa-de-ensaio NOME    o nome que o ERP dá à empresa; sem ele nada se cria, e é dito qual "
           "é\n"
           "  --cliente CÓDIGO            o cliente das guias, como o ERP o escreve\n"
           "  --artigo CÓDIGO             o artigo dos documentos, como o ERP o escreve\n\n"
           "Ninguém deve trabalhar na empresa entretanto.\n"
           "Acaba com 0 se está tudo certo, 2 se há algo errado, 1 se não pôde experimentar tudo.";
}

Opcoes le_argumentos(std::span<const std::string> argumentos) {
    Opcoes opcoes;
    const std::pair<const char*, std::string*> com_valor[] = {{"--empresa-de-ensaio", &opcoes.empresa},
                                                              {"--cliente", &opcoes.cliente},
                                                              {"--artigo", &opcoes.artigo}};
    const auto destino = [&](const std::string& argumento) -> std::string* {
        for (const auto& [nome, valor] : com_valor)
            if (argumento == nome) return valor;
        return nullptr;
    };
    for (std::size_t i = 0; i < argumentos.size(); ++i) {
        const std::string& argumento = argumentos[i];
        if (std::string* valor = destino(argumento)) {
            if (i + 1 == argumentos.size() || argumentos[i + 1].empty())
                throw base::Falha("A opção " + argumento + " precisa de um valor.");
            *valor = argumentos[++i];
        } else if (argumento == "--help" || argumento == "--ajuda") {
            opcoes.ajuda = true;
        } else if (!argumento.starts_with("-") && opcoes.pasta.empty()) {
            opcoes.pasta = base::caminho_de(argumento);
        } else {
            throw base::Falha("Argumento desconhecido: «" + argumento + "».");
        }
    }
    if (!opcoes.ajuda && (opcoes.cliente.empty() || opcoes.artigo.empty()))
        throw base::Falha("Faltam --cliente e --artigo: os códigos de que se fazem os documentos.");
    return opcoes;
}

} // namespace orvex::conformidade
