// A small embedded company in which every figure is known: what tests of the screens work on.
//
// Texts carry apostrophes and accents on purpose. The clock stands at 15-03-2019 10:20:30; the ledger's lines
// are of 01-03-2019, of 8 t at first, all of client CL'1:
//
//     Line          Article   Open   Gross weight                 Warehouse
//     FA/1/123/1    BOB'1     2.5    2.6                          OR
//     FA/1/123/2    BOB2      1.15   none, 1.25 in the ERP's line OR
//     FR/2/9/1      BOB3      3      none, nor in the ERP's line  or
//     FA/1/124/1    BOB4      4      4.1                          CL
//     FA/1/125/1    BOB2      5      5.1                          no line in the ERP
//     FA/9/1/1      BOB2      6      6.1, of a series not taken   OR
//     FA/1/126/1    OUTRO     7      7.1, an article out of use   OR
//     FA/1/127/1    BOB2      0      0, used up                   OR
//
// Every article has 10 t in each warehouse, 20 t in all, worth 2000 euro.
#pragma once

#include "base/caminho.h"
#include "common/ecra.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "tests/apoio/janela_guiao.h"
#include "tests/apoio/pasta_temporaria.h"
#include "tests/apoio/sessao_de_teste.h"
#include "tests/apoio/tabela.h"

#include <gmock/gmock.h>

#include <optional>

namespace orvex::testes {

using testing::AllOf, testing::ElementsAre, testing::EndsWith, testing::HasSubstr, testing::Not,
    testing::StartsWith;

inline constexpr base::DataHora relogio{2019, 3, 15, 10, 20, 30};

inline base::Moeda m(const char* texto) { return base::Moeda::le(texto).value(); }

void insere(startup::SessaoBD& BD, const std::string& tabela, const std::vector<const char*>& colunas,
            const std::vector<std::vector<base::Variante>>& linhas);

// An open line of an invoice of 2019, in ledger and ERP; in the ledger alone where it has no warehouse.
struct LinhaAberta {
    const char* tipo;
    int serie, numero, linha;
    std::string artigo;
    base::Moeda aberto;
    base::Variante bruto;
    std::string armazem = "OR", cliente = "CL'1";
    base::Moeda original = base::Moeda::de_inteiro(8);
};
void insere_linha(startup::SessaoBD& BD, const LinhaAberta& l);

// The files of a company without tables of the ledger and without rows.
void cria_empresa_vazia(const std::filesystem::path& pasta);
// The company that all others are copies of.
void faz_modelo(const std::filesystem::path& pasta);

class EmpresaTeste {
  public:
    EmpresaTeste();
    // A copy of another one, which nobody is writing to.
    explicit EmpresaTeste(const std::filesystem::path& outra);

    const std::filesystem::path& pasta() const { return pasta_.pasta(); }
    void escreve_parametros(const std::string& texto) { pasta_.escreve(startup::ficheiro_parametros, texto); }
    startup::SessaoBD& outra() { return *outra_; } // a session of its own, as another workstation has
    // Parameters, kinds of document and series of adjustments and transfers too; the first line of a key
    // counts.
    void com_ajustes_e_transferencias(const std::string& parametros = "");
    // With articles and lines that what follows puts there, and no others. What they hold agrees with the
    // ERP.
    void recomeca();
    void insere_item(const std::string& codigo, const std::string& detentor, base::Moeda stock);
    void insere_factura(const LinhaAberta& l);
    // One more article, worth 100 euro a tonne.
    void insere_artigo(const std::string& codigo, base::Moeda stock, const std::string& armazem,
                       bool inactivo = false);

    // Rows as "a|b; c|d", nulls as "null".
    std::string linhas(const std::string& sql);
    std::string livro(); // the rows this system keeps
    std::string stock();

  private:
    PastaTemporaria pasta_;
    std::unique_ptr<startup::SessaoBD> outra_;
};

// A screen at work on a company, its own or one that other workstations have too, through recording sessions.
template <typename TEcra>
struct Bancada {
    std::optional<EmpresaTeste> propria;
    EmpresaTeste& empresa;
    base::DataHora agora = relogio;
    Diario diario;
    SessaoDeTeste BD{diario};
    std::unique_ptr<startup::SessaoERP> pedida = erp_gravado(diario);
    startup::SessaoERP& ERP = *pedida;
    JanelaGuiao janela;
    confirmacao::Observadores observadores;
    TEcra ecra;
    Operador op{ecra};

    // With what the screen's constructor takes besides its services.
    explicit Bancada(auto... argumentos) : Bancada(static_cast<EmpresaTeste*>(nullptr), argumentos...) {}
    explicit Bancada(EmpresaTeste* partilhada, auto... argumentos)
        : empresa(partilhada != nullptr ? *partilhada : propria.emplace()),
          ecra({BD, ERP, startup::Parametros(empresa.pasta()), {}, [this] { return agora; }, observadores},
               argumentos...) {
        if (!BD.Abre(ligacao(empresa.pasta())) ||
            !ERP.Liga({"E", "", "ana", "sqlite", base::texto_de(empresa.pasta())}))
            throw std::runtime_error("the company did not open");
        ecra.define_janela(janela);
    }
    Bancada(Bancada&&) = delete;
    void abre() {
        ecra.Form_Load();
        ecra.utilizador_abre();
    }
    std::string caixas() { return janela.retira_caixas(); }
    bool no_campo(int indice) { return ecra.foco().actual() == &ecra.campo(indice); }
};

// A screen in one of its modes.
template <typename TEcra, int Modo>
struct NoModo : testing::Test, TEcra {
    NoModo() : TEcra(Modo) {}
};

} // namespace orvex::testes
