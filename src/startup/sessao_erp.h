// The ERP session and its late-bound objects. Members are reached by name, so the order of the assignments is
// the order the ERP sees.
#pragma once

#include "base/variante.h"

#include <array>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::startup {

class ObjectoERP;
using ReferenciaERP = std::shared_ptr<ObjectoERP>;

// What a member of an ERP object holds, takes or gives back: a plain value or another ERP object.
struct ValorERP {
    base::Variante valor;
    ReferenciaERP objecto;

    ValorERP() = default;
    template <typename Valor>
    requires std::constructible_from<base::Variante, Valor> ValorERP(Valor&& v)
        : valor(std::forward<Valor>(v)) {}
    ValorERP(ReferenciaERP o) : objecto(std::move(o)) {}
};

// Every operation throws Falha when the ERP refuses it or does not know the member.
class ObjectoERP {
  public:
    using Argumentos = std::vector<ValorERP>;

    virtual ~ObjectoERP() = default;

    virtual ValorERP obtem(std::string_view membro) = 0;
    virtual void poe(std::string_view membro, const ValorERP& valor) = 0;

    // Afterwards each argument that the member takes by reference holds what the member left there, and the
    // others what they held. An adapter that cannot tell which are by reference writes none, so a caller
    // reads only what the member in question is known to give back. When it throws, none is written.
    ValorERP chama(std::string_view membro, Argumentos& argumentos) { return invoca(membro, argumentos); }
    // For members that give nothing back, or whose out-values do not matter.
    ValorERP chama(std::string_view membro, std::initializer_list<ValorERP> argumentos) {
        Argumentos postos = argumentos;
        return invoca(membro, postos);
    }

  private:
    virtual ValorERP invoca(std::string_view membro, Argumentos& argumentos) = 0;
};

// Key of an ERP document, shown to users as type/series/number/year.
struct ChaveDocumento {
    std::int16_t Ano = 0;
    std::string TipoDocumento; // at most 3 characters
    std::int16_t Serie = 0;
    std::int32_t NossoNoDocumento = 0;

    std::string texto() const;
    friend bool operator==(const ChaveDocumento&, const ChaveDocumento&) = default;
};

struct ResultadoERP {
    bool sucesso = false;
    std::string mensagem;
};

// The arguments of CriaDocStock in their order. Each document line stands at the same position in every
// array; position 0 is never used.
struct PedidoDocStock {
    std::int16_t tipo_terceiro = 1;
    std::int16_t area = 6;
    std::string tipo_documento{};
    std::string sector{};
    std::int16_t serie = 0;
    std::string destino{}; // warehouse code of a transfer; the sector again for an adjustment
    std::string processo{};
    std::string texto_8{};
    std::string data{}; // dd-MM-yyyy
    std::string texto_10{};
    std::string armazem{};
    std::int16_t inteiro_12 = 0;
    std::string texto_13{};
    std::vector<std::string> artigos{};
    std::vector<std::string> textos_15{};
    std::vector<double> quantidades{}; // tonnes
    std::vector<double> precos{};      // euro per tonne
    std::vector<std::string> textos_18{};
};

// What the ERP's documents say by numbers, in members and columns alike.
inline constexpr std::int16_t terceiro_cliente = 2;   // TipoTerceiro (TpTerc): the third party is a client
inline constexpr std::int16_t documento_anulado = -1; // NumeroViasemitidas (NVias): it was cancelled

inline constexpr std::int16_t modo_ligacao = 2; // what every session is given before it logs in

class SessaoERP {
  public:
    virtual ~SessaoERP() = default;

    virtual void ModoLigacao(std::int16_t modo) = 0;
    // Logs in with the five log-in values of DefinicoesERP. False when they are refused; throws when the
    // ERP's company cannot be opened at all.
    virtual bool Liga(const std::array<std::string, 5>& valores) = 0;
    virtual ReferenciaERP CriaObjecto(const std::string& classe) = 0;

    virtual void PreparaDocStock(bool sempre_verdadeiro) = 0;
    virtual ChaveDocumento CriaDocStock(const PedidoDocStock& pedido) = 0;

    // Hands a built commercial document to the ERP; 0 on success, -1 otherwise.
    virtual std::int16_t SubmeteDocumento(std::int16_t especie, const ReferenciaERP& documento) = 0;
    virtual ReferenciaERP DocumentoSubmetido() = 0;

    virtual ResultadoERP AnulaDocumento(std::int16_t sempre_um, const ChaveDocumento& chave) = 0;
    // Outcome of the last ERP operation of any kind.
    virtual ResultadoERP ResultadoUltimo() = 0;

    virtual ReferenciaERP Empresa() = 0; // empty when the session is not logged in
    virtual void Desliga() = 0;
};

} // namespace orvex::startup
