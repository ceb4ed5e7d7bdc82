#include "confirmacao/confirmacao.h"

#include "base/descricao.h"
#include "startup/parametros.h"

#include <utility>

namespace orvex::confirmacao {

using startup::ChaveDocumento;
using startup::ResultadoERP;

namespace {

// A document that may exist: under the key asked for, or by what it was to hold.
std::string nome_de(const ChaveDocumento& pedida, const std::string& conteudo) {
    const std::string documento =
        pedida.NossoNoDocumento != 0
            ? pedida.texto()
            : pedida.TipoDocumento + "/" + std::to_string(pedida.Serie) + " de " + std::to_string(pedida.Ano);
    return documento + " (" + conteudo + ")";
}

} // namespace

Confirmacao::Fim Confirmacao::executa(const std::function<void()>& trabalho,
                                      const std::function<std::string(const std::exception&)>& erro) {
    try {
        trabalho();
        if (!iniciada_ || confirmada_) return Fim::acabou;
        throw base::FalhaGuarda("A operação não chegou a ser gravada.");
    } catch (const Recusada& recusa) {
        meios_.observador.compensada({.erro = recusa.what()});
        meios_.avisa(recusa.what());
        return Fim::recusada;
    } catch (const startup::FalhaParametro& falha) {
        if (!iniciada_) throw;
        compensa(falha, erro(falha));
    } catch (const std::exception& falha) {
        compensa(falha, erro(falha));
    } catch (...) {
        const base::Falha falha("Ocorreu um erro inesperado.");
        compensa(falha, falha.what());
    }
    return Fim::falhou;
}

void Confirmacao::Inicia(const Intencao& intencao) {
    meios_.observador.intencao(intencao);
    iniciada_ = true;
    meios_.BD.IniciaTransaccao();
}

// While compensating, what the record cannot take must not keep a document from being cancelled.
void Confirmacao::conta(const std::function<void(Observador&)>& passo) {
    if (!falhou_) return passo(meios_.observador);
    try {
        passo(meios_.observador);
    } catch (const std::exception& falha) {
        meios_.observador.engolida(base::descricao(falha));
    }
}

ResultadoERP Confirmacao::Cria(const ChaveDocumento& pedida, const Criacao& criacao) {
    const PedidoERP pedido{AccaoERP::cria, pedida};
    conta([&](Observador& observador) { observador.antes_do_erp(pedido); });
    const std::size_t antes = DocsCriados.size();
    const auto chave = [&] { return DocsCriados.size() > antes ? DocsCriados.back() : pedida; };
    por_nomear_.push_back(nome_de(pedida, criacao.conteudo));
    bool criado = false;
    try {
        criado = criacao.pede([this](const ChaveDocumento& dada) { DocsCriados.push_back(dada); });
    } catch (const std::exception& falha) {
        if (DocsCriados.size() > antes) por_nomear_.pop_back(); // its key names it
        falhou_ = true;
        conta([&](Observador& observador) {
            observador.depois_do_erp(pedido, {Desfecho::sem_resposta, chave(), base::descricao(falha)});
        });
        throw;
    }
    // Created without a key, it can only be named by what it holds.
    if (!criado || DocsCriados.size() > antes) por_nomear_.pop_back();
    if (!criado) DocsCriados.resize(antes);
    ResultadoERP resultado{criado, {}};
    std::exception_ptr sem_texto; // its refusal is settled, whatever its text
    try {
        if (!criado && criacao.porque) resultado.mensagem = criacao.porque();
    } catch (const std::exception& falha) {
        resultado.mensagem = base::descricao(falha);
        sem_texto = std::current_exception();
    }
    conta([&](Observador& observador) {
        observador.depois_do_erp(
            pedido, {criado ? Desfecho::feito : Desfecho::recusado, chave(), resultado.mensagem});
    });
    if (sem_texto) std::rethrow_exception(sem_texto);
    return resultado;
}

void ExigeNumero(const ChaveDocumento& criada) {
    if (criada.NossoNoDocumento <= 0) throw base::Falha("O ERP não disse o número do documento que criou.");
}

ChaveDocumento Confirmacao::CriaDocStock(const startup::PedidoDocStock& pedido) {
    const auto data = base::DataHora::le(pedido.data);
    const ChaveDocumento pedida{static_cast<std::int16_t>(data ? data->ano : 0), pedido.tipo_documento,
                                pedido.serie};
    const base::Moeda quantidade = base::Moeda::de_real(pedido.quantidades.at(1));
    ChaveDocumento criada;
    ResultadoERP ultimo;
    const auto resultado =
        Cria(pedida, {.conteudo = pedido.artigos.at(1) + " " + meios_.formato.texto(quantidade) + " t",
                      .pede =
                          [&](const auto& anota) {
                              criada = meios_.gERP.CriaDocStock(pedido);
                              if (criada.NossoNoDocumento > 0) anota(criada);
                              ultimo = meios_.gERP.ResultadoUltimo();
                              if (ultimo.sucesso) ExigeNumero(criada);
                              return ultimo.sucesso;
                          },
                      .porque = [&] { return ultimo.mensagem; }});
    if (!resultado.sucesso) throw base::Falha(resultado.mensagem, erp_recusou);
    return criada;
}

void Confirmacao::anuncia_anulacao(const ChaveDocumento& chave) {
    conta([&](Observador& observador) { observador.antes_do_erp({AccaoERP::anula, chave}); });
}

ResultadoERP Confirmacao::pede_anulacao(const ChaveDocumento& chave, Leitura leitura) {
    const PedidoERP pedido{AccaoERP::anula, chave};
    ResultadoERP resultado;
    try {
        resultado = meios_.gERP.AnulaDocumento(1, chave);
        if (leitura == Leitura::resultado_ultimo) resultado = meios_.gERP.ResultadoUltimo();
    } catch (const std::exception& falha) {
        falhou_ = true;
        conta([&](Observador& observador) {
            observador.depois_do_erp(pedido, {Desfecho::sem_resposta, chave, base::descricao(falha)});
        });
        throw;
    }
    conta([&](Observador& observador) {
        observador.depois_do_erp(
            pedido, {resultado.sucesso ? Desfecho::feito : Desfecho::recusado, chave, resultado.mensagem});
    });
    return resultado;
}

ResultadoERP Confirmacao::Anula(const ChaveDocumento& chave, Leitura leitura) {
    anuncia_anulacao(chave); // one that is refused there is never asked for
    anulacoes_.push_back({chave});
    ResultadoERP resultado = pede_anulacao(chave, leitura);
    if (resultado.sucesso)
        anulacoes_.back().certa = true;
    else
        anulacoes_.pop_back();
    return resultado;
}

bool Confirmacao::AnulaSubstituido(const ChaveDocumento& chave) {
    if (Anula(chave, Leitura::resposta).sucesso) return true;
    PorAnular.push_back(chave);
    return false;
}

void Confirmacao::Confirma() {
    meios_.observador.antes_de_confirmar();
    meios_.BD.ConfirmaTransaccao();
    confirmada_ = true;
    if (PorAnular.empty()) conta_feita();
}

void Confirmacao::Desiste(const std::string& porque) {
    meios_.BD.ConfirmaTransaccao();
    confirmada_ = feita_ = true;
    meios_.observador.compensada({.erro = porque});
}

void Confirmacao::AvisaPorAnular() {
    avisa_por_anular(PorAnular);
    conta_feita();
}

void Confirmacao::conta_feita() {
    if (!std::exchange(feita_, true)) meios_.observador.feita();
}

} // namespace orvex::confirmacao
