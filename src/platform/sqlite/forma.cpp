#include "platform/sqlite/forma.h"

#include "platform/sqlite/lexico.h"

#include <charconv>

namespace orvex::platform::sqlite {

void Forma::le(std::string_view sql) {
    chave_.clear();
    total_ = 0;
    bool retira =
        false; // before WHERE and SET, numbers and texts shape the statement (top 1, nvarchar(19), 'alias')
    std::size_t por_copiar = 0; // all up to here is in the shape
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
        if (retira && (c == '\'' || algarismo(c))) {
            chave_.append(sql, por_copiar, i - por_copiar);
            chave_ += c == '\'' ? lugar_texto : lugar_numero;
            por_copiar = fim;
        }
        i = fim;
    }
    chave_.append(sql, por_copiar);
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
    texto = sql.substr(inicio + 1, fim - inicio - 2);
    for (std::size_t i = texto.find('\''); i != std::string::npos; i = texto.find('\'', i + 1))
        texto.erase(i, 1); // of two that stand for one
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
