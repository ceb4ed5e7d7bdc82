// The measured sides that are this product: each runs in a process of its own and prints its figures.
#pragma once

#include <filesystem>
#include <string>

namespace orvex::testes {
class ServidorTDS;
}

namespace orvex::bench {

// Each prints milliseconds first; gives the exit code.
int mede_facturas(const std::filesystem::path& instalacao, const std::string& cliente);
int mede_facturas_fio(const std::filesystem::path& instalacao, const std::string& cliente); // over the wire
int mede_emissao(const std::filesystem::path& instalacao, const std::string& cliente, int linhas,
                 bool com_diario);
// Of one of so many consumptions of the item of the newest ledger row.
int mede_ajuste(const std::filesystem::path& instalacao, int vezes, bool com_diario);

// What a slow line adds to every answer.
inline constexpr int demora_da_linha_ms = 20;
// The installation's database on the server, its ERP as it was.
void liga_ao_fio(const std::filesystem::path& instalacao, const testes::ServidorTDS& servidor);
// Print the milliseconds and the requests of each job through a slow line: of two lists, of notes,
// adjustments and transfers; and of a start, until its window is painted. Of an installation that is on no
// server yet.
int mede_trabalhos_fio(const std::filesystem::path& instalacao);
int mede_arranque_fio(const std::filesystem::path& instalacao);

// Open a window and end the process at its first paint; the caller measures the whole process.
int mostra_ecra(const std::filesystem::path& instalacao);
int mostra_janela_com_texto(); // one line of it: what any window that is not blank pays for its font

// Makes the ledger so many rows larger, half of them movements.
int acrescenta_linhas_ao_livro(const std::filesystem::path& instalacao, long long linhas);

// Prints the milliseconds to show a pick list, to filter it by three typed letters once it is read whole, to
// have read it so, and to filter it as soon as it is shown.
int mede_lista_clientes(const std::filesystem::path& instalacao);
int mede_lista_artigos(const std::filesystem::path& instalacao);

} // namespace orvex::bench
