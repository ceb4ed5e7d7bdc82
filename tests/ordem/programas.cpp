#include "tests/ordem/programas.h"

#include "adjust/mov_stocks.h"
#include "delivery/guias_remessa.h"
#include "transfer/trf_bobines.h"

namespace orvex::testes {
namespace {

using confirmacao::Fluxo;

constexpr const char* artigo = "REEL'1";

template <typename TEcra>
class ProgramaCom : public Programa {
  public:
    template <typename... Argumentos>
    ProgramaCom(const Posto& posto, std::function<void(ProgramaCom&)> age, Argumentos... argumentos)
        : Programa(posto), ecra(servicos(posto), argumentos...), age_(std::move(age)) {
        ecra.define_janela(janela);
        ecra.Form_Load();
        ecra.utilizador_abre();
    }
    void age() override { age_(*this); }

    TEcra ecra;
    Operador op{ecra};

  private:
    std::function<void(ProgramaCom&)> age_;
};
using Guias = ProgramaCom<delivery::GuiasRemessa>;
using Consumos = ProgramaCom<adjust::MovStocks>;
using Transferencias = ProgramaCom<transfer::TrfBobines>;

void emite(Guias& p, const char* quantidade) {
    p.ecra.utilizador_escolhe(p.ecra.cb1(0), 1);
    p.op.preenche(p.ecra.campo(0), "CL'1");
    if (p.ecra.Detalhe.texto(0, "Artigo").empty()) return;
    p.op.duplo_clique(p.ecra.Detalhe, 1);
    if (p.op.edita(p.ecra.Gr, 1, "Quant", quantidade)) p.op.prime(p.ecra.btConf(0));
}

void carrega(Guias& p) { p.op.preenche(p.ecra.campo(1), "1"); }

void anula(Guias& p) {
    carrega(p);
    p.op.prime(p.ecra.btConf(1));
}

// To ORVEX's warehouse.
void devolve(Guias& p) {
    carrega(p);
    p.ecra.utilizador_escolhe(p.ecra.cb1(0), 0);
    p.op.prime(p.ecra.btGV(0));
    if (!p.ecra.Frame3.Visible) return;
    p.op.edita(p.ecra.Final, 1, "Transf", "-1");
    const base::Variante& marca = p.ecra.Final.valor(0, "Transf");
    if (!marca.vazio() && marca.logico()) p.op.prime(p.ecra.btGV(1));
}

void consome(Consumos& p, const char* quantidade) {
    p.op.preenche(p.ecra.campo(0), artigo);
    p.op.escreve(p.ecra.campo(3), quantidade);
    p.op.prime(p.ecra.btConf);
}

bool carrega(Consumos& p) {
    p.janela.escolhas.push_back([](auto& linha) { return linha.valor("No.Doc.").inteiro() == 1; });
    p.op.prime(p.ecra.btFx(5));
    return !p.ecra.campo(5).Text.empty();
}

void substitui(Consumos& p) {
    if (!carrega(p)) return;
    p.op.escreve(p.ecra.campo(3), "5");
    p.op.prime(p.ecra.btConf);
}

void anula_consumo(Consumos& p) {
    if (carrega(p)) p.op.prime(p.ecra.btAnular);
}

void transfere(Transferencias& p, const char* destino) {
    p.op.preenche(p.ecra.campo(0), artigo);
    if (*destino != '\0') p.op.preenche(p.ecra.campo(2), destino);
    p.op.prime(p.ecra.btConf);
}

constexpr std::int16_t consumos = 3;

class Utilizador : public platform::diario::Atendimento {
  public:
    explicit Utilizador(Resposta resposta) : resposta_(resposta) {}

    bool diz(const std::string& texto) override {
        textos += (textos.empty() ? "" : "|") + texto;
        return true;
    }
    bool aceita(const std::string& texto, const char*, const char*) override {
        diz(texto);
        return resposta_ == Resposta::sim;
    }

    std::string textos;

  private:
    Resposta resposta_;
};

std::unique_ptr<EmpresaTeste> faz(Linha linha) {
    auto empresa = std::make_unique<EmpresaTeste>();
    startup::SessaoBD& BD = empresa->outra();
    BD.IniciaTransaccao();
    for (const char* tabela : {"xel_ORVEX_MOV", "U_DocGcLin1", "DocGcLin"})
        BD.Executa(std::string("Delete ") + tabela);
    empresa->com_ajustes_e_transferencias();
    empresa->insere_artigo(artigo, m("10"), "CL");
    insere(BD, "artarm", {"Artigo", "Armazem", "Existenc"}, {{artigo, "OR", m("0")}});
    insere(BD, "xel_ORVEX",
           {"NumSerie", "Cliente", "CliFinal", "Quantidade", "Ano", "TpDoc", "Serie", "NNumDoc"},
           {{artigo, "CL'1", "CL'1", m("10"), 2018, "FC", 1, 7}});
    insere_linha(BD, {"FA", 1, 500, 1, artigo, m("4"), m("4"), "CL", "CL'1", m("4")});
    BD.ConfirmaTransaccao();

    platform::diario::Gaveta gaveta(empresa->pasta() / "diario");
    const Posto posto{*empresa, gaveta, [&] { return abre_empresa(empresa->pasta()); },
                      [] { return std::make_unique<platform::erp::SessaoERPEmbebida>(); }};
    Guias guias(posto, [&](Guias& p) { emite(p, linha == Linha::aberta ? "2,5" : "4"); });
    guias.age();
    Consumos(
        posto, [](Consumos& p) { consome(p, "1"); }, consumos)
        .age();
    std::filesystem::remove_all(gaveta.pasta());
    return empresa;
}

} // namespace

const std::filesystem::path& empresa_disputada(Linha linha) {
    static const std::unique_ptr<EmpresaTeste> aberta = faz(Linha::aberta), fechada = faz(Linha::fechada);
    return (linha == Linha::aberta ? aberta : fechada)->pasta();
}

void liga(startup::SessaoERP& gERP, EmpresaTeste& empresa) {
    if (!gERP.Liga({"E", "", "ana", "sqlite", base::texto_de(empresa.pasta())}))
        throw std::runtime_error("the ERP refused the log-in");
}

Programa::Programa(const Posto& posto)
    : BD_(posto.abre_bd()), ERP_(posto.abre_erp()),
      diario_(posto.gaveta, {.identidade = {"ORVEX", "ana", "PC"},
                             .abre_sessao = posto.abre_bd,
                             .resolve = [](auto&) { return platform::diario::Tratamento(); },
                             .engole = [](const std::string&) {}}) {
    liga(*ERP_, posto.empresa);
}

common::ServicosEcra Programa::servicos(const Posto& posto) {
    return {*BD_, *ERP_, startup::Parametros(posto.empresa.pasta()), {}, [] { return relogio; }, diario_};
}

std::unique_ptr<Programa> programa(Fluxo fluxo, const Posto& posto) {
    switch (fluxo) {
    case Fluxo::emite_guia:
        return std::make_unique<Guias>(posto, [](Guias& p) { emite(p, "1,5"); });
    case Fluxo::anula_guia:
        return std::make_unique<Guias>(posto, [](Guias& p) { anula(p); });
    case Fluxo::devolve:
        return std::make_unique<Guias>(posto, [](Guias& p) { devolve(p); });
    case Fluxo::ajusta:
        return std::make_unique<Consumos>(
            posto, [](Consumos& p) { consome(p, "4,5"); }, consumos);
    case Fluxo::substitui_ajuste:
        return std::make_unique<Consumos>(
            posto, [](Consumos& p) { substitui(p); }, consumos);
    case Fluxo::anula_ajuste:
        return std::make_unique<Consumos>(
            posto, [](Consumos& p) { anula_consumo(p); }, consumos);
    case Fluxo::transfere_para_orvex:
        return std::make_unique<Transferencias>(
            posto, [](Transferencias& p) { transfere(p, ""); }, std::int16_t{1});
    case Fluxo::transfere_para_cliente:
        return std::make_unique<Transferencias>(
            posto, [](Transferencias& p) { transfere(p, "CL2"); }, std::int16_t{2});
    }
    throw std::logic_error("no such flow");
}

std::string recupera(EmpresaTeste& empresa, platform::diario::Gaveta& gaveta, startup::SessaoERP& gERP,
                     Resposta resposta, std::chrono::sys_seconds agora) {
    const auto BD = abre_empresa(empresa.pasta());
    const base::FormatoRegional formato;
    Utilizador utilizador(resposta);
    platform::diario::Recuperacao recuperacao(gaveta,
                                              {.BD = *BD,
                                               .gERP = gERP,
                                               .atendimento = utilizador,
                                               .formato = formato,
                                               .empresa = "ORVEX",
                                               .guias =
                                                   [] {
                                                       return platform::diario::DocumentosDeGuias{"1", "GV"};
                                                   },
                                               .observador = confirmacao::sem_observador(),
                                               .agora = [agora] { return agora; }});
    recuperacao.trata_tudo();
    return utilizador.textos;
}

} // namespace orvex::testes
