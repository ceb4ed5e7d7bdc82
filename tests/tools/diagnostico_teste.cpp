// orvex-diagnostico: the truth on a good installation and on broken ones, on both engines.
#include "tools/diagnostico.h"

#include "base/texto.h"
#include "platform/sqlite/empresa.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/apoio/tabela.h"
#include "tools/diagnostico_bd.h"
#include "tools/diagnostico_parametros.h"
#include "tools/tabelas_usadas.h"

#include <gmock/gmock.h>

#include <regex>
#include <set>

namespace orvex::testes {
namespace {

namespace fs = std::filesystem;
using namespace diagnostico;
using namespace testing;

constexpr const char* segredo = "S3gr3do;{=}";
constexpr const char* segredo_erp = "Outr0Segred0";

std::string com_estado(const Resultados& resultados, Estado estado) {
    std::string nomes;
    for (const Resultado& este : resultados)
        if (este.estado == estado) nomes += (nomes.empty() ? "" : "; ") + este.o_que;
    return nomes;
}

std::string le(const fs::path& ficheiro) {
    std::ifstream entrada(ficheiro, std::ios::binary);
    return {std::istreambuf_iterator<char>(entrada), {}};
}

// A company and the installation that opens it, over the wire or as it is.
struct Instalacao {
    EmpresaTeste empresa;
    ServidorTDS servidor{empresa.pasta()};
    PastaTemporaria pasta;
    std::string definicoes, parametros;

    explicit Instalacao(bool fio) {
        servidor.palavra_passe = segredo;
        empresa.outra().Executa("update Utilizadores set PalavraPasse='" + std::string(segredo_erp) + "'");
        const std::string ficheiros = empresa.pasta().string();
        definicoes =
            "[BD]\nServidor=" + (fio ? "127.0.0.1," + std::to_string(servidor.porta()) : "sqlite") +
            "\nBase=" + (fio ? servidor.base : ficheiros) +
            "\nUtilizador=orvex\nEncriptacao=nao\nPalavraPasse=" + segredo +
            "\nControlador=FreeTDS\n[ERP]\nServidor=sqlite\nEmpresa=E\nUtilizador=ana\nBase=" + ficheiros +
            "\nPalavraPasse=" + segredo_erp;
        parametros = "GUIADEVOLUCAO=GV,1,SD\nGUIASREMESSA=GR,1,SG\nFACTURAS=FA,1,X;FR,2,Y;\nSOBRAS=SB,1,S\n"
                     "QUEBRAS=QB,1,S\nCONSUMOS=CI,1,S\nTRF=TR,1,S\nARMAZEM=CL,C\nARMAZEMORVEX=OR,O\n"
                     "CLIENTEORVEX=ORVEX\n";
    }
    // "sql ...", on the ledger; or "old -> new" in the settings or the parameters.
    void estraga(const std::string& falha) {
        if (falha.starts_with("sql ")) {
            auto livro = platform::sqlite::abre_base(empresa.pasta() / platform::sqlite::ficheiro_livro);
            livro.exec("attach '" + (empresa.pasta() / platform::sqlite::ficheiro_erp).string() + "' as erp");
            livro.exec(falha.substr(4));
        }
        if (falha == "sem definições") definicoes.clear();
        const auto troca = partes(falha, " -> ");
        for (std::string* texto : {&definicoes, &parametros})
            if (troca.size() == 2) *texto = std::regex_replace(*texto, std::regex(troca[0]), troca[1]);
    }
    Resultados diagnostica() {
        if (!definicoes.empty()) pasta.escreve("OrvexEXE.xel", definicoes);
        pasta.escreve(startup::ficheiro_parametros, parametros);
        return diagnostico::diagnostica({pasta.pasta(), pasta.pasta()});
    }
    // Every byte of the company, but for its readers' marks.
    std::map<fs::path, std::string> ficheiros() const {
        std::map<fs::path, std::string> conteudos;
        for (const auto& ficheiro : fs::directory_iterator(empresa.pasta()))
            if (!ficheiro.path().string().ends_with("-shm")) conteudos[ficheiro.path()] = le(ficheiro.path());
        return conteudos;
    }
};

// Where; what is broken; what is then told as an error, and nothing else; what the user reads; and what is
// well all the same.
const char* const casos[] = {
    "ambos =>  =>  => tabela xel_ORVEX: 14 colunas => ligação",
    "ambos => sem definições => definições => OrvexEXE.xel»: não existe. Crie-o => parâmetro TRF",
    "ambos => Base=.*\\nU -> U => definições da base de dados => OrvexEXE.xel»: Base. => parâmetro TRF",
    "fio => 127.0.0.1,.* -> 127.0.0.1,1 => ligação => Não foi possível ligar ao servidor => entrada no ERP",
    "fio => S3gr3do -> outra => ligação => não aceitou o utilizador ou a palavra-passe => parâmetro TRF",
    "ambos => Base=.*\\nU -> Base=/nada\nU => ligação => Verifique em [BD] => entrada no ERP",
    "ambos => sql drop table xel_ORVEX_Mov => tabela xel_ORVEX_Mov => cópia de segurança => tabela xel_ORVEX",
    "fio => sql drop table xel_ORVEX; drop table xel_ORVEX_Mov; pragma erp.user_version=0 => "
    "tabelas xel_ORVEX, xel_ORVEX_Mov => dê-lhe CREATE TABLE => ligação",
    "ambos => sql drop table U_DocGcLin1 => tabela U_DocGcLin1 => é o ERP que a cria => tabela Vendedor",
    "ambos => sql alter table xel_ORVEX drop column Preco => tabela xel_ORVEX => falta Preco => tabela "
    "artarm",
    "ambos => SB,1,S -> SB,1 => parâmetro SOBRAS => incompleto: falta o elemento 3 => parâmetro QUEBRAS",
    "ambos => TRF=TR,1 -> TRF=TR,x => parâmetro TRF => não é um número de série => parâmetro SOBRAS",
    "ambos => ,Y; ->  => parâmetro FACTURAS => falta o elemento 6 => entrada no ERP",
    "ambos => CLIENTEORVEX=.* ->  => parâmetro CLIENTEORVEX => precisam dele: guias, aj => parâmetro ARMAZEM",
    "ambos => Outr0Segred0 -> outra => entrada no ERP => recusou ana na empresa E => ligação",
    "fio => FreeTDS -> Falta => controlador ODBC => «Falta» não está instalado => entrada no ERP",
};

void confere(const std::vector<std::string>& caso) {
    for (const bool fio : {false, true}) {
        if (!fio && caso[0] == "fio") continue;
        SCOPED_TRACE(caso[1] + (fio ? ", over the wire" : ""));
        Instalacao instalacao(fio);
        instalacao.estraga(caso[1]);
        const auto antes = instalacao.ficheiros();
        const Resultados resultados = instalacao.diagnostica();
        const std::string texto = diagnostico::texto(resultados);
        EXPECT_EQ(com_estado(resultados, Estado::erro), caso[2]) << texto;
        EXPECT_EQ(tem_erros(resultados), !caso[2].empty());
        EXPECT_THAT(texto, HasSubstr(caso[3]));
        EXPECT_THAT("\n" + texto, HasSubstr("\nok    " + caso[4] + ":"));
        EXPECT_THAT(texto, Not(AnyOf(HasSubstr(segredo), HasSubstr(segredo_erp))));
        EXPECT_EQ(instalacao.ficheiros(), antes);
        EXPECT_THAT(instalacao.servidor.textos(), Each(AnyOf(StartsWith("SELECT "), StartsWith("Select "),
                                                             StartsWith("IF @@TRANCOUNT > 0 ROLLBACK "))));
    }
}

TEST(Diagnostico, diz_a_verdade_sem_alterar_nada_nem_mostrar_palavras_passe) {
    for (const char* caso : casos)
        confere(partes(caso));
}

TEST(Diagnostico, nunca_passa_por_bom_o_que_o_servidor_nao_diz) {
    EXPECT_THAT(com_estado(Instalacao(true).diagnostica(), Estado::nao_verificado),
                AllOf(StartsWith("encriptação; direitos em xel_ORVEX; "), HasSubstr("índices")));
}

// A server that tells the rights, all but one of them granted.
struct ServidorComDireitos : platform::sqlite::SessaoSQLite {
    std::string negado;

    std::unique_ptr<startup::ConjuntoRegistos> Consulta(const std::string& sql) override {
        if (sql.find("HAS_PERMS_BY_NAME") == std::string::npos) return SessaoSQLite::Consulta(sql);
        std::string resposta;
        const std::regex direito("'([A-Z ]+)'\\)");
        for (std::sregex_iterator i(sql.begin(), sql.end(), direito), fim; i != fim; ++i)
            resposta += (resposta.empty() ? "Select " : ", ") + std::string((*i)[1] == negado ? "0" : "1");
        return SessaoSQLite::Consulta(resposta + " from Empresa");
    }
};

TEST(DiagnosticoDosDireitos, diz_os_que_faltam_e_se_o_primeiro_arranque_pode_fazer_o_que_nao_ha) {
    const std::string sem_livro =
        "sql drop table xel_ORVEX; drop table xel_ORVEX_Mov; pragma erp.user_version=0";
    const std::string sem_bruto = "sql alter table xel_ORVEX_Mov drop column PesoBruto";
    const std::string sem_pesos = sem_bruto + "; alter table xel_ORVEX_Mov drop column PesoLiquido";
    struct Caso {
        std::string falha;
        const char *negado, *texto;
        bool bom;
    };
    for (const auto& [falha, negado, diz, bom] :
         {Caso{"", "", "xel_ORVEX: SELECT, INSERT, DELETE", true},
          {"", "DELETE", "GRANT DELETE ON [dbo].[xel_ORVEX_Mov] TO [ana]", false},
          {sem_livro, "", "serão criadas no primeiro arranque", true},
          {sem_livro, "CREATE TABLE", "dê-lhe CREATE TABLE", false},
          {sem_livro, "ALTER", "dê-lhe CREATE TABLE", false},
          {sem_pesos, "", "serão acrescentadas no primeiro arranque", true},
          {sem_pesos, "ALTER", "Dê ao utilizador ALTER", false},
          {sem_bruto, "", "Acrescente o que falta", false}}) {
        Instalacao instalacao(false);
        instalacao.estraga(falha);
        ServidorComDireitos BD;
        BD.negado = negado;
        BD.Abre(ligacao(instalacao.empresa.pasta()));
        startup::DefinicoesBD definicoes;
        definicoes.utilizador = "ana";
        Resultados resultados;
        verifica_tabelas(BD, definicoes, resultados);
        EXPECT_THAT(texto(resultados), HasSubstr(diz)) << falha << negado;
        EXPECT_EQ(tem_erros(resultados), !bom) << texto(resultados);
    }
}

// Names, in upper case, that the expression's first group finds.
std::set<std::string> encontra(const std::string& texto, const char* expressao) {
    std::set<std::string> nomes;
    const std::regex regra(expressao, std::regex::icase);
    for (std::sregex_iterator i(texto.begin(), texto.end(), regra), fim; i != fim; ++i)
        nomes.insert(base::maiusculas((*i)[1].str()));
    return nomes;
}

TEST(DiagnosticoDoPrograma, conhece_as_tabelas_colunas_chaves_e_indices_que_ele_usa_e_nao_outros) {
    std::string fontes, textos;
    for (const char* pasta : {"src/common", "src/delivery", "src/adjust", "src/transfer"})
        for (const auto& ficheiro : fs::directory_iterator(fs::path(ORVEX_RAIZ) / pasta))
            if (ficheiro.path().extension() == ".cpp") fontes += le(ficheiro.path());
    fontes = std::regex_replace(fontes, std::regex("\"\\s+\""), ""); // texts that go on in the next line
    for (const std::string& um : encontra(fontes, "(\"[^\"\\n]*\")"))
        textos += um;
    std::set<std::string> tabelas, colunas{"PB"}, chaves, indices;
    for (const TabelaUsada& tabela : tabelas_usadas()) {
        tabelas.insert(base::maiusculas(tabela.nome));
        for (const char* coluna : tabela.colunas)
            colunas.insert(base::maiusculas(coluna));
    }
    for (const ChaveExigida& exigida : chaves_exigidas())
        chaves.insert(exigida.chave);
    for (const auto& [tabela, nome] : indices_facultativos())
        indices.insert(base::maiusculas(nome));
    EXPECT_EQ(encontra(textos, "\\b(?:from|join|delete)\\s+(\\w+)"), tabelas);
    EXPECT_THAT(encontra(fontes, "(?:->|registo\\.)(?:valor|define)\\(\"(\\w+)\""), IsSubsetOf(colunas));
    EXPECT_THAT(colunas, IsSubsetOf(encontra(textos, "(\\w+)")));
    EXPECT_EQ(encontra(fontes, "\\.lista(?:_de_grupos)?\\(\"(\\w+)\"\\)"), chaves);
    EXPECT_EQ(encontra(le(fs::path(ORVEX_RAIZ) / "docs/indices.sql"), "CREATE INDEX \\[(\\w+)\\]"), indices);
}

} // namespace
} // namespace orvex::testes
