#include "aceites.h"

#include "base/caminho.h"
#include "saida.h"

#include <fstream>

namespace orvex::auditoria {

Aceites le_aceites(const std::filesystem::path& ficheiro) {
    std::ifstream entrada(ficheiro, std::ios::binary);
    Aceites aceites;
    for (std::string linha; std::getline(entrada, linha);) {
        if (linha.ends_with('\r')) linha.pop_back();
        if (!linha.empty() && !linha.starts_with('#')) aceites.insert(linha);
    }
    if (!entrada.eof())
        throw base::Falha("O ficheiro de achados aceites «" + base::texto_de(ficheiro) +
                          "» não pode ser lido.");
    return aceites;
}

void escreve_aceites(const std::filesystem::path& ficheiro, const Relatorio& relatorio) {
    std::ofstream saida(ficheiro, std::ios::binary);
    saida << "# Achados aceites por orvex-auditoria. Apague as linhas do que não quer aceitar.\n"
             "# Com outro peso, um achado é outro, e volta a ser mostrado.\n";
    for (const Achados* achados : {&relatorio.achados, &relatorio.aceites})
        for (const Achado& achado : *achados)
            saida << "\n# " << texto(achado) << "\n" << achado.identidade() << "\n";
    if (!saida.flush())
        throw base::Falha("O ficheiro de achados aceites «" + base::texto_de(ficheiro) +
                          "» não pode ser escrito.");
}

} // namespace orvex::auditoria
