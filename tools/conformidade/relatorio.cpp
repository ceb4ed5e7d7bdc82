#include "relatorio.h"

#include "base/descricao.h"

#include <ostream>

namespace orvex::conformidade {

void Relatorio::certo(const std::string& o_que) {
    ++certos_;
    linha("certo             ", o_que);
}

void Relatorio::errado(const std::string& o_que, const std::string& esperado, const std::string& encontrado) {
    ++errados_;
    linha("errado            ", o_que + ": esperado «" + esperado + "», encontrado «" + encontrado + "»");
}

void Relatorio::nao_experimentado(const std::string& o_que, const std::string& porque) {
    ++por_experimentar_;
    linha("não experimentado ", o_que + ": " + porque);
}

bool Relatorio::compara(const std::string& o_que, const std::string& esperado,
                        const std::string& encontrado) {
    if (esperado == encontrado)
        certo(o_que + (esperado.empty() ? "" : ": " + esperado));
    else
        errado(o_que, esperado, encontrado);
    return esperado == encontrado;
}

bool Relatorio::experimenta(const std::string& o_que, const std::function<void()>& passos) {
    try {
        passos();
        return true;
    } catch (const std::exception& falha) {
        errado(o_que, "sem falhas", base::descricao(falha));
        return false;
    }
}

std::string Relatorio::resumo() const {
    return std::to_string(certos_) + " certo, " + std::to_string(errados_) + " errado, " +
           std::to_string(por_experimentar_) + " não experimentado.";
}

void Relatorio::linha(const char* estado, const std::string& texto) {
    saida_ << estado << texto << std::endl;
}

} // namespace orvex::conformidade
