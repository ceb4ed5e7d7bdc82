#include "platform/erp/objectos.h"

#include "base/descricao.h"
#include "base/texto.h"

#include <SQLiteCpp/Exception.h>

namespace orvex::platform::erp {
namespace {

using base::Falha;
using base::Variante;
using startup::ReferenciaERP;
using startup::ResultadoERP;
using startup::ValorERP;

[[noreturn]] void desconhecido(std::string_view membro, const char* de) {
    throw Falha("O ERP não conhece o membro «" + std::string(membro) + "» " + de + ".");
}

void exige(const std::vector<ValorERP>& argumentos, std::size_t quantos, const char* membro) {
    if (argumentos.size() != quantos)
        throw Falha(std::string(membro) + " espera " + std::to_string(quantos) + " argumentos e recebeu " +
                    std::to_string(argumentos.size()) + ".");
}

// The record behind a value, which must be of the kind with those members.
Registo& registo_de(const ValorERP& valor, std::span<const Membro> membros, const char* nao_e) {
    if (auto* objecto = dynamic_cast<ObjectoRegisto*>(valor.objecto.get());
        objecto != nullptr && objecto->registo().membros().data() == membros.data())
        return objecto->registo();
    throw Falha(nao_e);
}

Registo& linha_de(const ValorERP& argumento) {
    return registo_de(argumento, membros_linha, "O argumento não é uma linha de documento.");
}

const Variante& simples(std::string_view membro, const ValorERP& valor) {
    if (valor.objecto) throw Falha("O membro «" + std::string(membro) + "» não recebe um objecto.");
    return valor.valor;
}

// The lines of a document, counted from 1.
class Linhas : public startup::ObjectoERP {
  public:
    explicit Linhas(std::shared_ptr<Documento> documento) : documento_(std::move(documento)) {}

    ValorERP obtem(std::string_view membro) override {
        if (base::mesmo_nome(membro, "Count")) return documento_->linhas.size();
        desconhecido(membro, "das linhas do documento");
    }

    void poe(std::string_view membro, const ValorERP&) override {
        desconhecido(membro, "das linhas do documento");
    }

  private:
    ValorERP invoca(std::string_view membro, Argumentos& argumentos) override {
        if (!base::mesmo_nome(membro, "Item")) return obtem(membro);
        exige(argumentos, 1, "Item");
        const std::int64_t numero = argumentos[0].valor.inteiro();
        if (numero < 1 || numero > static_cast<std::int64_t>(documento_->linhas.size()))
            throw Falha("O documento não tem a linha " + std::to_string(numero) + ".",
                        base::numeros_falha::sem_elemento);
        return ReferenciaERP(
            std::make_shared<ObjectoRegisto>(documento_->linhas[static_cast<std::size_t>(numero - 1)]));
    }

    std::shared_ptr<Documento> documento_;
};

} // namespace

BaseErp& Estado::aberta() const {
    if (base) return *base;
    throw Falha("A sessão do ERP não está ligada.");
}

const ResultadoERP& Estado::executa(const std::function<void()>& operacao) {
    ultimo = aberta().executa(operacao, SQLite::TransactionBehavior::IMMEDIATE);
    return ultimo;
}

const ResultadoERP& Estado::consulta(const std::function<void()>& operacao) {
    ultimo = aberta().executa(operacao, SQLite::TransactionBehavior::DEFERRED);
    return ultimo;
}

void ObjectoRegisto::poe(std::string_view membro, const ValorERP& valor) {
    registo_->poe(membro, simples(membro, valor));
}

ValorERP ObjectoRegisto::invoca(std::string_view membro, Argumentos& argumentos) {
    if (!argumentos.empty()) throw Falha("O membro «" + std::string(membro) + "» não recebe argumentos.");
    return obtem(membro);
}

DocumentoComercial::DocumentoComercial(std::shared_ptr<Estado> estado) : estado_(std::move(estado)) {}

ValorERP DocumentoComercial::obtem(std::string_view membro) {
    if (base::mesmo_nome(membro, "Cab"))
        return ReferenciaERP(
            std::make_shared<ObjectoRegisto>(std::shared_ptr<Registo>(documento_, &documento_->cabecalho)));
    if (base::mesmo_nome(membro, "Linhas")) return ReferenciaERP(std::make_shared<Linhas>(documento_));
    if (base::mesmo_nome(membro, "Origem")) return origem_;
    if (base::mesmo_nome(membro, "UltimaMensagem")) return ultima_mensagem_;
    desconhecido(membro, "do documento comercial");
}

void DocumentoComercial::poe(std::string_view membro, const ValorERP& valor) {
    if (base::mesmo_nome(membro, "Cab")) {
        documento_->cabecalho =
            registo_de(valor, membros_cabecalho, "«Cab» só recebe o cabeçalho de um documento.");
        return;
    }
    if (!base::mesmo_nome(membro, "Origem")) desconhecido(membro, "do documento comercial");
    origem_ = simples(membro, valor).inteiro();
}

ValorERP DocumentoComercial::invoca(std::string_view membro, Argumentos& argumentos) {
    using Metodo = Variante (DocumentoComercial::*)(Argumentos&);
    static constexpr struct {
        const char* nome;
        std::size_t argumentos;
        Metodo metodo;
    } metodos[] = {{"Validar", 0, &DocumentoComercial::Validar},
                   {"Ler", 4, &DocumentoComercial::Ler},
                   {"SugereValoresLin", 8, &DocumentoComercial::SugereValoresLin},
                   {"AdicionaLinha", 1, &DocumentoComercial::AdicionaLinha},
                   {"Finalizar", 4, &DocumentoComercial::Finalizar}};
    for (const auto& conhecido : metodos) {
        if (!base::mesmo_nome(membro, conhecido.nome)) continue;
        exige(argumentos, conhecido.argumentos, conhecido.nome);
        return (this->*conhecido.metodo)(argumentos);
    }
    ValorERP propriedade = obtem(membro);
    if (base::mesmo_nome(membro, "Linhas") && !argumentos.empty())
        return propriedade.objecto->chama("Item", argumentos);
    exige(argumentos, 0, "A propriedade");
    return propriedade;
}

Variante DocumentoComercial::resultado(const ResultadoERP& resultado) {
    ultima_mensagem_ = resultado.mensagem;
    return resultado.sucesso ? 0 : -1;
}

Variante DocumentoComercial::Validar(Argumentos&) {
    // Loading a note builds its header on an empty screen: whatever is missing is told, never thrown.
    ResultadoERP validado{true, {}};
    try {
        completa_do_cliente(estado_->aberta(), *documento_);
        verifica_cabecalho(estado_->aberta(), *documento_);
    } catch (const SQLite::Exception& falha) {
        validado = {false, texto_da_falha(falha)};
    } catch (const Recusa& recusa) {
        validado = {false, recusa.what()};
    } catch (const std::exception& falha) {
        validado = {false, base::descricao(falha)};
    }
    return resultado(validado);
}

Variante DocumentoComercial::Ler(Argumentos& argumentos) {
    Registo pedido{membros_cabecalho, "da chave do documento"};
    constexpr const char* nomes[] = {"Ano", "Serie", "NossoNoDocumento", "TipoDocumento"};
    for (std::size_t i = 0; i < std::size(nomes); ++i)
        pedido.poe(nomes[i], argumentos[i].valor);
    const startup::ChaveDocumento chave = Documento{pedido, {}}.chave();

    submetido_ = false;
    return resultado(estado_->consulta([&] {
        if (!le(estado_->aberta(), chave, *documento_))
            throw Recusa("O documento " + chave.texto() + " não existe.");
    }));
}

Variante DocumentoComercial::SugereValoresLin(Argumentos& argumentos) {
    try {
        sugere_do_artigo(estado_->aberta(), linha_de(argumentos[0]));
    } catch (const SQLite::Exception& falha) {
        throw Falha(texto_da_falha(falha));
    }
    return {};
}

Variante DocumentoComercial::AdicionaLinha(Argumentos& argumentos) {
    documento_->linhas.push_back(std::make_shared<Registo>(linha_de(argumentos[0])));
    documento_->linhas.back()->poe("NumeroDaLinha", documento_->linhas.size());

    return {};
}

const ResultadoERP& DocumentoComercial::submete() {
    const ResultadoERP& feito = estado_->consulta([this] { verifica(estado_->aberta(), *documento_); });
    resultado(feito);
    submetido_ = feito.sucesso;
    return feito;
}

Variante DocumentoComercial::Finalizar(Argumentos& argumentos) {
    Documento gravado = *documento_; // a failure must leave no number behind
    const auto& feito = estado_->executa([&] {
        if (!submetido_) throw Recusa("O documento não foi submetido.");
        const startup::ChaveDocumento chave = gravado.chave();
        if (argumentos[0].valor.inteiro() != chave.NossoNoDocumento ||
            argumentos[3].valor.inteiro() != chave.Ano || argumentos[2].valor.texto() != chave.TipoDocumento)
            throw Recusa("A chave indicada não é a do documento submetido.");
        grava(estado_->aberta(), gravado);
    });
    if (feito.sucesso) {
        argumentos[0] = gravado.chave().NossoNoDocumento;
        *documento_ = std::move(gravado);
        submetido_ = false;
    }
    return resultado(feito);
}

} // namespace orvex::platform::erp
