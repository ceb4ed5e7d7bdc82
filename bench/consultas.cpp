// Measures the enquiries on a ledger of a million holder rows and a million movements, each beside its own
// statements, stepped as far on the engine and read column by column.
//
//     orvex-medicoes-consultas [ARTIGOS]      five rows of either table each; 200,000 when not given
#include "livro/consultas/consultas.h"
#include "base/caminho.h"
#include "base/falha.h"
#include "bench/livro_de_consultas.h"
#include "bench/processo.h"
#include "platform/sqlite/empresa.h"
#include "platform/sqlite/forma.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "platform/sqlite/traducao.h"
#include "startup/instalacao.h"
#include "tests/apoio/pasta_temporaria.h"
#include "tools/empresa/empresa_demo.h"

#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <deque>

namespace {

using namespace orvex;
using namespace orvex::livro::consultas;
namespace fs = std::filesystem;
using Relogio = std::chrono::steady_clock;

constexpr int voltas = 7;
constexpr int pagina = 60; // rows that a window shows
constexpr int sempre = 1'000'000'000;

double ms_desde(Relogio::time_point inicio) {
    return std::chrono::duration<double, std::milli>(Relogio::now() - inicio).count();
}

// Takes so many rows, and notes when the first came.
struct Pagina : Destino {
    int cabem;
    Relogio::time_point inicio = Relogio::now();
    int linhas = 0;
    double primeira_ms = -1;

    explicit Pagina(int quantas) : cabem(quantas) {}
    void vista(const Vista&) override {}
    void quadro(const Quadro&) override {}
    bool linha(const Linha&) override {
        if (linhas++ == 0) primeira_ms = ms_desde(inicio);
        return linhas < cabem;
    }
    void total(const Linha&) override {}
};

// What was asked, and how many rows of it were read.
struct Pergunta {
    std::string sql;
    std::int64_t linhas = 0;
};

class Contado final : public startup::ConjuntoRegistos {
  public:
    Contado(std::unique_ptr<startup::ConjuntoRegistos> este, Pergunta& pergunta)
        : este_(std::move(este)), pergunta_(pergunta) {}
    bool fim() override { return este_->fim(); }
    void move_seguinte() override {
        ++pergunta_.linhas;
        este_->move_seguinte();
    }
    std::int64_t contagem() override { return este_->contagem(); }
    std::size_t colunas() const override { return este_->colunas(); }
    std::string_view nome_coluna(std::size_t coluna) const override { return este_->nome_coluna(coluna); }
    base::Variante valor(std::size_t coluna) override { return este_->valor(coluna); }
    base::Variante valor(std::string_view nome) override { return este_->valor(nome); }
    void acrescenta() override { este_->acrescenta(); }
    void define(std::string_view nome, const base::Variante& valor) override { este_->define(nome, valor); }
    void actualiza() override { este_->actualiza(); }

  private:
    std::unique_ptr<startup::ConjuntoRegistos> este_;
    Pergunta& pergunta_;
};

// Only asks; nothing else is expected of an enquiry.
class Contadora final : public startup::SessaoBD {
  public:
    explicit Contadora(startup::SessaoBD& BD) : BD_(BD) {}
    std::deque<Pergunta> perguntas;

    bool Abre(const std::string&) override { return true; }
    std::unique_ptr<startup::ConjuntoRegistos> Consulta(const std::string& sql) override {
        return std::make_unique<Contado>(BD_.Consulta(sql), perguntas.emplace_back(Pergunta{sql}));
    }
    std::unique_ptr<startup::ConjuntoRegistos> AbreActualizavel(const std::string&) override { nao(); }
    void Executa(const std::string&) override { nao(); }
    void IniciaTransaccao() override { nao(); }
    void Tranca() override { nao(); }
    void ConfirmaTransaccao() override { nao(); }
    void AnulaTransaccao() override { nao(); }
    bool EmTransaccao() override { return false; }
    void EmPasso(const std::vector<std::string>&, const std::function<void()>&) override { nao(); }
    void EmExclusivo(const std::function<void()>&) override { nao(); }
    std::size_t Comprimento(const std::string&, const std::string&) override { nao(); }
    void Fecha() override {}

  private:
    [[noreturn]] static void nao() { throw base::Falha("uma consulta que não só pergunta"); }
    startup::SessaoBD& BD_;
};

// The same on the engine's own interface.
// Statements are prepared beforehand, as the session has them from the round before.
double nua(sqlite3* bd, const std::deque<Pergunta>& perguntas) {
    double ms = 0;
    long bytes = 0;
    for (const Pergunta& pergunta : perguntas) {
        platform::sqlite::Forma forma;
        forma.le(pergunta.sql);
        const std::string sql = platform::sqlite::traduz(forma.chave()).instrucoes.front();
        sqlite3_stmt* comando = nullptr;
        if (sqlite3_prepare_v2(bd, sql.c_str(), -1, &comando, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(bd));
        for (std::size_t i = 0; i < forma.literais(); ++i) {
            const int onde = static_cast<int>(i) + 1;
            if (const auto* texto = std::get_if<std::string>(&forma.literal(i)))
                sqlite3_bind_text(comando, onde, texto->c_str(), -1, SQLITE_TRANSIENT);
            else if (const auto* inteiro = std::get_if<std::int64_t>(&forma.literal(i)))
                sqlite3_bind_int64(comando, onde, *inteiro);
            else
                sqlite3_bind_double(comando, onde, std::get<double>(forma.literal(i)));
        }
        const auto inicio = Relogio::now();
        const int colunas = sqlite3_column_count(comando);
        for (std::int64_t linha = 0; linha <= pergunta.linhas && sqlite3_step(comando) == SQLITE_ROW; ++linha)
            for (int i = 0; i < colunas; ++i)
                if (sqlite3_column_type(comando, i) == SQLITE_TEXT)
                    bytes += sqlite3_column_text(comando, i)[0] + sqlite3_column_bytes(comando, i);
                else
                    bytes += sqlite3_column_double(comando, i) > 0;
        sqlite3_reset(comando);
        ms += ms_desde(inicio);
        sqlite3_finalize(comando);
    }
    return bytes == -1 ? -1 : ms;
}

class Medicao {
  public:
    Medicao(const fs::path& instalacao)
        : pasta_(instalacao / demo::pasta_empresa), casa_(livro::Casa::le(startup::Parametros(instalacao))),
          bd_(platform::sqlite::abre_empresa_para_ler(pasta_, platform::sqlite::espera_normal_ms)),
          BD_(platform::sqlite::espera_normal_ms, platform::sqlite::Acesso::leitura) {
        startup::DefinicoesBD definicoes;
        definicoes.servidor = startup::servidor_embebido;
        definicoes.base = base::texto_de(pasta_);
        if (!BD_.Abre(startup::texto_ligacao(definicoes))) throw std::runtime_error("a empresa não abriu");
    }

    // Both in turn, after a round that does not count.
    void par(const char* nome, int cabem, double limite, const auto& consulta) {
        std::vector<double> nossos, nus;
        int linhas = 0;
        for (int volta = 0; volta <= voltas; ++volta) {
            Contadora contadora(BD_);
            Pagina primeira(cabem);
            consulta(Meios{contadora, casa_, base::DataHora{2026, 11, 23}}, primeira);
            const double nosso = ms_desde(primeira.inicio), nu = nua(bd_.getHandle(), contadora.perguntas);
            linhas = primeira.linhas;
            if (volta == 0) continue;
            nossos.push_back(nosso);
            nus.push_back(nu);
        }
        const double nosso = bench::mediana(nossos), nu = bench::mediana(nus);
        std::printf("%-58s %7.2f ms %7.2f ms %7.2f %8.2f%s   (%d linhas)\n", nome, nosso, nu, nosso / nu,
                    limite, nosso / nu > limite ? "  acima" : "", linhas);
        std::fflush(stdout);
    }
    void procura_de(const char* nome, const char* texto, double limite) {
        std::vector<double> primeiras, todas;
        for (int volta = 0; volta <= voltas; ++volta) {
            Pagina respostas(sempre);
            procura(Meios{BD_, casa_, base::DataHora{2026, 11, 23}}, texto, respostas);
            if (volta == 0) continue;
            primeiras.push_back(respostas.primeira_ms);
            todas.push_back(ms_desde(respostas.inicio));
        }
        const double primeira = bench::mediana(primeiras);
        std::printf("%-58s %7.1f ms %7.1f ms até ao fim", nome, primeira, bench::mediana(todas));
        if (limite > 0) std::printf("   < %.0f ms%s", limite, primeira > limite ? "  acima" : "");
        std::printf("\n");
        std::fflush(stdout);
    }

  private:
    fs::path pasta_;
    livro::Casa casa_;
    SQLite::Database bd_;
    platform::sqlite::SessaoSQLite BD_;
};

void mede_vistas(const fs::path& instalacao) {
    Medicao medicao(instalacao);
    const PedidoCliente grande{"C0001"}, pequeno{"C0007"};
    const PedidoMovimentos mes{{2025, 3, 1}, {2025, 3, 31}}, tudo{{2020, 1, 1}, {2030, 1, 1}};
    std::printf("\n%-58s %10s %10s %7s %8s\n", "medição (medianas)", "ORVEX", "base nua", "razão", "limite");
    medicao.par("artigo", sempre, 2, [](const Meios& m, Destino& d) { artigo(m, "Z000777", d); });
    medicao.par("documento", sempre, 2, [](const Meios& m, Destino& d) { documento(m, "2024/GR/1/777", d); });
    medicao.par("cliente, primeira página", pagina, 2,
                [&](const Meios& m, Destino& d) { cliente(m, pequeno, d); });
    medicao.par("cliente com 10 000 artigos, inteiro", sempre, 1.5,
                [&](const Meios& m, Destino& d) { cliente(m, grande, d); });
    medicao.par("parados há mais de 90 dias, primeira página", pagina, 2, [](const Meios& m, Destino& d) {
        parados(m, {90, "", {}}, d);
    });
    medicao.par("movimentos de um mês, primeira página", pagina, 2,
                [&](const Meios& m, Destino& d) { movimentos(m, mes, d); });
    medicao.par("movimentos de sempre, primeira página", pagina, 2,
                [&](const Meios& m, Destino& d) { movimentos(m, tudo, d); });
    std::printf("\n%-58s %10s\n", "procura", "primeira");
    for (const auto& [nome, texto] : {std::pair{"um artigo inteiro", "Z000777"},
                                      {"o começo de artigos", "Z0007"},
                                      {"um cliente", "C0013"},
                                      {"parte do nome de um cliente", "metal"},
                                      {"um documento", "GR/1/777"},
                                      {"um número", "777"}})
        medicao.procura_de(nome, texto, 100);
    medicao.procura_de("parte da designação, que só a tabela inteira diz", "laminado 7775", 100);
}

} // namespace

int main(int argc, char** argv) {
    const auto argumentos = base::linha_de_comando(argc, argv);
    try {
        if (argc == 4 && argumentos[1] == "--livro") {
            bench::faz_livro_de_consultas(base::caminho_de(argumentos[2]), std::stoll(argumentos[3]));
            return 0;
        }
        const testes::PastaTemporaria temporaria;
        const fs::path instalacao = temporaria.pasta() / "i";
        const fs::path eu = fs::canonical("/proc/self/exe");
        // In a process of its own, so that the memory of the next one is its own.
        const auto feita = bench::corre(
            {base::texto_de(eu), "--livro", base::texto_de(instalacao), argc > 1 ? argumentos[1] : "200000"});
        std::printf("  (o livro: %.0f s a fazer)\n", feita.parede_ms / 1e3);
        const auto folhas =
            bench::corre({base::texto_de(eu.parent_path() / "orvex-consulta"), "movimentos", "2022-01-01",
                          "2022-05-31", "--xlsx", base::texto_de(temporaria.pasta() / "m.xlsx"),
                          "--instalacao", base::texto_de(instalacao)});
        mede_vistas(instalacao);
        const double mb = static_cast<double>(folhas.memoria_kb) / 1024;
        std::printf("\n%-58s %7.1f MB %22s%s   (%.1f s, %.1f MB)\n",
                    "xlsx de 100 000 linhas, memória no máximo", mb, "<= 100 MB", mb > 100 ? "  acima" : "",
                    folhas.parede_ms / 1e3,
                    static_cast<double>(fs::file_size(temporaria.pasta() / "m.xlsx")) / 1e6);
    } catch (const std::exception& falha) {
        std::fprintf(stderr, "%s\n", falha.what());
        return 1;
    }
    return 0;
}
