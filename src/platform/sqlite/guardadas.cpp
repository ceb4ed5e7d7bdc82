#include "platform/sqlite/guardadas.h"

#include <utility>

namespace orvex::platform::sqlite {

InstrucoesGuardadas::Emprestimo::Emprestimo(InstrucoesGuardadas& dono, std::string sql)
    : dono_(dono), sql_(std::move(sql)) {
    if (const auto livre = dono_.livres_.find(sql_); livre != dono_.livres_.end())
        instrucao_ = std::move(livre->second);
    if (instrucao_ == nullptr) instrucao_ = std::make_unique<SQLite::Statement>(dono_.base_, sql_);
}

InstrucoesGuardadas::Emprestimo::~Emprestimo() {
    instrucao_->tryReset(); // repeats the failure of the last step, which has been dealt with
    instrucao_->clearBindings();
    dono_.livres_[std::move(sql_)] = std::move(instrucao_);
}

} // namespace orvex::platform::sqlite
