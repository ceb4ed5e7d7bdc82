#include "tests/ordem/jogada.h"

#include "platform/operacoes/sessao_bd_ouvida.h"
#include "platform/operacoes/sessao_erp_ouvida.h"

#include <map>

namespace orvex::testes {
namespace {

using confirmacao::Fluxo;
using platform::operacoes::Operacao;

// Stops its program before every step that others could see, or that could show what others did.
class Pontos : public platform::operacoes::Ouvinte {
  public:
    Pontos(Escalonador& escalonador, std::function<void()> ao_confirmar)
        : escalonador_(escalonador), ao_confirmar_(std::move(ao_confirmar)) {}

    bool ligado = false; // once the programs run

    void antes(const Operacao& esta) override {
        if (Diario::sai_do_programa(esta)) passo();
    }
    void depois(const Operacao& esta, const platform::operacoes::Fim& fim) override {
        if (!ligado) return;
        criou_ = criou_ || esta.especie == Especie::cria_stock || esta.membro == "Finalizar";
        desfez_ = desfez_ || esta.especie == Especie::desfaz;
        if (esta.especie == Especie::confirma && fim.falha == nullptr) ao_confirmar_();
        if (esta.especie == Especie::confirma || esta.especie == Especie::desfaz) escalonador_.larga();
    }
    // A document whose confirmation failed moves the stock that others see until it is cancelled, after the
    // box that tells of the failure: what they decide on in between is not what they would decide afterwards.
    void passo() {
        if (ligado && !(criou_ && desfez_)) escalonador_.passo();
    }

  private:
    using Especie = Operacao::Especie;

    Escalonador& escalonador_;
    std::function<void()> ao_confirmar_;
    bool criou_ = false, desfez_ = false;
};

// Waits for the lock by letting others go on.
class SessaoQueEspera : public platform::operacoes::SessaoBDOuvida {
  public:
    SessaoQueEspera(Pontos& pontos, Escalonador& escalonador)
        : SessaoBDOuvida(std::make_unique<platform::sqlite::SessaoSQLite>(0), pontos),
          escalonador_(escalonador) {}

    void Tranca() override {
        for (;;) {
            try {
                return SessaoBDOuvida::Tranca();
            } catch (const base::Falha& falha) {
                if (std::string(falha.what()).find("a ser usada por outro programa") == std::string::npos)
                    throw;
            }
            escalonador_.espera();
        }
    }

  private:
    Escalonador& escalonador_;
};

// Rows as texts; the first two columns are type and number of their document. Numbers that a refused
// confirmation used up say nothing of what was done: documents are known by their rank.
std::string com_postos(EmpresaTeste& empresa, std::initializer_list<const char*> consultas) {
    std::vector<std::vector<std::string>> linhas;
    std::map<std::string, std::set<std::int64_t>> numeros;
    for (const char* sql : consultas)
        for (const std::string& linha : partes(empresa.linhas(sql), "; ")) {
            linhas.push_back(partes(linha, "|"));
            numeros[linhas.back()[0]].insert(std::stoll(linhas.back()[1]));
        }
    std::string tudo;
    for (auto& linha : linhas) {
        const auto& todos = numeros[linha[0]];
        if (linha[1] != "0")
            linha[1] = std::to_string(std::distance(todos.begin(), todos.find(std::stoll(linha[1]))) + 1);
        for (const std::string& celula : linha)
            tudo += celula + "|";
        tudo.back() = '\n';
    }
    return tudo;
}

std::string livro_de(EmpresaTeste& empresa) {
    return com_postos(empresa,
                      {"select TpDoc, NNumDoc, NumSerie, Cliente, CliFinal, Quantidade, Ano, Serie, "
                       "NumLin, Obs from xel_ORVEX order by Registo",
                       "select TpDoc, NumDoc, NumLinha, Ano, SerieDoc, Artigo, Cliente, QtdOrig, Qtd, "
                       "PesoLiquido, PesoBruto, Origem from xel_ORVEX_MOV order by TpDoc, NumDoc, "
                       "NumLinha",
                       "select TpDocUM, NNumDoc, NumLinha, PesoBruto from U_DocGcLin1 "
                       "order by TpDocUM, NNumDoc, NumLinha"}) +
           empresa.linhas("select Observ from Artigos where CODIGO='REEL''1'");
}

std::string erp_de(EmpresaTeste& empresa) {
    return com_postos(empresa, {"select TpDoc, DocGcCab.NNumDoc, NumLinha, Terceiro, Artigo, Quant, Armazem "
                                "from DocGcCab inner join DocGcLin on TpDocum=TpDoc and "
                                "DocGcLin.NNumDoc=DocGcCab.NNumDoc where NVias<>-1 and Artigo<>'' "
                                "order by TpDoc, DocGcCab.NNumDoc, NumLinha"}) +
           empresa.linhas("select Armazem, Existenc from artarm where Artigo='REEL''1' order by Armazem");
}

} // namespace

Jogada::Jogada(Linha linha, const Fluxos& fluxos, const Ordem& ordem)
    : empresa(empresa_disputada(linha)), escalonador(ordem) {
    std::vector<std::function<void()>> accoes;
    for (std::size_t n = 0; n < fluxos.size(); ++n) {
        auto destes =
            std::make_unique<Pontos>(escalonador, [this, n, fluxo = fluxos[n]] { confirmou(n, fluxo); });
        Pontos& os_seus = *destes;
        pontos.push_back(std::move(destes));
        const Posto posto{empresa.pasta(), gaveta,
                          [this, &os_seus] {
                              auto BD = std::make_unique<SessaoQueEspera>(os_seus, escalonador);
                              BD->Abre(ligacao(empresa.pasta()));
                              return BD;
                          },
                          [&os_seus] {
                              return std::make_unique<platform::operacoes::SessaoERPOuvida>(
                                  std::make_unique<platform::erp::SessaoERPEmbebida>(), os_seus);
                          }};
        Programa& este = *programas.emplace_back(std::make_unique<Programa>(posto, fluxos[n]));
        este.janela.com_a_caixa_aberta = [&os_seus] { os_seus.passo(); };
        accoes.emplace_back([&este, &os_seus] {
            os_seus.ligado = true;
            este.age();
            os_seus.ligado = false;
        });
    }
    escalonador.corre(accoes);
    ultimo = {livro_de(empresa), erp_de(empresa)};
}

void Jogada::recupera() {
    programas.clear();
    Arranque(empresa.pasta(), gaveta, true).recupera(0);
    ultimo = {livro_de(empresa), erp_de(empresa)};
}

void Jogada::confirmou(std::size_t programa, Fluxo fluxo) {
    feitos.insert(programa);
    confirmados.push_back(fluxo);
    livros.push_back(livro_de(empresa));
}

} // namespace orvex::testes
