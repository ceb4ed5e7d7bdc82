#include "achado.h"

#include <algorithm>

namespace orvex::auditoria {

std::string Achado::identidade() const {
    std::string texto;
    for (const std::string* parte : {&verificacao, &chave, &artigo, &esperado, &encontrado}) {
        if (!texto.empty()) texto += '|';
        for (const char c : *parte)
            texto += c == '\n' || c == '\r' ? ' ' : c;
    }
    return texto + '|' + peso.texto();
}

const std::vector<Verificacao>& verificacoes() {
    static const std::vector<Verificacao> todas{
        {"L1", "o que está em aberto numa linha não é o original menos o enviado mais o devolvido"},
        {"L2", "a origem de uma linha não existe"},
        {"L3", "a linha de uma guia ou devolução não tem a sua linha de detentor"},
        {"L4", "meia transferência"},
        {"L5", "uma linha devolvida duas vezes"},
        {"L6", "a cadeia de detentores quebra"},
        {"L7", "datas impossíveis, códigos desconhecidos ou mal escritos, valores em falta"},
        {"E1", "documento do ERP em vigor que não está no livro"},
        {"E2", "linhas do livro cujo documento falta no ERP, ou está anulado"},
        {"E3", "linhas do livro e do ERP que não são iguais"},
        {"E4", "o detentor não condiz com o armazém"},
        {"E5", "a nota do artigo não condiz com o detentor"},
        {"E6", "números em falta numa série"},
        {"J1", "uma confirmação de que ninguém viu o fim"},
    };
    return todas;
}

const char* nome(Gravidade gravidade) {
    switch (gravidade) {
    case Gravidade::erro:
        return "erro";
    case Gravidade::aviso:
        return "aviso";
    case Gravidade::informacao:
        break;
    }
    return "info";
}

namespace {

std::string com_virgula(std::string numero) {
    std::replace(numero.begin(), numero.end(), '.', ',');
    return numero;
}

} // namespace

std::string toneladas(base::Moeda peso) { return com_virgula(peso.texto()) + " t"; }

std::string toneladas(std::optional<base::Moeda> peso) {
    return peso ? toneladas(*peso) : std::string("sem peso");
}

std::string quilos(base::Moeda peso) {
    const std::int64_t decimas = peso.decimos_milesimos(); // of a kilogram
    constexpr std::int64_t dez = 10;
    return std::to_string(decimas / dez) + (decimas % dez != 0 ? "," + std::to_string(decimas % dez) : "") +
           " kg";
}

} // namespace orvex::auditoria
