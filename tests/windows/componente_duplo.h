// A component that does what a test says, and notes what it was asked: each call as one line of names and
// types.
#pragma once

#include "platform/automacao/ligacao.h"
#include "platform/automacao/sessao_erp_automacao.h"
#include "platform/automacao/valores.h"

#include <gmock/gmock.h>

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

// What implements the system's interfaces ends by Release; they have no destructor to be called by.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace orvex::testes {

namespace automacao = platform::automacao;

// "I2:5", "BSTR:a", "&I2:5" by reference, "BSTR[0..2]:|a|b" for a list.
inline std::string descrito(const VARIANT& v) {
    static const std::map<VARTYPE, std::string> nomes{
        {VT_EMPTY, "Empty"}, {VT_NULL, "Null"},    {VT_I2, "I2"},          {VT_I4, "I4"},
        {VT_R8, "R8"},       {VT_CY, "CY"},        {VT_DATE, "DATE"},      {VT_BSTR, "BSTR"},
        {VT_BOOL, "BOOL"},   {VT_DISPATCH, "OBJ"}, {VT_VARIANT, "VARIANT"}};
    const VARTYPE tipo = v.vt & VT_TYPEMASK;
    const std::string nome = ((v.vt & VT_BYREF) != 0 ? "&" : "") + nomes.at(tipo);
    if ((v.vt & VT_ARRAY) != 0) {
        LONG primeiro = 0, ultimo = 0;
        ::SafeArrayGetLBound(v.parray, 1, &primeiro);
        ::SafeArrayGetUBound(v.parray, 1, &ultimo);
        std::string texto = nome + "[" + std::to_string(primeiro) + ".." + std::to_string(ultimo) + "]";
        const auto elementos = automacao::elementos_da_lista(v);
        for (const auto& elemento : *elementos)
            texto += "|" + (tipo == VT_VARIANT ? descrito(elemento.variant())
                                               : automacao::variante_de(elemento.variant()).texto());
        return texto;
    }
    const bool sem_valor = tipo == VT_EMPTY || tipo == VT_NULL || tipo == VT_DISPATCH || tipo == VT_VARIANT;
    return sem_valor ? nome : nome + ":" + automacao::variante_de(v).texto();
}

// Whether it still lives is asked of its `vivos`, which it counts itself in.
class Duplo final : public IDispatch {
  public:
    struct Chamada {
        std::vector<VARIANT> argumentos; // in their order
        automacao::Valor resultado;
        EXCEPINFO* excepcao;
        UINT* argumento;
    };
    using Resposta = std::function<HRESULT(Chamada&)>;
    struct Estado {
        std::string pedidos; // everything that was asked, of every object
        std::map<std::string, Resposta> respostas;
        std::atomic<int> vivos = 0;
        int nomes = 0; // how often a name was asked for
        DISPID primeiro = 1;
    };

    static automacao::Referencia<IDispatch> novo(const std::shared_ptr<Estado>& estado) {
        return new Duplo(estado);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** para) override {
        const bool conhecida = iid == __uuidof(IUnknown) || iid == __uuidof(IDispatch);
        *para = conhecida ? this : nullptr;
        if (conhecida) AddRef();
        return conhecida ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++contagem_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG restam = --contagem_;
        if (restam == 0) delete this;
        return restam;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* quantos) override {
        *quantos = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* nomes, UINT, LCID, DISPID* numero) override {
        ++estado_->nomes;
        const std::string nome = automacao::utf8_de(*nomes);
        if (!estado_->respostas.contains(nome)) return DISP_E_UNKNOWNNAME;
        for (*numero = estado_->primeiro; const auto& [este, resposta] : estado_->respostas) {
            if (este == nome) break;
            ++*numero;
        }
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID numero, REFIID, LCID, WORD modo, DISPPARAMS* parametros,
                                     VARIANT* resultado, EXCEPINFO* excepcao, UINT* argumento) override {
        const auto posicao = numero - estado_->primeiro;
        if (posicao < 0 || posicao >= static_cast<DISPID>(estado_->respostas.size()))
            return DISP_E_MEMBERNOTFOUND;
        const auto& [nome, resposta] = *std::next(estado_->respostas.begin(), posicao);
        static const std::map<WORD, std::string> modos{{DISPATCH_METHOD, ""},
                                                       {DISPATCH_METHOD | DISPATCH_PROPERTYGET, "?"},
                                                       {DISPATCH_PROPERTYPUT, "="},
                                                       {DISPATCH_PROPERTYPUTREF, ":="}};
        estado_->pedidos += nome + modos.at(modo);
        Chamada chamada{{}, {}, excepcao, argumento};
        for (UINT i = parametros->cArgs; i-- > 0;) {
            chamada.argumentos.push_back(parametros->rgvarg[i]);
            estado_->pedidos += " " + descrito(parametros->rgvarg[i]);
        }
        estado_->pedidos += "; ";
        const HRESULT feito = resposta ? resposta(chamada) : S_OK;
        if (resultado != nullptr) *resultado = chamada.resultado.larga();
        return feito;
    }

  private:
    explicit Duplo(std::shared_ptr<Estado> estado) : estado_(std::move(estado)) { ++estado_->vivos; }
    ~Duplo() { --estado_->vivos; }

    std::shared_ptr<Estado> estado_;
    ULONG contagem_ = 0;
};

inline Duplo::Resposta da(const base::Variante& valor, VARTYPE inteiro = VT_I4) {
    return [=](Duplo::Chamada& chamada) {
        chamada.resultado = automacao::variant_de(valor, inteiro);
        return S_OK;
    };
}

// A session over such a component, which knows every operation and agrees to all of them.
struct SobreUmDuplo : testing::Test {
    SobreUmDuplo() {
        for (const char* membro : {"ModoLigacao", "PreparaDocStock", "Desliga", "Validar", "AdicionaLinha",
                                   "SugereValoresLin", "Ano", "Serie", "Quantidade", "Terceiro", "Finalizar"})
            estado->respostas[membro] = {};
        estado->respostas["Liga"] = da(true);
        for (const char* membro : {"CriaObjecto", "DocumentoSubmetido", "Empresa", "Cab"})
            estado->respostas[membro] = objecto();
        estado->respostas["SubmeteDocumento"] = da(0, VT_I2);
        estado->respostas["ResultadoUltimo"] = [](Duplo::Chamada& chamada) {
            automacao::deixa(chamada.argumentos[0], automacao::variant_de("recusado"));
            chamada.resultado = automacao::variant_de(false);
            return S_OK;
        };
        abre();
    }

    void abre(automacao::Espera espera = {}) {
        sessao = std::make_unique<automacao::SessaoERPAutomacao>(
            std::make_shared<automacao::Ligacao>([this] { return Duplo::novo(estado); }, std::move(espera)));
    }

    // Weakly: an answer that kept the state would keep itself.
    Duplo::Resposta objecto() {
        return [fraco = std::weak_ptr(estado)](Duplo::Chamada& chamada) {
            chamada.resultado = automacao::variant_do_objecto(Duplo::novo(fraco.lock()));
            return S_OK;
        };
    }

    // What was asked since it was last looked at.
    std::string pedidos() { return std::exchange(estado->pedidos, ""); }

    startup::ReferenciaERP documento() {
        auto novo = sessao->CriaObjecto("Erp.Documento");
        pedidos();
        return novo;
    }

    std::shared_ptr<Duplo::Estado> estado = std::make_shared<Duplo::Estado>();
    std::unique_ptr<automacao::SessaoERPAutomacao> sessao;
};

inline const startup::PedidoDocStock um_pedido{.tipo_documento = "SB",
                                               .sector = "S",
                                               .serie = 2,
                                               .destino = "D",
                                               .processo = "P",
                                               .data = "01-02-2024",
                                               .armazem = "A",
                                               .artigos = {"", "REEL1"},
                                               .textos_15 = {"", ""},
                                               .quantidades = {0, 2.5},
                                               .precos = {0, 100},
                                               .textos_18 = {"", ""}};
inline const startup::ChaveDocumento uma_chave{2024, "GR", 1, 7};

} // namespace orvex::testes
