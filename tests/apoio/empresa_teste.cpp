#include "tests/apoio/empresa_teste.h"

#include "platform/erp/esquema_erp.h"
#include "platform/sqlite/empresa.h"
#include "startup/construtor_ligacao.h"
#include "startup/esquema_livro.h"

namespace orvex::testes {
namespace {

constexpr const char* parametros =
    "GUIADEVOLUCAO=GV,1,SD\r\nGUIASREMESSA=GR,1,SG\r\nFACTURAS=FA,1,X;FR,2,Y\r\n"
    "ARMAZEM=CL,Armazém clientes\r\nARMAZEMORVEX=OR,Armazém ORVEX\r\n"
    "CLIENTEORVEX=ORVEX\r\n";

void preenche(startup::SessaoBD& BD) {
    insere(BD, "Empresa", {"Codigo", "Nome"}, {{"E", "Empresa"}});
    insere(BD, "Utilizadores", {"Utilizador", "PalavraPasse"}, {{"ana", ""}});
    insere(BD, "Armazens", {"Codigo", "Descr"}, {{"OR", "ORVEX"}, {"CL", "Clientes"}});
    insere(BD, "TiposDocumento", {"Codigo", "MovStock"}, {{"GR", -1}, {"GV", 1}});
    insere(BD, "Series", {"TpDoc", "Serie"}, {{"GR", 1}, {"GV", 1}});
    insere(BD, "RGIVA", {"Codigo", "Mercado"}, {{"N'1", 1}, {"UE", 2}});
    insere(BD, "Vendedor", {"Codigo", "NOME"}, {{"V1", "Zé"}, {"V'2", "Ana"}});
    insere(BD, "Clientes", {"CODIGO", "Nome", "NContrib", "GesCnt", "Vendedor", "RegIva", "Inactivo"},
           {{"CL'1", "José O'Neill, Lda", "123456789", "V1", "V'2", "N'1", 0},
            {"CL2", "Ibérica SL", "ESB1", "", "", "UE", 0},
            {"CL3", "Sem regime", "123456780", "", "", "??", 0},
            {"INA", "Inactivo", "123456789", "", "", "N'1", -1}});
    for (const char* artigo : {"BOB'1", "BOB2", "BOB3", "BOB4", "OUTRO"}) {
        insere(BD, "Artigos", {"CODIGO", "Nome", "UnBase", "artoudes", "VLREXIST", "STDISP", "ULTPRCOM"},
               {{artigo, "Bobina d'aço", "TON", *artigo == 'O' ? -1 : 0, m("2000"), m("20"), m("90")}});
        insere(BD, "artarm", {"Artigo", "Armazem", "Existenc"},
               {{artigo, "OR", m("10")}, {artigo, "CL", m("10")}});
    }
    insere_linha(BD, {"FA", 1, 123, 1, "BOB'1", m("2.5"), m("2.6"), "OR"});
    insere_linha(BD, {"FA", 1, 123, 2, "BOB2", m("1.15"), {}, "OR"});
    insere_linha(BD, {"FR", 2, 9, 1, "BOB3", m("3"), {}, "or"});
    insere_linha(BD, {"FA", 1, 124, 1, "BOB4", m("4"), m("4.1"), "CL"});
    insere_linha(BD, {"FA", 1, 125, 1, "BOB2", m("5"), m("5.1"), ""});
    insere_linha(BD, {"FA", 9, 1, 1, "BOB2", m("6"), m("6.1"), "OR"});
    insere_linha(BD, {"FA", 1, 126, 1, "OUTRO", m("7"), m("7.1"), "OR"});
    insere_linha(BD, {"FA", 1, 127, 1, "BOB2", m("0"), m("0"), "OR"});
    insere(BD, "U_DocGcLin1", {"Ano", "TpDocUM", "Serie", "NNumDoc", "NumLinha", "PesoBruto"},
           {{2019, "FA", 1, 123, 2, m("1.25")}});
}

// Made once, and copied for every test.
const std::filesystem::path& modelo() {
    static const PastaTemporaria pasta;
    if (std::filesystem::is_empty(pasta.pasta())) faz_modelo(pasta.pasta());
    return pasta.pasta();
}

} // namespace

void insere(startup::SessaoBD& BD, const std::string& tabela, const std::vector<const char*>& colunas,
            const std::vector<std::vector<base::Variante>>& linhas) {
    const auto conjunto = BD.AbreActualizavel("Select * from " + tabela + " where 1=0");
    for (const auto& linha : linhas) {
        conjunto->acrescenta();
        for (std::size_t i = 0; i < colunas.size(); ++i)
            conjunto->define(colunas[i], linha.at(i));
        conjunto->actualiza();
    }
    espelha();
}

void insere_linha(startup::SessaoBD& BD, const LinhaAberta& l) {
    insere(BD, "xel_ORVEX_MOV",
           {"Ano", "TpDoc", "NumDoc", "SerieDoc", "NumLinha", "Data", "Artigo", "Cliente", "Descritivo",
            "QtdOrig", "Qtd", "PesoLiquido", "PesoBruto"},
           {{2019, l.tipo, l.numero, l.serie, l.linha, base::DataHora{2019, 3, 1}, l.artigo, l.cliente,
             "Bobina d'aço", l.original, l.aberto, l.bruto.nulo() ? l.bruto : l.aberto, l.bruto}});
    if (l.armazem.empty()) return;
    insere(BD, "DocGcLin", {"Ano", "TpDocum", "Serie", "NNumDoc", "NumLinha", "Artigo", "Armazem"},
           {{2019, l.tipo, l.serie, l.numero, l.linha, l.artigo, l.armazem}});
}

void cria_empresa_vazia(const std::filesystem::path& pasta) {
    platform::sqlite::cria_livro(pasta);
    auto erp = platform::sqlite::abre_base(pasta / platform::sqlite::ficheiro_erp,
                                           SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    platform::erp::cria_esquema_erp(erp);
}

void faz_modelo(const std::filesystem::path& pasta) {
    cria_empresa_vazia(pasta);
    std::ofstream(pasta / startup::ficheiro_parametros, std::ios::binary) << parametros;
    platform::sqlite::SessaoSQLite BD;
    BD.Abre(ligacao(pasta));
    startup::VerificaTabelas(BD);
    startup::VerificaPesos(BD);
    BD.IniciaTransaccao();
    preenche(BD);
    BD.ConfirmaTransaccao();
}

EmpresaTeste::EmpresaTeste() : EmpresaTeste(modelo()) {}

EmpresaTeste::EmpresaTeste(const std::filesystem::path& outra) {
    for (const auto& ficheiro : std::filesystem::directory_iterator(outra))
        std::filesystem::copy(ficheiro, pasta() / ficheiro.path().filename());
    outra_ = abre_empresa(pasta());
}

void EmpresaTeste::com_ajustes_e_transferencias(const std::string& primeiros) {
    escreve_parametros(primeiros + parametros +
                       "SOBRAS=SB,1,SS\r\nQUEBRAS=QB,2,SQ\r\nCONSUMOS=CI,3,SC\r\nTRF=TR,6,ST\r\n");
    insere(*outra_, "TiposDocumento", {"Codigo", "MovStock"}, {{"SB", 1}, {"QB", -1}, {"CI", -1}, {"TR", 2}});
    insere(*outra_, "Series", {"TpDoc", "Serie"}, {{"SB", 1}, {"QB", 2}, {"CI", 3}, {"TR", 6}});
}

void EmpresaTeste::recomeca() {
    for (const char* tabela : {"xel_ORVEX_MOV", "U_DocGcLin1", "DocGcLin", "Artigos", "artarm"})
        outra_->Executa(std::string("Delete ") + tabela);
    com_ajustes_e_transferencias();
}

void EmpresaTeste::insere_item(const std::string& codigo, const std::string& detentor, base::Moeda stock) {
    insere_artigo(codigo, stock, detentor == "ORVEX" ? "OR" : "CL");
    insere(*outra_, "xel_ORVEX",
           {"NumSerie", "Cliente", "CliFinal", "Data", "Quantidade", "Ano", "TpDoc", "Serie", "NNumDoc"},
           {{codigo, detentor, detentor, base::DataHora{2018, 5, 2}, stock, 2018, "FC", 1, 7}});
}

void EmpresaTeste::insere_factura(const LinhaAberta& l) {
    insere_linha(*outra_, l);
    const std::string numero = std::to_string(l.numero);
    outra_->Executa("update DocGcLin set Quant=" + l.original.texto() + " where NNumDoc=" + numero +
                    " and NumLinha=" + std::to_string(l.linha));
    insere(*outra_, "U_DocGcLin1", {"Ano", "TpDocUM", "Serie", "NNumDoc", "NumLinha", "PesoBruto"},
           {{2019, l.tipo, l.serie, l.numero, l.linha, l.bruto}});
    if (linhas("select NNumDoc from DocGcCab where NNumDoc=" + numero).empty())
        insere(*outra_, "DocGcCab", {"Ano", "TpDoc", "Serie", "NNumDoc", "Data", "Terceiro"},
               {{2019, l.tipo, l.serie, l.numero, base::DataHora{2019, 3, 1}, l.cliente}});
}

void EmpresaTeste::insere_artigo(const std::string& codigo, base::Moeda stock, const std::string& armazem,
                                 bool inactivo) {
    insere(*outra_, "Artigos", {"CODIGO", "Nome", "UnBase", "Inactivo", "VLREXIST", "STDISP", "ULTPRCOM"},
           {{codigo, "Bobina d'aço", "TON", inactivo ? -1 : 0, base::Moeda::de_real(100 * stock.real()),
             stock, m("90")}});
    insere(*outra_, "artarm", {"Artigo", "Armazem", "Existenc"}, {{codigo, armazem, stock}});
}

std::string EmpresaTeste::linhas(const std::string& sql) {
    std::string resultado;
    const auto conjunto = outra_->Consulta(sql);
    for (; !conjunto->fim(); conjunto->move_seguinte())
        for (std::size_t i = 0; i < conjunto->colunas(); ++i) {
            const base::Variante valor = conjunto->valor(i);
            if (i > 0 || !resultado.empty()) resultado += i > 0 ? "|" : "; ";
            resultado += valor.nulo() ? "null" : valor.texto();
        }
    return resultado;
}

std::string EmpresaTeste::livro() {
    return linhas("select * from xel_ORVEX_MOV") + "\n" + linhas("select * from xel_ORVEX order by Registo") +
           "\n" + linhas("select CODIGO, Observ from Artigos order by CODIGO");
}

std::string EmpresaTeste::stock() {
    return linhas("select CODIGO, VLREXIST, STDISP from Artigos order by CODIGO") + "\n" +
           linhas("select * from artarm");
}

} // namespace orvex::testes
