// A program that hands over; and, in the folder of those that it hands over to, says what it was given.
#include "app/passagem.h"
#include "base/caminho.h"
#include "base/falha.h"

#include <iostream>

int main(int argc, char** argv) {
    using namespace orvex;
    const auto linha = base::linha_de_comando(argc, argv);
    const auto programa = base::caminho_do_programa(linha[0]);
    const auto pasta = programa.parent_path();
    if (pasta.filename() == "32") {
        std::cout << base::texto_de(std::filesystem::current_path());
        for (std::size_t i = 1; i < linha.size(); ++i)
            std::cout << "|" << linha[i];
        std::cout << "|";
        return 41;
    }
    try {
        return app::passa_a_32_bits(startup::PastasInstalacao{pasta, pasta}, programa).value_or(2);
    } catch (const base::Falha& falha) {
        std::cout << falha.what();
        return 3;
    }
}
