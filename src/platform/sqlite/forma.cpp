#include "platform/sqlite/forma.h"

#include "platform/sqlite/lexico.h"

#include <charconv>

namespace orvex::platform::sqlite {

void Forma::le(std::string_view sql) {
    chave_.clear();
    total_ = 0;
    bool retira =
        false; // before WHERE and SET, numbers and texts shape the statement (top 1, nvarchar(19), 'alias')
    for (std::size_t i = 0; i < sql.size();) {
        const char c = sql[i];
        std::size_t fim = i + 1;
        if (inicia_palavra(c)) {
            fim = fim_palavra(sql, i);
            const std::string_view palavra = sql.substr(i, fim - i);
            if (!retira) retira = iguais_sem_caixa(palavra, "WHERE") || iguais_sem_caixa(palavra, "SET");
        } else if (c == '[' || c == '"') {
            fim = fim_entre(sql, i, c == '[' ? ']' : '"');
        } else if (c == '\'') {
            fim = retira ? le_texto(sql, i) : fim_entre(sql, i, c);
        } else if (algarismo(c)) {
            fim = retira ? le_numero(sql, i) : fim_numero(sql, i);
        } else if (c == lugar_texto || c == lugar_numero) {
            instrucao_errada(sql.substr(i));
        }
        if (retira && c == '\'') {
            chave_ += lugar_texto;
        } else if (retira && algarismo(c)) {
            chave_ += lugar_numero;
        } else {
            chave_.append(sql, i, fim - i);
        }
        i = fim;
    }
}

Forma::Literal& Forma::novo_literal() {
    if (total_ == literais_.size()) literais_.emplace_back();
    return literais_[total_++];
}

std::size_t Forma::le_texto(std::string_view sql, std::size_t inicio) {
    const std::size_t fim = fim_entre(sql, inicio, '\'');
    Literal& literal = novo_literal();
    if (!std::holds_alternative<std::string>(literal)) literal = std::string();
    std::string& texto = std::get<std::string>(literal);
    texto.clear();
    for (std::size_t i = inicio + 1; i + 1 < fim; ++i) {
        texto += sql[i];
        if (sql[i] == '\'') ++i;
    }
    return fim;
}

std::size_t Forma::le_numero(std::string_view sql, std::size_t inicio) {
    const std::size_t fim = fim_numero(sql, inicio);
    Literal& literal = novo_literal();
    std::int64_t inteiro = 0;
    if (const auto lido = std::from_chars(sql.data() + inicio, sql.data() + fim, inteiro);
        lido.ec == std::errc() && lido.ptr == sql.data() + fim) {
        literal = inteiro;
    } else {
        double real = 0;
        std::from_chars(sql.data() + inicio, sql.data() + fim, real);
        literal = real;
    }
    return fim;
}

} // namespace orvex::platform::sqlite
