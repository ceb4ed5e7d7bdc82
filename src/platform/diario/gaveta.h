// The folder with a company's journals on this machine, and one of them open.
//
//     20260315-102030-1f0c77b1.diario  a confirmation that is under way, or was not settled
//     20260315-101500-9be2d1c0.fim    one that was
//     *.novo                            one that is being made
//
// A living program holds the file of its confirmation; one that nobody holds was left by a program that died.
#pragma once

#include "platform/diario/disco.h"
#include "platform/diario/passos.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace orvex::platform::diario {

// For a file that is made: no other has it, and they sort by when they were.
std::string novo_nome();

enum class Descarga { nao, sim };

// Each level is on the disk before the next is made, and open to whom the one above it is.
void faz_pasta(const std::filesystem::path& pasta, Disco& disco);

class FicheiroDiario {
  public:
    // `bytes` are those of its whole lines.
    FicheiroDiario(std::unique_ptr<FicheiroTrancado> ficheiro, std::filesystem::path caminho,
                   std::size_t bytes)
        : ficheiro_(std::move(ficheiro)), caminho_(std::move(caminho)), bytes_(bytes) {}

    const std::filesystem::path& caminho() const { return caminho_; }
    // What it says now. Throws Falha, naming it, when that cannot be understood.
    Passos passos();
    // Once a line could not be written whole, none is: what comes after a gap would say something else.
    void escreve(const std::string& linha, Descarga descarga);
    // Settled: nobody recovers it again.
    void acaba(Resultado resultado);

  private:
    std::unique_ptr<FicheiroTrancado> ficheiro_;
    std::filesystem::path caminho_;
    std::size_t bytes_;
    bool incompleto_ = false;
};

class Gaveta {
  public:
    static constexpr std::chrono::days guarda{90}; // of what was settled

    // `raiz` is a folder above it that must be there: a share that is not reached is not an empty one.
    // Without one, all its folders are made.
    explicit Gaveta(std::filesystem::path pasta, std::filesystem::path raiz = {},
                    Disco& disco = disco_do_sistema())
        : pasta_(std::move(pasta)), raiz_(std::move(raiz)), disco_(disco) {}

    const std::filesystem::path& pasta() const { return pasta_; }

    // On the disk, whole, when it returns; otherwise throws, and there is none.
    std::unique_ptr<FicheiroDiario> cria(const std::string& intencao);
    // The unfinished ones, oldest first, whether somebody holds them or not. Throws when the folder cannot be
    // read; one that does not exist has none.
    std::vector<std::filesystem::path> por_acabar() const;
    // None while another program holds it, or when it was settled meanwhile.
    std::unique_ptr<FicheiroDiario> tranca(const std::filesystem::path& ficheiro);
    // Whoever holds it. Throws as FicheiroDiario::passos does.
    Passos le(const std::filesystem::path& ficheiro) const;
    // The same of one in this folder that may be settled by now; nothing when it is not there, by either
    // name.
    std::optional<Passos> le_acabado_ou_nao(const std::string& nome) const;

    // Takes away what was settled long ago, and what was never whole. What cannot be taken away stays.
    void arruma() noexcept;

  private:
    void exige_raiz() const;

    std::filesystem::path pasta_;
    std::filesystem::path raiz_;
    Disco& disco_;
};

// The company's own folder among those of `todas`: a company is known by where its ledger is, as the settings
// name it, and by the machine where that is a place of this machine alone.
std::filesystem::path pasta_da_empresa(const std::filesystem::path& todas, const std::string& servidor,
                                       const std::string& base_de_dados, const std::string& maquina);

} // namespace orvex::platform::diario
