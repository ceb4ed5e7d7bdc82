// A company whose ledger has five holder rows and five movement lines of each item.
#pragma once

#include <filesystem>

namespace orvex::bench {

// The first 10,000 items are with the client C0001, the others with 399 more.
void faz_livro_de_consultas(const std::filesystem::path& instalacao, long long artigos);

} // namespace orvex::bench
