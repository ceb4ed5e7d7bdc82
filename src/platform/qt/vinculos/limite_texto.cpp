#include "platform/qt/vinculos/limite_texto.h"

#include <algorithm>

namespace orvex::platform::qt {
namespace {

// Where the new text differs from the one before, and how much of it is new.
struct Inserido {
    qsizetype inicio;
    qsizetype tamanho;
};

Inserido inserido(const QString& antes, const QString& texto) {
    const qsizetype curto = std::min(antes.size(), texto.size());
    qsizetype inicio = 0;
    while (inicio < curto && antes[inicio] == texto[inicio])
        ++inicio;
    qsizetype fim = 0;
    while (fim < curto - inicio && antes[antes.size() - 1 - fim] == texto[texto.size() - 1 - fim])
        ++fim;
    return {inicio, texto.size() - inicio - fim};
}

bool quebra(QChar c) {
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

// Line breaks and tabs become blanks.
QString numa_linha(QString texto) {
    texto.replace("\r\n", "\n");
    for (QChar& c : texto)
        if (quebra(c)) c = ' ';
    return texto;
}

// A paste brings along the blanks around it.
void apara_colado(QString& texto, int& cursor) {
    QString ate_ao_cursor = numa_linha(texto.left(cursor));
    const QString tudo = ate_ao_cursor + numa_linha(texto.mid(cursor));
    const QString aparado = tudo.trimmed();
    const qsizetype retirado = aparado.isEmpty() ? 0 : tudo.indexOf(aparado);
    cursor = static_cast<int>(std::clamp<qsizetype>(ate_ao_cursor.size() - retirado, 0, aparado.size()));
    texto = aparado;
}

} // namespace

QValidator::State LimiteTexto::validate(QString& texto, int& cursor) const {
    const QString antes = antes_();
    if (texto == antes) return Acceptable;
    Inserido novo = inserido(antes, texto);
    if (novo.tamanho > 1 || (novo.tamanho == 1 && quebra(texto[novo.inicio]))) {
        apara_colado(texto, cursor);
        novo = inserido(antes, texto);
    }
    const int maximo = maximo_ ? maximo_() : 0;
    if (maximo <= 0 || texto.size() <= maximo || novo.tamanho == 0) return Acceptable;
    const qsizetype fim = novo.inicio + novo.tamanho;
    qsizetype inicio = fim - std::min(novo.tamanho, texto.size() - maximo);
    if (inicio > novo.inicio && texto[inicio].isLowSurrogate()) --inicio;
    texto.remove(inicio, fim - inicio);
    cursor = static_cast<int>(std::min<qsizetype>(cursor, inicio));
    return Acceptable;
}

} // namespace orvex::platform::qt
