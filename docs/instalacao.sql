-- What an administrator does on SQL Server for ORVEX, in the database where the ERP's tables are: the login, its user,
-- the ledger's two tables and the rights. Can be run again: what exists is left alone.
--
--     sqlcmd -S srv,1433 -E -b -i instalacao.sql -v PalavraPasse="..."
--
-- (-E: with the administrator's own Windows account; else -U and -P.) The names are set here. An apostrophe in the
-- password is written twice; ] in a name too. In other programs SQLCMD mode must be on.

:setvar Base "EMPRESA"
:setvar Login "orvex"
:setvar Utilizador "orvex"
:on error exit

-- The login, which belongs to the server: Utilizador and PalavraPasse of [BD] in the settings.
USE [master];
IF SUSER_ID(N'$(Login)') IS NULL
    CREATE LOGIN [$(Login)] WITH PASSWORD = N'$(PalavraPasse)', DEFAULT_DATABASE = [$(Base)];
GO

-- The user, which belongs to the database; all rights are given to it. The statements name tables without a schema, so
-- the user's must be dbo.
USE [$(Base)];
IF USER_ID(N'$(Utilizador)') IS NULL
    CREATE USER [$(Utilizador)] FOR LOGIN [$(Login)] WITH DEFAULT_SCHEMA = [dbo];
GO

-- The ledger, as the program's first start makes it.
IF OBJECT_ID(N'dbo.xel_ORVEX', N'U') IS NULL
    CREATE TABLE [dbo].[xel_ORVEX](
        [NumSerie] [nvarchar](15) NOT NULL,
        [Registo] [int] IDENTITY(1,1) NOT NULL,
        [Cliente] [nvarchar](15) NULL,
        [Data] [datetime] NULL,
        [Quantidade] [decimal](18, 3) NULL,
        [Obs] [nvarchar](100) NULL,
        [Funcionario] [nvarchar](15) NULL,
        [CliFinal] [nvarchar](15) NULL,
        [Preco] [decimal](18, 2) NULL,
        [Ano] [smallint] NULL,
        [TpDoc] [nvarchar](3) NULL,
        [Serie] [smallint] NULL,
        [NNumDoc] [int] NULL,
        [NumLin] [smallint] NULL,
        CONSTRAINT [PK_xel_ORVEX] PRIMARY KEY CLUSTERED
        (
            [NumSerie] ASC,
            [Registo] ASC
        )WITH (PAD_INDEX  = OFF, STATISTICS_NORECOMPUTE  = OFF, IGNORE_DUP_KEY = OFF, ALLOW_ROW_LOCKS  = ON, ALLOW_PAGE_LOCKS  = ON) ON [PRIMARY]
    ) ON [PRIMARY];

IF OBJECT_ID(N'dbo.xel_ORVEX_Mov', N'U') IS NULL
    CREATE TABLE [dbo].[xel_ORVEX_Mov](
        [Ano] [smallint] NOT NULL,
        [TpDoc] [nvarchar](3) NOT NULL,
        [NumDoc] [int] NOT NULL,
        [SerieDoc] [smallint] NOT NULL,
        [NumLinha] [smallint] NOT NULL,
        [Data] [date] NULL,
        [Artigo] [nvarchar](15) NULL,
        [Cliente] [nvarchar](15) NULL,
        [Descritivo] [nvarchar](80) NULL,
        [QtdOrig] [money] NULL,
        [Qtd] [money] NULL,
        [Origem] [nvarchar](30) NULL,
        [PesoLiquido] [money] NULL,
        [PesoBruto] [money] NULL,
        CONSTRAINT [PK_xel_ORVEX_Mov] PRIMARY KEY CLUSTERED
        (
            [Ano] ASC,
            [TpDoc] ASC,
            [NumDoc] ASC,
            [SerieDoc] ASC,
            [NumLinha] ASC
        )WITH (PAD_INDEX  = OFF, STATISTICS_NORECOMPUTE  = OFF, IGNORE_DUP_KEY = OFF, ALLOW_ROW_LOCKS  = ON, ALLOW_PAGE_LOCKS  = ON) ON [PRIMARY]
    ) ON [PRIMARY];
GO

-- An older ledger has no weights; they come together.
IF COL_LENGTH(N'dbo.xel_ORVEX_Mov', N'PesoBruto') IS NULL
    ALTER TABLE [dbo].[xel_ORVEX_Mov] ADD PesoLiquido money null, PesoBruto money Null;
GO

-- The rights, and no others.
GRANT SELECT, INSERT, DELETE ON [dbo].[xel_ORVEX] TO [$(Utilizador)];
GRANT SELECT, INSERT, UPDATE, DELETE ON [dbo].[xel_ORVEX_Mov] TO [$(Utilizador)];
GRANT SELECT, INSERT ON [dbo].[U_DocGcLin1] TO [$(Utilizador)];
GRANT SELECT, UPDATE ON [dbo].[Artigos] TO [$(Utilizador)];
GRANT SELECT ON [dbo].[artarm] TO [$(Utilizador)];
GRANT SELECT ON [dbo].[Clientes] TO [$(Utilizador)];
GRANT SELECT ON [dbo].[DocGcCab] TO [$(Utilizador)];
GRANT SELECT ON [dbo].[DocGcLin] TO [$(Utilizador)];
GRANT SELECT ON [dbo].[RGIVA] TO [$(Utilizador)];
GRANT SELECT ON [dbo].[Vendedor] TO [$(Utilizador)];
GO
