// What the server's catalogue says of the database, its user and its tables. Of an embedded company nothing
// is asked.
#pragma once

#include "startup/definicoes.h"
#include "startup/sessao_bd.h"

#include <optional>
#include <string>
#include <vector>

namespace orvex::diagnostico {

enum class Resposta { sim, nao, nenhuma };

class Catalogo {
  public:
    Catalogo(startup::SessaoBD& BD, const startup::DefinicoesBD& definicoes);

    bool embebida() const { return embebida_; }

    // Each right of the server's kind on the thing named (the database itself has no name).
    std::vector<Resposta> tem(const std::string& nome, const char* securavel,
                              const std::vector<const char*>& direitos);
    bool pode(const std::string& nome, const char* securavel, const char* direito) {
        return embebida_ || tem(nome, securavel, {direito}).front() == Resposta::sim;
    }
    // Whoever has any right on a table sees its definition, unless that was denied.
    Resposta ve_definicao(const std::string& tabela);
    // A primary key or another unique index: what a row is found again by.
    Resposta tem_chave(const std::string& tabela);
    Resposta tem_indice(const std::string& tabela, const std::string& nome);
    std::optional<std::string> comparacao(); // the database's collation

    // "GRANT SELECT ON [dbo].[Artigos] TO [orvex]"; the user is the database's, which may be named otherwise
    // than the login.
    std::string da(const std::string& direitos, const std::string& tabela) const;
    const std::string& utilizador() const { return utilizador_; } // in brackets

  private:
    std::optional<base::Variante> valor(const std::string& sql); // none when the server would not say
    Resposta ha(const std::string& sql);

    startup::SessaoBD& BD_;
    bool embebida_;
    std::string utilizador_;
};

} // namespace orvex::diagnostico
