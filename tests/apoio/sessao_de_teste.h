// The session of a test's company: on the embedded engine itself or, where the environment says
// ORVEX_TESTE_MOTOR=fio, through the ODBC driver and the wire to a server of its own over the same files.
//
// So one test is a test of both engines.
#pragma once

#include "platform/odbc/sessao_odbc.h"
#include "tests/fio/servidor_tds.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace orvex::testes {

bool pelo_fio(); // as the environment says

std::string ligacao(const std::filesystem::path& pasta); // to the company's files
std::string ligacao(const ServidorTDS& servidor, const std::string& palavra_passe = "segredo");

class SessaoDeTeste : public startup::SessaoBD {
  public:
    // Takes the connection text of the company's files on either engine.
    bool Abre(const std::string& ligacao) override;

    std::unique_ptr<startup::ConjuntoRegistos> Consulta(const std::string& sql) override {
        return real_->Consulta(sql);
    }
    std::unique_ptr<startup::ConjuntoRegistos> AbreActualizavel(const std::string& sql) override {
        return real_->AbreActualizavel(sql);
    }
    void Executa(const std::string& sql) override { real_->Executa(sql); }
    void IniciaTransaccao() override { real_->IniciaTransaccao(); }
    void ConfirmaTransaccao() override { real_->ConfirmaTransaccao(); }
    void AnulaTransaccao() override { real_->AnulaTransaccao(); }
    bool EmTransaccao() override { return real_ != nullptr && real_->EmTransaccao(); }
    void Fecha() override {
        if (real_ != nullptr) real_->Fecha();
    }

    ServidorTDS& servidor() { return *servidor_; } // on the wire only
    const ServidorTDS& servidor() const { return *servidor_; }

  private:
    std::optional<ServidorTDS> servidor_;
    std::unique_ptr<startup::SessaoBD> real_;
};

} // namespace orvex::testes
