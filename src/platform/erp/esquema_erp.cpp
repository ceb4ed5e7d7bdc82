#include "platform/erp/esquema_erp.h"

#include <SQLiteCpp/Statement.h>

namespace orvex::platform::erp {
namespace {

constexpr const char* tabelas_empresa = R"(
create table Empresa (
    Codigo nvarchar(15) collate SERVIDOR not null primary key,
    Nome nvarchar(60) collate SERVIDOR not null);
create table Utilizadores (
    Utilizador nvarchar(15) collate SERVIDOR not null primary key,
    PalavraPasse nvarchar(60) not null default '');
create table Armazens (
    Codigo nvarchar(4) collate SERVIDOR not null primary key,
    Descr nvarchar(40) collate SERVIDOR not null default '');
create table TiposDocumento (
    Codigo nvarchar(3) collate SERVIDOR not null primary key,
    Descr nvarchar(40) collate SERVIDOR not null default '',
    MovStock smallint not null default 0);
create table Series (
    TpDoc nvarchar(3) collate SERVIDOR not null,
    Serie smallint not null,
    primary key (TpDoc, Serie)) without rowid;
create table Numeradores (
    Ano smallint not null,
    TpDoc nvarchar(3) collate SERVIDOR not null,
    Serie smallint not null,
    Ultimo int not null,
    primary key (Ano, TpDoc, Serie)) without rowid;
)";

constexpr const char* tabelas_terceiros = R"(
create table RGIVA (
    Codigo nvarchar(3) collate SERVIDOR not null primary key,
    Descr nvarchar(40) collate SERVIDOR not null default '',
    Mercado smallint not null);
create table Vendedor (
    Codigo nvarchar(6) collate SERVIDOR not null primary key,
    NOME nvarchar(40) collate SERVIDOR not null default '');
create table Clientes (
    CODIGO nvarchar(15) collate SERVIDOR not null primary key,
    Nome nvarchar(60) collate SERVIDOR not null default '',
    Morada nvarchar(60) collate SERVIDOR not null default '',
    Localidade nvarchar(40) collate SERVIDOR not null default '',
    CodPostal nvarchar(20) collate SERVIDOR not null default '',
    Pais nvarchar(3) collate SERVIDOR not null default '',
    NContrib nvarchar(20) collate SERVIDOR not null default '',
    GesCnt nvarchar(6) collate SERVIDOR not null default '',
    Vendedor nvarchar(6) collate SERVIDOR not null default '',
    RegIva nvarchar(3) collate SERVIDOR not null default '',
    Inactivo smallint not null default 0);
)";

constexpr const char* tabelas_artigos = R"(
create table Artigos (
    CODIGO nvarchar(15) collate SERVIDOR not null primary key,
    Nome nvarchar(50) collate SERVIDOR not null default '',
    Familia nvarchar(10) collate SERVIDOR not null default '',
    UnBase nvarchar(5) collate SERVIDOR not null default '',
    TaxaIva money not null default 0,
    artoudes smallint not null default 0,
    VLREXIST money not null default 0,
    STDISP money not null default 0,
    ULTPRCOM money not null default 0,
    Inactivo smallint not null default 0);
create table artarm (
    Artigo nvarchar(15) collate SERVIDOR not null,
    Armazem nvarchar(4) collate SERVIDOR not null,
    Existenc money not null default 0,
    primary key (Artigo, Armazem)) without rowid;
)";

constexpr const char* tabelas_documentos = R"(
create table DocGcCab (
    Ano smallint not null,
    TpDoc nvarchar(3) collate SERVIDOR not null,
    Serie smallint not null,
    NNumDoc int not null,
    Data datetime,
    AreaGestao smallint not null default 0,
    Sector nvarchar(5) collate SERVIDOR not null default '',
    TpTerc smallint not null default 0,
    Terceiro nvarchar(15) collate SERVIDOR not null default '',
    TpPreco smallint not null default 0,
    RegIva nvarchar(3) collate SERVIDOR not null default '',
    NumContrib nvarchar(20) collate SERVIDOR not null default '',
    Processo nvarchar(30) collate SERVIDOR not null default '',
    VossoNo nvarchar(30) collate SERVIDOR not null default '',
    Vendedor nvarchar(6) collate SERVIDOR not null default '',
    MeioTransp nvarchar(40) collate SERVIDOR not null default '',
    Matricula nvarchar(20) collate SERVIDOR not null default '',
    LocalCarga nvarchar(60) collate SERVIDOR not null default '',
    LocalDescarga nvarchar(60) collate SERVIDOR not null default '',
    DataCarga datetime,
    HoraCarga nvarchar(8) collate SERVIDOR not null default '',
    DataDescarga datetime,
    HoraDescarga nvarchar(8) collate SERVIDOR not null default '',
    IvaIncluido smallint not null default 0,
    NVias smallint not null default 0,
    [Convert] smallint not null default 0,
    primary key (TpDoc, Serie, Ano, NNumDoc)) without rowid;
create table DocGcLin (
    Ano smallint not null,
    TpDocum nvarchar(3) collate SERVIDOR not null,
    Serie smallint not null,
    NNumDoc int not null,
    NumLinha smallint not null,
    TipoLinha smallint not null default 1,
    Artigo nvarchar(15) collate SERVIDOR not null default '',
    Descr nvarchar(80) collate SERVIDOR not null default '',
    Quant money not null default 0,
    QuantOrig money not null default 0,
    Armazem nvarchar(4) collate SERVIDOR not null default '',
    ArmDestino nvarchar(4) collate SERVIDOR not null default '',
    Unidade nvarchar(5) collate SERVIDOR not null default '',
    DataMvStock datetime,
    PrecoUnit money not null default 0,
    Sector nvarchar(5) collate SERVIDOR not null default '',
    Desconto money not null default 0,
    TxDesconto money not null default 0,
    TxIva money not null default 0,
    VlrStock money not null default 0,
    primary key (Ano, NNumDoc, Serie, TpDocum, NumLinha)) without rowid;
)";

} // namespace

void cria_esquema_erp(SQLite::Database& bd) {
    for (const char* tabelas : {tabelas_empresa, tabelas_terceiros, tabelas_artigos, tabelas_documentos})
        bd.exec(tabelas);
}

void acrescenta_tipo_documento(SQLite::Database& bd, const std::string& codigo, const std::string& descricao,
                               MovimentoStock movimento, std::int16_t serie) {
    SQLite::Statement tipo(bd, "insert into TiposDocumento (Codigo, Descr, MovStock) values (?, ?, ?)"
                               " on conflict do nothing");
    tipo.bind(1, codigo);
    tipo.bind(2, descricao);
    tipo.bind(3, static_cast<int>(movimento));
    tipo.exec();
    SQLite::Statement numeracao(bd, "insert into Series (TpDoc, Serie) values (?, ?)");
    numeracao.bind(1, codigo);
    numeracao.bind(2, static_cast<int>(serie));
    numeracao.exec();
}

} // namespace orvex::platform::erp
