#include "tests/apoio/sessao_de_teste.h"

#include "platform/sqlite/sessao_sqlite.h"
#include "startup/construtor_ligacao.h"

#include <cstdlib>
#include <string_view>

namespace orvex::testes {

bool pelo_fio() {
    const char* motor = std::getenv("ORVEX_TESTE_MOTOR");
    return motor != nullptr && std::string_view(motor) == "fio";
}

std::string ligacao(const std::filesystem::path& pasta) {
    return startup::ConstrutorLigacao{.servidor = "sqlite", .base = pasta.string(), .utilizador = "ana"}
        .constroi();
}

std::string ligacao(const ServidorTDS& servidor, const std::string& palavra_passe) {
    return startup::ConstrutorLigacao{.servidor = "127.0.0.1," + std::to_string(servidor.porta()),
                                      .base = servidor.base,
                                      .utilizador = servidor.utilizador,
                                      .palavra_passe = palavra_passe,
                                      .encriptacao = "nao"}
        .constroi();
}

bool SessaoDeTeste::Abre(const std::string& texto) {
    if (!pelo_fio()) {
        real_ = std::make_unique<platform::sqlite::SessaoSQLite>();
        return real_->Abre(texto);
    }
    servidor_.emplace(startup::ConstrutorLigacao::le(texto)["Database"]);
    real_ = std::make_unique<platform::odbc::SessaoODBC>();
    return real_->Abre(ligacao(*servidor_));
}

} // namespace orvex::testes
