#include "platform/odbc/falhas.h"

#include "base/texto.h"
#include "platform/odbc/texto_largo.h"
#include "startup/sessao_bd.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orvex::platform::odbc {
namespace {

namespace numeros = startup::numeros_bd;
using Natureza = FalhaODBC::Natureza;

struct Causa {
    std::int32_t numero;
    const char* texto;
    Natureza natureza = Natureza::outra;
};

struct CausaNativa {
    int nativo;
    Causa causa;
};

constexpr Causa sem_tabela{numeros::tabela_em_falta, "Falta uma tabela na base de dados."};
constexpr Causa instrucao{numeros::instrucao_errada, "A instrução SQL tem um erro."};
constexpr Causa recusa{numeros::instrucao_errada, "O servidor da base de dados recusou a instrução."};
constexpr Causa chave_repetida{numeros::chave_violada, "Já existe um registo com a mesma chave."};
constexpr Causa truncado{numeros::valor_truncado, "Um valor não cabe na sua coluna."};
constexpr Causa permissao{numeros::sem_permissao,
                          "O utilizador da base de dados não tem permissão para isto."};
constexpr Causa alteracao_recusada{numeros::sem_permissao,
                                   "A tabela não existe, ou o utilizador da base de dados não tem permissão "
                                   "para a alterar."};
constexpr Causa sem_controlador{numeros::falha_geral,
                                "O controlador ODBC indicado nas definições não está instalado.",
                                Natureza::ligacao};
constexpr Causa credenciais{numeros::falha_geral,
                            "O servidor não aceitou o utilizador ou a palavra-passe da base de dados.",
                            Natureza::ligacao};
constexpr Causa base_recusada{
    numeros::falha_geral, "O servidor não abriu a base de dados: não existe, ou o utilizador não tem acesso.",
    Natureza::ligacao};
constexpr Causa sem_resposta{numeros::falha_geral, "O servidor da base de dados não respondeu a tempo.",
                             Natureza::tempo};
constexpr Causa perdida{numeros::falha_geral, "A ligação ao servidor da base de dados perdeu-se.",
                        Natureza::ligacao};
constexpr Causa recusada{numeros::falha_geral, "Não foi possível ligar ao servidor da base de dados.",
                         Natureza::ligacao};

// By the server's number, which says more than the state. Of several, the first here speaks.
constexpr auto causas_nativas = std::to_array<CausaNativa>({
    {102, instrucao},
    {105, instrucao},
    {156, instrucao},
    {208, sem_tabela},
    {207, {numeros::instrucao_errada, "Falta uma coluna numa tabela da base de dados."}},
    {2705, {numeros::instrucao_errada, "A coluna já existe na tabela."}},
    {2714, {numeros::instrucao_errada, "Já existe uma tabela com esse nome."}},
    {2627, chave_repetida},
    {2601, chave_repetida},
    {515, {numeros::chave_violada, "Falta um valor obrigatório."}},
    {547, {numeros::chave_violada, "Os dados não respeitam uma regra da base de dados."}},
    {2628, truncado},
    {8152, truncado},
    {8115, truncado},
    {220, truncado},
    {1205,
     {numeros::falha_geral,
      "O servidor interrompeu esta operação para deixar passar a de outro posto. Repita-a.",
      Natureza::vitima}},
    {1222,
     {numeros::falha_geral, "Os dados estão a ser usados por outro posto. Tente novamente.",
      Natureza::ocupado}},
    {1105, {numeros::falha_geral, "Não há espaço para gravar na base de dados."}},
    {9002, {numeros::falha_geral, "Não há espaço no diário da base de dados."}},
    {3906, {numeros::falha_geral, "A base de dados só permite leitura."}},
    {229, permissao},
    {230, permissao},
    {262, permissao},
    {1088, alteracao_recusada},
    {4902, alteracao_recusada},
    {4060, base_recusada}, // 18456 comes with it
    {4064, base_recusada},
    {916, base_recusada},
    {18456, credenciais},
    {18452, credenciais},
    {18486, credenciais},
    {18487, credenciais},
    {18488, credenciais},
    // FreeTDS's own
    {20003, sem_resposta},
    {20004, perdida},
    {20006, perdida},
    {20009, recusada},
    {20013, recusada},
    {20017, perdida},
    {20047, perdida},
});

struct CausaEstado {
    std::string_view inicio; // of the SQLSTATE
    Causa causa;
    std::string_view texto{}; // that must stand in the message
};

constexpr auto causas_estado = std::to_array<CausaEstado>({
    {"HYT", sem_resposta},
    {"S1T", sem_resposta},
    {"08001", recusada},
    {"08004", recusada},
    {"28", credenciais},
    {"08", perdida},
    {"40001",
     {numeros::falha_geral,
      "O servidor interrompeu esta operação para deixar passar a de outro posto. Repita-a.",
      Natureza::vitima}},
    {"42S02", sem_tabela},
    {"42", recusa},
    {"37", instrucao},
    {"22", truncado},
    {"23", chave_repetida},
    {"IM002", sem_controlador},
    {"IM003", sem_controlador},
    {"01000", sem_controlador, "Can't open lib"}, // the manager's warning, with no error after it
});

// The system's own number for what happened to the network may be any of the server's.
bool da_rede(const Diagnostico& diagnostico) {
    constexpr int primeiro_que_se_distingue = 4000;
    return diagnostico.estado.starts_with("08") && diagnostico.nativo < primeiro_que_se_distingue;
}

// "[maker][driver][server]text"
std::string sem_prefixos(std::string_view texto) {
    while (texto.starts_with('[')) {
        const std::size_t fecho = texto.find(']');
        if (fecho == std::string_view::npos) break;
        texto.remove_prefix(fecho + 1);
    }
    return std::string(base::apara(texto));
}

FalhaODBC falha_por(const Causa& causa, const Diagnostico& diagnostico) {
    std::string texto = causa.texto;
    if (!diagnostico.texto.empty()) texto += " (" + diagnostico.texto + ")";
    return {texto, causa.numero, causa.natureza};
}

} // namespace

std::vector<Diagnostico> le_diagnosticos(SQLSMALLINT tipo, SQLHANDLE punho) {
    std::vector<Diagnostico> lidos;
    for (SQLSMALLINT registo = 1;; ++registo) {
        std::array<SQLWCHAR, 6> estado{};
        std::array<SQLWCHAR, SQL_MAX_MESSAGE_LENGTH> texto{};
        SQLINTEGER nativo = 0;
        SQLSMALLINT comprimento = 0;
        const SQLRETURN resultado = SQLGetDiagRecW(tipo, punho, registo, estado.data(), &nativo, texto.data(),
                                                   static_cast<SQLSMALLINT>(texto.size()), &comprimento);
        if (!SQL_SUCCEEDED(resultado)) return lidos;
        const std::size_t unidades = std::min(texto.size() - 1, static_cast<std::size_t>(comprimento));
        lidos.push_back({estreito(estado.data(), 5), nativo, sem_prefixos(estreito(texto.data(), unidades))});
    }
}

// A server's message may come with the driver's, in any order: the most telling one speaks.
FalhaODBC falha_de(const std::vector<Diagnostico>& diagnosticos) {
    for (const CausaNativa& esta : causas_nativas)
        for (const Diagnostico& diagnostico : diagnosticos)
            if (esta.nativo == diagnostico.nativo && !da_rede(diagnostico))
                return falha_por(esta.causa, diagnostico);
    for (const CausaEstado& esta : causas_estado)
        for (const Diagnostico& diagnostico : diagnosticos)
            if (diagnostico.estado.starts_with(esta.inicio) &&
                diagnostico.texto.find(esta.texto) != std::string::npos)
                return falha_por(esta.causa, diagnostico);
    const Diagnostico primeiro = diagnosticos.empty() ? Diagnostico{} : diagnosticos.front();
    return falha_por({numeros::falha_geral, "Erro da base de dados."}, primeiro);
}

FalhaODBC ligacao_perdida(const FalhaODBC& apanhada) {
    if (apanhada.natureza() != Natureza::outra) return apanhada;
    return falha_por(perdida, {.texto = apanhada.what()});
}

void exige(SQLRETURN resultado, SQLSMALLINT tipo, SQLHANDLE punho) {
    if (SQL_SUCCEEDED(resultado) || resultado == SQL_NO_DATA) return;
    throw falha_de(le_diagnosticos(tipo, punho));
}

} // namespace orvex::platform::odbc
