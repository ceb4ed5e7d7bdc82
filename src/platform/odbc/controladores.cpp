#include "platform/odbc/controladores.h"

#include "base/texto.h"
#include "platform/odbc/texto_largo.h"

#include <algorithm>
#include <array>

namespace orvex::platform::odbc {
namespace {

// Of a list of "name=value", each ended by a zero.
std::string valor_de(const SQLWCHAR* lista, std::size_t unidades, std::string_view nome) {
    const SQLWCHAR* const fim = lista + unidades;
    while (lista < fim && *lista != 0) {
        const SQLWCHAR* const termo = std::find(lista, fim, SQLWCHAR{0});
        const std::string par = estreito(lista, static_cast<std::size_t>(termo - lista));
        const std::size_t igual = par.find('=');
        if (igual != std::string::npos && base::mesmo_nome(par.substr(0, igual), nome))
            return std::string(base::apara(std::string_view(par).substr(igual + 1)));
        if (termo == fim) break;
        lista = termo + 1;
    }
    return {};
}

} // namespace

Fala fala_de(const std::string& biblioteca) {
    const std::string nome = base::maiusculas(biblioteca);
    const bool freetds =
        nome.find("TDSODBC") != std::string::npos || nome.find("FREETDS") != std::string::npos;
    return freetds ? Fala::freetds : Fala::servidor;
}

std::vector<Controlador> controladores_instalados() {
    std::vector<Controlador> todos;
    SQLHENV ambiente = SQL_NULL_HENV;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &ambiente))) return todos;
    SQLSetEnvAttr(ambiente, SQL_ATTR_ODBC_VERSION, como_ponteiro(SQL_OV_ODBC3), 0);
    std::array<SQLWCHAR, 256> nome{};
    std::array<SQLWCHAR, 4096> atributos{};
    SQLSMALLINT unidades_nome = 0, unidades = 0;
    const auto cabe = [](SQLSMALLINT lidas, std::size_t maximo) {
        return std::min(static_cast<std::size_t>(lidas), maximo);
    };
    for (SQLUSMALLINT qual = SQL_FETCH_FIRST;
         SQL_SUCCEEDED(SQLDriversW(ambiente, qual, nome.data(), SQLSMALLINT{nome.size()}, &unidades_nome,
                                   atributos.data(), SQLSMALLINT{atributos.size()}, &unidades));
         qual = SQL_FETCH_NEXT) {
        Controlador& este = todos.emplace_back();
        este.nome = estreito(nome.data(), cabe(unidades_nome, nome.size() - 1));
        for (const char* atributo : {"Driver64", "Driver"})
            if (este.biblioteca.empty())
                este.biblioteca = valor_de(atributos.data(), cabe(unidades, atributos.size()), atributo);
    }
    SQLFreeHandle(SQL_HANDLE_ENV, ambiente);
    return todos;
}

std::string biblioteca_de(const std::string& controlador) {
    for (const Controlador& este : controladores_instalados())
        if (base::mesmo_nome(este.nome, controlador) && !este.biblioteca.empty()) return este.biblioteca;
    return controlador;
}

} // namespace orvex::platform::odbc
