#include "platform/sqlite/empresa.h"

#include "platform/sqlite/traducao.h"

#include <sqlite3.h>

#include <algorithm>
#include <string>
#include <thread>

namespace orvex::platform::sqlite {
namespace {

int compara(void*, int tamanho_a, const void* a, int tamanho_b, const void* b) {
    return compara_servidor({static_cast<const char*>(a), static_cast<std::size_t>(tamanho_a)},
                            {static_cast<const char*>(b), static_cast<std::size_t>(tamanho_b)});
}

// Texts are joined; numbers, and texts that are added to numbers, are summed.
void soma_servidor(sqlite3_context* contexto, int, sqlite3_value** valores) {
    const auto tipo = [&](int i) { return sqlite3_value_type(valores[i]); };
    if (tipo(0) == SQLITE_NULL || tipo(1) == SQLITE_NULL) {
        sqlite3_result_null(contexto);
    } else if (tipo(0) == SQLITE_TEXT && tipo(1) == SQLITE_TEXT) {
        std::string texto;
        for (int i = 0; i < 2; ++i) {
            const auto* bytes = static_cast<const char*>(sqlite3_value_blob(valores[i]));
            if (bytes != nullptr)
                texto.append(bytes, static_cast<std::size_t>(sqlite3_value_bytes(valores[i])));
        }
        sqlite3_result_text64(contexto, texto.data(), texto.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    } else if (sqlite3_value_numeric_type(valores[0]) == SQLITE_TEXT ||
               sqlite3_value_numeric_type(valores[1]) == SQLITE_TEXT) {
        sqlite3_result_error(contexto, "a text that is no number is added to a number", -1);
    } else if (tipo(0) == SQLITE_INTEGER && tipo(1) == SQLITE_INTEGER) {
        sqlite3_result_int64(contexto, sqlite3_value_int64(valores[0]) + sqlite3_value_int64(valores[1]));
    } else {
        sqlite3_result_double(contexto, sqlite3_value_double(valores[0]) + sqlite3_value_double(valores[1]));
    }
}

void semelhante_servidor(sqlite3_context* contexto, int, sqlite3_value** valores) {
    if (sqlite3_value_type(valores[0]) == SQLITE_NULL || sqlite3_value_type(valores[1]) == SQLITE_NULL)
        return sqlite3_result_null(contexto);
    const auto texto = [&](int i) {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(valores[i]));
        return std::string_view(bytes, static_cast<std::size_t>(sqlite3_value_bytes(valores[i])));
    };
    sqlite3_result_int(contexto, semelhante(texto(0), texto(1)) ? 1 : 0);
}

} // namespace

namespace {

using Relogio = std::chrono::steady_clock;

int ocupada(void* contexto, int vezes) {
    auto& como = *static_cast<ComoEspera*>(contexto);
    const auto agora = Relogio::now();
    if (vezes == 0) como.fim = agora + std::chrono::milliseconds(como.espera_ms);
    if (agora >= como.fim) return 0;
    const auto ate = std::min(agora + std::chrono::milliseconds(std::min(vezes + 1, 25)), como.fim);
    como.a_vista(como.pela_tranca, [ate](std::chrono::milliseconds limite) {
        std::this_thread::sleep_until(std::min(Relogio::now() + limite, ate));
        return Relogio::now() >= ate;
    });
    return 1;
}

int a_trabalhar(void* contexto) {
    const auto& como = *static_cast<ComoEspera*>(contexto);
    como.a_vista(como.pelo_motor, espera::so_um_momento);
    return 0;
}

} // namespace

void espera_a_vista(SQLite::Database& base, ComoEspera& como) {
    constexpr int passos = 20'000; // of the engine's: less than a millisecond
    if (!como.a_vista) return;
    sqlite3_busy_handler(base.getHandle(), ocupada, &como);
    sqlite3_progress_handler(base.getHandle(), passos, a_trabalhar, &como);
}

SQLite::Database abre_base(const std::filesystem::path& ficheiro, int indicadores, int espera_ms) {
    SQLite::Database base(ficheiro, indicadores, espera_ms);
    base.check(
        sqlite3_create_collation_v2(base.getHandle(), "SERVIDOR", SQLITE_UTF8, nullptr, compara, nullptr));
    base.createFunction(funcao_soma, 2, true, nullptr, soma_servidor);
    base.createFunction(funcao_semelhante, 2, true, nullptr, semelhante_servidor);
    base.exec(std::string("PRAGMA ") + memoria_paginas);
    base.exec(std::string("PRAGMA ") + duravel);
    // A long note is not made to wait while its log is copied into the file; closing does that.
    base.exec("PRAGMA wal_autocheckpoint = 8000");
    if ((indicadores & SQLite::OPEN_CREATE) != 0) base.exec("PRAGMA journal_mode = WAL");
    return base;
}

} // namespace orvex::platform::sqlite
