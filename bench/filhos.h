// The measured sides that are this product: each runs in a process of its own and prints its figures.
#pragma once

#include <filesystem>
#include <string>

namespace orvex::bench {

// Each prints milliseconds first; gives the exit code.
int mede_facturas(const std::filesystem::path& instalacao, const std::string& cliente);
int mede_facturas_fio(const std::filesystem::path& instalacao, const std::string& cliente); // over the wire
int mede_emissao(const std::filesystem::path& instalacao, const std::string& cliente, int linhas,
                 bool com_diario);
// Of one of so many consumptions of the item of the newest ledger row.
int mede_ajuste(const std::filesystem::path& instalacao, int vezes, bool com_diario);

// Open a window and end the process at its first paint; the caller measures the whole process.
int mostra_ecra(const std::filesystem::path& instalacao);
int mostra_janela_vazia();
int mostra_janela_com_texto(); // one line of it: what any window that is not blank pays for its font

// Prints the milliseconds to show a pick list, to filter it by three typed letters, and to have read it
// whole.
int mede_lista_clientes(const std::filesystem::path& instalacao);
int mede_lista_artigos(const std::filesystem::path& instalacao);

} // namespace orvex::bench
