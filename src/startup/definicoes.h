// The settings file: where the database is, and the ERP log-in.
//
//     [BD]                              [ERP]
//     Servidor=sqlite                   Empresa=ORVEX
//     Base=Empresa                      PalavraPasse=
//     Utilizador=orvex                  Utilizador=demo
//     PalavraPasse=                     Servidor=sqlite
//                                       Base=Empresa
//
// The server `sqlite` names an embedded company, and the database is then its folder, relative to the
// settings file; any other server is SQL Server, and [BD] may then name the ODBC driver and how far the
// connection is encrypted:
//
//     Controlador=ODBC Driver 18 for SQL Server
//     Encriptacao=sim                              sem_certificado: the certificate is not checked; nao
//     Autenticacao=windows                         whoever works at the machine, instead of user and password
//
// Beside an ERP whose server is not `sqlite`, [ERP] names the class of the component that reaches it, as it
// is registered in the system (or its number in braces):
//
//     Componente=Fabrica.SessaoERP
//     Bits=32                                      the 32-bit programs reach it (Windows); 64 or none: the
//     others
//
// Where journals of confirmations are kept, when it is not the user's own folder (a share, say):
//
//     [Diario]
//     Pasta=...                                    relative to the settings file
#pragma once

#include <array>
#include <filesystem>
#include <string>

namespace orvex::startup {

inline constexpr const char* servidor_embebido = "sqlite";

// The server names the kind of ERP, too.
enum class TipoERP {
    emulacao, // of an embedded company: whatever is done there is training
    producao
};

struct DefinicoesBD {
    std::string servidor;
    std::string base; // of an embedded company: its folder, as an absolute path
    std::string utilizador;
    std::string palavra_passe; // may be empty
    std::string controlador;   // of SQL Server: the ODBC driver; may be empty
    std::string encriptacao;   // of SQL Server: sim, sem_certificado or nao; may be empty
    std::string diario;        // folder of the journals of confirmations, absolute; empty for the usual one
    bool utilizador_do_sistema = false; // of SQL Server: the log-in is that of the system's session

    // Throws Falha, with the file, for a way of logging in that is not known, or not possible with the rest.
    static DefinicoesBD le(const std::filesystem::path& ficheiro);
    bool incompletas() const {
        return servidor.empty() || base.empty() || (utilizador.empty() && !utilizador_do_sistema);
    }
};

// The five log-in values, in the order SessaoERP::Liga takes them.
struct DefinicoesERP {
    enum Valor { empresa, palavra_passe, utilizador, servidor, base };
    std::array<std::string, 5> valores; // only the password may be empty
    std::string componente{};           // of an ERP other than the emulation: the class of its session
    bool de_32_bits = false;            // of the programs that are to load it

    // Throws Falha, with the file, for a word size that there is none of.
    static DefinicoesERP le(const std::filesystem::path& ficheiro);
    bool incompletas() const;
    TipoERP tipo() const {
        return valores[servidor] == servidor_embebido ? TipoERP::emulacao : TipoERP::producao;
    }
    // Fills what is missing of server, database and user with the database's own settings.
    void completa(const std::filesystem::path& ficheiro);
};

} // namespace orvex::startup
