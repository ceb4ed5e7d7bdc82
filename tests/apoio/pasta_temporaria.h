// A folder of its own for one test, gone with it.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace orvex::testes {

// Nothing, where there is no file.
inline std::string conteudo_de(const std::filesystem::path& ficheiro) {
    std::ifstream lido(ficheiro, std::ios::binary);
    return {std::istreambuf_iterator<char>(lido), {}};
}

class PastaTemporaria {
  public:
    explicit PastaTemporaria(const std::filesystem::path& onde = std::filesystem::temp_directory_path()) {
        std::random_device acaso;
        do
            pasta_ = onde / ("orvex-" + std::to_string(acaso()));
        while (!std::filesystem::create_directory(pasta_));
        std::filesystem::permissions(pasta_, std::filesystem::perms::owner_all);
    }
    ~PastaTemporaria() {
        std::error_code ignorado; // a server that still lives may be taking its own files away
        std::filesystem::remove_all(pasta_, ignorado);
    }
    PastaTemporaria(const PastaTemporaria&) = delete;
    PastaTemporaria& operator=(const PastaTemporaria&) = delete;

    const std::filesystem::path& pasta() const { return pasta_; }

    // The bytes as they are; folders on the way are made.
    std::filesystem::path escreve(const std::filesystem::path& nome, const std::string& bytes) const {
        std::filesystem::create_directories((pasta_ / nome).parent_path());
        std::ofstream(pasta_ / nome, std::ios::binary) << bytes;
        return pasta_ / nome;
    }

  private:
    std::filesystem::path pasta_;
};

} // namespace orvex::testes
