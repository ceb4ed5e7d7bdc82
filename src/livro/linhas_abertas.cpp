#include "livro/linhas_abertas.h"

#include "base/falha.h"
#include "base/texto.h"
#include "livro/perguntas.h"

#include <deque>
#include <vector>

namespace orvex::livro {
namespace {

constexpr std::size_t tamanho_do_bloco = 500; // rows that are asked about together

// That a row is of one of the groups.
std::string filtro_documentos(const startup::ParametroGrupos& FACTURAS) {
    std::string filtro;
    for (const auto& [TpDoc, SerieEscrita] : FACTURAS.grupos()) {
        if (!filtro.empty()) filtro += " OR ";
        filtro += " (TpDoc=" + base::entre_plicas(TpDoc) + " and SerieDoc=" + SerieEscrita + ")";
    }
    return filtro;
}

std::string abertas(const char* coluna, const std::string& valor, const startup::ParametroGrupos& FACTURAS) {
    return std::string("Select * from xel_ORVEX_Mov INNER JOIN Artigos ON "
                       "Artigos.Codigo=xel_ORVEX_Mov.Artigo where ") +
           coluna + " =" + base::entre_plicas(valor) + " and " + esta_aberta(FACTURAS);
}

std::string linha_no_erp(const ChaveLinha& linha) {
    return "Select * from DocGcLin where TpDocum=" + base::entre_plicas(linha.TpDoc) +
           " and Serie=" + base::entre_plicas(linha.Serie) +
           " and Nnumdoc=" + base::entre_plicas(linha.NumDoc) + " and Ano=" + base::entre_plicas(linha.Ano) +
           " and NumLinha=" + base::entre_plicas(linha.NumLinha);
}

bool esta_no_armazem(startup::SessaoBD& BD, const std::string& linha_no_erp, const std::string& Armazem) {
    const auto no_erp = BD.Consulta(linha_no_erp);
    return !no_erp->fim() && base::maiusculas(no_erp->valor("Armazem").texto()) == base::maiusculas(Armazem);
}

LinhaAberta le(startup::ConjuntoRegistos& linha) {
    return {.documento = linha.valor("TpDoc").texto() + "/" + linha.valor("SerieDoc").texto() + "/" +
                         linha.valor("NumDoc").texto(),
            .NumLinha = linha.valor("NumLinha"),
            .Qtd = linha.valor("Qtd"),
            .QtdOrig = linha.valor("QtdOrig"),
            .PesoBruto = linha.valor("PesoBruto"),
            .Data = linha.valor("Data"),
            .Artigo = linha.valor("Artigo").texto(),
            .Descritivo = linha.valor("Descritivo").texto(),
            .Unidade = linha.valor("UnBase").texto()};
}

// A line without its gross weight that the ERP has.
struct PorReparar {
    std::string sql; // finds it
    base::Variante QtdOrig;
    base::Variante PB;
};

void repara_peso(startup::SessaoBD& BD, const PorReparar& lida) {
    const auto linha = BD.AbreActualizavel(lida.sql);
    if (linha->fim() || !linha->valor("PesoBruto").nulo()) return;
    linha->define("PesoLiquido", lida.QtdOrig);
    linha->define("PesoBruto", lida.PB);
    linha->actualiza();
}

// False when another workstation changed some of them meanwhile: which, a failure does not tell.
bool repara_uma_vez(startup::SessaoBD& BD, const std::vector<PorReparar>& linhas) {
    Perguntas anunciadas; // a line may have several weights in the ERP, of which the first counts
    for (const PorReparar& linha : linhas)
        anunciadas.junta_uma_vez(linha.sql);
    bool inteiro = true;
    const auto salvo_mudadas = [&](const auto& trabalho) {
        try {
            trabalho();
        } catch (const base::Falha& falha) {
            if (falha.numero() != startup::numeros_bd::registo_alterado) throw;
            inteiro = false;
        }
    };
    salvo_mudadas([&] {
        BD.EmPasso(anunciadas.todas(), [&] {
            for (const PorReparar& linha : linhas)
                salvo_mudadas([&] { repara_peso(BD, linha); });
        });
    });
    return inteiro;
}

} // namespace

std::string esta_aberta(const startup::ParametroGrupos& FACTURAS) {
    return "Qtd>0 and artoudes=0 and (" + filtro_documentos(FACTURAS) + " )";
}

bool mostra_linhas_abertas(startup::SessaoBD& BD, const std::string& Cliente, const std::string& Armazem,
                           const startup::ParametroGrupos& FACTURAS,
                           const std::function<void(const LinhaAberta&)>& mostra,
                           const std::function<bool()>& prossegue) {
    struct Bloco {
        std::vector<LinhaAberta> lidas;
        std::vector<std::string> anunciadas; // of the lines whose key is whole
        std::vector<bool> inteira;
    };
    // Read to the end before anything is asked: a set that has to be put aside keeps every column of its
    // rows.
    std::deque<Bloco> blocos;
    for (const auto linhas = BD.Consulta(abertas("Cliente", Cliente, FACTURAS)); !linhas->fim();
         linhas->move_seguinte()) {
        if (blocos.empty() || blocos.back().lidas.size() == tamanho_do_bloco) blocos.emplace_back();
        const auto chave = chave_propria(*linhas);
        blocos.back().inteira.push_back(chave.has_value());
        if (chave) blocos.back().anunciadas.push_back(linha_no_erp(*chave));
        blocos.back().lidas.push_back(le(*linhas));
    }
    for (; !blocos.empty(); blocos.pop_front()) {
        const Bloco& bloco = blocos.front();
        BD.EmPasso(bloco.anunciadas, [&] {
            auto pergunta = bloco.anunciadas.begin();
            for (std::size_t i = 0; i < bloco.lidas.size(); ++i)
                if (!bloco.inteira[i] || esta_no_armazem(BD, *pergunta++, Armazem)) mostra(bloco.lidas[i]);
        });
        if (!prossegue()) return false;
    }
    return true;
}

void repara_pesos(startup::SessaoBD& BD, const std::string& Cliente,
                  const startup::ParametroGrupos& FACTURAS) {
    const auto linhas = BD.Consulta(
        " Select m.*,l.PESOBRUTO as 'PB' from xel_ORVEX_Mov as m inner join artigos as a on a.codigo=m.Artigo"
        " left outer  join U_Docgclin1 as l ON l.ano=m.ano and  l.TPDOCUM =m.tpdoc and l.SERIE =m.seriedoc"
        " and l.nnumdoc=m.numdoc and l.NUMLINHA =m.numlinha where Cliente =" +
        base::entre_plicas(Cliente) + " and " + esta_aberta(FACTURAS));
    while (!linhas->fim()) {
        std::vector<PorReparar> por_reparar;
        for (; !linhas->fim() && por_reparar.size() < tamanho_do_bloco; linhas->move_seguinte()) {
            if (linhas->valor("PB").nulo() || !linhas->valor("PesoBruto").nulo()) continue;
            const auto chave = chave_propria(*linhas);
            if (!chave) continue; // it cannot be found again
            por_reparar.push_back({"select * from xel_Orvex_Mov where Ano=" + chave->Ano +
                                       " and TpDoc=" + base::entre_plicas(chave->TpDoc) +
                                       " and NumDoc= " + chave->NumDoc + " and SerieDoc=" + chave->Serie +
                                       " and NumLInha=" + chave->NumLinha + " ",
                                   linhas->valor("QtdOrig"), linhas->valor("PB")});
        }
        constexpr int vezes = 3;
        for (int vez = 0; vez < vezes; ++vez)
            if (repara_uma_vez(BD, por_reparar)) break;
    }
}

std::string perguntas::tem_linhas_abertas(const std::string& Artigo,
                                          const startup::ParametroGrupos& FACTURAS) {
    return abertas("Artigo", Artigo, FACTURAS);
}

bool tem_linhas_abertas(startup::SessaoBD& BD, const std::string& Artigo,
                        const startup::ParametroGrupos& FACTURAS) {
    return !BD.Consulta(perguntas::tem_linhas_abertas(Artigo, FACTURAS))->fim();
}

} // namespace orvex::livro
