#include "empresa_demo.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "construcao.h"
#include "instalacao.h"
#include "platform/erp/esquema_erp.h"
#include "platform/sqlite/empresa.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "startup/construtor_ligacao.h"
#include "startup/definicoes.h"
#include "startup/esquema_livro.h"
#include "startup/ficheiro.h"

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Transaction.h>

#include <ctime>

namespace orvex::demo {
namespace {

namespace fs = std::filesystem;

// Beside the keys: what the screens search by, and the empty sets that rows are added to, here as well.
constexpr const char* indices_livro = R"(
create index xel_ORVEX_Mov_Cliente on xel_ORVEX_Mov (Cliente, TpDoc, Artigo);
create index xel_ORVEX_Mov_Artigo on xel_ORVEX_Mov (Artigo, TpDoc);
create index xel_ORVEX_Mov_Origem on xel_ORVEX_Mov (Origem, TpDoc);
create index xel_ORVEX_Documento on xel_ORVEX (Ano, TpDoc, Serie, NNumDoc);
create index xel_ORVEX_TpDoc on xel_ORVEX (TpDoc, Serie, NNumDoc);
create index xel_ORVEX_Cliente on xel_ORVEX (Cliente, NumSerie);
create index xel_ORVEX_Data on xel_ORVEX (Data);
)";

// A crash while a company is being made leaves nothing worth keeping, so nothing waits for the disk until the
// end.
constexpr const char* sem_esperas = "pragma synchronous = off; pragma cache_size = -65536";

void verifica_opcoes(const OpcoesEmpresa& opcoes) {
    if (opcoes.clientes < 1 || opcoes.artigos < 1 || opcoes.linhas < 0 || opcoes.linhas_primeiro_cliente < 0)
        throw base::Falha("São precisos pelo menos um cliente e um artigo.");
    if (!opcoes.hoje.valida()) throw base::Falha("A data da empresa não é válida.");
    std::error_code erro;
    if (fs::status(opcoes.pasta, erro).type() == fs::file_type::not_found) return;
    const std::string pasta = base::texto_de(opcoes.pasta);
    if (const std::string defeito = startup::defeito_da_pasta(opcoes.pasta); !defeito.empty())
        throw base::Falha("«" + pasta + "» " + defeito + ".");
    if (!fs::is_empty(opcoes.pasta, erro) || erro)
        throw base::Falha("A pasta «" + pasta + "» já existe e não está vazia, ou não pode ser lida.");
}

platform::sqlite::SessaoSQLite abre_livro(const fs::path& empresa) {
    platform::sqlite::SessaoSQLite sessao;
    startup::ConstrutorLigacao ligacao;
    ligacao.servidor = startup::servidor_embebido;
    ligacao.base = base::texto_de(empresa);
    ligacao.utilizador = utilizador;
    if (!sessao.Abre(ligacao.constroi()))
        throw base::Falha("Não foi possível abrir a empresa «" + base::texto_de(empresa) + "».");
    return sessao;
}

// As start-up makes them, so that there is one place that knows their columns.
void cria_tabelas_livro(const fs::path& empresa) {
    platform::sqlite::cria_livro(empresa);
    auto sessao = abre_livro(empresa);
    startup::VerificaTabelas(sessao);
    startup::VerificaPesos(sessao);
}

void preenche(const OpcoesEmpresa& opcoes, platform::erp::BaseErp& erp, startup::SessaoBD& livro) {
    Construcao construcao{opcoes, erp, livro, Sorteio(opcoes.semente), {}};
    construcao.plano = planeia(opcoes, construcao.sorteio);
    livro.IniciaTransaccao();
    SQLite::Transaction do_erp(erp.bd());
    escreve_tabelas_base(construcao);
    escreve_clientes(construcao);
    const auto origens = escreve_facturas(construcao);
    escreve_artigos(construcao);
    do_erp.commit();
    escreve_guias(construcao, origens); // each note is an operation of the ERP, committed by itself
    escreve_ajustes(construcao);
    livro.ConfirmaTransaccao();
}

// Into the file itself, and on the disk, so that the first start has nothing left to do.
void arruma(SQLite::Database& bd) {
    bd.exec("pragma synchronous = full");
    bd.exec("pragma wal_checkpoint(truncate)");
}

// Empties the folder again unless the company was finished.
class Rasto {
  public:
    explicit Rasto(const fs::path& pasta) : pasta_(pasta) {}
    ~Rasto() {
        std::error_code erro;
        if (acabada_) return;
        for (const auto& feito : fs::directory_iterator(pasta_, erro))
            fs::remove_all(feito.path(), erro);
    }
    Rasto(const Rasto&) = delete;
    Rasto& operator=(const Rasto&) = delete;

    void fica() { acabada_ = true; }

  private:
    const fs::path& pasta_;
    bool acabada_ = false;
};

void constroi(const OpcoesEmpresa& opcoes) {
    const fs::path empresa = opcoes.pasta / pasta_empresa;
    fs::create_directories(empresa);
    escreve_ficheiros(opcoes.pasta);

    platform::erp::BaseErp erp(platform::sqlite::abre_base(empresa / platform::sqlite::ficheiro_erp,
                                                           SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE));
    erp.bd().exec(sem_esperas);
    platform::erp::cria_esquema_erp(erp.bd());
    cria_tabelas_livro(empresa);
    auto livro = platform::sqlite::abre_base(empresa / platform::sqlite::ficheiro_livro);
    livro.exec(indices_livro);
    {
        auto sessao = abre_livro(empresa);
        preenche(opcoes, erp, sessao);
    }
    arruma(livro);
    arruma(erp.bd());
}

} // namespace

void faz_empresa(const OpcoesEmpresa& opcoes) {
    try {
        verifica_opcoes(opcoes);
        Rasto rasto(opcoes.pasta);
        constroi(opcoes);
        rasto.fica();
    } catch (const SQLite::Exception& falha) {
        throw base::Falha(platform::erp::texto_da_falha(falha));
    } catch (const fs::filesystem_error& falha) {
        throw base::Falha("Não é possível escrever em «" + base::texto_de(falha.path1()) + "».");
    }
}

} // namespace orvex::demo
