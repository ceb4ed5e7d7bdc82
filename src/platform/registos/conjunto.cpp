#include "platform/registos/conjunto.h"

#include "base/falha.h"
#include "base/texto.h"

#include <algorithm>

namespace orvex::platform::registos {
namespace {

namespace numeros = startup::numeros_bd;
using base::Falha;
using base::Variante;

const Variante* procura(const std::vector<Atribuicao>& atribuicoes, std::size_t coluna) {
    const auto atribuicao = std::find_if(atribuicoes.begin(), atribuicoes.end(),
                                         [coluna](const Atribuicao& este) { return este.coluna == coluna; });
    return atribuicao == atribuicoes.end() ? nullptr : &atribuicao->valor;
}

void poe(std::vector<Atribuicao>& atribuicoes, Atribuicao atribuicao) {
    std::erase_if(atribuicoes,
                  [&atribuicao](const Atribuicao& este) { return este.coluna == atribuicao.coluna; });
    atribuicoes.push_back(std::move(atribuicao));
}

} // namespace

std::unique_ptr<Conjunto> Motor::abre_actualizavel(const std::string& sql) {
    if (const auto conhecida = conhecidas_.find(sql); conhecida != conhecidas_.end())
        return std::make_unique<Conjunto>(*this, conhecida->second, sql);
    auto conjunto = consulta(sql, Modo::actualizavel);
    conjunto->define_texto(sql);
    return conjunto;
}

void Motor::conhece(const std::string& sql, const std::shared_ptr<const Colunas>& colunas, int geracao) {
    if (geracao != geracao_) return;
    constexpr std::size_t textos_guardados = 100; // far more than the program adds rows to
    if (conhecidas_.size() >= textos_guardados) conhecidas_.clear();
    conhecidas_[sql] = colunas;
}

void Motor::liberta() {
    if (aberto_ != nullptr) aberto_->guarda_resto();
}

void Motor::abre(Conjunto& conjunto) {
    if (conjunto.aberto()) aberto_ = &conjunto;
}

Conjunto::Conjunto(Motor& motor, std::shared_ptr<const Colunas> colunas, std::unique_ptr<Cursor> cursor)
    : motor_(motor), colunas_(std::move(colunas)), geracao_(motor.geracao()), cursor_(std::move(cursor)),
      linhas_(colunas_->lista.size()), ha_linha_(cursor_ != nullptr), contagem_(ha_linha_ ? 1 : 0) {}

Conjunto::Conjunto(Motor& motor, std::shared_ptr<const Colunas> colunas, Linhas linhas)
    : motor_(motor), colunas_(std::move(colunas)), geracao_(motor.geracao()), linhas_(std::move(linhas)),
      ha_linha_(linhas_.avanca()), contagem_(static_cast<std::int64_t>(linhas_.total())) {}

Conjunto::Conjunto(Motor& motor, std::shared_ptr<const Colunas> colunas, std::string sql)
    : motor_(motor), colunas_(std::move(colunas)), geracao_(motor.geracao()), linhas_(colunas_->lista.size()),
      ha_linha_(false), sql_(std::move(sql)), por_abrir_(true) {}

Conjunto::~Conjunto() { larga_cursor(); }

void Conjunto::larga_cursor() {
    if (cursor_ == nullptr) return;
    cursor_.reset();
    motor_.esquece(this);
}

void Conjunto::abre_se() {
    if (!por_abrir_) return;
    const auto aberto = motor_.consulta(sql_, Motor::Modo::actualizavel);
    por_abrir_ = false;
    colunas_ = std::move(aberto->colunas_);
    geracao_ = aberto->geracao_;
    cursor_ = std::move(aberto->cursor_);
    linhas_ = std::move(aberto->linhas_);
    ha_linha_ = aberto->ha_linha_;
    contagem_ = aberto->contagem_;
    motor_.passa(aberto.get(), this);
}

void Conjunto::verifica() const {
    if (falha_ != nullptr) std::rethrow_exception(falha_);
}

// --- Reading -----------------------------------------------------------------------------------------------

bool Conjunto::fim() {
    verifica();
    abre_se();
    return !ha_linha_;
}

void Conjunto::move_seguinte() {
    verifica();
    abre_se();
    definidos_.clear();
    escritos_.clear();
    nova_ = false;
    if (!ha_linha_) return;
    if (!aberto()) {
        ha_linha_ = linhas_.avanca();
        return;
    }
    try {
        ha_linha_ = cursor_->avanca();
    } catch (const Falha&) {
        falha_ = std::current_exception();
        larga_cursor();
        throw;
    }
    if (ha_linha_) {
        ++contagem_;
    } else {
        larga_cursor();
    }
}

void Conjunto::guarda_resto() noexcept {
    if (!aberto()) return;
    try {
        const std::int64_t anteriores = contagem_ - 1;
        do {
            linhas_.junta_linha();
            for (std::size_t i = 0; i < colunas(); ++i)
                linhas_.junta(cursor_->celula(i));
        } while (cursor_->avanca());
        contagem_ = anteriores + static_cast<std::int64_t>(linhas_.total());
        linhas_.avanca();
    } catch (...) {
        falha_ = std::current_exception();
    }
    larga_cursor();
}

std::int64_t Conjunto::contagem() {
    abre_se();
    guarda_resto();
    verifica();
    return contagem_;
}

Celula Conjunto::celula(std::size_t coluna) const {
    return aberto() ? cursor_->celula(coluna) : linhas_.celula(coluna);
}

const Variante* Conjunto::escrito(std::size_t coluna) const { return procura(escritos_, coluna); }

Variante Conjunto::valor(std::size_t coluna) {
    verifica();
    if (const Variante* definido = procura(definidos_, coluna)) return *definido;
    if (nova_) return {};
    abre_se();
    if (!ha_linha_) throw Falha("Não há registo actual.", numeros::falha_geral);
    if (const Variante* ja_escrito = escrito(coluna)) return *ja_escrito;
    return le_celula(colunas_->lista.at(coluna).tipo, celula(coluna));
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
    if (!sql_.empty()) motor_.conhece(sql_, colunas_, geracao_);
    definidos_.clear();
    definidos_.reserve(colunas());
    nova_ = true;
}

void Conjunto::define(std::string_view nome, const Variante& valor) {
    exige_actualizavel();
    if (!nova_) abre_se();
    if (!nova_ && !ha_linha_) throw Falha("Não há registo actual.", numeros::falha_geral);
    const std::size_t coluna = indice(nome);
    const Coluna& descrita = colunas_->lista[coluna];
    if (descrita.identidade)
        throw Falha("A coluna " + descrita.nome + " é numerada pela base de dados.",
                    numeros::instrucao_errada);
    poe(definidos_, {coluna, normaliza(descrita.tipo, descrita.nome, valor)});
}

void Conjunto::actualiza() {
    exige_actualizavel();
    motor_.liberta();
    verifica();
    if (nova_) {
        motor_.insere(*colunas_, definidos_);
    } else if (!definidos_.empty()) {
        altera();
    }
    definidos_.clear();
    nova_ = false;
}

void Conjunto::altera() {
    if (!colunas_->chave_completa)
        throw Falha("O registo não pode ser alterado sem a sua chave.", numeros::instrucao_errada);
    if (!motor_.altera(*colunas_, definidos_, *this))
        throw Falha(alterado_por_outro, numeros::registo_alterado);
    for (Atribuicao& definido : definidos_)
        poe(escritos_, std::move(definido));
}

std::string texto_insercao(const std::string& tabela, const Colunas& colunas,
                           const std::vector<Atribuicao>& atribuicoes) {
    std::string texto = "INSERT INTO " + tabela;
    if (atribuicoes.empty()) return texto += " DEFAULT VALUES";
    const char* separador = "([";
    for (const Atribuicao& atribuicao : atribuicoes) {
        texto.append(separador).append(colunas.lista[atribuicao.coluna].nome);
        separador = "],[";
    }
    texto += "]) VALUES (?";
    for (std::size_t i = 1; i < atribuicoes.size(); ++i)
        texto += ",?";
    return texto += ")";
}

std::string texto_alteracao(const Colunas& colunas, const std::vector<Atribuicao>& atribuicoes) {
    std::string texto = "UPDATE " + colunas.tabela;
    const char* separador = " SET [";
    for (const Atribuicao& atribuicao : atribuicoes) {
        texto.append(separador).append(colunas.lista[atribuicao.coluna].nome).append("]=?");
        separador = ",[";
    }
    return texto;
}

} // namespace orvex::platform::registos
