// Judges what a dead program left: recovered by each answer a user can give, nothing of it is lost, and the
// auditor finds nothing but what that user chose to leave.
#pragma once

#include "platform/diario/rascunhos.h"
#include "tests/apoio/auditada.h"
#include "tests/apoio/programas.h"

#include <map>

namespace orvex::testes {

// What a program that died had for a folder: its company, its journals and the draft of its note.
std::filesystem::path empresa_de(const std::filesystem::path& morto);
std::filesystem::path diarios_de(const std::filesystem::path& morto);
std::filesystem::path rascunhos_de(const std::filesystem::path& morto);
std::filesystem::path caixas_de(const std::filesystem::path& morto); // that its user was shown
// In which it died, as it was seen at once; nothing where nobody looked.
std::filesystem::path janela_de(const std::filesystem::path& morto);

// A program at work, up to the last press of its flow, and all that it is given.
struct Vida {
    explicit Vida(confirmacao::Fluxo fluxo, const std::filesystem::path& diarios = {},
                  platform::diario::Disco& disco = platform::diario::disco_do_sistema());

    PastaTemporaria sem_nome;
    EmpresaTeste empresa;
    platform::diario::Gaveta gaveta;
    Diario gravacao;
    std::optional<Programa> programa;
    std::optional<platform::diario::Rascunhos> rascunhos; // with the note that is to be issued
    std::function<platform::diario::Tratamento(platform::diario::FicheiroDiario&)> resolve = [](auto&) {
        return platform::diario::Tratamento();
    };
};

class Perito {
  public:
    // Runs the flow, to know how the company is before it and after.
    explicit Perito(confirmacao::Fluxo fluxo);

    // What is wrong, recovered by either answer; empty when all is well.
    std::string julga(const std::filesystem::path& morto);

    std::map<std::string, std::filesystem::path> janelas{}; // that occurred, and a program that died in each

  private:
    using Estado = std::string;
    static Estado de(EmpresaTeste& empresa);
    const char* nome_de(const Estado& estado) const;
    std::string julga(const std::filesystem::path& morto, bool aceita_tudo, bool& perguntou);
    const auditoria::Relatorio& audita(EmpresaTeste& empresa, const platform::diario::Gaveta& gaveta);
    std::string com_sim(const Estado& agora, const std::string& caixas) const;
    std::string do_rascunho(const std::filesystem::path& morto, const platform::diario::Gaveta& gaveta,
                            const Estado& agora) const;

    std::map<std::string, auditoria::Relatorio> auditadas_; // by all that they hold
    Estado antes_, completo_, retirado_; // the last: of a replacement, the old document gone and no new one
};

} // namespace orvex::testes
