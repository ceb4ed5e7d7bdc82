// A view as a workbook: a sheet for each table, numbers as numbers, dates as dates and codes as text. Rows go
// to the disk as they come.
#pragma once

#include "livro/consultas/quadro.h"

#include <filesystem>
#include <memory>

namespace orvex::platform::saidas {

// Throws Falha, in Portuguese, for what cannot be written.
class Xlsx final : public livro::consultas::Destino {
  public:
    // Beside the file, which stays as it was until the workbook is whole.
    explicit Xlsx(const std::filesystem::path& ficheiro);
    ~Xlsx() override; // what was not ended leaves nothing

    void vista(const livro::consultas::Vista& esta) override;
    void quadro(const livro::consultas::Quadro& este) override;
    bool linha(const livro::consultas::Linha& esta) override;
    void total(const livro::consultas::Linha& este) override;
    void acaba(); // the file is there, whole

  private:
    struct Livro;
    std::unique_ptr<Livro> livro_;
};

} // namespace orvex::platform::saidas
