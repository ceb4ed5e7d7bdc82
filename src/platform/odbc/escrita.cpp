// Writing the rows of a record set.
#include "platform/odbc/motor_odbc.h"

#include <algorithm>

namespace orvex::platform::odbc {
namespace {

using registos::Atribuicao;
using registos::Coluna;
using registos::Colunas;
using registos::TipoSQL;
using Familia = TipoSQL::Familia;
using Genero = startup::FalhaAdiada::Genero;

const FalhaODBC nao_gravada{"O servidor da base de dados não gravou o registo.",
                            startup::numeros_bd::falha_geral, FalhaODBC::Natureza::outra};
const FalhaODBC alterada{registos::alterado_por_outro, startup::numeros_bd::registo_alterado,
                         FalhaODBC::Natureza::outra};

std::vector<Parametro> parametros_de(const Colunas& colunas, const std::vector<Atribuicao>& atribuicoes) {
    std::vector<Parametro> parametros;
    parametros.reserve(atribuicoes.size());
    for (const Atribuicao& atribuicao : atribuicoes)
        parametros.emplace_back(colunas.lista[atribuicao.coluna].tipo, atribuicao.valor);
    return parametros;
}

// Long texts, pictures and binary fractions have no exact comparison.
bool comparavel(const TipoSQL& tipo) {
    return tipo.familia != Familia::expressao && (tipo.familia != Familia::texto || tipo.comprimento > 0);
}

// A text in which a character that is none was replaced as it was read.
bool substituida(const base::Variante& valor) {
    const auto* texto = std::get_if<std::string>(&valor.valor());
    return texto != nullptr && texto->find("\uFFFD") != std::string::npos;
}

std::string parte_da_chave(const Coluna& coluna, const base::Variante& valor) {
    return ", " + coluna.nome + "=" + valor.texto();
}

// The row is found by its key; that it is still as it was read, by every value that can be compared: texts to
// the letter, a date and time to the second, which is what the program reads of it.
class Condicao {
  public:
    Condicao(const Colunas& colunas, const registos::Conjunto& lida, std::vector<Parametro>& parametros)
        : linha_(colunas.tabela) {
        for (std::size_t i = 0; i < colunas.lista.size(); ++i) {
            const Coluna& coluna = colunas.lista[i];
            if (!coluna.chave && !comparavel(coluna.tipo)) continue;
            const base::Variante* escrito = lida.escrito(i);
            const base::Variante valor =
                escrito != nullptr ? *escrito : le_celula(coluna.tipo, lida.celula(i));
            if (coluna.chave || !substituida(valor)) junta(coluna, valor, parametros);
            if (coluna.chave) linha_ += parte_da_chave(coluna, valor);
        }
    }
    const std::string& texto() const { return texto_; }
    const std::string& linha() const { return linha_; }

  private:
    void junta(const Coluna& coluna, const base::Variante& valor, std::vector<Parametro>& parametros) {
        const std::string nome = "[" + coluna.nome + "]";
        texto_ += texto_.empty() ? " WHERE " : " AND ";
        if (valor.nulo()) {
            texto_ += nome + " IS NULL";
        } else if (coluna.tipo.familia == Familia::data_hora) {
            texto_ += "CONVERT(nvarchar(19)," + nome + ",120)=?";
            parametros.emplace_back(TipoSQL{}, base::Variante(valor.texto()));
        } else {
            const bool texto = coluna.tipo.familia == Familia::texto && !coluna.chave;
            texto_ += nome + (texto ? " COLLATE Latin1_General_BIN2=?" : "=?");
            parametros.emplace_back(coluna.tipo, valor);
        }
    }

    std::string texto_;
    std::string linha_; // that it finds, for people
};

// By what it was given of its key: the rest is nobody's business, or the server's to number.
std::string linha_nova(const Colunas& colunas, const std::vector<Atribuicao>& atribuicoes) {
    std::string linha = colunas.tabela;
    for (const Atribuicao& atribuicao : atribuicoes)
        if (const Coluna& coluna = colunas.lista[atribuicao.coluna]; coluna.chave)
            linha += parte_da_chave(coluna, atribuicao.valor);
    return linha;
}

} // namespace

void MotorODBC::insere(const Colunas& colunas, const std::vector<Atribuicao>& atribuicoes) {
    escreve({Genero::linha, texto_insercao(colunas, atribuicoes), parametros_de(colunas, atribuicoes),
             linha_nova(colunas, atribuicoes), nao_gravada});
    nota_testemunha(colunas, atribuicoes);
}

// Inside a step it is taken for done.
std::int64_t MotorODBC::escreve(Escrita escrita) {
    if (passo_ != nullptr) return adia(std::move(escrita)), 1;
    tranca_para_escrever();
    return corre(Repete::nao, [&] { return instrucao().executa(escrita.sql, escrita.parametros); });
}

// Found by its key: what the row was given of it, and the number that the server gave.
void MotorODBC::nota_testemunha(const Colunas& colunas, const std::vector<Atribuicao>& atribuicoes) {
    const auto numerada = std::find_if(colunas.lista.begin(), colunas.lista.end(),
                                       [](const Coluna& coluna) { return coluna.identidade; });
    if (numerada == colunas.lista.end()) return;
    Testemunha testemunha{colunas.tabela, " WHERE ", {}, 0};
    for (const Atribuicao& atribuicao : atribuicoes)
        if (const Coluna& coluna = colunas.lista[atribuicao.coluna];
            coluna.chave && !atribuicao.valor.nulo()) {
            testemunha.condicao += "[" + coluna.nome + "]=? AND ";
            testemunha.chave.emplace_back(coluna.tipo, atribuicao.valor);
        }
    testemunha.condicao += "[" + numerada->nome + "]=";
    testemunha_ = std::move(testemunha);
}

bool MotorODBC::altera(const Colunas& colunas, const std::vector<Atribuicao>& atribuicoes,
                       const registos::Conjunto& lida) {
    std::vector<Parametro> parametros = parametros_de(colunas, atribuicoes);
    const Condicao condicao(colunas, lida, parametros);
    return escreve({Genero::linha, texto_alteracao(colunas, atribuicoes) + condicao.texto(),
                    std::move(parametros), condicao.linha(), alterada}) > 0;
}

} // namespace orvex::platform::odbc
