#include "bench/livro_de_consultas.h"

#include "platform/sqlite/empresa.h"
#include "tools/empresa/empresa_demo.h"

namespace orvex::bench {
namespace {

// Of item i: its code, its client, and a day so many after the first of 2022.
const std::string artigo = "printf('Z%06d', i)";
const std::string cliente = "(case when i <= 10000 then 'C0001' else printf('C%04d', 2 + i % 399) end)";
std::string dia(const std::string& dias) { return "date('2022-01-01', '+' || (" + dias + ") || ' days')"; }

// Its beginning, its way to the client in two rows, a note of the client's, and a surplus.
std::string detentor(const std::string& quem, const std::string& dias, const char* peso, const char* tipo,
                     const char* numero, int k) {
    return "select i, " + std::to_string(k) + " as k, " + artigo + " as a, " + quem + " as c, " + dia(dias) +
           " || ' 00:00:00' as d, " + peso + " as q, " + cliente + " as f, 2024 as ano, '" + tipo +
           "' as t, " + numero + " as n from n";
}

std::string movimento(const char* ano, const char* tipo, const std::string& linha, const char* aberto,
                      const std::string& origem) {
    return "select " + std::string(ano) + " as ano, '" + tipo + "' as t, i as n, 1 as s, " + linha +
           " as l, " + dia("60 + i % 900") + " as d, " + artigo + " as a, " + cliente +
           " as c, 'Bobine de aço' as x, 2.5 as q, " + aberto + " as b, " + origem + " as o from n";
}

} // namespace

void faz_livro_de_consultas(const std::filesystem::path& instalacao, long long artigos) {
    demo::OpcoesEmpresa opcoes;
    opcoes.pasta = instalacao;
    opcoes.clientes = 400;
    opcoes.hoje = {2026, 11, 23};
    demo::faz_empresa(opcoes);
    const auto empresa = instalacao / demo::pasta_empresa;
    auto livro = platform::sqlite::abre_base(empresa / platform::sqlite::ficheiro_livro);
    livro.exec("pragma journal_mode = off; pragma synchronous = off; pragma cache_size = -65536");
    livro.exec("attach '" + (empresa / platform::sqlite::ficheiro_erp).string() + "' as erp");
    livro.exec("pragma erp.synchronous = off");
    const std::string n = "with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
                          std::to_string(artigos) + ") ";
    livro.exec("begin");
    livro.exec(n + "insert into erp.Artigos (CODIGO, Nome, UnBase) select " + artigo +
               ", 'Bobine de aço laminado ' || i, 'TN' from n");
    livro.exec(n + "insert into erp.artarm (Artigo, Armazem, Existenc) select " + artigo +
               ", 'A2', 5 from n");
    const std::string orvex = "'ORVEX'";
    livro.exec(
        n +
        "insert into xel_ORVEX (NumSerie, Cliente, Data, Quantidade, CliFinal, Ano, TpDoc, Serie, NNumDoc, "
        "NumLin) select a, c, d, q, f, ano, t, 1, n, 1 from (" +
        detentor(orvex, "i % 300", "7.5", "SB", "0", 1) + " union all " +
        detentor(orvex, "30 + i % 300", "-7.5", "QB", "0", 2) + " union all " +
        detentor(cliente, "30 + i % 300", "7.5", "SB", "0", 3) + " union all " +
        detentor(cliente, "60 + i % 900", "-2.5", "GR", "i", 4) + " union all " +
        detentor(cliente, "400 + i % 900", "0.5", "SB", "i", 5) + ") order by i, k");
    const std::string linhas_fa = "(select 1 as l union all select 2 union all select 3 union all select 4)";
    livro.exec(
        n +
        "insert into xel_ORVEX_Mov (Ano, TpDoc, NumDoc, SerieDoc, NumLinha, Data, Artigo, Cliente, "
        "Descritivo, QtdOrig, Qtd, Origem) select ano, t, n, s, f.l, d, a, c, x, q, case when f.l = 1 then b "
        "else 0 end, o from (" +
        movimento("2023", "FA", "0", "(i % 3 = 0)", "''") + ") cross join " + linhas_fa +
        " f order by n, f.l");
    livro.exec(n +
               "insert into xel_ORVEX_Mov (Ano, TpDoc, NumDoc, SerieDoc, NumLinha, Data, Artigo, Cliente, "
               "Descritivo, QtdOrig, Qtd, Origem) " +
               movimento("2024", "GR", "1", "2.5", "'2023/FA/1/' || i || '/2/00000'"));
    livro.exec(
        n +
        "insert into erp.DocGcCab (Ano, TpDoc, Serie, NNumDoc, Data, Terceiro) select 2024, 'GR', 1, i, " +
        dia("60 + i % 900") + " || ' 00:00:00', " + cliente + " from n");
    livro.exec(
        n +
        "insert into erp.DocGcLin (Ano, TpDocum, Serie, NNumDoc, NumLinha, Artigo, Quant) select 2024, "
        "'GR', 1, i, 1, " +
        artigo + ", 2.5 from n");
    livro.exec("commit; pragma synchronous = full; pragma journal_mode = wal");
}

} // namespace orvex::bench
