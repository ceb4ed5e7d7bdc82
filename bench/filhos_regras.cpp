#include "bench/filhos.h"

#include "adjust/mov_stocks.h"
#include "bench/posto.h"
#include "delivery/guias_remessa.h"
#include "platform/odbc/sessao_odbc.h"

#include <cstdio>

namespace orvex::bench {
namespace {

template <typename TSessao>
int mede_facturas_de(const std::filesystem::path& instalacao, const std::string& cliente) {
    Posto<delivery::GuiasRemessa, TSessao> posto(instalacao);
    const double ms = milissegundos([&] { posto.escolhe(cliente); });
    std::printf("%.3f %d\n", ms, linhas_usadas(posto.ecra.Detalhe));
    return 0;
}

} // namespace

int mede_facturas(const std::filesystem::path& instalacao, const std::string& cliente) {
    return mede_facturas_de<platform::sqlite::SessaoSQLite>(instalacao, cliente);
}

int mede_facturas_fio(const std::filesystem::path& instalacao, const std::string& cliente) {
    return mede_facturas_de<platform::odbc::SessaoODBC>(instalacao, cliente);
}

int mede_emissao(const std::filesystem::path& instalacao, const std::string& cliente, int linhas,
                 bool com_diario) {
    Posto<delivery::GuiasRemessa> posto(instalacao);
    if (com_diario) posto.com_diario(instalacao);
    posto.escolhe(cliente);
    escolhe_linhas(posto.ecra, linhas);
    const int escolhidas = linhas_usadas(posto.ecra.Gr);
    const double ms = milissegundos([&] { posto.ecra.utilizador_prime(posto.ecra.btConf(0)); });
    if (posto.janela.ultima_caixa.rfind("Foi criado o documento", 0) != 0) {
        std::fprintf(stderr, "%s\n", posto.janela.ultima_caixa.c_str());
        return 1;
    }
    std::printf("%.3f %d\n", ms, escolhidas);
    return 0;
}

int mede_ajuste(const std::filesystem::path& instalacao, int vezes, bool com_diario) {
    Posto<adjust::MovStocks> posto(instalacao, std::int16_t{3});
    if (com_diario) posto.com_diario(instalacao);
    const std::string artigo =
        posto.BD.Consulta("Select top 1 * from xel_ORVEX order by Registo desc")->valor("NumSerie").texto();
    double ms = 0;
    for (int i = 0; i < vezes; ++i) {
        posto.escolhe(artigo);
        posto.ecra.utilizador_foca(posto.ecra.campo(3));
        posto.ecra.utilizador_edita(posto.ecra.campo(3), "0,001");
        posto.ecra.utilizador_foca(posto.ecra.btConf); // leaving the field checks it
        ms += milissegundos([&] { posto.ecra.utilizador_prime(posto.ecra.btConf); });
        if (posto.janela.ultima_caixa.rfind("Foi gerado o Documento", 0) != 0) {
            std::fprintf(stderr, "%s\n", posto.janela.ultima_caixa.c_str());
            return 1;
        }
    }
    std::printf("%.3f %d\n", ms / vezes, vezes);
    return 0;
}

} // namespace orvex::bench
