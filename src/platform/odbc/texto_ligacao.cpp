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

} // namespace

std::string texto_odbc(const std::string& ligacao) {
    auto pares = startup::ConstrutorLigacao::le(ligacao);
    const std::string controlador = pares["Driver"].empty() ? controlador_normal : pares["Driver"];
    const bool freetds = base::maiusculas(controlador).find("FREETDS") != std::string::npos;
    const Encriptacao encriptacao = le_encriptacao(pares["Encrypt"]);
    Texto texto(freetds);
    texto.par("DRIVER", controlador);
    texto.par("SERVER", pares["Server"]);
    texto.par("DATABASE", pares["Database"]);
    texto.par("UID", pares["Uid"]);
    texto.par("PWD", pares["Pwd"]);
    texto.par("APP", "ORVEX");
    if (freetds)
        return texto.com("TDS_Version=7.4;ClientCharset=UTF-8;Encryption=" +
                         std::string(encriptacao == Encriptacao::nao ? "off" : "require") + ";");
    return texto.com("Encrypt=" + std::string(encriptacao == Encriptacao::nao ? "no" : "yes") +
                     ";TrustServerCertificate=" + (encriptacao == Encriptacao::sim ? "no" : "yes") + ";");
}

} // namespace orvex::platform::odbc
