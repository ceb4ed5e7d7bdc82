#include "bench/base_nua.h"

#include "platform/sqlite/empresa.h"

extern "C" int compara_como_o_servidor(void*, int tamanho_a, const void* a, int tamanho_b, const void* b) {
    return orvex::platform::sqlite::compara_servidor(
        {static_cast<const char*>(a), static_cast<std::size_t>(tamanho_a)},
        {static_cast<const char*>(b), static_cast<std::size_t>(tamanho_b)});
}
