// The writes of a step, sent together.
#include "platform/odbc/passo.h"

#include "base/texto.h"

#include <algorithm>

namespace orvex::platform::odbc {
namespace {

namespace numeros = startup::numeros_bd;
using base::Falha;
using Natureza = FalhaODBC::Natureza;

const FalhaODBC calou_se{"O servidor da base de dados não disse o que fez.", numeros::falha_geral,
                         Natureza::outra};

// With the connection goes every answer that has not come.
bool do_pedido(const Falha& falha) {
    const auto* odbc = dynamic_cast<const FalhaODBC*>(&falha);
    return odbc != nullptr && (odbc->natureza() == Natureza::ligacao || odbc->natureza() == Natureza::tempo);
}

} // namespace

bool cabe_entre_outras(std::string_view sql) {
    if (!base::texto_valido(sql)) return false;
    for (std::size_t i = 0; i < sql.size(); ++i) {
        const char c = sql[i];
        const std::string_view dois = sql.substr(i, 2);
        if (c == ';' || c == '?' || dois == "--" || dois == "/*") return false;
        if (c != '\'' && c != '"' && c != '[') continue;
        const char fecho = c == '[' ? ']' : c;
        for (i = sql.find(fecho, i + 1); sql.substr(std::min(i, sql.size()), 2) == std::string{fecho, fecho};)
            i = sql.find(fecho, i + 2); // a doubled sign stands for itself
        if (i == std::string_view::npos) return false;
    }
    return true;
}

startup::FalhaAdiada Escrita::adiada(const Falha& causa, bool com_linha) const {
    const std::string texto = causa.what() + (linha.empty() || !com_linha ? "" : " Registo: " + linha + ".");
    return {Falha(texto, causa.numero()), genero, sql};
}

bool Passo::cabe(const Escrita& escrita) const {
    return escritas_.empty() || (parametros_ + escrita.parametros.size() <= parametros_juntos &&
                                 texto_ + escrita.sql.size() <= texto_junto);
}

void Passo::esquece_respostas() {
    respostas_.clear();
    if (a_volta_ != nullptr) a_volta_->esquece_respostas();
}

void Passo::nota_escrita() {
    for (const std::string& pergunta : std::exchange(dadas_, {}))
        respostas_.erase(pergunta);
    if (a_volta_ != nullptr) a_volta_->nota_escrita();
}

void Passo::junta(Escrita escrita) {
    nota_escrita();
    parametros_ += escrita.parametros.size();
    texto_ += escrita.sql.size() + marca_de(escritas_.size()).size();
    escritas_.push_back(std::move(escrita));
}

std::vector<Escrita> Passo::retira_escritas() {
    parametros_ = texto_ = 0;
    return std::exchange(escritas_, {});
}

std::optional<Resposta> Passo::retira(const std::string& pergunta) {
    auto encontrada = respostas_.extract(pergunta);
    if (encontrada.empty()) return {};
    dadas_.push_back(pergunta);
    return std::move(encontrada.mapped());
}

// Those after it are sent again, where the server goes on: then it is this one that is not there.
void Lote::acabou(const Falha& causa) {
    nota(causa, no_pedido_ == 1 || (ao_falhar_ == AoFalhar::segue && !do_pedido(causa)));
}

void Lote::nota(const Falha& causa, bool sabida) {
    const auto* odbc = dynamic_cast<const FalhaODBC*>(&causa);
    falhadas_.push_back({conhecidas_++,
                         odbc != nullptr ? *odbc : FalhaODBC(causa.what(), causa.numero(), Natureza::outra),
                         sabida});
}

std::string Lote::texto(std::size_t ate) const {
    std::string texto = variaveis_das_marcas + marca_do_inicio(conhecidas_);
    for (std::size_t i = conhecidas_; i < ate; ++i) {
        texto += escritas_[i].sql + marca_de(i + 1);
        if (ao_falhar_ == AoFalhar::para)
            texto += escritas_[i].sem_linha ? "IF @e<>0 OR @n=0 RETURN;\n" : "IF @e<>0 RETURN;\n";
    }
    return texto;
}

std::vector<Parametro> Lote::parametros(std::size_t ate) const {
    std::vector<Parametro> todos;
    for (std::size_t i = conhecidas_; i < ate; ++i)
        todos.insert(todos.end(), escritas_[i].parametros.begin(), escritas_[i].parametros.end());
    return todos;
}

void Lote::corre(Instrucao& instrucao, std::size_t quantas) {
    comecou_ = false;
    no_pedido_ = std::min(quantas, por_saber());
    const std::size_t ate = conhecidas_ + no_pedido_;
    instrucao.consulta(texto(ate), parametros(ate));
    comecou_ = true;
    std::optional<FalhaODBC> causa;      // met since the last mark
    std::size_t restam = 2 * no_pedido_; // failures that are believed: triggers may tell of their own
    for (bool ha = true, novo = true; ha;) {
        try {
            if (std::exchange(novo, false))
                if (const auto marca = le_marca(instrucao, instrucao.le_colunas()))
                    conclui(*marca, std::exchange(causa, {}));
            novo = ha = instrucao.seguinte();
        } catch (const FalhaODBC& apanhada) {
            if (do_pedido(apanhada) || restam-- == 0) throw;
            if (!causa) causa = apanhada;
        }
    }
    if (conhecidas_ == ate || (falhou() && ao_falhar_ == AoFalhar::para)) return;
    nota(causa ? *causa : calou_se, true); // the server gave up those after it
}

void Lote::conclui(const Marca& marca, std::optional<FalhaODBC> causa) {
    while (conhecidas_ < std::min(marca.lugar, escritas_.size())) {
        const std::optional<FalhaODBC>& sem_linha = escritas_[conhecidas_].sem_linha;
        if (causa) {
            nota(*std::exchange(causa, {}), true);
        } else if (conhecidas_ + 1 < marca.lugar) {
            nota(calou_se, true);
        } else if (marca.causa) {
            nota(*marca.causa, true);
        } else if (sem_linha && marca.linhas == 0) {
            nota(*sem_linha, true);
        } else {
            ++conhecidas_;
        }
    }
}

} // namespace orvex::platform::odbc
