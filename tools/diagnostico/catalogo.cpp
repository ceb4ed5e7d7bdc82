#include "catalogo.h"

#include "base/texto.h"

namespace orvex::diagnostico {
namespace {

std::string entre_parenteses(const std::string& nome) {
    std::string texto = "[";
    for (const char c : nome)
        texto += c == ']' ? std::string("]]") : std::string(1, c);
    return texto + "]";
}

std::string objecto(const std::string& tabela) { return "OBJECT_ID(" + base::entre_plicas(tabela) + ")"; }

} // namespace

Catalogo::Catalogo(startup::SessaoBD& BD, const startup::DefinicoesBD& definicoes)
    : BD_(BD), embebida_(definicoes.servidor == startup::servidor_embebido),
      utilizador_(entre_parenteses(definicoes.utilizador)) {
    if (embebida_) return;
    const auto da_base = valor("SELECT USER_NAME() AS u");
    if (da_base && !da_base->nulo()) utilizador_ = entre_parenteses(da_base->texto());
}

std::optional<base::Variante> Catalogo::valor(const std::string& sql) {
    try {
        const auto linha = BD_.Consulta(sql);
        if (!linha->fim()) return linha->valor(0);
    } catch (const base::Falha&) {
    }
    return std::nullopt;
}

Resposta Catalogo::ha(const std::string& sql) {
    const auto quantos = valor("SELECT COUNT(*) AS n FROM " + sql);
    if (!quantos) return Resposta::nenhuma;
    return quantos->inteiro() > 0 ? Resposta::sim : Resposta::nao;
}

std::vector<Resposta> Catalogo::tem(const std::string& nome, const char* securavel,
                                    const std::vector<const char*>& direitos) {
    std::vector<Resposta> respostas(direitos.size(), Resposta::nenhuma);
    const std::string coisa = nome.empty() ? "DB_NAME()" : base::entre_plicas(nome);
    std::string sql;
    for (const char* direito : direitos)
        sql += (sql.empty() ? "SELECT " : ", ") + ("HAS_PERMS_BY_NAME(" + coisa) + ", '" + securavel +
               "', '" + direito + "')";
    try {
        const auto linha = BD_.Consulta(sql);
        for (std::size_t i = 0; i < respostas.size() && !linha->fim(); ++i)
            if (const auto este = linha->valor(i); !este.nulo())
                respostas[i] = este.inteiro() == 1 ? Resposta::sim : Resposta::nao;
    } catch (const base::Falha&) {
        respostas.assign(direitos.size(), Resposta::nenhuma);
    }
    return respostas;
}

Resposta Catalogo::ve_definicao(const std::string& tabela) {
    const auto numero = valor("SELECT " + objecto(tabela) + " AS id");
    if (!numero) return Resposta::nenhuma;
    return numero->nulo() ? Resposta::nao : Resposta::sim;
}

Resposta Catalogo::tem_chave(const std::string& tabela) {
    return ha("sys.indexes WHERE object_id=" + objecto(tabela) +
              " AND is_unique=1 AND has_filter=0 AND is_disabled=0");
}

Resposta Catalogo::tem_indice(const std::string& tabela, const std::string& nome) {
    return ha(embebida_ ? "sqlite_schema WHERE name=" + base::entre_plicas(nome)
                        : "sys.indexes WHERE object_id=" + objecto(tabela) +
                              " AND name=" + base::entre_plicas(nome));
}

std::optional<std::string> Catalogo::comparacao() {
    const auto nome = valor("SELECT CONVERT(nvarchar(128), DATABASEPROPERTYEX(DB_NAME(), 'Collation')) AS c");
    return nome && !nome->nulo() ? std::optional(nome->texto()) : std::nullopt;
}

std::string Catalogo::da(const std::string& direitos, const std::string& tabela) const {
    return "GRANT " + direitos + " ON [dbo].[" + tabela + "] TO " + utilizador_;
}

} // namespace orvex::diagnostico
