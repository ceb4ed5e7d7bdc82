#include "tools/componente/sessao.h"

#include "base/falha.h"
#include "base/texto.h"
#include "platform/automacao/chaves.h"
#include "tools/componente/objecto.h"

namespace orvex::componente {
namespace {

using namespace platform::automacao;
using base::Variante;
using startup::ChaveDocumento;
using startup::ResultadoERP;

// The arguments of one operation, taken one after the other.
class Leitura {
  public:
    explicit Leitura(const Argumentos& argumentos) : argumentos_(argumentos) {}

    std::int16_t inteiro() { return static_cast<std::int16_t>(inteiro_em(valor(), VT_I2)); }
    std::string texto() { return valor().texto(); }
    bool logico() { return valor().logico(); }
    startup::ReferenciaERP objecto() { return objecto_de(objecto_em(seguinte())); }
    std::vector<std::string> textos() {
        return lista<std::string>([](const Variante& elemento) { return elemento.texto(); });
    }
    std::vector<double> reais() {
        return lista<double>([](const Variante& elemento) { return elemento.nulo() ? 0 : elemento.real(); });
    }
    ChaveDocumento chave() {
        return chave_de(seguinte(), [](const Referencia<IDispatch>&, const char*) -> Variante {
            throw base::Falha("A chave de um documento tem de vir como lista.");
        });
    }
    // Before anything is done: an argument by reference that could not take what comes back.
    void exige_lugar(std::size_t posicao, VARTYPE outro = VT_VARIANT) const {
        const VARIANT& argumento = argumentos_[posicao];
        const VARTYPE tipo = argumento.vt & ~VT_BYREF;
        if (!por_referencia(argumento) || tipo == VT_VARIANT || tipo == outro) return;
        throw base::Falha("O argumento " + std::to_string(posicao + 1) +
                          " por referência tem de aceitar qualquer valor.");
    }
    // What comes back may also not be asked for.
    void deixa(Valor valor) {
        const VARIANT& argumento = seguinte();
        if (por_referencia(argumento)) platform::automacao::deixa(argumento, std::move(valor));
    }

  private:
    const VARIANT& seguinte() { return argumentos_[lidos_++]; }
    Variante valor() { return variante_de(seguinte()); }

    template <typename Elemento, typename Converte>
    std::vector<Elemento> lista(Converte converte) {
        const auto elementos = elementos_da_lista(seguinte());
        if (!elementos) throw base::Falha("O argumento " + std::to_string(lidos_) + " não é uma lista.");
        std::vector<Elemento> todos;
        for (const Valor& elemento : *elementos)
            todos.push_back(converte(variante_de(elemento.variant())));
        return todos;
    }

    const Argumentos& argumentos_;
    std::size_t lidos_ = 0;
};

class DespachoSessao final : public Despacho {
  public:
    explicit DespachoSessao(std::unique_ptr<startup::SessaoERP> real) : real_(std::move(real)) {}

  protected:
    bool conhece(std::string_view membro) const override { return operacao(membro) != nullptr; }
    Valor executa(const std::string& membro, WORD modo, const Argumentos& argumentos) override;

  private:
    struct Operacao {
        const char* nome;
        std::size_t argumentos;
        Valor (DespachoSessao::*faz)(Leitura&);
        bool propriedade = false; // it can be put
    };
    static const Operacao* operacao(std::string_view nome);

    Valor ModoLigacao(Leitura& dados);
    Valor Liga(Leitura& dados);
    Valor CriaObjecto(Leitura& dados) { return objecto(real_->CriaObjecto(dados.texto())); }
    Valor PreparaDocStock(Leitura& dados);
    Valor CriaDocStock(Leitura& dados);
    Valor SubmeteDocumento(Leitura& dados);
    Valor DocumentoSubmetido(Leitura&) { return objecto(real_->DocumentoSubmetido()); }
    Valor AnulaDocumento(Leitura& dados);
    Valor ResultadoUltimo(Leitura& dados) { return resultado(real_->ResultadoUltimo(), dados); }
    Valor Empresa(Leitura&) { return objecto(real_->Empresa()); }
    Valor Desliga(Leitura&);

    static Valor objecto(const startup::ReferenciaERP& qual) { return variant_do_objecto(despacho_de(qual)); }
    static Valor resultado(const ResultadoERP& feito, Leitura& dados) {
        dados.deixa(variant_de(Variante(feito.mensagem)));
        return variant_de(Variante(feito.sucesso));
    }

    std::unique_ptr<startup::SessaoERP> real_;
};

const DespachoSessao::Operacao* DespachoSessao::operacao(std::string_view nome) {
    static constexpr Operacao operacoes[] = {{"ModoLigacao", 1, &DespachoSessao::ModoLigacao, true},
                                             {"Liga", 5, &DespachoSessao::Liga},
                                             {"CriaObjecto", 1, &DespachoSessao::CriaObjecto},
                                             {"PreparaDocStock", 1, &DespachoSessao::PreparaDocStock},
                                             {"CriaDocStock", 20, &DespachoSessao::CriaDocStock},
                                             {"SubmeteDocumento", 2, &DespachoSessao::SubmeteDocumento},
                                             {"DocumentoSubmetido", 0, &DespachoSessao::DocumentoSubmetido},
                                             {"AnulaDocumento", 3, &DespachoSessao::AnulaDocumento},
                                             {"ResultadoUltimo", 1, &DespachoSessao::ResultadoUltimo},
                                             {"Empresa", 0, &DespachoSessao::Empresa},
                                             {"Desliga", 0, &DespachoSessao::Desliga}};
    for (const Operacao& esta : operacoes)
        if (base::mesmo_nome(esta.nome, nome)) return &esta;
    return nullptr;
}

Valor DespachoSessao::executa(const std::string& membro, WORD modo, const Argumentos& argumentos) {
    const Operacao* esta = operacao(membro);
    if (esta == nullptr || (poe_propriedade(modo) && !esta->propriedade))
        throw Resposta{DISP_E_MEMBERNOTFOUND};
    if (argumentos.quantos() != esta->argumentos) throw Resposta{DISP_E_BADPARAMCOUNT};
    Leitura dados(argumentos);
    return (this->*esta->faz)(dados);
}

Valor DespachoSessao::ModoLigacao(Leitura& dados) {
    real_->ModoLigacao(dados.inteiro());
    return {};
}

Valor DespachoSessao::Liga(Leitura& dados) {
    std::array<std::string, 5> valores;
    for (std::string& valor : valores)
        valor = dados.texto();
    return variant_de(Variante(real_->Liga(valores)));
}

Valor DespachoSessao::PreparaDocStock(Leitura& dados) {
    real_->PreparaDocStock(dados.logico());
    return {};
}

Valor DespachoSessao::CriaDocStock(Leitura& dados) {
    for (const std::size_t de_saida : {18, 19})
        dados.exige_lugar(de_saida);
    startup::PedidoDocStock pedido;
    pedido.tipo_terceiro = dados.inteiro();
    pedido.area = dados.inteiro();
    pedido.tipo_documento = dados.texto();
    pedido.sector = dados.texto();
    pedido.serie = dados.inteiro();
    for (std::string* texto : {&pedido.destino, &pedido.processo, &pedido.texto_8, &pedido.data,
                               &pedido.texto_10, &pedido.armazem})
        *texto = dados.texto();
    pedido.inteiro_12 = dados.inteiro();
    pedido.texto_13 = dados.texto();
    pedido.artigos = dados.textos();
    pedido.textos_15 = dados.textos();
    pedido.quantidades = dados.reais();
    pedido.precos = dados.reais();
    pedido.textos_18 = dados.textos();
    const ChaveDocumento chave = real_->CriaDocStock(pedido);
    dados.deixa(chave == ChaveDocumento{} ? Valor() : lista_da_chave(chave));
    dados.deixa(Valor());
    return {};
}

Valor DespachoSessao::SubmeteDocumento(Leitura& dados) {
    const std::int16_t especie = dados.inteiro();
    return variant_de(Variante(real_->SubmeteDocumento(especie, dados.objecto())), VT_I2);
}

Valor DespachoSessao::AnulaDocumento(Leitura& dados) {
    dados.exige_lugar(2, VT_BSTR);
    const std::int16_t um = dados.inteiro();
    const ChaveDocumento chave = dados.chave();
    return resultado(real_->AnulaDocumento(um, chave), dados);
}

Valor DespachoSessao::Desliga(Leitura&) {
    real_->Desliga();
    return {};
}

} // namespace

Referencia<IDispatch> despacho_da_sessao(std::unique_ptr<startup::SessaoERP> real) {
    return static_cast<IDispatch*>(new DespachoSessao(std::move(real)));
}

} // namespace orvex::componente
