#include "platform/odbc/texto_ligacao.h"

#include "base/falha.h"
#include "base/texto.h"
#include "startup/construtor_ligacao.h"
#include "startup/sessao_bd.h"

namespace orvex::platform::odbc {
namespace {

enum class Encriptacao { sim, sem_certificado, nao };

Encriptacao le_encriptacao(const std::string& texto) {
    if (texto.empty() || base::mesmo_nome(texto, "sim")) return Encriptacao::sim;
    if (base::mesmo_nome(texto, "sem_certificado")) return Encriptacao::sem_certificado;
    if (base::mesmo_nome(texto, "nao") || base::mesmo_nome(texto, "não")) return Encriptacao::nao;
    throw base::Falha("A definição Encriptacao tem de ser sim, sem_certificado ou nao.",
                      startup::numeros_bd::falha_geral);
}

class Texto {
  public:
    explicit Texto(bool freetds) : freetds_(freetds) {}

    // In braces every character stands for itself, but for the closing one, which is doubled. FreeTDS knows
    // no doubling: a value goes on up to "};", so none may hold that.
    void par(const char* nome, std::string_view valor) {
        if (freetds_ && valor.find("};") != std::string_view::npos)
            throw base::Falha(
                "O controlador FreeTDS não aceita os caracteres «};» juntos nas definições da base "
                "de dados (servidor, base, utilizador ou palavra-passe).",
                startup::numeros_bd::falha_geral);
        texto_ += std::string(nome) + "={";
        for (const char c : valor)
            texto_ += c == '}' && !freetds_ ? std::string("}}") : std::string(1, c);
        texto_ += "};";
    }
    std::string com(const std::string& opcoes) const { return texto_ + opcoes; }

  private:
    bool freetds_;
    std::string texto_;
};

std::string controlador_de(std::map<std::string, std::string>& pares) {
    return pares["Driver"].empty() ? controlador_normal : pares["Driver"];
}

// FreeTDS knows no usual port, asks for that of an instance only when none is given, and takes one that
// follows an instance for a part of its name.
void servidor_freetds(Texto& texto, std::string servidor) {
    const std::size_t instancia = servidor.find('\\'), porta = servidor.find(',');
    if (instancia < porta && porta != std::string::npos) servidor.erase(instancia, porta - instancia);
    texto.par("SERVER", servidor);
    if (instancia == std::string::npos && porta == std::string::npos) texto.par("Port", "1433");
}

void entrada(Texto& texto, std::map<std::string, std::string>& pares) {
    if (pares["Option"] == std::to_string(startup::ConstrutorLigacao::do_sistema))
        return texto.par("Trusted_Connection", "Yes");
    texto.par("UID", pares["Uid"]);
    texto.par("PWD", pares["Pwd"]);
}

} // namespace

Fala fala_do_controlador(const std::string& ligacao) {
    auto pares = startup::ConstrutorLigacao::le(ligacao);
    return fala_de(biblioteca_de(controlador_de(pares)));
}

std::string texto_odbc(const std::string& ligacao) {
    return texto_odbc(ligacao, fala_do_controlador(ligacao));
}

std::string texto_odbc(const std::string& ligacao, Fala fala) {
    auto pares = startup::ConstrutorLigacao::le(ligacao);
    const bool freetds = fala == Fala::freetds;
    const Encriptacao encriptacao = le_encriptacao(pares["Encrypt"]);
    Texto texto(freetds);
    texto.par("DRIVER", controlador_de(pares));
    if (freetds) {
        servidor_freetds(texto, pares["Server"]);
    } else {
        texto.par("SERVER", pares["Server"]);
    }
    texto.par("DATABASE", pares["Database"]);
    entrada(texto, pares);
    texto.par("APP", "ORVEX");
    if (freetds)
        return texto.com("TDS_Version=7.4;ClientCharset=UTF-8;Encryption=" +
                         std::string(encriptacao == Encriptacao::nao ? "off" : "require") + ";");
    return texto.com("Encrypt=" + std::string(encriptacao == Encriptacao::nao ? "no" : "yes") +
                     ";TrustServerCertificate=" + (encriptacao == Encriptacao::sim ? "no" : "yes") + ";");
}

} // namespace orvex::platform::odbc
