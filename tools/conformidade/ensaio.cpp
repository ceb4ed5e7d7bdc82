#include "ensaio.h"

#include "base/texto.h"
#include "livro/artigos.h"
#include "livro/documentos.h"
#include "livro/movimentos.h"
#include "startup/definicoes.h"
#include "verificacao.h"

#include <algorithm>

namespace orvex::conformidade {
namespace {

using base::Moeda;
using startup::ChaveDocumento;
using startup::DefinicoesERP;
using startup::ParametroDocumento;

constexpr Moeda reserva = Moeda::de_decimos_milesimos(9870); // 0.987 t, of which the other documents take

// One kind of document, and what it does to the stock of the clients' warehouse and of ORVEX's own.
struct Especie {
    const char* nome;
    const ParametroDocumento& tipo;
    Moeda no_armazem, no_armazem_orvex{};
    bool comercial = false;

    Moeda quantidade() const { return no_armazem.absoluta(); }
    bool transferencia() const { return no_armazem_orvex != Moeda(); }
};

struct Existencias {
    Moeda armazem, armazem_orvex;

    std::string texto() const { return armazem.texto() + " t e " + armazem_orvex.texto() + " t"; }
    Existencias depois_de(const Especie& especie) const {
        return {armazem + especie.no_armazem, armazem_orvex + especie.no_armazem_orvex};
    }
};

Existencias existencias(const Ensaio& ensaio) {
    if (ensaio.pedido.BD == nullptr) return {};
    const auto em = [&](const std::string& armazem) {
        const auto valor = livro::existencia(*ensaio.pedido.BD, ensaio.pedido.artigo, armazem);
        return valor && !valor->nulo() ? valor->moeda() : Moeda();
    };
    return {em(ensaio.pedido.casa.armazem), em(ensaio.pedido.casa.armazem_orvex)};
}

Guia guia_de(const Ensaio& ensaio, const Especie& especie) {
    Guia guia{.cliente = ensaio.pedido.cliente, .linhas = {{ensaio.pedido.artigo, especie.quantidade()}}};
    guia.devolucao = especie.no_armazem > Moeda();
    if (!guia.devolucao) guia.linhas.insert(guia.linhas.begin(), {"", Moeda()});
    return guia;
}

void confere_tabelas(Ensaio& ensaio, const Especie& especie, const ChaveDocumento& chave,
                     const Existencias& antes) {
    if (ensaio.pedido.BD == nullptr) return;
    startup::SessaoBD& BD = *ensaio.pedido.BD;
    std::string linhas;
    for (const livro::LinhaERP& linha : livro::linhas_no_erp(BD, livro::documento_de(chave)))
        linhas += (linhas.empty() ? "" : "; ") + linha.Artigo + " " + linha.Quant.texto() + " t";
    ensaio.relatorio.compara(chave.texto() + ": linhas nas tabelas do ERP",
                             ensaio.pedido.artigo + " " + especie.quantidade().texto() + " t", linhas);
    ensaio.relatorio.compara(chave.texto() + ": existências", antes.depois_de(especie).texto(),
                             existencias(ensaio).texto());
}

void anula_duas_vezes(Ensaio& ensaio, const Especie& especie, const ChaveDocumento& chave,
                      const Existencias& antes) {
    if (!anula(ensaio, chave)) return;
    if (especie.comercial) confere_anulado(ensaio, chave);
    if (ensaio.pedido.BD != nullptr)
        ensaio.relatorio.compara(chave.texto() + ": existências depois de anulado", antes.texto(),
                                 existencias(ensaio).texto());
    recusado(ensaio, chave.texto() + ", anular outra vez", [&]() -> Resposta {
        const startup::ResultadoERP outra = ensaio.gERP.AnulaDocumento(1, chave);
        if (outra.sucesso) return {.chave = chave};
        return {.recusa = outra.mensagem};
    });
}

// Makes a document, looks at it and, once `usa` has had what it needs of it, cancels it.
void percorre(Ensaio& ensaio, const Especie& especie, const std::function<void()>& usa = {}) {
    const std::size_t havia = ensaio.por_anular.size();
    ensaio.relatorio.experimenta(especie.nome, [&] {
        const Existencias antes = existencias(ensaio);
        const Guia guia = guia_de(ensaio, especie);
        const Resposta resposta = especie.comercial
                                      ? pede_comercial(ensaio, especie.tipo, guia)
                                      : pede_stock(ensaio, especie.tipo, ensaio.pedido.artigo,
                                                   especie.quantidade(), especie.transferencia());
        if (!resposta.chave) ensaio.relatorio.errado(especie.nome, "criada", "recusada, " + resposta.recusa);
        if (ensaio.por_anular.size() == havia) return;
        const ChaveDocumento chave = ensaio.por_anular.back();
        ensaio.relatorio.experimenta(chave.texto() + ": o que se lê", [&] {
            confere_tabelas(ensaio, especie, chave, antes);
            if (especie.comercial) confere_lido(ensaio, chave, guia);
        });
        if (usa) usa();
        anula_duas_vezes(ensaio, especie, chave, antes);
    });
}

// As the program does, but for what it does afterwards.
std::unique_ptr<startup::SessaoERP> entra(const Pedido& pedido) {
    auto sessao = pedido.nova_sessao();
    sessao->ModoLigacao(startup::modo_ligacao);
    if (!sessao->Liga(pedido.entrada))
        throw base::Falha("O ERP não aceita a entrada que está nas definições.");
    return sessao;
}

std::string nome_da_empresa(startup::SessaoERP& sessao) {
    const startup::ReferenciaERP empresa = sessao.Empresa();
    if (!empresa) throw base::Falha("O ERP não diz em que empresa se entrou: Empresa não dá um objecto.");
    return std::string(base::apara(empresa->obtem("Nome").valor.texto()));
}

void exige_empresa_de_ensaio(const Pedido& pedido) {
    const auto sessao = entra(pedido);
    const std::string nome = nome_da_empresa(*sessao);
    sessao->Desliga();
    if (pedido.empresa == nome && !nome.empty()) return;
    throw base::Falha("O ERP das definições está na empresa «" + nome + "»" +
                      (pedido.empresa.empty() ? "" : ", e não em «" + pedido.empresa + "»") +
                      ". O ensaio cria e anula documentos: só se for uma empresa de ensaio, repita com "
                      "--empresa-de-ensaio \"" +
                      nome + "\".");
}

void recusa_entradas(const Pedido& pedido, Relatorio& relatorio) {
    const struct {
        const char* com;
        DefinicoesERP::Valor valor;
    } casos[] = {{"um utilizador desconhecido", DefinicoesERP::utilizador},
                 {"a palavra-passe errada", DefinicoesERP::palavra_passe}};
    for (const auto& [com, valor] : casos)
        relatorio.experimenta(std::string("Liga com ") + com, [&, com = com, valor = valor] {
            auto entrada = pedido.entrada;
            entrada[valor] += desconhecido;
            const auto sessao = pedido.nova_sessao();
            sessao->ModoLigacao(startup::modo_ligacao);
            const bool aceite = sessao->Liga(entrada);
            relatorio.compara(std::string("Liga com ") + com, "falso", aceite ? "verdadeiro" : "falso");
            relatorio.compara(std::string("Empresa depois de Liga com ") + com, "nada",
                              sessao->Empresa() ? "um objecto" : "nada");
            if (aceite) sessao->Desliga();
        });
}

// None where not all are known.
void le_ultimos(Ensaio& ensaio) {
    if (ensaio.pedido.BD == nullptr) {
        ensaio.relatorio.nao_experimentado("as tabelas do ERP e as existências", ensaio.pedido.sem_BD);
        return;
    }
    const Casa& casa = ensaio.pedido.casa;
    std::vector<ChaveDocumento> ultimos;
    for (const auto* tipo :
         {&casa.guias, &casa.devolucoes, &casa.sobras, &casa.quebras, &casa.consumos, &casa.transferencias}) {
        ChaveDocumento chave{static_cast<std::int16_t>(ensaio.pedido.agora.ano), tipo->TpDoc(),
                             tipo->Serie()};
        chave.NossoNoDocumento = livro::ultimo_numero(*ensaio.pedido.BD, chave);
        ultimos.push_back(chave);
    }
    ensaio.ultimos = ultimos;
}

// What the ERP made although it did not say so has the trial's lines; what a colleague made meanwhile has
// not.
bool do_ensaio(const Ensaio& ensaio, const ChaveDocumento& chave) {
    const auto linhas = livro::linhas_no_erp(*ensaio.pedido.BD, livro::documento_de(chave));
    return !linhas.empty() && std::all_of(linhas.begin(), linhas.end(), [&](const livro::LinhaERP& linha) {
        const Moeda quantidade = linha.Quant.absoluta();
        return (base::mesmo_nome(linha.Artigo, ensaio.pedido.artigo) || linha.Artigo == desconhecido) &&
               (quantidade == quantidade_de_ensaio || quantidade == reserva);
    });
}

// What is left, tried once more; and what the ERP made beside what it says.
void desfaz(Ensaio& ensaio) {
    ensaio.relatorio.experimenta("documentos por anular", [&] {
        std::erase_if(ensaio.por_anular, [&](const ChaveDocumento& chave) {
            return livro::estado_no_erp(*ensaio.pedido.BD, chave) == livro::EstadoERP::anulado;
        });
    });
    const auto restantes = ensaio.por_anular;
    for (auto chave = restantes.rbegin(); chave != restantes.rend(); ++chave)
        ensaio.relatorio.experimenta(chave->texto() + ": AnulaDocumento", [&] { anula(ensaio, *chave); });
    ensaio.relatorio.experimenta("documentos por anular", [&] {
        constexpr const char* apareceu = "documentos em vigor que apareceram durante o ensaio";
        for (const ChaveDocumento& ultimo : ensaio.ultimos)
            for (const auto& documento : livro::documentos_depois_de(*ensaio.pedido.BD, ultimo)) {
                const ChaveDocumento& chave = documento.chave;
                if (std::find(ensaio.por_anular.begin(), ensaio.por_anular.end(), chave) !=
                    ensaio.por_anular.end())
                    continue;
                if (do_ensaio(ensaio, chave)) {
                    ensaio.relatorio.errado(apareceu, "nenhum", chave.texto());
                    ensaio.por_anular.push_back(chave);
                } else {
                    ensaio.relatorio.nao_experimentado(
                        apareceu, chave.texto() + " não tem as linhas do ensaio: é de outra pessoa, ou o "
                                                  "ERP gravou outra coisa do que se lhe pediu");
                }
            }
    });
}

void percorre_documentos(Ensaio& ensaio) {
    const Casa& casa = ensaio.pedido.casa;
    const Moeda q = quantidade_de_ensaio;
    const Especie outras[] = {{"guia de remessa", casa.guias, -q, {}, true},
                              {"devolução", casa.devolucoes, q, {}, true},
                              {"quebra", casa.quebras, -q},
                              {"consumo", casa.consumos, -q},
                              {"transferência", casa.transferencias, -q, q}};
    bool usou = false;
    percorre(ensaio, {"sobra", casa.sobras, reserva}, [&] {
        usou = true;
        for (const Especie& especie : outras)
            percorre(ensaio, especie);
    });
    if (usou) return;
    for (const Especie& especie : outras)
        ensaio.relatorio.nao_experimentado(especie.nome, "não houve sobra de que a tirar");
}

} // namespace

Casa Casa::le(const startup::Parametros& parametros) {
    const auto documento = [&](const char* chave) {
        ParametroDocumento lido(parametros.lista(chave));
        lido.TpDoc(), lido.Serie(), lido.Sector(); // each throws where it is missing
        return lido;
    };
    const auto armazem = [&](const char* chave) {
        return startup::ParametroArmazem(parametros.lista(chave)).Codigo();
    };
    return {documento("GUIASREMESSA"), documento("GUIADEVOLUCAO"), documento("SOBRAS"),
            documento("QUEBRAS"),      documento("CONSUMOS"),      documento("TRF"),
            armazem("ARMAZEM"),        armazem("ARMAZEMORVEX")};
}

std::vector<ChaveDocumento> ensaia(const Pedido& pedido, Relatorio& relatorio) {
    exige_empresa_de_ensaio(pedido);
    recusa_entradas(pedido, relatorio);
    const auto sessao = entra(pedido);
    Ensaio ensaio{*sessao, pedido, relatorio};
    relatorio.certo("Liga e Empresa: " + nome_da_empresa(*sessao));
    relatorio.experimenta("as tabelas do ERP", [&] { le_ultimos(ensaio); });
    relatorio.experimenta("objectos", [&] { recusas_dos_objectos(ensaio); });
    if (ensaio.ultimos.empty()) {
        relatorio.nao_experimentado("documentos",
                                    "sem as tabelas do ERP ninguém sabe quais são deste ensaio, e "
                                    "só esses se podem anular");
    } else {
        percorre_documentos(ensaio);
        relatorio.experimenta("recusas de guias", [&] { recusas_dos_comerciais(ensaio); });
        relatorio.experimenta("recusas de documentos de stock", [&] { recusas_do_stock(ensaio); });
        desfaz(ensaio);
    }
    relatorio.experimenta("Desliga", [&] {
        sessao->Desliga();
        relatorio.compara("Empresa depois de Desliga", "nada", sessao->Empresa() ? "um objecto" : "nada");
    });
    return ensaio.por_anular;
}

} // namespace orvex::conformidade
