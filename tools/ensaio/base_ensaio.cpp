#include "tools/ensaio/base_ensaio.h"

#include "startup/construtor_ligacao.h"

#include <algorithm>
#include <cstdlib>
#include <random>

namespace orvex::ensaio {
namespace {

using base::Falha;
using platform::odbc::SessaoODBC;

// The environment is written before there is any thread, or not at all.
std::string do_ambiente(const char* nome) {
    const char* valor = std::getenv(nome); // NOLINT(concurrency-mt-unsafe)
    return valor != nullptr ? valor : "";
}

std::string obrigatorio(const char* nome) {
    std::string valor = do_ambiente(nome);
    if (valor.empty()) throw Falha(std::string("Falta ") + nome + " no ambiente.");
    return valor;
}

// A table with the mark for a name: it is there as soon as its one statement is done.
std::string tabela_da_marca() { return "orvex_ensaio_" + obrigatorio("ORVEX_ENSAIO"); }

std::string nova_marca() {
    constexpr std::size_t algarismos = 24;
    std::random_device acaso;
    std::string marca;
    while (marca.size() < algarismos)
        marca += "0123456789abcdef"[acaso() % 16];
    return marca;
}

// Creating and dropping takes the server longer than any statement of the program's.
struct Mestre : SessaoODBC {
    Mestre() : SessaoODBC({.instrucao = 600}) { Abre(ligacao_ao_servidor("master")); }
    bool existe(const std::string& base) {
        return !Consulta("SELECT DB_ID(N'" + base + "') AS n")->valor(0).nulo();
    }
};

} // namespace

std::string ligacao_ao_servidor(const std::string& base) {
    return startup::ConstrutorLigacao{.servidor = obrigatorio("ORVEX_SERVIDOR"),
                                      .base = base,
                                      .utilizador = obrigatorio("ORVEX_UTILIZADOR"),
                                      .palavra_passe = obrigatorio("ORVEX_PALAVRA_PASSE"),
                                      .controlador = do_ambiente("ORVEX_CONTROLADOR"),
                                      .encriptacao = do_ambiente("ORVEX_ENCRIPTACAO")}
        .constroi();
}

std::string base_do_ensaio() {
    constexpr std::size_t maximo = 64;
    std::string nome = obrigatorio("ORVEX_BASE");
    const auto simples = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    };
    if (nome.size() > maximo || !std::all_of(nome.begin(), nome.end(), simples))
        throw Falha("O nome da base de ensaio só pode ter letras sem acento, algarismos e _.");
    return nome;
}

void abre_ensaio(SessaoODBC& BD) {
    BD.Abre(ligacao_ao_servidor(base_do_ensaio()));
    try {
        BD.Consulta("select n from " + tabela_da_marca());
    } catch (const Falha& falha) {
        BD.Fecha();
        throw Falha("Não se confirmou que a base " + base_do_ensaio() +
                    " foi criada por este ensaio: não se lhe toca. " + falha.what());
    }
}

void cria_ensaio() {
    const std::string base = base_do_ensaio();
    Mestre mestre;
    if (mestre.existe(base))
        throw Falha("A base " + base +
                    " já existe no servidor: indique o nome de uma que não exista. (A que um ensaio "
                    "interrompido à força tenha deixado tem uma tabela orvex_ensaio_...; apague-a à mão.)");
    // Texts compare as the program's own rules and the embedded company compare them: without case, with
    // accents.
    mestre.Executa("CREATE DATABASE [" + base + "] COLLATE Latin1_General_CI_AS");
    static std::string marca; // the environment keeps the text itself
    marca = "ORVEX_ENSAIO=" + nova_marca();
    putenv(marca.data()); // NOLINT(concurrency-mt-unsafe)
    try {
        SessaoODBC nova;
        nova.Abre(ligacao_ao_servidor(base));
        nova.Executa("CREATE TABLE [" + tabela_da_marca() + "]([n] [int] NULL)");
    } catch (const Falha& falha) {
        throw Falha("A base " + base + " foi criada mas não se conseguiu marcá-la: apague-a à mão. " +
                    falha.what());
    }
}

void apaga_ensaio() {
    const std::string base = base_do_ensaio();
    SessaoODBC ensaio;
    abre_ensaio(ensaio);
    ensaio.Fecha();
    Mestre mestre;
    mestre.Executa("ALTER DATABASE [" + base + "] SET SINGLE_USER WITH ROLLBACK IMMEDIATE");
    mestre.Executa("DROP DATABASE [" + base + "]");
    if (mestre.existe(base)) throw Falha("A base " + base + " continua no servidor.");
}

} // namespace orvex::ensaio
