// What the journal asks of the file system: files that exist whole or not at all, that are on the disk when
// it goes on, and that one living program holds.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::platform::diario {

// An open file that no other program holds for as long as this lives; the system lets go of it when the
// process ends, however it ends.
class FicheiroTrancado {
  public:
    virtual ~FicheiroTrancado() = default;

    virtual std::string le() = 0;
    virtual void corta(std::size_t bytes) = 0;           // what is beyond goes
    virtual void acrescenta(std::string_view bytes) = 0; // all of them, or throws
    virtual void descarrega() = 0;                       // returns once they are on the disk
    virtual void
    muda_nome(const std::filesystem::path& novo) = 0; // in the same folder; still held afterwards
};

// Everything throws Falha, with the file and the cause.
class Disco {
  public:
    virtual ~Disco() = default;

    virtual std::unique_ptr<FicheiroTrancado> cria(const std::filesystem::path& novo) = 0;
    // None when another program holds it, or it is no longer there.
    virtual std::unique_ptr<FicheiroTrancado> tranca(const std::filesystem::path& ficheiro) = 0;
    virtual std::string le(const std::filesystem::path& ficheiro) = 0; // whoever holds it
    // Of a folder that does not exist, none.
    virtual std::vector<std::filesystem::path> ficheiros(const std::filesystem::path& pasta) = 0;
    virtual void descarrega_pasta(const std::filesystem::path& pasta) = 0; // the names in it
};

Disco& disco_do_sistema();

} // namespace orvex::platform::diario
