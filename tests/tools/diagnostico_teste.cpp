// orvex-diagnostico: the truth on a good installation and on broken ones, on both engines.
#include "tools/diagnostico/diagnostico.h"

#include "app/gaveta_da_empresa.h"
#include "base/texto.h"
#include "platform/sqlite/empresa.h"
#include "tests/apoio/empresa_teste.h"
#include "tools/diagnostico/base_de_dados.h"
#include "tools/diagnostico/codigos.h"
#include "tools/diagnostico/parametros.h"
#include "tools/diagnostico/tabelas_usadas.h"

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

// A company and the installation that opens it, over the wire or as it is.
struct Instalacao {
    EmpresaTeste empresa;
    ServidorTDS servidor{empresa.pasta()};
    std::optional<EmpresaTeste> outra; // that the ERP works on instead
    PastaTemporaria pasta;
    std::string definicoes, parametros;
    fs::perms permissoes{0640};

    explicit Instalacao(bool fio) {
        servidor.palavra_passe = segredo;
        empresa.outra().Executa("update Utilizadores set PalavraPasse='" + std::string(segredo_erp) + "'");
        empresa.outra().IniciaTransaccao();
        insere(empresa.outra(), "TiposDocumento", {"Codigo", "MovStock"},
               {{"FA", 0}, {"FR", 0}, {"SB", 1}, {"QB", -1}, {"CI", -1}, {"TR", 2}});
        insere(empresa.outra(), "Series", {"TpDoc", "Serie"},
               {{"FA", 1}, {"FR", 2}, {"SB", 1}, {"QB", 1}, {"CI", 1}, {"TR", 1}});
        insere(empresa.outra(), "Clientes", {"CODIGO"}, {{"ORVEX"}});
        empresa.outra().ConfirmaTransaccao();
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
        if (falha == "aberto a todos") permissoes = fs::perms{0644};
        if (falha == "outra empresa")
            definicoes = std::regex_replace(definicoes, std::regex("ana\nBase=.*"),
                                            "ana\nBase=" + outra.emplace().pasta().string());
        const auto troca = partes(falha, " -> ");
        for (std::string* texto : {&definicoes, &parametros})
            if (troca.size() == 2) *texto = std::regex_replace(*texto, std::regex(troca[0]), troca[1]);
    }
    Resultados diagnostica() {
        if (!definicoes.empty()) fs::permissions(pasta.escreve("OrvexEXE.xel", definicoes), permissoes);
        pasta.escreve(startup::ficheiro_parametros, parametros);
        return diagnostico::diagnostica({pasta.pasta(), pasta.pasta()});
    }
    // Every byte of the company, but for its readers' marks.
    std::map<fs::path, std::string> ficheiros() const {
        std::map<fs::path, std::string> conteudos;
        for (const auto& ficheiro : fs::directory_iterator(empresa.pasta()))
            if (!ficheiro.path().string().ends_with("-shm")) conteudos[ficheiro] = conteudo_de(ficheiro);
        return conteudos;
    }
};

// Where (on the wire, not on it, or both); what is broken; what is then told as an error, and nothing else;
// what the user reads; and what is well all the same.
const char* const casos[] = {
    "ambos =>  =>  => tabela xel_ORVEX: 14 colunas => ligação",
    "ambos => sem definições => definições => OrvexEXE.xel»: não existe. Crie-o => parâmetro TRF",
    "aqui => S3gr3do -> protegida:T1JWRVgBxx => definições da base de dados => "
    "protegidas em [BD]; por extenso em [ERP]\n => definições",
    "ambos => Base=.*\\nU -> U => definições da base de dados => OrvexEXE.xel»: Base. => parâmetro TRF",
    "fio => 127.0.0.1,.* -> 127.0.0.1,1 => ligação => Não foi possível ligar ao servidor => entrada no ERP",
    "fio => S3gr3do -> outra => ligação => não aceitou o utilizador ou a palavra-passe => parâmetro TRF",
    "ambos => Base=.*\\nU -> Base=/nada\nU => ligação => Verifique em [BD] => entrada no ERP",
    "ambos => sql drop table xel_ORVEX_Mov => tabela xel_ORVEX_Mov => cópia de segurança => tabela xel_ORVEX",
    "fio => sql drop table xel_ORVEX; drop table xel_ORVEX_Mov; pragma erp.user_version=0 => "
    "tabelas xel_ORVEX, xel_ORVEX_Mov => GRANT CREATE TABLE TO [orvex] => ligação",
    "ambos => sql drop table U_DocGcLin1 => tabela U_DocGcLin1 => é o ERP que a cria => tabela Vendedor",
    "ambos => sql alter table xel_ORVEX drop column Preco => tabela xel_ORVEX => falta Preco => ligação",
    "aqui => ERP\\]\nServidor=sqlite -> ERP]\nServidor=SRV01 => entrada no ERP => "
    "Só no Windows há a automação por que se chega ao ERP do servidor «SRV01» => base de dados do ERP",
    "aqui => SB,1,S -> SB,1 => parâmetro SOBRAS => incompleto: falta o elemento 3 => parâmetro QUEBRAS",
    "aqui => TRF=TR,1 -> TRF=TR,x => parâmetro TRF => não é um número de série => parâmetro SOBRAS",
    "aqui => GUIADEV -> \xFF\xFEGUIADEV => parâmetros => está gravado em UTF-16 => ligação",
    "aqui => aberto a todos => permissões de OrvexEXE.xel => chmod o= => ligação",
    "ambos => outra empresa => entrada no ERP; base de dados do ERP; FACTURAS no ERP; FACTURAS no ERP; "
    "SOBRAS no ERP; QUEBRAS no ERP; CONSUMOS no ERP; TRF no ERP => mesma empresa. => ligação",
    "aqui => SB,1,S -> SBXX,1,S => parâmetro SOBRAS => no máximo 3 caracteres => parâmetro QUEBRAS",
    "aqui => SB,1,S -> ,1,S => parâmetro SOBRAS; SOBRAS no ERP => um código vazio => parâmetro QUEBRAS",
    "aqui => SB,1,S -> ZZ,1,S => SOBRAS no ERP => «ZZ» não existe. => parâmetro SOBRAS",
    "aqui => TR,1,S -> TR,7,S => TRF no ERP => não existe na série 7 => parâmetro TRF",
    "aqui => TR,1,S -> tr,1, S =>  => «TR» em vez de «tr» => parâmetro TRF",
    "aqui => TR,1,S -> TR,1, S =>  => elemento 3, « S», tem brancos => códigos no ERP",
    "aqui => CL,C -> XX,C => ARMAZEM no ERP => «XX» não existe => parâmetro ARMAZEM",
    "aqui => CL,C -> cl,C => ARMAZEM no ERP => «CL» em vez de «cl» => parâmetro ARMAZEM",
    "aqui => CL,C -> or ,C => parâmetro ARMAZEM; ARMAZEM no ERP => é o mesmo armazém que => parâmetro TRF",
    "aqui => ORVEX\n -> INA\n => CLIENTEORVEX no ERP => está inactivo => parâmetro CLIENTEORVEX",
    "aqui => ORVEX\n -> EU\n => CLIENTEORVEX no ERP => «EU» não existe => parâmetro CLIENTEORVEX",
    "aqui => GV,1 -> gr,1 => parâmetro GUIASREMESSA; GUIADEVOLUCAO no ERP => os de GUIADEV => ligação",
    "aqui => FR,2 -> GR,1 => parâmetro GUIASREMESSA => também os de FACTURAS => parâmetro FACTURAS",
    "aqui => SB,1 -> QB,1 => parâmetro SOBRAS; SOBRAS no ERP => não move o stock => parâmetro TRF",
    "aqui => CI,1,S -> QB,1,S =>  => não se distinguem => códigos no ERP",
    "aqui => FA,1,X;FR,2,Y; -> FA,1, =>  => parâmetro FACTURAS: FA,1, => códigos no ERP",
    "aqui => ,Y; ->  => parâmetro FACTURAS => falta o elemento 6 => entrada no ERP",
    "aqui => CLIENTEORVEX=.* ->  => parâmetro CLIENTEORVEX => precisam dele: guias, aj => parâmetro ARMAZEM",
    "fio => PalavraPasse=S3.*\nC -> Autenticacao=windows\nC => definições => dispensa Utilizador => "
    "parâmetro TRF",
    "fio => Utilizador=orvex -> Autenticacao=windows; => definições => só pode ser windows => parâmetro TRF",
    "aqui => Outr0Segred0 -> protegida:T1JWRVgBAQ== => definições do ERP => não se abre aqui: só o Windows "
    "=> ligação",
    "ambos => Outr0Segred0 -> outra => entrada no ERP => recusou ana na empresa E => ligação",
    "fio => FreeTDS -> Falta => controlador ODBC => «Falta» não está instalado => entrada no ERP",
};

void confere(const std::vector<std::string>& caso) {
    for (const bool fio : {false, true}) {
        if (caso[0] == (fio ? "aqui" : "fio")) continue;
        SCOPED_TRACE(caso[1] + (fio ? ", over the wire" : ""));
        const char* registo = fio ? "não pode ser escrito" : "/tmp/nenhuma/orvex/operacoes.log\n";
        setenv("XDG_STATE_HOME", fio ? "/dev/null" : "/tmp/nenhuma", 1);
        Instalacao instalacao(fio);
        instalacao.estraga(caso[1]);
        const auto antes = instalacao.ficheiros();
        const Resultados resultados = instalacao.diagnostica();
        const std::string texto = diagnostico::texto(resultados);
        std::string erros = com_estado(resultados, Estado::erro);
        if (fio) erros = std::regex_replace(erros, std::regex("(^|; )diário das confirmações"), "");
        EXPECT_EQ(erros, caso[2]) << texto;
        EXPECT_THAT(texto, HasSubstr(caso[3]));
        EXPECT_THAT("\n" + texto, HasSubstr("\nok    " + caso[4] + ":"));
        EXPECT_THAT(texto, HasSubstr(std::string("registo de operações: ") + registo));
        const char* diario = fio ? "ERRO  diário das confirmações: não pode ser"
                                 : "ok    diário das confirmações: /tmp/nenhuma/orvex/diario/";
        EXPECT_THAT(texto, AnyOf(HasSubstr(diario), Not(HasSubstr("diário das confirmações"))));
        EXPECT_THAT(texto, Not(AnyOf(HasSubstr(segredo), HasSubstr(segredo_erp))));
        EXPECT_EQ(instalacao.ficheiros(), antes);
        EXPECT_THAT(instalacao.servidor.textos(), Each(AnyOf(StartsWith("SELECT "), StartsWith("Select "),
                                                             StartsWith("IF @@TRANCOUNT > 0 ROLLBACK "))));
    }
}

TEST(Diagnostico, DizAVerdadeSemAlterarNadaNemMostrarPalavrasPasse) {
    for (const char* caso : casos)
        confere(partes(caso));
}

TEST(Diagnostico, NuncaPassaPorBomOQueOServidorNaoDiz) {
    EXPECT_THAT(com_estado(Instalacao(true).diagnostica(), Estado::nao_verificado),
                AllOf(StartsWith("encriptação; direitos em xel_ORVEX; "), HasSubstr("chave de Artigos; "),
                      HasSubstr("; maiúsculas e minúsculas; índices; base de dados do ERP")));
}

// A server that tells the rights, all but one of them granted, and answers one question of the catalogue.
struct ServidorComDireitos : platform::sqlite::SessaoSQLite {
    std::string negado, pergunta, dito;

    std::unique_ptr<startup::ConjuntoRegistos> Consulta(const std::string& sql) override {
        const bool conhecida = !pergunta.empty() && sql.find(pergunta) != std::string::npos;
        if (conhecida) return SessaoSQLite::Consulta("Select " + dito + " from Empresa");
        if (sql.find("HAS_PERMS_BY_NAME") == std::string::npos) return SessaoSQLite::Consulta(sql);
        std::string resposta;
        const std::regex direito("'([A-Z ]+)'\\)");
        for (std::sregex_iterator i(sql.begin(), sql.end(), direito), fim; i != fim; ++i)
            resposta += (resposta.empty() ? "Select " : ", ") + std::string((*i)[1] == negado ? "0" : "1");
        return SessaoSQLite::Consulta(resposta + " from Empresa");
    }
};

// What is broken; the right that is denied; what the catalogue is asked, and answers; what the user reads.
const char* const casos_do_servidor[] = {
    "ok =>  =>  =>  =>  => direitos em xel_ORVEX: SELECT, INSERT, DELETE",
    "erro =>  => DELETE =>  =>  => GRANT DELETE ON [dbo].[xel_ORVEX_Mov] TO [ana]",
    "erro =>  => DELETE => USER_NAME() => 'a]b' => GRANT DELETE ON [dbo].[xel_ORVEX] TO [a]]b]",
    "ok => tabelas =>  =>  =>  => serão criadas no primeiro arranque",
    "erro => tabelas => CREATE TABLE =>  =>  => GRANT CREATE TABLE TO [ana]",
    "erro => tabelas => ALTER =>  =>  => GRANT ALTER ON SCHEMA::[dbo] TO [ana]",
    "ok => pesos =>  =>  =>  => serão acrescentadas no primeiro arranque",
    "erro => pesos => ALTER =>  =>  => GRANT ALTER ON [dbo].[xel_ORVEX_Mov] TO [ana]",
    "erro => bruto =>  =>  =>  => Acrescente o que falta",
    "ok =>  =>  => encrypt_option => 'TRUE' => está encriptada, com Encriptacao=sim",
    "erro =>  =>  => encrypt_option => 'FALSE' => não está encriptada, apesar de Encriptacao=sim",
    "ok => nao =>  => encrypt_option => 'FALSE' => info  encriptação: a ligação não está encriptada",
    "erro =>  =>  => OBJECT_ID('Artigos') AS => max(Nome) => REVOKE VIEW DEFINITION ON [dbo].[Artigos] FROM",
    "erro =>  =>  => OBJECT_ID('xel_ORVEX') AS => max(Nome) => ?     índices: não verificado",
    "ok =>  =>  => OBJECT_ID('artarm') AS => max(Nome) => ?     definição de artarm: não verificado",
    "erro =>  =>  => OBJECT_ID('Artigos') AND is_unique => 0 => chave de Artigos: não tem chave primária nem",
    "ok =>  =>  => OBJECT_ID('Artigos') AND is_unique => 1 => ok    chave de Artigos",
    "ok =>  =>  => Collation => 'Latin1_General_CI_AS' => não as distingue",
    "erro =>  =>  => INNER JOIN => nada( => artigos nos movimentos: A instrução SQL tem um erro",
    "erro =>  =>  => Collation => 'Latin1_General_CS_AS' => é preciso uma base com um COLLATE _CI_",
};

TEST(DiagnosticoDoServidor, DizOQueFaltaAoUtilizadorEABaseDeDadosEComoODar) {
    const std::string sem_bruto = "sql alter table xel_ORVEX_Mov drop column PesoBruto";
    std::map<std::string, std::string> falhas{
        {"tabelas", "sql drop table xel_ORVEX; drop table xel_ORVEX_Mov; pragma erp.user_version=0"},
        {"bruto", sem_bruto},
        {"pesos", sem_bruto + "; alter table xel_ORVEX_Mov drop column PesoLiquido"}};
    for (const char* linha : casos_do_servidor) {
        const auto caso = partes(linha);
        Instalacao instalacao(false);
        instalacao.estraga(falhas[caso[1]]);
        ServidorComDireitos BD;
        BD.negado = caso[2];
        BD.pergunta = caso[3];
        BD.dito = caso[4];
        // A null, where the catalogue says one, of a table without rows.
        if (caso[4] == "max(Nome)") instalacao.empresa.outra().Executa("Delete Empresa");
        BD.Abre(ligacao(instalacao.empresa.pasta()));
        startup::DefinicoesBD definicoes;
        definicoes.utilizador = "ana";
        definicoes.encriptacao = caso[1] == "nao" ? "nao" : "";
        Resultados resultados;
        verifica_encriptacao(BD, definicoes, resultados);
        verifica_tabelas(BD, definicoes, resultados);
        EXPECT_THAT(texto(resultados), HasSubstr(caso[5])) << linha;
        EXPECT_EQ(tem_erros(resultados), caso[0] == "erro") << linha << texto(resultados);
    }
}

TEST(DiagnosticoDosCodigos, SoSugereQuandoNaoPodePerguntarAoProprioERP) {
    Instalacao instalacao(false);
    instalacao.estraga("OR,O -> XX,X");
    auto& outra = instalacao.empresa.outra();
    insere(outra, "DocGcCab", {"Ano", "TpDoc", "Serie", "NNumDoc"}, {{2019, "FA", 1, 1}});
    instalacao.diagnostica();
    Resultados resultados;
    verifica_codigos(startup::Parametros(instalacao.pasta.pasta()), {}, &outra, resultados);
    EXPECT_EQ(com_estado(resultados, Estado::nao_verificado),
              "GUIASREMESSA no ERP; GUIADEVOLUCAO no ERP; FACTURAS no ERP; SOBRAS no ERP; QUEBRAS no ERP; "
              "CONSUMOS no ERP; TRF no ERP; ARMAZEMORVEX no ERP");
    EXPECT_FALSE(tem_erros(resultados));
}

// Names, in upper case, that the expression's first group finds.
std::set<std::string> encontra(const std::string& texto, const char* expressao) {
    std::set<std::string> nomes;
    const std::regex regra(expressao, std::regex::icase);
    for (std::sregex_iterator i(texto.begin(), texto.end(), regra), fim; i != fim; ++i)
        nomes.insert(base::maiusculas((*i)[1].str()));
    return nomes;
}

TEST(DiagnosticoDoPrograma, ConheceAsTabelasColunasChavesEIndicesQueEleUsaENaoOutros) {
    std::string fontes, textos;
    for (const char* pasta : {"src/livro", "src/common", "src/delivery", "src/adjust", "src/transfer"})
        for (const auto& ficheiro : fs::directory_iterator(fs::path(ORVEX_RAIZ) / pasta))
            if (ficheiro.path().extension() == ".cpp") fontes += conteudo_de(ficheiro);
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
    EXPECT_EQ(encontra(conteudo_de(fs::path(ORVEX_RAIZ) / "docs/indices.sql"), "CREATE INDEX \\[(\\w+)\\]"),
              indices);
}

// The ledger's columns with their types and keys.
std::string esquema(const fs::path& pasta) {
    return platform::sqlite::abre_base(pasta / platform::sqlite::ficheiro_livro)
        .execAndGet(
            "select group_concat(t.name || ' ' || c.name || ' ' || c.type || c.\"notnull\" || c.pk, '; ') "
            "from sqlite_schema t, pragma_table_info(t.name) c where t.name like 'xel_ORVEX%'")
        .getString();
}

TEST(InstalacaoSQL, FazAsTabelasDoArranqueEDaOsDireitosQueSeVerificam) {
    const std::string script = conteudo_de(fs::path(ORVEX_RAIZ) / "docs/instalacao.sql");
    const EmpresaTeste do_arranque;
    const PastaTemporaria do_script;
    cria_empresa_vazia(do_script.pasta());
    platform::sqlite::SessaoSQLite BD;
    BD.Abre(ligacao(do_script.pasta()));
    for (const std::string& lote : base::divide(script, ';'))
        if (const auto i = lote.find("CREATE TABLE"); i != std::string::npos) BD.Executa(lote.substr(i));
    EXPECT_EQ(esquema(do_script.pasta()), esquema(do_arranque.pasta()));
    for (const TabelaUsada& tabela : tabelas_usadas())
        EXPECT_THAT(script, HasSubstr("\nGRANT " + enumera({tabela.direitos.begin(), tabela.direitos.end()}) +
                                      " ON [dbo].[" + tabela.nome + "] TO [$(Utilizador)];\n"));
}

// What one user's program left is then found by the next start of another.
TEST(DiariosDaMaquina, SaoDeTodosOndeOInstaladorFezAPasta) {
    const PastaTemporaria dados;
    static std::string estes = "ProgramData=" + dados.pasta().string(), nenhuns = "ProgramData=";
    startup::DefinicoesBD definicoes{};
    const auto onde = [&] { return app::gaveta_da_empresa(definicoes).pasta().parent_path(); };
    const fs::path do_utilizador = onde();
    putenv(estes.data());
    fs::create_directory(dados.pasta() / "ORVEX");
    EXPECT_EQ(onde(), do_utilizador); // nobody gave rights to anything
    fs::create_directory(dados.pasta() / "ORVEX" / "diario");
    EXPECT_EQ(onde(), dados.pasta() / "ORVEX" / "diario");
    definicoes.diario = dados.pasta().string();
    EXPECT_EQ(onde(), dados.pasta());
    putenv(nenhuns.data());
}

} // namespace
} // namespace orvex::testes
