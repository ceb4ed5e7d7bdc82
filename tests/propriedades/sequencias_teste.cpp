// A random user plays the eight writing flows on one company, each on a start of the program of its own, and
// tries what must be refused. After every step ledger and ERP hold what the model says.
//
// ORVEX_SEMENTE=<seed> plays that sequence alone; ORVEX_CONFIRMACOES=<n> has two programs at once confirm
// that often.
#include "adjust/mov_stocks.h"
#include "delivery/guias_remessa.h"
#include "tests/apoio/auditada.h"
#include "tests/apoio/documentos_perdidos.h"
#include "tests/propriedades/observador.h"
#include "transfer/trf_bobines.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <random>
#include <set>
#include <thread>

using namespace orvex;
using namespace orvex::testes;

namespace {

enum Fluxo { emitir, anular_guia, devolver, ajustar, substituir, anular_ajuste, para_orvex, para_cliente };
const std::vector<std::string> clientes{"CL'1", "CL2", "CL3"};
const std::vector<Chave> especies{{0, "SB", 1}, {0, "QB", 2}, {0, "CI", 3}}; // the series is the mode
constexpr int passos = 40;

template <typename TEcra>
struct Arranque : Bancada<TEcra> { // of the program, for one step
    Arranque(EmpresaTeste& jogada, const base::DataHora& hoje, auto... argumentos)
        : Bancada<TEcra>(&jogada, argumentos...) {
        this->agora = hoje;
        this->abre();
    }
};
using Guias = Arranque<delivery::GuiasRemessa>;
using Ajustes = Arranque<adjust::MovStocks>;
using Transferencias = Arranque<transfer::TrfBobines>;

struct LinhaPedida { // a row of a note to be issued; a text has no weight and stands under its article
    Chave factura;
    Kg kg = 0, bruto = 0;
};

struct Jogo {
    std::mt19937 gerador;
    EmpresaTeste empresa;
    Modelo modelo;
    std::vector<std::string> artigos;
    int hora = 28 * 24; // since the beginning of December 2019; a sequence goes on into the next year
    std::string relato;
    std::map<Fluxo, int> feitos;

    std::int64_t ate(std::int64_t limite) { return static_cast<std::int64_t>(gerador()) % limite; } // from 0
    bool em_cem(int vezes) { return ate(100) < vezes; }
    template <typename T>
    const T& um_de(const std::vector<T>& varios) {
        return varios.at(gerador() % varios.size());
    }
    // Mostly one with which the flow goes through.
    template <typename T>
    T escolhe(const std::vector<T>& varios, const auto& boa) {
        std::vector<T> boas;
        std::copy_if(varios.begin(), varios.end(), std::back_inserter(boas), boa);
        return um_de(boas.empty() || em_cem(25) ? varios : boas);
    }

    // Ten items, each at a holder with its stock, most of them on one or two open lines of invoices.
    explicit Jogo(std::uint32_t semente) : gerador(semente) {
        startup::SessaoBD& BD = empresa.outra();
        BD.IniciaTransaccao();
        empresa.recomeca();
        for (int i = 0; i < 10; ++i) {
            const std::string artigo = artigos.emplace_back("REEL'" + std::to_string(i));
            const std::string cliente = em_cem(30) ? "ORVEX" : um_de(clientes);
            const std::string armazem = Modelo::armazem_de(cliente);
            const Kg stock = 1000 + ate(9000);
            modelo.actos.push_back({{}, "", {{{2018, "FC", 1, 7}, artigo, cliente, armazem, stock}}});
            empresa.insere_item(artigo, cliente, peso(stock));
            for (int n = static_cast<int>(ate(3)); n > 0; --n) {
                const Chave fa{2019, "FA", 1, 1 + i / 3, 10 * i + n};
                const Kg kg = 500 + ate(2000), bruto = kg + ate(50);
                const Factura& f =
                    modelo.facturas[fa] = {artigo, um_de(clientes), em_cem(50) ? "OR" : "CL", kg, bruto};
                empresa.insere_factura({"FA", 1, fa.numero, fa.linha, artigo, peso(kg), peso(bruto),
                                        f.armazem, f.cliente, peso(kg)});
            }
        }
        BD.ConfirmaTransaccao();
    }

    // The rows of the tables, a line each.
    std::string estado() {
        std::string tudo;
        for (const char* sql :
             {"select NumSerie, Cliente, Quantidade, Ano, TpDoc, Serie, NNumDoc from xel_ORVEX "
              "order by NumSerie, Registo",
              "select Ano, TpDoc, SerieDoc, NumDoc, NumLinha, Artigo, Cliente, QtdOrig, Qtd, PesoLiquido, "
              "PesoBruto, Origem from xel_ORVEX_MOV order by Ano, TpDoc, SerieDoc, NumDoc, NumLinha",
              "select Ano, TpDoc, Serie, NNumDoc, NVias from DocGcCab where TpDoc<>'FA' order by Ano, TpDoc, "
              "Serie, NNumDoc",
              "select Artigo, Armazem, Existenc from artarm order by Artigo, Armazem"})
            for (const std::string& linha : partes(empresa.linhas(sql), "; "))
                tudo += linha + "\n";
        return tudo;
    }

    void joga() {
        hora += 1 + static_cast<int>(ate(6));
        const std::int64_t sorte = ate(9);
        const auto fluxo = sorte < 8 ? static_cast<Fluxo>(sorte) : devolver; // which is refused most often
        const bool ha_guia = !documentos({"GR"}).empty(), ha_ajuste = !documentos({"SB", "QB", "CI"}).empty();
        if (fluxo >= para_orvex) return transfere(fluxo);
        if (fluxo >= ajustar) return fluxo == ajustar || !ha_ajuste ? ajusta() : altera(fluxo);
        return fluxo == emitir || !ha_guia ? emite() : fluxo == devolver ? devolve() : anula();
    }

    base::DataHora agora() const {
        const int dia = hora / 24 + 1;
        return dia <= 31 ? base::DataHora{2019, 12, dia, hora % 24}
                         : base::DataHora{2020, 1, dia - 31, hora % 24};
    }
    // The day the user gives a document: mostly today.
    base::DataHora data() { return em_cem(20) ? base::DataHora{2019, 12, 20} : agora(); }
    std::vector<Acto*> documentos(const std::set<std::string>& tipos) {
        std::vector<Acto*> todos;
        for (Acto& acto : modelo.actos)
            if (tipos.contains(acto.documento.tipo)) todos.push_back(&acto);
        return todos;
    }
    // Ends a step; one that must not be done was refused in some box, of the failure path where `anomalia`.
    void confere(auto& programa, Fluxo fluxo, bool feito, bool anomalia) {
        const std::string caixas = programa.caixas();
        relato += "\n  " + std::to_string(fluxo) + (feito ? "" : ", not to be done") + " => " + caixas;
        feitos[fluxo] += feito;
        EXPECT_TRUE(feito || !caixas.empty());
        EXPECT_EQ(caixas.find("Situação Anómala") != std::string::npos, anomalia);
        EXPECT_FALSE(programa.BD.EmTransaccao());
        EXPECT_EQ(documentos_perdidos(empresa, caixas), "");
        EXPECT_EQ(modelo.estado(), estado());
        observa(empresa, modelo, {um_de(artigos), um_de(clientes), agora(), static_cast<int>(ate(30))});
    }

    // Picks a line into the note and perhaps types over it; false when the screen took it wrongly.
    bool escolhe_linha(Guias& guias, const Chave& factura, std::vector<LinhaPedida>& pedidas) {
        auto &detalhe = guias.ecra.Detalhe, &gr = guias.ecra.Gr;
        int r = 0;
        while (r < detalhe.linhas() &&
               factura.texto() != "2019/" + detalhe.texto(r, "Doc") + "/" + detalhe.texto(r, "NumLinha"))
            ++r;
        if (r == detalhe.linhas()) return false;
        guias.op.duplo_clique(detalhe, r + 1);
        const auto [aberto, bruto] = modelo.aberto(factura);
        LinhaPedida pedida{factura, aberto, bruto};
        for (const LinhaPedida& outra : pedidas)
            if (outra.factura == factura) pedida.kg -= outra.kg;
        if (pedida.kg <= 0) return guias.janela.retira_caixas().ends_with("Linha esgotada.");
        const int n = static_cast<int>(pedidas.size()) + 1;
        bool bem = !em_cem(10) || !guias.op.edita(gr, n, "Quant", tn(aberto + 1));
        if (pedida.kg > 1 && em_cem(50)) {
            pedida.kg = pedida.bruto = 1 + ate(pedida.kg - 1);
            bem = bem && guias.op.edita(gr, n, "Quant", tn(pedida.kg));
        }
        if (em_cem(20)) {
            pedida.bruto = ate(3000);
            bem = bem && guias.op.edita(gr, n, "PesoBruto", tn(pedida.bruto));
        }
        pedidas.push_back(pedida);
        if (!em_cem(20)) return bem;
        pedidas.push_back({factura});
        return bem && guias.op.edita(gr, n + 1, "Nome", "Nota d'água");
    }
    void emite() {
        const auto por_enviar = modelo.abertas([](const Factura&) { return true; });
        if (por_enviar.empty()) return ajusta();
        const Factura alvo = modelo.facturas.at(um_de(por_enviar));
        const auto abertas = modelo.abertas([&](const Factura& factura) {
            return factura.cliente == alvo.cliente && factura.armazem == alvo.armazem;
        });
        const base::DataHora dia = data();
        Guias guias(empresa, agora());
        guias.ecra.utilizador_data(guias.ecra.DTPicker1, dia);
        guias.ecra.utilizador_escolhe(guias.ecra.cb1(0), alvo.armazem == "OR" ? 0 : 1);
        guias.op.preenche(guias.ecra.campo(0), alvo.cliente);
        std::vector<LinhaPedida> pedidas;
        for (std::int64_t vezes = em_cem(8) ? 0 : 1 + ate(4); vezes > 0; --vezes)
            EXPECT_TRUE(escolhe_linha(guias, um_de(abertas), pedidas));
        if (!pedidas.empty() && em_cem(15)) { // back to the whole line, whatever other rows take of it
            LinhaPedida& primeira = pedidas[0];
            primeira.kg = primeira.bruto = modelo.aberto(primeira.factura).first;
            EXPECT_TRUE(guias.op.edita(guias.ecra.Gr, 1, "Quant", tn(primeira.kg)));
        }
        bool feito = !pedidas.empty();
        for (std::map<Chave, Kg> soma; const LinhaPedida& p : pedidas)
            feito = feito && (soma[p.factura] += p.kg) <= modelo.aberto(p.factura).first;
        guias.op.prime(guias.ecra.btConf(0));
        if (feito) {
            Acto& guia = modelo.novo({dia.ano, "GR", 1}, alvo.cliente, dia);
            Chave linha = guia.documento, anterior;
            for (const LinhaPedida& p : pedidas) {
                // Two lines of text announce each invoice.
                const Chave factura = p.factura.documento();
                linha.linha += std::exchange(anterior, factura) == factura ? 1 : 3;
                if (p.kg > 0)
                    guia.movimentos.push_back({linha, modelo.facturas.at(p.factura).artigo,
                                               alvo.armazem == "OR" ? "ORVEX" : alvo.cliente, alvo.armazem,
                                               -p.kg, p.bruto, p.factura, p.factura});
            }
        }
        confere(guias, emitir, feito, pedidas.empty());
    }

    // A note on the screen; mostly one of which something can still be done.
    Acto& carrega(Guias& guias) {
        Acto& guia = *escolhe(documentos({"GR"}), [this](const Acto* acto) {
            return !acto->anulado && !modelo.devolvido(acto->movimentos.back());
        });
        guias.ecra.utilizador_data(guias.ecra.DTPicker1, {guia.documento.ano, 12, 20});
        guias.op.preenche(guias.ecra.campo(1), std::to_string(guia.documento.numero));
        return guia;
    }
    void anula() {
        Guias guias(empresa, agora());
        Acto& guia = carrega(guias);
        const bool feito =
            !guia.anulado && std::none_of(guia.movimentos.begin(), guia.movimentos.end(),
                                          [this](const Movimento& m) { return modelo.devolvido(m); });
        guias.op.prime(guias.ecra.btConf(1));
        guia.anulado = guia.anulado || feito;
        confere(guias, anular_guia, feito, false);
    }
    void devolve() {
        Guias guias(empresa, agora());
        const Acto& guia = carrega(guias);
        std::string armazem = guia.movimentos[0].armazem;
        if (em_cem(25)) {
            armazem = armazem == "OR" ? "CL" : "OR";
            guias.ecra.utilizador_escolhe(guias.ecra.cb1(0), armazem == "OR" ? 0 : 1);
        }
        guias.op.prime(guias.ecra.btGV(0));
        EXPECT_EQ(guias.ecra.Frame3.Visible, !guia.anulado);
        std::vector<Movimento> devolvidos;
        for (int n = 1; const Movimento& linha : guia.movimentos) {
            if (!guia.anulado && em_cem(70)) {
                guias.op.edita(guias.ecra.Final, n, "Transf", "-1");
                if (!modelo.devolvido(linha)) devolvidos.push_back(linha);
            }
            ++n;
        }
        const bool feito = !devolvidos.empty();
        guias.op.prime(guias.ecra.btGV(1));
        if (feito) {
            Acto& devolucao = modelo.novo({agora().ano, "GV", 1}, guia.cliente, agora());
            Chave chave = devolucao.documento;
            for (const Movimento& d : devolvidos) {
                ++chave.linha;
                devolucao.movimentos.push_back({chave, d.artigo, armazem == "OR" ? "ORVEX" : guia.cliente,
                                                armazem, -d.kg, d.bruto, d.chave, d.factura});
            }
        }
        confere(guias, devolver, feito, !guia.anulado && !feito);
    }

    void posta(const Chave& tipo, const std::string& artigo, const std::string& detentor, Kg kg,
               const base::DataHora& dia) {
        Acto& ajuste = modelo.novo({tipo.ano, tipo.tipo, tipo.serie}, "", dia);
        ajuste.movimentos = {
            {ajuste.documento, artigo, detentor, Modelo::armazem_de(detentor), tipo.tipo == "SB" ? kg : -kg}};
    }
    void ajusta() {
        const auto stock_de = [this](const std::string& a) {
            return modelo.stock(a, Modelo::armazem_de(modelo.detentor(a)));
        };
        const std::string codigo = escolhe(artigos, stock_de);
        const std::optional<Kg> stock = stock_de(codigo);
        const Kg antes = stock.value_or(0);
        const Kg diferenca = em_cem(85) ? 1 + ate(400) : -1 - ate(400);
        Chave tipo = um_de(especies);
        const int modo = tipo.serie;
        const Kg escrito = modo == 1 ? antes + diferenca : modo == 2 ? antes - diferenca : diferenca;
        const bool certo = modo == 1 ? escrito > antes : modo == 2 ? escrito < antes : escrito <= antes;
        const base::DataHora dia = data();
        tipo.ano = dia.ano;

        Ajustes ajustes(empresa, agora(), static_cast<std::int16_t>(modo));
        const bool feito = stock && certo && escrito >= 0;
        ajustes.op.preenche(ajustes.ecra.campo(0), codigo);
        ajustes.ecra.utilizador_data(ajustes.ecra.DTPicker1, dia);
        ajustes.op.escreve(ajustes.ecra.campo(3), tn(escrito));
        ajustes.op.prime(ajustes.ecra.btConf);
        if (feito) posta(tipo, codigo, modelo.detentor(codigo), diferenca, dia);
        // A wrong number stops at its field; what the fields let through stops later.
        confere(ajustes, ajustar, feito, certo && !feito && (modo == 3 || escrito >= 0));
    }
    void altera(Fluxo fluxo) {
        Acto& ajuste = *escolhe(documentos({"SB", "QB", "CI"}), [](const Acto* a) { return !a->anulado; });
        const Chave chave = ajuste.documento;
        const Movimento antigo = ajuste.movimentos[0];
        const base::DataHora dia = ajuste.data;
        const Kg novo = 1 + ate(em_cem(85) ? 400 : 20'000);
        // What the old one took can be taken again.
        const bool cabe =
            chave.tipo == "SB" || novo + antigo.kg <= modelo.stock(antigo.artigo, antigo.armazem);

        Ajustes ajustes(empresa, agora(), static_cast<std::int16_t>(chave.serie));
        ajustes.janela.escolhas.push_back([&](startup::ConjuntoRegistos& linha) {
            return linha.valor("No.Doc.").inteiro() == chave.numero &&
                   linha.valor("Data").data().ano == chave.ano;
        });
        ajustes.op.prime(ajustes.ecra.btFx(5));
        EXPECT_EQ(ajustes.ecra.campo(5).Text.empty(), ajuste.anulado); // no longer listed
        const bool confirma = fluxo == substituir || ajuste.anulado;
        const bool ficou = modelo.detentor(antigo.artigo) == antigo.detentor;
        const bool feito = !ajuste.anulado && ((cabe && ficou) || !confirma);
        if (confirma && !ajuste.anulado) ajustes.op.escreve(ajustes.ecra.campo(3), tn(novo));
        ajustes.op.prime(confirma ? ajustes.ecra.btConf : ajustes.ecra.btAnular);
        ajuste.anulado = ajuste.anulado || feito;
        if (feito && confirma) posta(chave, antigo.artigo, antigo.detentor, novo, dia);
        confere(ajustes, fluxo, feito, confirma && !ajuste.anulado && cabe && !ficou);
    }

    void transfere(Fluxo fluxo) {
        std::string destino = "ORVEX";
        if (fluxo == para_cliente && em_cem(90)) destino = um_de(clientes);
        const auto pode = [&](const std::string& a) {
            const std::optional<Kg> stock = modelo.stock(a, "CL");
            if (modelo.detentor(a) == "ORVEX" || !stock) return false;
            if (!modelo.abertas([&](const Factura& factura) { return factura.artigo == a; }).empty())
                return false;
            return fluxo == para_orvex ? *stock >= 0 : destino != "ORVEX" && destino != modelo.detentor(a);
        };
        const std::string codigo = escolhe(artigos, pode);
        const bool feito = pode(codigo);
        Transferencias trf(empresa, agora(), static_cast<std::int16_t>(fluxo == para_orvex ? 1 : 2));
        trf.op.preenche(trf.ecra.campo(0), codigo);
        if (fluxo == para_cliente) trf.op.preenche(trf.ecra.campo(2), destino);
        trf.op.prime(trf.ecra.btConf);
        if (feito) {
            const std::string dono = modelo.detentor(codigo);
            const Kg tudo = *modelo.stock(codigo, "CL");
            const int ano = agora().ano;
            Acto& acto = fluxo == para_orvex ? modelo.novo({ano, "TR", 6}) : modelo.actos.emplace_back();
            acto.data = agora();
            acto.movimentos = {{{ano, "QB", 2}, codigo, dono, "CL", -tudo},
                               {{ano, "SB", 1}, codigo, destino, Modelo::armazem_de(destino), tudo}};
        }
        confere(trf, fluxo, feito, !feito);
    }
};

// Somebody at a workstation, whose programs stay open from one confirmation to the next, and who does
// whatever they let him.
class Desprevenido : confirmacao::Observador {
  public:
    Desprevenido(Jogo& jogo, std::uint32_t semente) : jogo_(jogo), sorte_(semente) {}

    void confirma(int vezes) {
        while (feitas_ < vezes) {
            const int antes = feitas_;
            const std::int16_t modo = static_cast<std::int16_t>(1 + ate(3));
            const std::int64_t qual = ate(8);
            if (qual < 4) guia(aberto(guias_), qual);
            if (qual == 4 || qual == 5) ajusta(aberto(ajustes_[modo], modo), modo);
            if (qual == 6) altera(aberto(ajustes_[modo], modo));
            if (qual == 7) transfere(modo > 1 ? std::int16_t{2} : std::int16_t{1});
            if (feitas_ == antes) { // what was refused is left
                guias_.reset();
                ajustes_.clear();
                trf_.clear();
            }
        }
    }

  private:
    template <typename TEcra>
    using Programa = std::optional<Bancada<TEcra>>;

    void feita() noexcept override { ++feitas_; }
    std::int64_t ate(std::int64_t limite) { return static_cast<std::int64_t>(sorte_()) % limite; }
    std::string peso_ao_acaso() { return tn(1 + ate(50)); }
    const std::string& artigo() { return jogo_.artigos[static_cast<std::size_t>(ate(10))]; }
    const std::string& cliente() { return clientes[static_cast<std::size_t>(ate(3))]; }

    template <typename TEcra, typename... Modo>
    Bancada<TEcra>& aberto(Programa<TEcra>& programa, Modo... modo) {
        if (programa) return *programa;
        programa.emplace(&jogo_.empresa, modo...);
        programa->observadores.junta(*this);
        programa->abre();
        return *programa;
    }
    void guia(Bancada<delivery::GuiasRemessa>& b, std::int64_t qual) {
        if (qual < 2) {
            b.ecra.utilizador_escolhe(b.ecra.cb1(0), static_cast<int>(qual));
            b.op.preenche(b.ecra.campo(0), cliente());
            if (b.ecra.Detalhe.texto(0, "Artigo").empty()) return;
            b.op.duplo_clique(b.ecra.Detalhe, 1);
            b.op.edita(b.ecra.Gr, 1, "Quant", peso_ao_acaso());
            return b.op.prime(b.ecra.btConf(0));
        }
        const auto ultima =
            b.BD.Consulta("select top 1 NNumDoc from DocGcCab where TpDoc='GR' order by NNumDoc desc");
        if (ultima->fim()) return;
        b.op.preenche(b.ecra.campo(1), std::to_string(1 + ate(ultima->valor(0).inteiro())));
        if (qual == 2) return b.op.prime(b.ecra.btConf(1));
        b.op.prime(b.ecra.btGV(0));
        if (!b.ecra.Frame3.Visible) return;
        b.op.edita(b.ecra.Final, 1, "Transf", "-1");
        b.op.prime(b.ecra.btGV(1));
    }
    void ajusta(Bancada<adjust::MovStocks>& b, int modo) {
        b.op.preenche(b.ecra.campo(0), artigo());
        const base::Moeda stock = base::Moeda::le(b.ecra.campo(1).Text).value_or(base::Moeda());
        const base::Moeda peso = m(peso_ao_acaso().c_str());
        b.op.escreve(b.ecra.campo(3), (modo == 1 ? stock + peso : modo == 2 ? stock - peso : peso).texto());
        b.op.prime(b.ecra.btConf);
    }
    void altera(Bancada<adjust::MovStocks>& b) {
        b.janela.escolhas.push_back([this](auto&) { return ate(5) == 0; });
        b.op.prime(b.ecra.btFx(5));
        if (b.ecra.campo(5).Text.empty()) return;
        if (ate(2) == 0) return b.op.prime(b.ecra.btAnular);
        b.op.escreve(b.ecra.campo(3), peso_ao_acaso());
        b.op.prime(b.ecra.btConf);
    }
    void transfere(std::int16_t modo) {
        auto& b = aberto(trf_[modo], modo);
        b.op.preenche(b.ecra.campo(0), artigo());
        if (modo == 2) b.op.preenche(b.ecra.campo(2), cliente());
        b.op.prime(b.ecra.btConf);
    }

    Jogo& jogo_;
    std::mt19937 sorte_;
    int feitas_ = 0;
    Programa<delivery::GuiasRemessa> guias_;
    std::map<int, Programa<adjust::MovStocks>> ajustes_;
    std::map<int, Programa<transfer::TrfBobines>> trf_;
};

} // namespace

TEST(Sequencias, DoQueDoisProgramasConfirmamAoMesmoTempoOAuditorNadaTemADizer) {
    if (no_servidor()) GTEST_SKIP() << "its engine is that of the trial";
    const char* vezes = std::getenv("ORVEX_CONFIRMACOES");
    const std::uint32_t semente = std::random_device()();
    Jogo jogo(semente);
    std::vector<std::thread> programas;
    for (const std::uint32_t qual : {1U, 2U})
        programas.emplace_back([&jogo, semente, qual, n = vezes != nullptr ? std::stoi(vezes) : 200] {
            Desprevenido(jogo, semente + qual).confirma(n / 2);
        });
    for (std::thread& programa : programas)
        programa.join();
    EXPECT_EQ(auditada(jogo.empresa.pasta(), relogio), "") << "seed " << semente;
}

TEST(Sequencias, FacamOQueFizeremOsUtilizadoresLivroEErpTemOQueOModeloDiz) {
    const char* pedida = std::getenv("ORVEX_SEMENTE");
    std::vector<std::uint32_t> sementes{pedida != nullptr ? static_cast<std::uint32_t>(std::stoul(pedida))
                                                          : 20190315};
    while (pedida == nullptr && sementes.size() < 9)
        sementes.push_back(std::random_device()());
    std::map<Fluxo, int> feitos;
    for (const std::uint32_t semente : sementes) {
        std::cout << "ORVEX_SEMENTE=" << semente << std::endl;
        Jogo jogo(semente);
        for (int passo = 1; passo <= passos && !HasFailure(); ++passo) {
            jogo.joga();
            if (HasFailure()) ADD_FAILURE() << "seed " << semente << ", step " << passo << ":" << jogo.relato;
        }
        EXPECT_EQ(auditada(jogo.empresa.pasta(), jogo.agora()), "") << "seed " << semente << jogo.relato;
        if (HasFailure()) return;
        for (const auto& [fluxo, vezes] : jogo.feitos)
            feitos[fluxo] += vezes;
    }
    for (int fluxo = emitir; fluxo <= para_cliente && pedida == nullptr; ++fluxo)
        EXPECT_GE(feitos[static_cast<Fluxo>(fluxo)], 3) << fluxo;
}
