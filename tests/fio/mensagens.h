// What a client asks, the messages of its requests taken apart, and what it is answered. Bytes that are no
// request of the driver's throw LigacaoPerdida.
#pragma once

#include "platform/registos/conjunto.h"
#include "tests/fio/canal.h"

#include <optional>
#include <vector>

namespace orvex::testes::tds {

using platform::registos::Coluna;
using platform::registos::TipoSQL;

struct Entrada { // what a client logs in with
    std::string utilizador, palavra_passe, programa, base;
};

Entrada le_entrada(std::string_view bytes);

struct Parametro {
    TipoSQL tipo;
    base::Variante valor;
};

struct Pedido {
    std::string procedimento; // none for a batch of statements
    std::string texto;        // the statements; of a procedure that runs none, its name
    std::vector<Parametro> parametros;

    std::vector<std::string> instrucoes() const; // divided where a semicolon stands in no text and no name
    std::string registado() const;               // as it reads in the list of what was received
};

Pedido le_pedido(const Mensagem& mensagem);

// The answer to one request after another: tokens, sent in packets as they fill.
class Respostas {
  public:
    explicit Respostas(Canal& canal) : canal_(canal) {}

    enum Mudanca : unsigned char { inicio = 8, confirmacao = 9, anulacao = 10 };

    void entrada_aceite();
    void transaccao(Mudanca mudanca);
    void colunas(const std::vector<Coluna>& colunas);
    void linha(const std::vector<Coluna>& colunas, const std::vector<base::Variante>& valores);

    // One statement is done; the count is that of its rows, when it has one.
    void feita(std::optional<std::int64_t> linhas = {});
    void falhou(int numero, const std::string& texto, bool so_avisa = false); // as information
    void inicia_chamada() { fim_de_instrucao_ = 0xFF; }
    void fim_chamada();
    void interrompida(); // as the client asked

    void envia();                       // the rest of the answer
    void esquece() { perdida_ = true; } // the answer is lost: what follows is not sent

  private:
    void fim(unsigned codigo, unsigned estado, std::int64_t linhas = 0);
    void envia_cheios();

    Canal& canal_;
    Escrita escrita_;
    unsigned fim_de_instrucao_ = 0xFD; // inside a call it is another
    bool perdida_ = false;
};

} // namespace orvex::testes::tds
