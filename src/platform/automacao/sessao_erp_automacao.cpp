#include "platform/automacao/sessao_erp_automacao.h"

#include "platform/automacao/chaves.h"
#include "platform/automacao/falhas.h"
#include "platform/automacao/ligacao.h"
#include "platform/automacao/registo.h"

namespace orvex::platform::automacao {
namespace {

using startup::ChaveDocumento;
using startup::ReferenciaERP;
using startup::ResultadoERP;

constexpr WORD metodo = DISPATCH_METHOD;
constexpr WORD metodo_ou_propriedade = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

Valor texto(const std::string& valor) { return variant_de(valor); }
Valor inteiro(std::int16_t valor) { return variant_de(valor, VT_I2); }

Valor invoca(Componente& componente, const char* operacao, Argumentos& argumentos, WORD modo = metodo) {
    return componente.invoca(Componente::sessao, operacao, modo, argumentos);
}

bool logico(const char* operacao, const Valor& resposta) {
    return com_nome(operacao, [&] {
        const base::Variante valor = variante_de(resposta.variant());
        if (std::holds_alternative<base::DataHora>(valor.valor()) || valor.nulo())
            throw base::Falha("Esperava-se verdadeiro ou falso, e não veio nenhum deles.",
                              base::numeros_falha::tipo_diferente);
        return valor.logico();
    });
}

// What was left for a message is one only when it is a text.
std::string mensagem(const VARIANT& deixada) {
    const Valor directa = sem_referencia(deixada);
    return directa.tipo() == VT_BSTR ? variante_de(directa.variant()).texto() : std::string();
}

// The rules show the text of a refusal; nobody is to be shown none.
ResultadoERP com_texto(const char* operacao, bool sucesso, std::string texto) {
    if (!sucesso && texto.empty())
        texto = std::string(operacao) + ": o componente do ERP recusou e não disse porquê.";
    return {sucesso, std::move(texto)};
}

ResultadoERP ultimo_de(Componente& componente) {
    Argumentos argumentos;
    argumentos.de_saida();
    const Valor resposta = invoca(componente, "ResultadoUltimo", argumentos);
    const bool sucesso = logico("ResultadoUltimo", resposta);
    return {sucesso, com_nome("ResultadoUltimo", [&] { return mensagem(argumentos.deixado(0)); })};
}

// Why a cancellation was refused, where its own answer does not say it. It is refused, whatever comes of
// asking.
std::string porque_recusou(Componente& componente) {
    try {
        const ResultadoERP ultimo = ultimo_de(componente);
        return ultimo.sucesso ? std::string() : ultimo.mensagem;
    } catch (const base::Falha&) {
        return {};
    }
}

// A component that has gone, be it found out only now, has nobody logged in: closing the screen has nothing
// to complain of.
template <typename Accao>
std::invoke_result_t<Accao> se_vive(Componente& componente, const Accao& accao) {
    try {
        if (!componente.terminou()) return accao();
    } catch (const ComponenteTerminou&) {
    }
    return std::invoke_result_t<Accao>();
}

ReferenciaERP exige(ReferenciaERP objecto) {
    if (objecto) return objecto;
    throw base::Falha("O componente do ERP não deu o objecto que se lhe pediu.");
}

} // namespace

SessaoERPAutomacao::SessaoERPAutomacao(const std::string& componente, Espera espera)
    : SessaoERPAutomacao(
          std::make_shared<Ligacao>([&] { return cria_componente(componente); }, std::move(espera))) {}

SessaoERPAutomacao::~SessaoERPAutomacao() { ligacao_->fecha(tempo_para_sair); }

void SessaoERPAutomacao::ModoLigacao(std::int16_t modo) {
    ligacao_->pede([&](Componente& componente) {
        try {
            componente.poe(Componente::sessao, "ModoLigacao", inteiro(modo));
        } catch (const base::Falha& falha) {
            if (falha.numero() != DISP_E_MEMBERNOTFOUND && falha.numero() != DISP_E_BADPARAMCOUNT) throw;
            invoca(componente, "ModoLigacao", Argumentos().por_valor(inteiro(modo)));
        }
    });
}

bool SessaoERPAutomacao::Liga(const std::array<std::string, 5>& valores) {
    return ligacao_->pede([&](Componente& componente) {
        Argumentos argumentos;
        for (const std::string& valor : valores)
            argumentos.por_valor(texto(valor));
        componente.define_ligada(true); // whatever becomes of the answer
        const bool aceite = logico("Liga", invoca(componente, "Liga", argumentos));
        componente.define_ligada(aceite);
        return aceite;
    });
}

ReferenciaERP SessaoERPAutomacao::CriaObjecto(const std::string& classe) {
    return ligacao_->pede([&](Componente& componente) {
        const Valor criado = invoca(componente, "CriaObjecto", Argumentos().por_valor(texto(classe)));
        return com_nome("CriaObjecto «" + classe + "»",
                        [&] { return exige(ligacao_->objecto_de(criado, classe)); });
    });
}

void SessaoERPAutomacao::PreparaDocStock(bool sempre_verdadeiro) {
    ligacao_->pede([&](Componente& componente) {
        invoca(componente, "PreparaDocStock", Argumentos().por_valor(variant_de(sempre_verdadeiro)));
    });
}

ChaveDocumento SessaoERPAutomacao::CriaDocStock(const startup::PedidoDocStock& pedido) {
    return ligacao_->pede([&](Componente& componente) {
        Argumentos argumentos;
        argumentos.por_valor(inteiro(pedido.tipo_terceiro)).por_valor(inteiro(pedido.area));
        argumentos.por_valor(texto(pedido.tipo_documento)).por_valor(texto(pedido.sector));
        argumentos.por_valor(inteiro(pedido.serie));
        for (const std::string* valor : {&pedido.destino, &pedido.processo, &pedido.texto_8, &pedido.data,
                                         &pedido.texto_10, &pedido.armazem})
            argumentos.por_valor(texto(*valor));
        argumentos.por_valor(inteiro(pedido.inteiro_12)).por_valor(texto(pedido.texto_13));
        argumentos.por_valor(lista_de_textos(pedido.artigos)).por_valor(lista_de_textos(pedido.textos_15));
        argumentos.por_valor(lista_de_reais(pedido.quantidades)).por_valor(lista_de_reais(pedido.precos));
        argumentos.por_valor(lista_de_textos(pedido.textos_18));
        const std::size_t da_chave = argumentos.postos().size();
        argumentos.de_saida().de_saida(); // the second one is not read
        invoca(componente, "CriaDocStock", argumentos);
        return com_nome("CriaDocStock: a chave do documento que o componente do ERP deu não se percebe", [&] {
            return chave_de(argumentos.deixado(da_chave),
                            [&](const Referencia<IDispatch>& objecto, const char* membro) {
                                const auto este = componente.junta(objecto, "CriaDocStock");
                                const Valor valor = componente.le(este, membro);
                                componente.larga(este);
                                return variante_de(valor.variant());
                            });
        });
    });
}

std::int16_t SessaoERPAutomacao::SubmeteDocumento(std::int16_t especie, const ReferenciaERP& documento) {
    return ligacao_->pede([&](Componente& componente) {
        Argumentos argumentos;
        argumentos.por_valor(inteiro(especie)).por_valor(com_nome("SubmeteDocumento", [&] {
            return variant_do_objecto(ligacao_->despacho_de(documento));
        }));
        const Valor resposta = invoca(componente, "SubmeteDocumento", argumentos);
        return com_nome("SubmeteDocumento", [&]() -> std::int16_t {
            const auto estado = lido(TipoMembro::inteiro_32, variante_de(resposta.variant())).inteiro();
            return estado == 0 ? 0 : -1;
        });
    });
}

ReferenciaERP SessaoERPAutomacao::DocumentoSubmetido() {
    return ligacao_->pede([&](Componente& componente) {
        Argumentos nenhuns;
        const Valor dado = invoca(componente, "DocumentoSubmetido", nenhuns, metodo_ou_propriedade);
        return com_nome("DocumentoSubmetido",
                        [&] { return exige(ligacao_->objecto_de(dado, "DocumentoSubmetido")); });
    });
}

ResultadoERP SessaoERPAutomacao::AnulaDocumento(std::int16_t sempre_um, const ChaveDocumento& chave) {
    return ligacao_->pede([&](Componente& componente) {
        Argumentos argumentos;
        argumentos.por_valor(inteiro(sempre_um)).por_valor(lista_da_chave(chave)).de_saida();
        const Valor resposta = invoca(componente, "AnulaDocumento", argumentos);
        const bool sucesso = logico("AnulaDocumento", resposta);
        std::string texto = com_nome("AnulaDocumento", [&] { return mensagem(argumentos.deixado(2)); });
        if (!sucesso && texto.empty()) texto = porque_recusou(componente);
        return com_texto("AnulaDocumento", sucesso, std::move(texto));
    });
}

ResultadoERP SessaoERPAutomacao::ResultadoUltimo() {
    return ligacao_->pede([&](Componente& componente) {
        ResultadoERP ultimo = ultimo_de(componente);
        return com_texto("ResultadoUltimo", ultimo.sucesso, std::move(ultimo.mensagem));
    });
}

ReferenciaERP SessaoERPAutomacao::Empresa() {
    return ligacao_->pede([&](Componente& componente) {
        return se_vive(componente, [&]() -> ReferenciaERP {
            Argumentos nenhuns;
            const Valor dada = invoca(componente, "Empresa", nenhuns, metodo_ou_propriedade);
            return com_nome("Empresa", [&] { return ligacao_->objecto_de(dada, "Empresa"); });
        });
    });
}

void SessaoERPAutomacao::Desliga() {
    ligacao_->pede([&](Componente& componente) {
        se_vive(componente, [&] {
            Argumentos nenhuns;
            invoca(componente, "Desliga", nenhuns);
            componente.define_ligada(false);
        });
    });
}

} // namespace orvex::platform::automacao
