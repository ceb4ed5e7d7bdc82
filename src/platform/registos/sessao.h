// The session of every engine: which motor it has, and why it has none.
#pragma once

#include "platform/registos/conjunto.h"

#include <map>
#include <memory>
#include <string>

namespace orvex::platform::registos {

class Sessao : public startup::SessaoBD {
  public:
    bool Abre(const std::string& ligacao) override;

    std::unique_ptr<startup::ConjuntoRegistos> Consulta(const std::string& sql) override;
    std::unique_ptr<startup::ConjuntoRegistos> AbreActualizavel(const std::string& sql) override;
    void Executa(const std::string& sql) override;

    void IniciaTransaccao() override { motor().inicia(); }
    void Tranca() override { motor().tranca(); }
    void ConfirmaTransaccao() override { motor().confirma(); }
    void AnulaTransaccao() override { motor().anula(); }
    bool EmTransaccao() override { return motor_ != nullptr && motor_->em_transaccao(); }

    void EmPasso(const std::vector<std::string>& perguntas, const std::function<void()>& trabalho) override;
    // A session that is not open runs it too: its statements then tell why.
    void EmExclusivo(const std::function<void()>& trabalho) override;
    std::size_t Comprimento(const std::string& tabela, const std::string& coluna) override;

    void Fecha() override;

    // Of the motors opened from now on.
    void define_ao_engolir(AoEngolir ao_engolir) { ao_engolir_ = std::move(ao_engolir); }

  protected:
    // Opens the database that a connection text names. Throws Falha, naming the cause.
    virtual std::unique_ptr<Motor> abre_motor(const std::string& ligacao) = 0;
    Motor& motor(); // throws when the session is not open

  private:
    std::unique_ptr<Motor> motor_; // none until open
    std::string causa_;            // why it is not open
    AoEngolir ao_engolir_;
    std::map<std::string, std::map<std::string, std::size_t>>
        comprimentos_; // by table and column, upper case
};

} // namespace orvex::platform::registos
