// The session of a test's company: on the embedded engine itself; where the environment says
// ORVEX_TESTE_MOTOR=fio, through the ODBC driver and the wire to a server of its own over the same files;
// with ORVEX_TESTE_MOTOR=servidor, in the trial database of a real server, to which the files' rows were
// copied.
//
// So one test is a test of every engine. What is asked of it is recorded.
#pragma once

#include "platform/odbc/sessao_odbc.h"
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

// A company made of these files, as a session of its own sees it, which another workstation has. On a server
// its rows are copied there now.
std::unique_ptr<startup::SessaoBD> abre_empresa(const std::filesystem::path& pasta);

class SessaoDeTeste : public startup::SessaoBD {
  public:
    SessaoDeTeste() = default;
    explicit SessaoDeTeste(Diario& diario) : diario_(diario) {}

    // Takes the connection text of the company's files on either engine.
    bool Abre(const std::string& ligacao) override;

    std::unique_ptr<startup::ConjuntoRegistos> Consulta(const std::string& sql) override {
        return diario_.passo("CONSULTA " + sql, [&] {
            return std::make_unique<ConjuntoGravado>(real_->Consulta(sql), diario_);
        });
    }
    std::unique_ptr<startup::ConjuntoRegistos> AbreActualizavel(const std::string& sql) override {
        return diario_.passo("ABRE " + sql, [&] {
            return std::make_unique<ConjuntoGravado>(real_->AbreActualizavel(sql), diario_);
        });
    }
    void Executa(const std::string& sql) override {
        diario_.passo("EXECUTA " + sql, [&] { real_->Executa(sql); });
    }
    void IniciaTransaccao() override {
        diario_.passo("INICIA", [this] { real_->IniciaTransaccao(); });
    }
    void Tranca() override {
        diario_.passo("TRANCA", [this] { real_->Tranca(); });
    }
    void ConfirmaTransaccao() override {
        diario_.passo("CONFIRMA", [this] {
            real_->ConfirmaTransaccao();
            if (diario_.falhou_agora())
                throw startup::ConfirmacaoDesconhecida("Não se sabe se o que estava a ser gravado ficou.");
        });
    }
    // A connection that breaks is rolled back by the server, and still reports a failure.
    void AnulaTransaccao() override {
        real_->AnulaTransaccao();
        if (diario_.tambem(Diario::Depois::tudo_lanca)) Diario::lanca();
    }
    bool EmTransaccao() override {
        if (diario_.tambem(Diario::Depois::tudo_lanca)) Diario::lanca();
        return real_ != nullptr && real_->EmTransaccao();
    }
    void EmExclusivo(const std::function<void()>& trabalho) override { real_->EmExclusivo(trabalho); }
    std::size_t Comprimento(const std::string& tabela, const std::string& coluna) override {
        return real_->Comprimento(tabela, coluna);
    }
    void Fecha() override {
        if (real_ != nullptr) real_->Fecha();
    }

    ServidorTDS& servidor() { return *servidor_; } // on the wire only
    const ServidorTDS& servidor() const { return *servidor_; }

  private:
    Diario proprio_;
    Diario& diario_ = proprio_;
    std::optional<ServidorTDS> servidor_;
    std::unique_ptr<startup::SessaoBD> real_;
};

} // namespace orvex::testes
