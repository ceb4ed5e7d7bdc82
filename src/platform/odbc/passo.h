// One step of the rules: the answers that were read ahead for it, and the writes that wait to be sent
// together.
#pragma once

#include "platform/odbc/falhas.h"
#include "platform/odbc/instrucao.h"
#include "platform/odbc/marcas.h"
#include "platform/registos/linhas.h"
#include "startup/sessao_bd.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::platform::odbc {

// Whether the text stays a statement of its own between others: what it opens it closes, and nothing in it
// ends it, hides what follows or takes a parameter.
bool cabe_entre_outras(std::string_view sql);
bool e_consulta(std::string_view sql);
bool escreve_linhas(std::string_view sql); // and does nothing else

// A statement that changes rows, as it will be sent.
struct Escrita {
    startup::FalhaAdiada::Genero genero;
    std::string sql;
    std::vector<Parametro> parametros{};
    std::string linha{};                     // the row it is about, for who reads of its failure
    std::optional<FalhaODBC> sem_linha = {}; // its failure when it changes none

    startup::FalhaAdiada adiada(const base::Falha& causa, bool com_linha) const;
};

struct Resposta {
    std::vector<registos::Coluna> colunas;
    registos::Linhas linhas;
};

class Passo {
  public:
    // In a request. The server takes 2,100 parameters, two of which are the driver's.
    static constexpr std::size_t perguntas_juntas = 500, parametros_juntos = 2000,
                                 texto_junto = std::size_t{256} * 1024;

    explicit Passo(Passo* a_volta) : a_volta_(a_volta) {} // none around the outermost

    void guarda(const std::string& pergunta, Resposta resposta) {
        respostas_.emplace(pergunta, std::move(resposta));
    }
    // Each given once; those of a question that was announced more often too, as long as nothing is written.
    // Who asks again otherwise asks what became of it meanwhile.
    std::optional<Resposta> retira(const std::string& pergunta);
    // Of the steps around it too.
    void esquece_respostas();
    void nota_escrita();

    bool ha_escritas() const { return !escritas_.empty(); }
    bool cabe(const Escrita& escrita) const; // in one request with those that wait
    void junta(Escrita escrita);
    std::vector<Escrita> retira_escritas();

  private:
    Passo* const a_volta_;
    std::multimap<std::string, Resposta> respostas_;
    std::vector<std::string> dadas_; // questions answered since the last write
    std::vector<Escrita> escritas_;
    std::size_t parametros_ = 0, texto_ = 0; // of those that wait
};

// Writes that go to the server together, and what became of each.
//
// Each has its mark, and a failure belongs to the write whose mark has not come, or tells of it. That holds
// because of the server:
// - it compiles a request before it runs any of it: what does not compile is refused before the first mark.
//   Only a table that is missing is found out when its statement is reached;
// - with XACT_ABORT off, most failures end their statement alone and the next one runs. The others (a missing
//   table, a deadlock, a conversion, a trigger that rolled back) end the request too: nothing after them ran,
//   so nothing ever runs outside a transaction that was begun inside one;
// - @@ROWCOUNT is the statement's own count, whatever its triggers did, and 0 after one that failed.
class Lote {
  public:
    // Where the first failure is the end, the server is told not to go on: each of those after it may wait as
    // long again for what another program holds.
    enum class AoFalhar { segue, para };

    Lote(std::vector<Escrita> escritas, AoFalhar ao_falhar)
        : escritas_(std::move(escritas)), ao_falhar_(ao_falhar) {}

    // Sends so many of those whose outcome is not known. Those after a failure stay unknown where the server
    // does not go on. Throws what ends the request as a whole.
    void corre(Instrucao& instrucao, std::size_t quantas);
    // What ended a request as a whole counts for the first whose outcome is not known.
    void acabou(const base::Falha& causa);

    std::size_t por_saber() const { return escritas_.size() - conhecidas_; }
    // What the last request threw came before the server did anything.
    bool comecou() const { return comecou_; }

    // A write that failed, and whether it is known to be this one.
    struct Falhada {
        std::size_t lugar;
        FalhaODBC causa;
        bool sabida;
    };
    bool falhou() const { return !falhadas_.empty(); }
    const std::vector<Falhada>& falhadas() const { return falhadas_; }
    // The failure of such a write, in these words.
    startup::FalhaAdiada adiada(const Falhada& falhada, const base::Falha& causa) const {
        return escritas_[falhada.lugar].adiada(causa, falhada.sabida);
    }

  private:
    std::string texto(std::size_t ate) const;
    std::vector<Parametro> parametros(std::size_t ate) const;
    void conclui(const Marca& marca, std::optional<FalhaODBC> causa);
    void nota(const base::Falha& causa, bool sabida);

    std::vector<Escrita> escritas_;
    const AoFalhar ao_falhar_;
    std::size_t conhecidas_ = 0;
    std::size_t no_pedido_ = 0; // the last one sent
    bool comecou_ = false;
    std::vector<Falhada> falhadas_;
};

} // namespace orvex::platform::odbc
