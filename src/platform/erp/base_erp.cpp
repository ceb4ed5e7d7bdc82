#include "platform/erp/base_erp.h"

#include "base/falha.h"

#include <SQLiteCpp/Exception.h>

#include <sqlite3.h>

namespace orvex::platform::erp {

std::string texto_da_falha(const SQLite::Exception& falha) {
    switch (falha.getErrorCode() & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "A empresa do ERP está ocupada por outro posto de trabalho. Tente de novo.";
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return "A empresa do ERP só pode ser lida: não há permissão para gravar.";
    case SQLITE_FULL:
        return "Não há espaço em disco para gravar na empresa do ERP.";
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return "A empresa do ERP está danificada.";
    case SQLITE_CANTOPEN:
        return "Não foi possível abrir a empresa do ERP.";
    case SQLITE_CONSTRAINT:
        return "Os dados não respeitam uma regra da empresa do ERP.";
    case SQLITE_NOMEM:
        return "Memória insuficiente.";
    default:
        return std::string("Falha na empresa do ERP (") + falha.what() + ").";
    }
}

startup::ResultadoERP BaseErp::executa(const std::function<void()>& operacao,
                                       SQLite::TransactionBehavior inicio) {
    try {
        // One that could not be ended is none of this operation's.
        if (sqlite3_get_autocommit(bd_.getHandle()) == 0) bd_.tryExec("ROLLBACK");
        SQLite::Transaction transaccao(bd_, inicio);
        operacao();
        transaccao.commit();
        return {true, {}};
    } catch (const Recusa& recusa) {
        return {false, recusa.what()};
    } catch (const base::Falha& falha) {
        return {false, falha.what()};
    } catch (const SQLite::Exception& falha) {
        return {false, texto_da_falha(falha)};
    }
}

Comando& Comando::com(const base::Variante& valor) {
    const auto* texto = std::get_if<std::string>(&valor.valor());
    if (texto == nullptr) return com_este(valor);
    comando_->bind(++ultimo_, *texto);
    return *this;
}

Comando& Comando::com_este(const base::Variante& valor) {
    ++ultimo_;
    const auto& conteudo = valor.valor();
    if (valor.nulo())
        comando_->bind(ultimo_);
    else if (const auto* texto = std::get_if<std::string>(&conteudo))
        comando_->bindNoCopy(ultimo_, *texto);
    else if (std::holds_alternative<base::DataHora>(conteudo))
        comando_->bind(ultimo_, valor.texto());
    else if (std::holds_alternative<bool>(conteudo) || std::holds_alternative<std::int64_t>(conteudo))
        comando_->bind(ultimo_, valor.inteiro());
    else
        comando_->bind(ultimo_, valor.real()); // the engine keeps a whole one as an integer
    return *this;
}

base::Variante Comando::valor(int coluna) {
    const SQLite::Column lido = comando_->getColumn(coluna);
    if (lido.isNull()) return {};
    if (lido.isInteger()) return lido.getInt64();
    if (lido.isFloat()) return base::Moeda::de_real(lido.getDouble());
    return lido.getString();
}

} // namespace orvex::platform::erp
