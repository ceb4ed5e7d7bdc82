#include "base/caminho.h"
#include "base/descricao.h"
#include "exame.h"

namespace orvex::auditoria {
namespace {

Achado do_diario(const std::filesystem::path& ficheiro, const platform::diario::Passos& passos) {
    const confirmacao::Intencao& intencao = passos.intencao;
    Achado achado{.gravidade = Gravidade::aviso,
                  .verificacao = "J1",
                  .chave = base::texto_de(ficheiro.filename()),
                  .cliente = intencao.Cliente,
                  .esperado = "acabado",
                  .encontrado =
                      std::string(nome(intencao.fluxo)) + " de " + passos.cabecalho.hora.data_hora(),
                  .desde = "a confirmação",
                  .data = passos.cabecalho.hora,
                  .que_fazer = "abrir o programa em " + passos.cabecalho.maquina + " como " +
                               passos.cabecalho.utilizador + ", que diz o que é feito dela"};
    for (const confirmacao::ArtigoMovido& artigo : intencao.artigos) {
        achado.artigos.push_back(artigo.Artigo);
        achado.peso += artigo.Quantidade;
    }
    if (achado.artigos.size() == 1) achado.artigo = achado.artigos.front();
    return achado;
}

} // namespace

// One of a program that lives is unfinished too; what is found is read again before it is told.
void examina_diarios(Contexto& contexto, const platform::diario::Gaveta& gaveta) {
    for (const auto& ficheiro : gaveta.por_acabar()) {
        try {
            contexto.junta(do_diario(ficheiro, gaveta.le(ficheiro)));
        } catch (const std::exception& falha) {
            if (!std::filesystem::exists(ficheiro)) continue; // finished meanwhile
            contexto.junta({.gravidade = Gravidade::erro,
                            .verificacao = "J1",
                            .chave = base::texto_de(ficheiro.filename()),
                            .esperado = "um diário inteiro",
                            .encontrado = base::descricao(falha),
                            .que_fazer = "comparar no ERP os documentos dessa hora com o livro"});
        }
    }
}

} // namespace orvex::auditoria
