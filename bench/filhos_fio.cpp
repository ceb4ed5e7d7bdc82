// What a branch office feels: each job through a server whose every answer is late. Each is done by a
// workstation that has just started, whose connection knows nothing yet.
#include "adjust/mov_stocks.h"
#include "bench/filhos.h"
#include "bench/posto.h"
#include "platform/odbc/sessao_odbc.h"
#include "platform/sqlite/empresa.h"
#include "tests/fio/servidor_tds.h"
#include "tools/empresa/empresa_demo.h"
#include "transfer/trf_bobines.h"

#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>

namespace orvex::bench {
namespace {

namespace fs = std::filesystem;
using platform::odbc::SessaoODBC;
using Guias = Posto<delivery::GuiasRemessa, SessaoODBC>;
using Ajustes = Posto<adjust::MovStocks, SessaoODBC>;
using Transferencias = Posto<transfer::TrfBobines, SessaoODBC>;

constexpr int linhas_da_guia = 30;
constexpr const char* cliente = "C0001"; // with most of the open lines
constexpr const char* outro_cliente = "C0002";

// A company on the slow line, and what is asked of it.
class Sucursal {
  public:
    explicit Sucursal(const fs::path& instalacao)
        : instalacao_(instalacao), servidor_(instalacao / demo::pasta_empresa) {
        liga_ao_fio(instalacao, servidor_);
    }

    const fs::path& instalacao() const { return instalacao_; }

    // Prints the milliseconds and the requests of a job that must end with such a box, if it ends with one.
    template <typename TPosto>
    void mede(TPosto& posto, const std::function<void()>& trabalho, const std::string& ultima_caixa = "") {
        posto.janela.ultima_caixa.clear();
        servidor_.recomeca();
        servidor_.atraso_ms = demora_da_linha_ms;
        const double ms = milissegundos(trabalho);
        servidor_.atraso_ms = 0;
        if (posto.janela.ultima_caixa.find(ultima_caixa) == std::string::npos)
            throw base::Falha("Em vez de «" + ultima_caixa + "»: " + posto.janela.ultima_caixa);
        std::printf("%.3f %d\n", ms, servidor_.pedidos());
    }

    // The first article that lies at the client with nothing of it pending.
    std::string artigo_livre() const {
        auto livro =
            platform::sqlite::abre_base(instalacao_ / demo::pasta_empresa / platform::sqlite::ficheiro_livro);
        return livro
            .execAndGet(std::string("select NumSerie from xel_ORVEX x where Cliente = '") + cliente +
                        "' and Registo = (select max(Registo) from xel_ORVEX where NumSerie = x.NumSerie) "
                        "and NumSerie not in (select Artigo from xel_ORVEX_Mov) order by Registo limit 1")
            .getString();
    }

  private:
    fs::path instalacao_;
    testes::ServidorTDS servidor_;
};

void exige(bool certo, const std::string& o_que) {
    if (!certo) throw base::Falha(o_que);
}

void lista(Sucursal& sucursal) {
    for (int vez = 0; vez < 2; ++vez) { // the first repairs the weights
        Guias posto(sucursal.instalacao());
        sucursal.mede(posto, [&] { posto.escolhe(cliente); });
        exige(linhas_usadas(posto.ecra.Detalhe) >= 1000,
              "faltam linhas abertas: " + posto.janela.ultima_caixa);
    }
}

// Gives the note's number.
std::string emite(Sucursal& sucursal, bool medida) {
    Guias posto(sucursal.instalacao());
    posto.escolhe(cliente);
    escolhe_linhas(posto.ecra, linhas_da_guia);
    const auto confirma = [&] { posto.ecra.utilizador_prime(posto.ecra.btConf(0)); };
    if (medida)
        sucursal.mede(posto, confirma, "Foi criado o documento");
    else
        confirma();
    const std::string& caixa = posto.janela.ultima_caixa;
    return caixa.substr(caixa.find_last_of(' ') + 1);
}

void carrega(Guias& posto, const std::string& numero) {
    posto.ecra.utilizador_foca(posto.ecra.campo(1));
    posto.ecra.utilizador_edita(posto.ecra.campo(1), numero);
    posto.ecra.utilizador_avanca(+1);
    exige(posto.ecra.btConf(1).Enabled, "a guia não foi carregada");
}

void guias(Sucursal& sucursal) {
    const std::string anulada = emite(sucursal, true);
    {
        Guias posto(sucursal.instalacao());
        sucursal.mede(posto, [&] { carrega(posto, anulada); });
        sucursal.mede(
            posto, [&] { posto.ecra.utilizador_prime(posto.ecra.btConf(1)); }, "Pretende continuar?");
    }
    const std::string devolvida = emite(sucursal, false);
    Guias posto(sucursal.instalacao());
    carrega(posto, devolvida);
    delivery::GuiasRemessa& ecra = posto.ecra;
    ecra.utilizador_prime(ecra.btGV(0));
    for (int linha = 1; linha <= ecra.Final.linhas(); ++linha) {
        if (ecra.Final.valor(linha - 1, "Artigo").vazio()) continue; // a line of text
        ecra.utilizador_celula(ecra.Final, linha, ecra.Final.coluna("Transf"));
        ecra.utilizador_edita_celula(ecra.Final, common::Grelha::com_visto);
    }
    sucursal.mede(
        posto, [&] { ecra.utilizador_prime(ecra.btGV(1)); }, "Foi criado o documento");
}

void ajustes(Sucursal& sucursal) {
    constexpr auto consumos = std::int16_t{3};
    const std::string artigo = sucursal.artigo_livre();
    const auto quantidade = [](Ajustes& posto, const char* texto) {
        posto.ecra.utilizador_foca(posto.ecra.campo(3));
        posto.ecra.utilizador_edita(posto.ecra.campo(3), texto);
        posto.ecra.utilizador_foca(posto.ecra.btConf); // leaving the field checks it
    };
    const auto carrega_ajuste = [&](Ajustes& posto) {
        posto.janela.procurado = artigo;
        posto.ecra.utilizador_prime(posto.ecra.btFx(5));
        exige(posto.ecra.btAnular.Visible, "o ajuste não foi carregado");
    };
    {
        Ajustes posto(sucursal.instalacao(), consumos);
        posto.escolhe(artigo);
        quantidade(posto, "0,002");
        sucursal.mede(
            posto, [&] { posto.ecra.utilizador_prime(posto.ecra.btConf); }, "Foi gerado o Documento");
    }
    {
        Ajustes posto(sucursal.instalacao(), consumos);
        carrega_ajuste(posto);
        quantidade(posto, "0,001");
        sucursal.mede(
            posto, [&] { posto.ecra.utilizador_prime(posto.ecra.btConf); }, "Foi gerado o Documento");
    }
    Ajustes posto(sucursal.instalacao(), consumos);
    carrega_ajuste(posto);
    sucursal.mede(
        posto, [&] { posto.ecra.utilizador_prime(posto.ecra.btAnular); }, "Pretende continuar?");
}

void transferencias(Sucursal& sucursal) {
    for (const std::int16_t modo : {std::int16_t{1}, std::int16_t{2}}) {
        const std::string artigo = sucursal.artigo_livre();
        Transferencias posto(sucursal.instalacao(), modo);
        posto.escolhe(artigo);
        if (modo == 2) {
            posto.ecra.utilizador_foca(posto.ecra.campo(2));
            posto.ecra.utilizador_edita(posto.ecra.campo(2), outro_cliente);
            posto.ecra.utilizador_avanca(+1);
        }
        sucursal.mede(posto, [&] { posto.ecra.utilizador_prime(posto.ecra.btConf); });
        exige(sucursal.artigo_livre() != artigo, "o artigo não foi transferido");
    }
}

} // namespace

void liga_ao_fio(const fs::path& instalacao, const testes::ServidorTDS& servidor) {
    const fs::path definicoes = instalacao / "OrvexEXE.xel";
    std::ifstream antigas(definicoes);
    const std::string texto{std::istreambuf_iterator<char>(antigas), {}};
    antigas.close();
    std::ofstream(definicoes) << "[BD]\nServidor=127.0.0.1," << servidor.porta() << "\nBase=" << servidor.base
                              << "\nUtilizador=" << servidor.utilizador
                              << "\nPalavraPasse=" << servidor.palavra_passe << "\nEncriptacao=nao\n"
                              << texto.substr(texto.find("[ERP]"));
}

int mede_trabalhos_fio(const fs::path& instalacao) {
    Sucursal sucursal(instalacao);
    lista(sucursal);
    guias(sucursal);
    ajustes(sucursal);
    transferencias(sucursal);
    return 0;
}

} // namespace orvex::bench
