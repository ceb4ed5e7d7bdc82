// The session of a test's company: on the embedded engine itself; where the environment says
// ORVEX_TESTE_MOTOR=fio, through the ODBC driver and the wire to a server of its own over the same files;
// with ORVEX_TESTE_MOTOR=servidor, in the trial database of a real server, to which the files' rows were
// copied.
//
// So one test is a test of every engine. What is asked of it is recorded.
#pragma once

#include "platform/odbc/sessao_odbc.h"
#include "platform/operacoes/sessao_bd_ouvida.h"
#include "tests/apoio/gravador.h"
#include "tests/fio/servidor_tds.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace orvex::testes {

bool pelo_fio(); // as the environment says
bool no_servidor();

std::string ligacao(const std::filesystem::path& pasta); // to the company's files
std::string ligacao(const ServidorTDS& servidor, const std::string& palavra_passe = "segredo");

// On the wire: sessions talk to a server in another process, which serves the companies in the folders of
// `raiz`, and have none of their own.
void usa_servidor_em(int porta, const std::filesystem::path& raiz);

// A company made of these files, as a session of its own sees it, which another workstation has. On a server
// its rows are copied there now.
std::unique_ptr<startup::SessaoBD> abre_empresa(const std::filesystem::path& pasta);

class SessaoDeTeste : public platform::operacoes::SessaoBDOuvida {
  public:
    SessaoDeTeste() : SessaoDeTeste(std::make_shared<Diario>()) {}
    explicit SessaoDeTeste(Diario& diario);

    // Takes the connection text of the company's files on either engine.
    bool Abre(const std::string& ligacao) override;

    void EmPasso(const std::vector<std::string>& perguntas, const std::function<void()>& trabalho) override;
    bool em_passo() const { return passos_ > 0; }

    ServidorTDS& servidor() { return *servidor_; } // on the wire only
    const ServidorTDS& servidor() const { return *servidor_; }

  private:
    explicit SessaoDeTeste(const std::shared_ptr<Diario>& proprio) : SessaoDeTeste(*proprio) {
        proprio_ = proprio;
    }

    std::shared_ptr<Diario> proprio_;
    std::optional<ServidorTDS> servidor_;
    int passos_ = 0; // that it is in
};

} // namespace orvex::testes
