#include "platform/registos/sessao.h"

#include "base/descricao.h"
#include "base/texto.h"

namespace orvex::platform::registos {

using startup::ConjuntoRegistos;

namespace {

// What an engine makes of such a text is its own affair: the end of it, another letter, another value.
const std::string& exige_texto(const std::string& sql) {
    if (!base::texto_valido(sql))
        throw base::Falha("A instrução SQL tem caracteres que não são de texto.",
                          startup::numeros_bd::instrucao_errada);
    return sql;
}

} // namespace

bool Sessao::Abre(const std::string& ligacao) {
    Fecha();
    try {
        motor_ = abre_motor(ligacao);
        motor_->define_ao_engolir(ao_engolir_);
    } catch (const std::exception& falha) {
        causa_ = base::descricao(falha);
    }
    return motor_ != nullptr;
}

Motor& Sessao::motor() {
    if (motor_ == nullptr)
        throw base::Falha("A base de dados não está aberta. " + causa_, startup::numeros_bd::falha_geral);
    return *motor_;
}

std::unique_ptr<ConjuntoRegistos> Sessao::Consulta(const std::string& sql) {
    return motor().consulta(exige_texto(sql), Motor::Modo::leitura);
}

std::unique_ptr<ConjuntoRegistos> Sessao::AbreActualizavel(const std::string& sql) {
    return motor().abre_actualizavel(exige_texto(sql));
}

void Sessao::Executa(const std::string& sql) { motor().executa(exige_texto(sql)); }

void Sessao::EmPasso(const std::vector<std::string>& perguntas, const std::function<void()>& trabalho) {
    if (motor_ == nullptr) return trabalho();
    motor_->em_passo(perguntas, trabalho);
}

void Sessao::EmExclusivo(const std::function<void()>& trabalho) {
    if (motor_ == nullptr) return trabalho();
    motor_->em_exclusivo(trabalho);
}

std::size_t Sessao::Comprimento(const std::string& tabela, const std::string& coluna) {
    const auto [descrita, nova] = comprimentos_.try_emplace(base::maiusculas(tabela));
    if (nova) {
        try {
            const auto vazio = motor().consulta(pergunta_das_colunas(tabela), Motor::Modo::leitura);
            for (std::size_t i = 0; i < vazio->colunas(); ++i)
                descrita->second[base::maiusculas(vazio->nome_coluna(i))] = vazio->tipo(i).comprimento;
        } catch (const base::Falha& falha) {
            if (falha.numero() == startup::numeros_bd::tabela_em_falta) return 0;
            comprimentos_.erase(descrita);
            throw;
        }
    }
    const auto encontrada = descrita->second.find(base::maiusculas(coluna));
    return encontrada == descrita->second.end() ? 0 : encontrada->second;
}

void Sessao::Fecha() {
    motor_.reset();
    causa_.clear();
    comprimentos_.clear();
}

} // namespace orvex::platform::registos
