#include "tests/apoio/sessao_de_teste.h"

#include "base/caminho.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "startup/construtor_ligacao.h"
#include "tools/ensaio/base_ensaio.h"

#include <cstdlib>
#include <string_view>

namespace orvex::testes {
namespace {

bool motor_pedido(std::string_view qual) {
    const char* motor = std::getenv(ensaio::variavel_motor);
    return motor != nullptr && motor == qual;
}

struct ServidorAlheio {
    int porta;
    std::filesystem::path raiz;
};
std::optional<ServidorAlheio> alheio;

std::string ligacao_a(int porta, const std::string& base_de_dados, const std::string& utilizador,
                      const std::string& palavra_passe) {
    return startup::ConstrutorLigacao{.servidor = "127.0.0.1," + std::to_string(porta),
                                      .base = base_de_dados,
                                      .utilizador = utilizador,
                                      .palavra_passe = palavra_passe,
                                      .encriptacao = "nao"}
        .constroi();
}

std::unique_ptr<startup::SessaoBD> do_motor_pedido() {
    if (pelo_fio() || no_servidor()) // where there are windows, calls are made on a thread of the connection
        return std::make_unique<platform::odbc::SessaoODBC>(
            platform::odbc::Esperas{.a_vista = platform::espera::so_espera});
    return std::make_unique<platform::sqlite::SessaoSQLite>();
}

} // namespace

bool pelo_fio() { return motor_pedido("fio"); }
bool no_servidor() { return motor_pedido(ensaio::motor_servidor); }

std::string ligacao(const std::filesystem::path& pasta) {
    return startup::ConstrutorLigacao{
        .servidor = "sqlite", .base = base::texto_de(pasta), .utilizador = "ana"}
        .constroi();
}

std::string ligacao(const ServidorTDS& servidor, const std::string& palavra_passe) {
    return ligacao_a(servidor.porta(), servidor.base, servidor.utilizador, palavra_passe);
}

std::unique_ptr<startup::SessaoBD> abre_empresa(const std::filesystem::path& pasta) {
    if (no_servidor()) return std::make_unique<EmpresaNoServidor>(pasta);
    auto sessao = std::make_unique<platform::sqlite::SessaoSQLite>();
    if (!sessao->Abre(ligacao(pasta))) throw std::runtime_error("the company did not open");
    return sessao;
}

void usa_servidor_em(int porta, const std::filesystem::path& raiz) { alheio = {porta, raiz}; }

SessaoDeTeste::SessaoDeTeste(Diario& diario) : SessaoBDOuvida(do_motor_pedido(), diario) {}

bool SessaoDeTeste::Abre(const std::string& texto) {
    if (no_servidor()) {
        ensaio::abre_ensaio(dynamic_cast<platform::odbc::SessaoODBC&>(real()));
        return true;
    }
    if (!pelo_fio()) return SessaoBDOuvida::Abre(texto);
    const std::string pasta = startup::ConstrutorLigacao::le(texto)["Database"];
    if (alheio)
        return SessaoBDOuvida::Abre(
            ligacao_a(alheio->porta, base::texto_de(base::caminho_de(pasta).lexically_relative(alheio->raiz)),
                      "orvex", "segredo"));
    servidor_.emplace(base::caminho_de(pasta));
    return SessaoBDOuvida::Abre(ligacao(*servidor_));
}

void SessaoDeTeste::EmPasso(const std::vector<std::string>& perguntas,
                            const std::function<void()>& trabalho) {
    struct Passo {
        int& passos;
        explicit Passo(int& estes) : passos(estes) { ++passos; }
        ~Passo() { --passos; }
    } const passo(passos_);
    SessaoBDOuvida::EmPasso(perguntas, trabalho);
}

} // namespace orvex::testes
