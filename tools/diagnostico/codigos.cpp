#include "codigos.h"

#include "base/texto.h"
#include "parametros.h"
#include "platform/erp/esquema_erp.h"

#include <map>

namespace orvex::diagnostico {
namespace {

using platform::erp::MovimentoStock;
using startup::ListaParametros;
using startup::SessaoBD;

class VerificacaoCodigos {
  public:
    // The emulation's own tables, or none; and what the program itself sees of the ERP.
    VerificacaoCodigos(SessaoBD* emulacao, SessaoBD& BD, Resultados& resultados)
        : emulacao_(emulacao), BD_(BD), resultados_(resultados) {}

    void tipos(const ListaParametros& lista, bool em_grupos);
    void armazem(const startup::ParametroArmazem& parametro);
    void cliente(const startup::ParametroCliente& parametro);

  private:
    void junta(const std::string& chave, Estado estado, std::string texto) {
        resultados_.push_back({chave + " no ERP", estado, std::move(texto)});
    }
    // The first row, or none, of those with the code, which the database compares in its own way; its first
    // column is the code as the ERP writes it.
    using Linha = std::unique_ptr<startup::ConjuntoRegistos>;
    static Linha procura(SessaoBD& BD, const std::string& colunas_e_tabela, const std::string& coluna,
                         const std::string& codigo) {
        auto linha = BD.Consulta("Select top 1 " + coluna + colunas_e_tabela + " where " + coluna + "=" +
                                 base::entre_plicas(codigo));
        return linha->fim() ? nullptr : std::move(linha);
    }
    void escrita(const std::string& chave, const std::string& codigo, startup::ConjuntoRegistos& linha,
                 Estado se_diferente);
    void tipo(const std::string& chave, const std::string& codigo, const std::string& serie);

    SessaoBD* emulacao_;
    SessaoBD& BD_;
    Resultados& resultados_;
};

// The database finds a code in whatever case it is written; the program compares it to the letter.
void VerificacaoCodigos::escrita(const std::string& chave, const std::string& codigo,
                                 startup::ConjuntoRegistos& linha, Estado se_diferente) {
    const std::string certo = linha.valor(0).texto();
    if (certo != codigo)
        junta(chave, se_diferente,
              "o ERP escreve «" + certo + "» em vez de «" + codigo + "»: escreva-o assim.");
}

// What a document of each key does to the stock.
const std::map<std::string, MovimentoStock> movimentos{
    {"GUIASREMESSA", MovimentoStock::saida}, {"GUIADEVOLUCAO", MovimentoStock::entrada},
    {"SOBRAS", MovimentoStock::entrada},     {"QUEBRAS", MovimentoStock::saida},
    {"CONSUMOS", MovimentoStock::saida},     {"TRF", MovimentoStock::transferencia}};

void VerificacaoCodigos::tipo(const std::string& chave, const std::string& codigo, const std::string& serie) {
    if (base::excede(codigo, comprimento_tipo)) return; // told with the parameters
    const std::string o_tipo = "o tipo de documento «" + codigo + "» ";
    if (emulacao_ == nullptr) {
        if (BD_.Consulta("Select top 1 TpDoc from DocGcCab where TpDoc=" + base::entre_plicas(codigo) +
                         " and Serie=" + serie)
                ->fim())
            junta(chave, Estado::nao_verificado,
                  "não há ainda documentos " + codigo + " na série " + serie + ": confirme-os no ERP");
        return;
    }
    const auto linha = procura(*emulacao_, ", MovStock from TiposDocumento", "Codigo", codigo);
    if (linha == nullptr)
        return junta(chave, Estado::erro, o_tipo + "não existe. Corrija-o, ou crie-o no ERP.");
    escrita(chave, codigo, *linha, Estado::aviso);
    const auto movimento = movimentos.find(chave);
    if (movimento != movimentos.end() &&
        linha->valor("MovStock").inteiro() != static_cast<int>(movimento->second))
        junta(chave, Estado::erro, o_tipo + "não move o stock como é preciso. Corrija-o, ou escolha outro.");
    if (emulacao_
            ->Consulta("Select Serie from Series where TpDoc=" + base::entre_plicas(codigo) +
                       " and Serie=" + serie)
            ->fim())
        junta(chave, Estado::erro,
              o_tipo + "não existe na série " + serie + ". Corrija-a, ou crie-a no ERP.");
}

void VerificacaoCodigos::tipos(const ListaParametros& lista, bool em_grupos) {
    for (std::size_t i = 0; i == 0 || (em_grupos && i < lista.elementos.size());
         i += startup::ParametroGrupos::tamanho_grupo)
        tipo(lista.chave, lista[i], std::to_string(lista.serie(i + 1)));
}

void VerificacaoCodigos::armazem(const startup::ParametroArmazem& parametro) {
    const auto linha = emulacao_ != nullptr
                           ? procura(*emulacao_, " from Armazens", "Codigo", parametro.Codigo())
                           : procura(BD_, " from artarm", "Armazem", parametro.Codigo());
    if (linha != nullptr) return escrita(parametro.chave, parametro.Codigo(), *linha, Estado::erro);
    if (emulacao_ != nullptr)
        return junta(parametro.chave, Estado::erro,
                     "o armazém «" + parametro.Codigo() + "» não existe. Corrija-o, ou crie-o no ERP.");
    junta(parametro.chave, Estado::nao_verificado,
          "nenhum artigo tem ficha no armazém «" + parametro.Codigo() + "»: confirme-o no ERP");
}

void VerificacaoCodigos::cliente(const startup::ParametroCliente& parametro) {
    const auto linha = procura(BD_, ", Inactivo from Clientes", "CODIGO", parametro.Codigo());
    const std::string o_cliente = "o cliente «" + parametro.Codigo() + "» ";
    if (linha == nullptr)
        return junta(parametro.chave, Estado::erro, o_cliente + "não existe. Corrija-o, ou crie-o no ERP.");
    escrita(parametro.chave, parametro.Codigo(), *linha, Estado::erro);
    if (linha->valor("Inactivo").texto() == std::to_string(base::verdadeiro))
        junta(parametro.chave, Estado::erro, o_cliente + "está inactivo. Corrija-o, ou active-o no ERP.");
}

} // namespace

void verifica_codigos(const startup::Parametros& parametros,
                      const std::optional<startup::DefinicoesERP>& definicoes, SessaoBD* BD,
                      Resultados& resultados) {
    constexpr const char* nome = "códigos no ERP";
    const auto emulacao = definicoes ? abre_emulacao(*definicoes) : nullptr;
    if (BD == nullptr) BD = emulacao.get();
    if (BD == nullptr) {
        resultados.push_back({nome, Estado::nao_verificado, "dependem da ligação"});
        return;
    }
    const std::size_t antes = resultados.size();
    VerificacaoCodigos codigos(emulacao.get(), *BD, resultados);
    for (const ChaveExigida& exigida : chaves_exigidas()) {
        const std::string chave = exigida.chave;
        try {
            const ListaParametros lista = le(parametros, exigida);
            if (exigida.com_serie)
                codigos.tipos(lista, exigida.em_grupos);
            else
                chave == "CLIENTEORVEX" ? codigos.cliente(lista) : codigos.armazem(lista);
        } catch (const startup::FalhaParametro&) { // told with the parameters
        } catch (const base::Falha& falha) {
            resultados.push_back({chave + " no ERP", Estado::nao_verificado, falha.what()});
        }
    }
    if (resultados.size() == antes)
        resultados.push_back(
            {nome, Estado::ok, "tipos de documento, séries, armazéns e cliente são conhecidos"});
}

} // namespace orvex::diagnostico
