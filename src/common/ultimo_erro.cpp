// The text of the last failure of a confirmation.
#include "common/ecra.h"

#include "base/descricao.h"

namespace orvex::common {

namespace {

// Tells by its own text what happened, whatever an earlier failure left in UltimoErro.
bool fala_por_si(const std::exception& falha) {
    return dynamic_cast<const base::FalhaGuarda*>(&falha) != nullptr ||
           dynamic_cast<const startup::ConfirmacaoDesconhecida*>(&falha) != nullptr;
}

} // namespace

confirmacao::Meios Ecra::meios() {
    return {BD, gERP, observador(), formato(), [this](const std::string& texto) {
                if (!AvisaLido(texto)) throw base::Falha("O aviso não chegou a ser lido: " + texto);
            }};
}

void Ecra::com_ultimo_erro(const std::function<void()>& procedimento) {
    try {
        procedimento();
    } catch (const base::FalhaGuarda&) {
        throw;
    } catch (const std::exception& falha) {
        UltimoErro = base::descricao(falha);
        throw;
    }
}

void Ecra::com_ultimo_erro_numerado(const std::function<void()>& procedimento) {
    constexpr std::int64_t primeiro_numero = -2147221504;
    try {
        procedimento();
    } catch (const base::FalhaGuarda&) {
        throw;
    } catch (const std::exception& falha) {
        const auto* numerada = dynamic_cast<const base::Falha*>(&falha);
        const std::int64_t numero = numerada != nullptr ? numerada->numero() : 0;
        UltimoErro = std::to_string(numero - primeiro_numero) + " - " + base::descricao(falha);
        throw;
    }
}

std::string Ecra::erro_a_mostrar(const std::exception& falha) const {
    return fala_por_si(falha) || UltimoErro.empty() ? base::descricao(falha) : UltimoErro;
}

void Ecra::completa_erro(const std::exception& falha) {
    if (UltimoErro.empty() && !fala_por_si(falha)) UltimoErro = base::descricao(falha);
}

} // namespace orvex::common
