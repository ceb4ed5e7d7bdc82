#include "platform/sqlite/guardadas.h"

namespace orvex::platform::sqlite {

InstrucoesGuardadas::Emprestimo::Emprestimo(InstrucoesGuardadas& dono, const std::string& sql)
    : lugar_(dono.livres_[sql]), instrucao_(std::move(lugar_)) {
    if (instrucao_ == nullptr) instrucao_ = std::make_unique<SQLite::Statement>(dono.base_, sql);
}

InstrucoesGuardadas::Emprestimo::~Emprestimo() {
    instrucao_->tryReset(); // repeats the failure of the last step, which has been dealt with
    instrucao_->clearBindings();
    lugar_ = std::move(instrucao_);
}

} // namespace orvex::platform::sqlite
