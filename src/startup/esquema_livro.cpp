#include "startup/esquema_livro.h"

namespace orvex::startup {
namespace {

constexpr const char* opcoes_chave =
    " )WITH (PAD_INDEX  = OFF, STATISTICS_NORECOMPUTE  = OFF, IGNORE_DUP_KEY = OFF, ALLOW_ROW_LOCKS  = ON, "
    "ALLOW_PAGE_LOCKS  = ON) ON [PRIMARY]";

std::string cria_xel_ORVEX() {
    return std::string(" CREATE TABLE [dbo].[xel_ORVEX]("
                       " [NumSerie] [nvarchar](15) NOT NULL,"
                       " [Registo] [int] IDENTITY(1,1) NOT NULL,"
                       " [Cliente] [nvarchar](15) NULL,"
                       " [Data] [datetime] NULL,"
                       " [Quantidade] [decimal](18, 3) NULL,"
                       " [Obs] [nvarchar](100) NULL,"
                       " [Funcionario] [nvarchar](15) NULL,"
                       " [CliFinal] [nvarchar](15) NULL,"
                       " [Preco] [decimal](18, 2) NULL,"
                       " [Ano] [smallint] NULL,"
                       " [TpDoc] [nvarchar](3) NULL,"
                       " [Serie] [smallint] NULL,"
                       " [NNumDoc] [int] NULL,"
                       " [NumLin] [smallint] NULL,"
                       " CONSTRAINT [PK_xel_ORVEX] PRIMARY KEY CLUSTERED"
                       " ("
                       " [NumSerie] ASC,"
                       " [Registo] Asc") +
           opcoes_chave + " ) ON [PRIMARY]";
}

std::string cria_xel_ORVEX_Mov() {
    return std::string(" CREATE TABLE [dbo].[xel_ORVEX_Mov]("
                       " [Ano] [smallint] NOT NULL,"
                       " [TpDoc] [nvarchar](3) NOT NULL,"
                       " [NumDoc] [int] NOT NULL,"
                       " [SerieDoc] [smallint] NOT NULL,"
                       " [NumLinha] [smallint] NOT NULL,"
                       " [Data] [date] NULL,"
                       " [Artigo] [nvarchar](15) NULL,"
                       " [Cliente] [nvarchar](15) NULL,"
                       " [Descritivo] [nvarchar](80) NULL,"
                       " [QtdOrig] [money] NULL,"
                       " [Qtd] [money] NULL,"
                       " [Origem] [nvarchar](30) NULL,"
                       " CONSTRAINT [PK_xel_ORVEX_Mov] PRIMARY KEY CLUSTERED"
                       " ("
                       " [Ano] ASC,"
                       " [TpDoc] ASC,"
                       " [NumDoc] ASC,"
                       " [SerieDoc] ASC,"
                       " [NumLinha] Asc") +
           opcoes_chave + " ) ON [PRIMARY]";
}

} // namespace

void VerificaTabelas(SessaoBD& BD) {
    try {
        BD.Consulta("select NumSerie from  xel_ORVEX");
    } catch (const base::Falha& falha) {
        if (falha.numero() != numeros_bd::tabela_em_falta && falha.numero() != numeros_bd::instrucao_errada)
            return;
        BD.Executa(cria_xel_ORVEX());
        BD.Executa(cria_xel_ORVEX_Mov());
    }
}

void VerificaPesos(SessaoBD& BD) {
    try {
        BD.Consulta("select PesoBruto from  xel_ORVEX_Mov");
    } catch (const base::Falha&) {
        BD.Executa("ALTER TABLE  xel_ORVEX_Mov ADD PesoLiquido money null, PesoBruto money Null");
    }
}

} // namespace orvex::startup
