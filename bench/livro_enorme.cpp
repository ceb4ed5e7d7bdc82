// A ledger of many years, made by the engine itself: row by row through the program it would take an hour.
#include "bench/filhos.h"
#include "platform/sqlite/empresa.h"
#include "tools/empresa/empresa_demo.h"

namespace orvex::bench {
namespace {

// The rows come in the order of their keys and indexes, after all that are there.
constexpr const char* movimentos =
    "insert into xel_ORVEX_Mov (Ano, TpDoc, NumDoc, SerieDoc, NumLinha, Data, Artigo, Cliente, QtdOrig, Qtd) "
    "select 9999, 'ZZ', i, 1, 1, '2026-01-02', printf('Z%09d', i), 'ZZZZZ', 2.5, 0 from n";
constexpr const char* detentores =
    "insert into xel_ORVEX (NumSerie, Cliente, Data, Quantidade, CliFinal, Ano, TpDoc, Serie, NNumDoc, "
    "NumLin)"
    " select printf('Z%09d', i), 'ZZZZZ', '2026-01-02 00:00:00', 2.5, 'ZZZZZ', 9999, 'ZZ', 1, i, 1 from n";

} // namespace

int acrescenta_linhas_ao_livro(const std::filesystem::path& instalacao, long long linhas) {
    auto livro =
        platform::sqlite::abre_base(instalacao / demo::pasta_empresa / platform::sqlite::ficheiro_livro);
    // A crash leaves nothing worth keeping.
    livro.exec("pragma journal_mode = off; pragma synchronous = off; pragma cache_size = -65536");
    const std::string n = "with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
                          std::to_string(linhas / 2) + ") ";
    livro.exec(n + movimentos);
    livro.exec(n + detentores);
    livro.exec("pragma synchronous = full; pragma journal_mode = wal");
    return 0;
}

} // namespace orvex::bench
