#include "tests/apoio/programas.h"

#include "adjust/mov_stocks.h"
#include "tests/delivery/ecra_guias.h"
#include "transfer/trf_bobines.h"

namespace orvex::testes {
namespace {

namespace diario = platform::diario;
using confirmacao::Fluxo;

constexpr const char* artigo = "REEL'1";

template <typename TEcra>
struct Mao {
    TEcra& ecra;
    JanelaGuiao& janela;
    Operador op{ecra};
};
using NasGuias = Mao<delivery::GuiasRemessa>;
using NosConsumos = Mao<adjust::MovStocks>;
using NasTransferencias = Mao<transfer::TrfBobines>;

// Each gives what is to be pressed last.

common::Botao* emite(NasGuias p, const std::string& quantidade) {
    p.ecra.utilizador_escolhe(p.ecra.cb1(0), 1);
    p.op.preenche(p.ecra.campo(0), "CL'1");
    const auto& abertas = p.ecra.Detalhe;
    for (int n = 1; n <= abertas.linhas() && !abertas.texto(n - 1, "Artigo").empty(); ++n) {
        p.op.duplo_clique(p.ecra.Detalhe, n);
        if (!p.op.edita(p.ecra.Gr, n, "Quant", quantidade)) return nullptr;
    }
    return p.ecra.Gr.texto(0, "Artigo").empty() ? nullptr : &p.ecra.btConf(0);
}

common::Botao* anula(NasGuias p) {
    p.op.preenche(p.ecra.campo(1), "1");
    return &p.ecra.btConf(1);
}

// To ORVEX's warehouse.
common::Botao* devolve(NasGuias p) {
    anula(p);
    p.ecra.utilizador_escolhe(p.ecra.cb1(0), 0);
    p.op.prime(p.ecra.btGV(0));
    if (!p.ecra.Frame3.Visible) return nullptr;
    common::Botao* ultimo = nullptr;
    for (int n = 1; n <= p.ecra.Final.linhas() && !p.ecra.Final.texto(n - 1, "Artigo").empty(); ++n) {
        p.op.edita(p.ecra.Final, n, "Transf", "-1");
        const base::Variante& marca = p.ecra.Final.valor(n - 1, "Transf");
        if (!marca.vazio() && marca.logico()) ultimo = &p.ecra.btGV(1);
    }
    return ultimo;
}

common::Botao* consome(NosConsumos p, const std::string& quantidade) {
    p.op.preenche(p.ecra.campo(0), artigo);
    p.op.preenche(p.ecra.campo(3), quantidade);
    return &p.ecra.btConf;
}

common::Botao* anula_consumo(NosConsumos p) {
    p.janela.escolhas.push_back([](auto& linha) { return linha.valor("No.Doc.").inteiro() == 1; });
    p.op.prime(p.ecra.btFx(5));
    return p.ecra.campo(5).Text.empty() ? nullptr : &p.ecra.btAnular;
}

common::Botao* substitui(NosConsumos p) {
    if (anula_consumo(p) == nullptr) return nullptr;
    p.op.preenche(p.ecra.campo(3), "5");
    return &p.ecra.btConf;
}

common::Botao* transfere(NasTransferencias p, const char* destino) {
    p.op.preenche(p.ecra.campo(0), artigo);
    if (*destino != '\0') p.op.preenche(p.ecra.campo(2), destino);
    return &p.ecra.btConf;
}

template <typename TEcra>
std::string retrato_de(TEcra& ecra) {
    std::string tudo;
    for (auto& [indice, campo] : ecra.campo)
        tudo += campo.Text + "|";
    if constexpr (requires { ecra.btAnular; }) tudo += ecra.btAnular.Visible ? "A" : "-";
    if constexpr (requires { ecra.Detalhe; })
        tudo += (ecra.Frame3.Visible ? "F|" : "-|") + EcraGuias::linhas(ecra.Detalhe, {"Artigo", "Quant"}) +
                "|" + EcraGuias::linhas(ecra.Gr, {"Artigo", "Nome", "Quant", "PesoBruto"}) + "|" +
                EcraGuias::linhas(ecra.Final, {"Artigo", "Transf"});
    return tudo;
}

void liga(startup::SessaoERP& gERP, const std::filesystem::path& empresa) {
    if (!gERP.Liga({"E", "", "ana", "sqlite", base::texto_de(empresa)}))
        throw std::runtime_error("the ERP refused the log-in");
}

std::unique_ptr<EmpresaTeste> faz(Linha linha) {
    auto empresa = std::make_unique<EmpresaTeste>();
    empresa->recomeca();
    for (const char* item : {artigo, "REEL2"}) {
        if (item != artigo && linha != Linha::duas) continue;
        empresa->insere_item(item, "CL'1", m("10"));
        empresa->insere_factura(
            {"FA", 1, 500, item == artigo ? 1 : 2, item, m("4"), m("4"), "CL", "CL'1", m("4")});
    }
    insere(empresa->outra(), "artarm", {"Artigo", "Armazem", "Existenc"}, {{artigo, "OR", m("0")}});
    diario::Gaveta gaveta(empresa->pasta() / "diario");
    const Posto este{empresa->pasta(), gaveta, [&] { return abre_empresa(empresa->pasta()); },
                     [] { return std::make_unique<platform::erp::SessaoERPEmbebida>(); }};
    Programa(este, Fluxo::emite_guia, linha == Linha::fechada ? "4" : "2,5").age();
    Programa(este, Fluxo::ajusta, "1").age();
    std::filesystem::remove_all(gaveta.pasta());
    return empresa;
}

} // namespace

Linha linha_para(const Fluxos& fluxos) {
    return std::find(fluxos.begin(), fluxos.end(), Fluxo::emite_guia) != fluxos.end() ? Linha::aberta
                                                                                      : Linha::fechada;
}

std::filesystem::path empresa_disputada(Linha linha) {
    if (!disputadas_feitas.empty()) return disputadas_feitas / std::to_string(static_cast<int>(linha));
    static std::map<Linha, std::unique_ptr<EmpresaTeste>> feitas;
    auto& esta = feitas[linha];
    if (esta == nullptr) esta = faz(linha);
    return esta->pasta();
}

void faz_disputadas(const std::filesystem::path& pasta) {
    for (const Linha linha : {Linha::aberta, Linha::fechada, Linha::duas})
        std::filesystem::copy(empresa_disputada(linha), pasta / std::to_string(static_cast<int>(linha)));
}

Posto posto(const std::filesystem::path& empresa, diario::Gaveta& gaveta, Diario& gravacao) {
    return {empresa, gaveta,
            [empresa, &gravacao] {
                auto BD = std::make_unique<SessaoDeTeste>(gravacao);
                if (!BD->Abre(ligacao(empresa))) throw std::runtime_error("the company did not open");
                return BD;
            },
            [&gravacao] { return erp_gravado(gravacao); }};
}

template <typename TEcra, typename TPrepara, typename... Modo>
void Programa::abre(const Posto& posto, TPrepara como, Modo... modo) {
    const common::ServicosEcra servicos{
        *BD_, *ERP_, startup::Parametros(posto.empresa), {}, [] { return relogio; }, observadores_};
    const auto ecra = std::make_shared<TEcra>(servicos, static_cast<std::int16_t>(modo)...);
    ecra->define_janela(janela);
    ecra->Form_Load();
    ecra->utilizador_abre();
    prepara_ = [this, ecra, como] { return como(Mao<TEcra>{*ecra, janela}); };
    prime_ = [this, ecra] { Operador(*ecra).prime(*ultimo_); };
    retrato_ = [ecra] { return retrato_de(*ecra); };
}

Programa::Programa(const Posto& posto, Fluxo fluxo, const std::string& quantidade)
    : BD_(posto.abre_bd()), ERP_(posto.abre_erp()), diario_(posto.gaveta, {.identidade = {"E", "ana", "PC"},
                                                                           .abre_sessao = posto.abre_bd,
                                                                           .resolve = posto.resolve,
                                                                           .engole = [](auto&) {}}) {
    observadores_.junta(diario_);
    liga(*ERP_, posto.empresa);
    abre_para(posto, fluxo, quantidade);
}

void Programa::abre_para(const Posto& posto, Fluxo fluxo, const std::string& quantidade) {
    constexpr int consumos = 3, para_orvex = 1, para_cliente = 2;
    const auto ou = [&](const char* costume) { return quantidade.empty() ? costume : quantidade; };
    switch (fluxo) {
    case Fluxo::emite_guia:
        return abre<delivery::GuiasRemessa>(posto, [q = ou("1,5")](NasGuias p) { return emite(p, q); });
    case Fluxo::anula_guia:
        return abre<delivery::GuiasRemessa>(posto, anula);
    case Fluxo::devolve:
        return abre<delivery::GuiasRemessa>(posto, devolve);
    case Fluxo::ajusta:
        return abre<adjust::MovStocks>(
            posto, [q = ou("4,5")](NosConsumos p) { return consome(p, q); }, consumos);
    case Fluxo::substitui_ajuste:
        return abre<adjust::MovStocks>(posto, substitui, consumos);
    case Fluxo::anula_ajuste:
        return abre<adjust::MovStocks>(posto, anula_consumo, consumos);
    case Fluxo::transfere_para_orvex:
        return abre<transfer::TrfBobines>(
            posto, [](NasTransferencias p) { return transfere(p, ""); }, para_orvex);
    case Fluxo::transfere_para_cliente:
        return abre<transfer::TrfBobines>(
            posto, [](NasTransferencias p) { return transfere(p, "CL2"); }, para_cliente);
    }
}

Arranque::Arranque(const std::filesystem::path& empresa, diario::Gaveta& gaveta, bool aceita,
                   std::shared_ptr<startup::SessaoERP> ERP)
    : aceita_tudo(aceita), ERP_(ERP != nullptr ? std::move(ERP) : erp_gravado(gravacao)), gaveta_(gaveta),
      recuperacao_(gaveta,
                   {.BD = BD_,
                    .gERP = *ERP_,
                    .atendimento = *this,
                    .formato = formato_,
                    .empresa = "E",
                    .guias =
                        [this] {
                            return diario::DocumentosDeGuias{serie_das_guias, "GV"};
                        },
                    .observador = confirmacao::sem_observador(),
                    .agora = [this] { return std::chrono::sys_seconds(std::chrono::minutes(minutos_)); }}) {
    if (!BD_.Abre(ligacao(empresa))) throw std::runtime_error("the company did not open");
    liga(*ERP_, empresa);
}

bool Arranque::diz(const std::string& texto) {
    caixas += (caixas.empty() ? "" : "|") + texto;
    com_a_caixa_aberta(texto);
    return le;
}

bool Arranque::aceita(const std::string& texto, const char*, const char*) {
    diz(texto);
    if (++perguntas > 20) throw std::logic_error("asked the same for ever: " + texto);
    return aceita_tudo;
}

std::string Arranque::recupera(int minutos) {
    minutos_ = minutos;
    caixas.clear();
    recuperacao_.trata_tudo();
    return caixas;
}

std::string Arranque::janela() {
    using diario::Desfecho;
    const auto ficheiros = gaveta_.por_acabar();
    if (ficheiros.empty()) return "";
    const diario::Passos passos = gaveta_.le(ficheiros.at(0));
    const diario::Decisao decisao = diario::decide(passos, diario::le_factos(BD_, passos));
    if (decisao.desfecho == Desfecho::feita) return "rows there";
    if (decisao.desfecho == Desfecho::nada) return "no candidate";
    if (decisao.desfecho == Desfecho::desfeita) return "undone";
    if (!decisao.a_procurar.empty()) return "several candidates";
    if (decisao.a_anular.empty()) return "cancelled with rows";
    if (!decisao.a_completar.empty()) return "replacement half done";
    const diario::Chamada* criacao = diario::criacao(passos);
    const bool respondida = criacao != nullptr && criacao->resposta.has_value();
    return respondida || passos.encontrado ? "answered, not committed" : "answer lost";
}

} // namespace orvex::testes
