#include "platform/erp/sessao_erp_embebida.h"
#include "platform/operacoes/sessao_erp_ouvida.h"
#include "tests/windows/morte.h"
#include "tools/componente/programa.h"
#include "tools/componente/sessao.h"

#include <cstdlib>
#include <string_view>

using namespace orvex;

namespace {

struct Fatal : platform::operacoes::Ouvinte {
    using Operacao = platform::operacoes::Operacao;

    void antes(const Operacao& esta) override { morre(esta, "antes"); }
    void depois(const Operacao& esta, const platform::operacoes::Fim&) override { morre(esta, "depois"); }

  private:
    static void morre(const Operacao& esta, std::string_view agora) {
        using enum Operacao::Especie;
        const bool escreve =
            esta.especie == cria_stock || esta.especie == anula || esta.membro == "Finalizar";
        if (!escreve || agora != __argv[1]) return;
        const HANDLE sinal = ::OpenEventW(SYNCHRONIZE, FALSE, testes::sinal_para_morrer);
        if (sinal != nullptr && ::WaitForSingleObject(sinal, 0) == WAIT_OBJECT_0)
            ::TerminateProcess(::GetCurrentProcess(), EXIT_FAILURE);
    }
};

} // namespace

int main(int, char* argumentos[]) {
    Fatal fatal;
    CLSID classe{};
    ::CLSIDFromString(platform::automacao::utf16_de(argumentos[2]).c_str(), &classe);
    return componente::corre_programa(testes::classe_que_morre(classe), [&fatal] {
        return componente::despacho_da_sessao(std::make_unique<platform::operacoes::SessaoERPOuvida>(
            std::make_unique<platform::erp::SessaoERPEmbebida>(), fatal));
    });
}
