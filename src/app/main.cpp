// The program: one start, one task, named by the argument.
#include "app/fabrica_orvex.h"
#include "app/passagem.h"
#include "base/caminho.h"
#include "base/descricao.h"
#include "base/versao.h"
#include "platform/consola/consola.h"
#include "platform/operacoes/registo_operacoes.h"
#include "platform/operacoes/sistema.h"
#include "platform/qt/programa.h"

#include <cstdlib>
#include <exception>
#include <iostream>

namespace {

using namespace orvex;

platform::operacoes::RegistoOperacoes& registo() {
    static platform::operacoes::RegistoOperacoes do_programa(
        platform::operacoes::pasta_do_registo(),
        [](const std::string& avaria) { std::cerr << startup::titulo_programa << ": " << avaria << '\n'; });
    return do_programa;
}

void diz_falha(const std::string& texto) {
    registo().falha(texto);
    registo().fim("falha");
    platform::qt::diz(texto, startup::titulo_programa, common::Icone::critico);
}

// The argument is the whole command line after the program's name.
std::string argumento_de(const std::vector<std::string>& linha_de_comando) {
    std::string argumento;
    for (std::size_t i = 1; i < linha_de_comando.size(); ++i)
        argumento += (i > 1 ? " " : "") + linha_de_comando[i];
    return argumento;
}

struct Inicio {
    std::string argumento;
    startup::PastasInstalacao pastas;
    std::exception_ptr defeito{}; // the program that was to work instead does not start
};

// `aplicacao` runs the screen, if the argument names one.
int corre(const Inicio& inicio, platform::qt::Programa* aplicacao) {
    try {
        if (inicio.defeito) std::rethrow_exception(inicio.defeito);
        app::FabricaOrvex fabrica(inicio.pastas.programa, &registo());
        startup::Arranque arranque(fabrica, inicio.pastas);
        const auto ecra = arranque.Main(inicio.argumento);
        const int resultado = ecra != nullptr ? aplicacao->corre() : EXIT_SUCCESS;
        registo().fim(fabrica.recusou() ? "recusado" : "fechado");
        return fabrica.recusou() ? EXIT_FAILURE : resultado;
    } catch (const std::exception& falha) {
        diz_falha(base::descricao(falha));
        return EXIT_FAILURE;
    }
}

} // namespace

// What opens no screen needs no window system.
int main(int argc, char* argv[]) {
    const auto linha = base::linha_de_comando(argc, argv);
    const auto programa = base::caminho_do_programa(linha[0]);
    Inicio inicio{.argumento = argumento_de(linha),
                  .pastas =
                      startup::PastasInstalacao::de(startup::pasta_da_instalacao(programa.parent_path()))};
    // Before there is a window of the toolkit: nobody would serve it while this one waits.
    try {
        if (const auto fim = app::passa_a_32_bits(inicio.pastas, programa)) return *fim;
    } catch (const base::Falha&) {
        inicio.defeito = std::current_exception();
    }
    const platform::consola::Consola consola;
    registo().inicio(base::versao(), inicio.argumento);
    if (!startup::Arranque::abre_ecra(inicio.argumento)) {
        const QCoreApplication nucleo(argc, argv);
        return corre(inicio, nullptr);
    }
    const auto aplicacao = platform::qt::Programa::novo(argc, argv, diz_falha);
    return corre(inicio, aplicacao.get());
}
