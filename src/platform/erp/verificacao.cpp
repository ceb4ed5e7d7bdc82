#include "platform/erp/documentos.h"

namespace orvex::platform::erp {
namespace {

bool existe(BaseErp& base, const std::string& sql, const std::string& codigo) {
    return Comando(base, sql).com(codigo).linha();
}

void verifica_comprimentos(const Registo& registo) {
    if (const Membro* membro = registo.texto_excessivo())
        throw Recusa("O campo " + std::string(membro->nome) + " não pode ter mais de " +
                     std::to_string(membro->comprimento) + " caracteres.");
}

void verifica_armazem(BaseErp& base, const std::string& codigo) {
    if (!existe(base, "select 1 from Armazens where Codigo = ?", codigo))
        throw Recusa("O armazém «" + codigo + "» não existe.");
}

void verifica_linha(BaseErp& base, const Registo& linha, MovimentoStock movimento) {
    verifica_comprimentos(linha);
    const std::string artigo = linha.texto("Artigo");
    if (linha.moeda("Quantidade") < base::Moeda()) throw Recusa("A quantidade não pode ser negativa.");
    if (artigo.empty()) return;
    if (!existe(base, "select 1 from Artigos where CODIGO = ?", artigo))
        throw Recusa("O artigo «" + artigo + "» não existe.");
    if (movimento == MovimentoStock::nenhum) return;
    verifica_armazem(base, linha.texto("Armazem"));
    if (movimento == MovimentoStock::transferencia) verifica_armazem(base, linha.texto("ArmazemDestino"));
}

} // namespace

MovimentoStock movimento_do_tipo(BaseErp& base, const std::string& tipo) {
    Comando procura(base, "select MovStock from TiposDocumento where Codigo = ?");
    return procura.com(tipo).linha() ? static_cast<MovimentoStock>(procura.inteiro(0))
                                     : MovimentoStock::nenhum;
}

void verifica_cabecalho(BaseErp& base, const Documento& documento) {
    const Registo& cab = documento.cabecalho;
    verifica_comprimentos(cab);
    const auto chave = documento.chave();
    if (!Comando(base, "select 1 from TiposDocumento t join Series s on s.TpDoc = t.Codigo"
                       " where t.Codigo = ? and s.Serie = ?")
             .com(chave.TipoDocumento)
             .com(chave.Serie)
             .linha())
        throw Recusa("O tipo de documento «" + chave.TipoDocumento + "» não existe na série " +
                     std::to_string(chave.Serie) + ".");
    if (chave.Ano <= 0) throw Recusa("Falta o ano do documento.");
    if (cab.obtem("Data").nulo()) throw Recusa("Falta a data do documento.");
    if (cab.inteiro("TipoTerceiro") != startup::terceiro_cliente) return;
    const std::string cliente = cab.texto("Terceiro");
    if (cliente.empty()) throw Recusa("Falta o cliente do documento.");
    if (!existe(base, "select 1 from Clientes where CODIGO = ? and Inactivo <> -1", cliente))
        throw Recusa("O cliente «" + cliente + "» não existe ou está inactivo.");
}

void verifica(BaseErp& base, const Documento& documento) {
    verifica_cabecalho(base, documento);
    if (documento.linhas.empty()) throw Recusa("O documento não tem linhas.");
    const MovimentoStock movimento = movimento_do_tipo(base, documento.cabecalho.texto("TipoDocumento"));
    for (const auto& linha : documento.linhas)
        verifica_linha(base, *linha, movimento);
}

void completa_do_cliente(BaseErp& base, Documento& documento) {
    Registo& cab = documento.cabecalho;
    if (cab.inteiro("TipoTerceiro") != startup::terceiro_cliente) return;
    Comando cliente(base, "select RegIva, NContrib, Vendedor from Clientes where CODIGO = ?");
    if (!cliente.com(cab.texto("Terceiro")).linha()) return;
    constexpr const char* nomes[] = {"RegimeIva", "NumeroContribuinte", "Vendedor"};
    for (int i = 0; i < 3; ++i)
        if (cab.texto(nomes[i]).empty()) cab.poe(nomes[i], cliente.texto(i));
}

void sugere_do_artigo(BaseErp& base, Registo& linha) {
    if (linha.texto("Artigo").empty()) return;
    Comando artigo(base, "select Nome, UnBase, TaxaIva from Artigos where CODIGO = ?");
    if (!artigo.com(linha.texto("Artigo")).linha()) return;
    linha.poe("descricao", artigo.texto(0));
    linha.poe("Unidade", artigo.texto(1));
    linha.poe("TaxaIVA", artigo.moeda(2));
}

} // namespace orvex::platform::erp
