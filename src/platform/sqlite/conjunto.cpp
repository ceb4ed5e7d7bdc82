#include "platform/sqlite/conjunto.h"

#include "base/texto.h"
#include "platform/sqlite/falhas.h"

#include <algorithm>

namespace orvex::platform::sqlite {
namespace {

namespace numeros = startup::numeros_bd;
using base::Falha;
using base::Variante;

template <typename Definidos>
auto procura(Definidos& definidos, std::size_t coluna) {
    return std::find_if(definidos.begin(), definidos.end(),
                        [coluna](const auto& definido) { return definido.coluna == coluna; });
}

} // namespace

Conjunto::Conjunto(Motor& motor, std::shared_ptr<Preparada> preparada)
    : motor_(motor), preparada_(std::move(preparada)), colunas_(preparada_->colunas()),
      linhas_(colunas_->lista.size()), ha_linha_(preparada_->instrucao.hasRow()) {
    if (ha_linha_) {
        contagem_ = 1;
    } else {
        larga_instrucao();
    }
}

Conjunto::~Conjunto() { larga_instrucao(); }

void Conjunto::larga_instrucao() {
    if (preparada_ == nullptr) return;
    preparada_->instrucao.tryReset(); // repeats the failure of the last step, which has been dealt with
    preparada_.reset();
    motor_.esquece(this);
}

void Conjunto::verifica() const {
    if (falha_ != nullptr) std::rethrow_exception(falha_);
}

// --- Reading -----------------------------------------------------------------------------------------------

bool Conjunto::fim() {
    verifica();
    return !ha_linha_;
}

void Conjunto::move_seguinte() {
    verifica();
    definidos_.clear();
    escritos_.clear();
    nova_ = false;
    if (!ha_linha_) return;
    if (!aberto()) {
        ha_linha_ = linhas_.avanca();
        return;
    }
    try {
        ha_linha_ = preparada_->instrucao.executeStep();
    } catch (const SQLite::Exception& erro) {
        falha_ = std::make_exception_ptr(falha_de(erro));
        larga_instrucao();
        verifica();
    }
    if (ha_linha_) {
        ++contagem_;
    } else {
        larga_instrucao();
    }
}

void Conjunto::guarda_resto() noexcept {
    if (!aberto()) return;
    try {
        const std::int64_t anteriores = contagem_ - 1;
        do {
            linhas_.junta_linha();
            for (std::size_t i = 0; i < colunas(); ++i)
                linhas_.junta(le_coluna(preparada_->instrucao, i));
        } while (preparada_->instrucao.executeStep());
        contagem_ = anteriores + static_cast<std::int64_t>(linhas_.total());
        linhas_.avanca();
    } catch (const SQLite::Exception& erro) {
        falha_ = std::make_exception_ptr(falha_de(erro));
    } catch (...) {
        falha_ = std::current_exception();
    }
    larga_instrucao();
}

std::int64_t Conjunto::contagem() {
    guarda_resto();
    verifica();
    return contagem_;
}

Celula Conjunto::celula(std::size_t coluna) const {
    return aberto() ? le_coluna(preparada_->instrucao, coluna) : linhas_.celula(coluna);
}

Variante Conjunto::valor(std::size_t coluna) {
    verifica();
    if (!definidos_.empty())
        if (const auto definido = procura(definidos_, coluna); definido != definidos_.end())
            return definido->valor;
    if (nova_) return {};
    if (!ha_linha_) throw Falha("Não há registo actual.", numeros::falha_geral);
    if (!escritos_.empty())
        if (const auto escrito = procura(escritos_, coluna); escrito != escritos_.end())
            return escrito->valor;
    const TipoColuna& tipo = colunas_->lista.at(coluna).tipo;
    return le_celula(tipo, celula(coluna));
}

std::size_t Conjunto::indice(std::string_view nome) const {
    const auto& lista = colunas_->lista;
    for (std::size_t i = 0; i < lista.size(); ++i)
        if (base::mesmo_nome(lista[i].nome, nome)) return i;
    throw Falha("A coluna «" + std::string(nome) + "» não existe.", numeros::instrucao_errada);
}

// --- Updating ----------------------------------------------------------------------------------------------

void Conjunto::exige_actualizavel() const {
    verifica();
    if (colunas_->tabela.empty())
        throw Falha("O conjunto de registos só permite leitura.", numeros::instrucao_errada);
}

void Conjunto::acrescenta() {
    exige_actualizavel();
    definidos_.clear();
    nova_ = true;
}

void Conjunto::define(std::string_view nome, const Variante& valor) {
    exige_actualizavel();
    if (!nova_ && !ha_linha_) throw Falha("Não há registo actual.", numeros::falha_geral);
    const std::size_t coluna = indice(nome);
    const Coluna& descrita = colunas_->lista[coluna];
    if (descrita.identidade)
        throw Falha("A coluna " + descrita.nome + " é numerada pela base de dados.",
                    numeros::instrucao_errada);
    Variante normalizado = normaliza(descrita.tipo, descrita.nome, valor);
    if (const auto definido = procura(definidos_, coluna); definido != definidos_.end()) {
        definido->valor = std::move(normalizado);
    } else {
        definidos_.push_back({coluna, std::move(normalizado)});
    }
}

void Conjunto::actualiza() {
    exige_actualizavel();
    motor_.liberta();
    verifica();
    if (nova_) {
        com_falhas([this] { insere(); });
    } else if (!definidos_.empty()) {
        com_falhas([this] { altera(); });
        for (Definido& definido : definidos_) {
            if (const auto escrito = procura(escritos_, definido.coluna); escrito != escritos_.end()) {
                escrito->valor = std::move(definido.valor);
            } else {
                escritos_.push_back(std::move(definido));
            }
        }
    }
    definidos_.clear();
    nova_ = false;
}

void Conjunto::insere() {
    std::string nomes;
    std::string lugares;
    for (const Definido& definido : definidos_) {
        const char* separador = nomes.empty() ? "" : ",";
        nomes += separador + ("[" + colunas_->lista[definido.coluna].nome + "]");
        lugares += std::string(separador) + "?";
    }
    const std::string valores =
        nomes.empty() ? " DEFAULT VALUES" : "(" + nomes + ") VALUES (" + lugares + ")";
    const auto instrucao = motor_.escritas().toma("INSERT INTO " + colunas_->tabela + valores);
    int parametro = 0;
    for (const Definido& definido : definidos_)
        liga_valor(*instrucao, ++parametro, colunas_->lista[definido.coluna].tipo, definido.valor);
    instrucao->exec();
}

// The key finds the row; all values read, to the letter, tell that nobody changed it.
std::string Conjunto::condicao() const {
    std::string chave;
    std::string lidos;
    for (const Coluna& coluna : colunas_->lista) {
        const std::string nome = "[" + coluna.nome + "]";
        if (coluna.chave) chave += (chave.empty() ? "" : " AND ") + nome + "=?";
        lidos += " AND " + nome + " COLLATE BINARY IS ?";
    }
    return " WHERE " + chave + lidos;
}

void Conjunto::liga_lida(SQLite::Statement& instrucao, int parametro, std::size_t coluna) const {
    if (const auto escrito = procura(escritos_, coluna); escrito != escritos_.end()) {
        liga_valor(instrucao, parametro, colunas_->lista[coluna].tipo, escrito->valor);
    } else {
        liga_celula(instrucao, parametro, celula(coluna));
    }
}

void Conjunto::altera() {
    if (!colunas_->chave_completa)
        throw Falha("O registo não pode ser alterado sem a sua chave.", numeros::instrucao_errada);
    std::string atribuicoes;
    for (const Definido& definido : definidos_)
        atribuicoes += (atribuicoes.empty() ? "[" : ",[") + colunas_->lista[definido.coluna].nome + "]=?";
    const auto instrucao =
        motor_.escritas().toma("UPDATE " + colunas_->tabela + " SET " + atribuicoes + condicao());
    int parametro = 0;
    for (const Definido& definido : definidos_)
        liga_valor(*instrucao, ++parametro, colunas_->lista[definido.coluna].tipo, definido.valor);
    for (std::size_t i = 0; i < colunas(); ++i)
        if (colunas_->lista[i].chave) liga_lida(*instrucao, ++parametro, i);
    for (std::size_t i = 0; i < colunas(); ++i)
        liga_lida(*instrucao, ++parametro, i);
    if (instrucao->exec() == 0)
        throw Falha("O registo foi alterado ou apagado por outro utilizador.", numeros::registo_alterado);
}

} // namespace orvex::platform::sqlite
