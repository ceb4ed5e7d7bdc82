#include "platform/operacoes/registo_operacoes.h"

#include "base/descricao.h"
#include "platform/operacoes/sistema.h"

#include <utility>

namespace orvex::platform::operacoes {
namespace {

using confirmacao::Desfecho;
using startup::ChaveDocumento;

std::string milesimos(std::chrono::nanoseconds duracao) {
    return std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(duracao).count());
}

std::string enumera(const std::vector<ChaveDocumento>& documentos) {
    std::string texto;
    for (const ChaveDocumento& chave : documentos)
        texto += (texto.empty() ? "" : ", ") + chave.texto();
    return texto;
}

std::string enumera(const std::vector<confirmacao::ArtigoMovido>& artigos) {
    std::string texto;
    for (const auto& [artigo, quantidade, armazem] : artigos)
        texto.append(texto.empty() ? "" : "; ")
            .append(artigo + " " + quantidade.texto() + " t ")
            .append(armazem);
    return texto;
}

const char* nome(Desfecho desfecho) {
    switch (desfecho) {
    case Desfecho::feito:
        return "feito";
    case Desfecho::recusado:
        return "recusado";
    case Desfecho::sem_resposta:
        return "sem_resposta";
    }
    return "";
}

// What is put into rows and objects is nobody's business: names and addresses are among it.
std::string sem_valores(const Operacao& operacao) {
    switch (operacao.especie) {
    case Operacao::Especie::altera:
        return "ALTERA " + std::string(operacao.nome);
    case Operacao::Especie::le:
    case Operacao::Especie::conta:
        return "LE " + std::string(operacao.nome);
    case Operacao::Especie::obtem:
    case Operacao::Especie::poe:
    case Operacao::Especie::chama:
        return std::string(operacao.nome) + "." + std::string(operacao.membro);
    case Operacao::Especie::cria_stock:
        return std::string(operacao.nome); // what it was to hold is in the confirmation's own line
    case Operacao::Especie::abre:
    case Operacao::Especie::consulta:
    case Operacao::Especie::abre_actualizavel:
    case Operacao::Especie::executa:
    case Operacao::Especie::comprimento:
    case Operacao::Especie::inicia:
    case Operacao::Especie::tranca:
    case Operacao::Especie::confirma:
    case Operacao::Especie::desfaz:
    case Operacao::Especie::em_transaccao:
    case Operacao::Especie::liga:
    case Operacao::Especie::cria_objecto:
    case Operacao::Especie::prepara_stock:
    case Operacao::Especie::submete:
    case Operacao::Especie::submetido:
    case Operacao::Especie::anula:
    case Operacao::Especie::resultado:
        return operacao.texto();
    }
    return {};
}

} // namespace

RegistoOperacoes::RegistoOperacoes(std::filesystem::path pasta, std::function<void(const std::string&)> diz)
    : ficheiro_(std::move(pasta)), diz_(std::move(diz)) {}

void RegistoOperacoes::escreve(const Linha& linha) noexcept {
    try {
        const std::string porque = ficheiro_.escreve(linha.texto());
        if (porque.empty() || std::exchange(avariado_, true)) return;
        diz_("O registo de operações não pode ser escrito: " + porque + ". O programa continua sem ele.");
    } catch (const std::exception&) {
        avariado_ = true;
    }
}

void RegistoOperacoes::inicio(const std::string& versao, const std::string& modo) {
    escreve(linha("inicio")
                .com("versao", versao)
                .com_texto("utilizador", utilizador_da_maquina())
                .com_texto("modo", modo));
}

void RegistoOperacoes::empresa(const std::string& nome, const std::string& motor,
                               const std::string& controlador) {
    escreve(
        linha("empresa").com_texto("nome", nome).com("motor", motor).com_texto("controlador", controlador));
}

void RegistoOperacoes::caixa(const std::string& texto) { escreve(linha("caixa").com_texto("texto", texto)); }

void RegistoOperacoes::resposta(const std::string& dada) { escreve(linha("resposta").com("dada", dada)); }

void RegistoOperacoes::falha(const std::string& texto) { escreve(linha("falha").com_texto("erro", texto)); }

void RegistoOperacoes::engolida(const std::string& texto) noexcept {
    escreve(linha("engolida").com_texto("erro", texto));
}

void RegistoOperacoes::fim(const std::string& como) { escreve(linha("fim").com("como", como)); }

void RegistoOperacoes::depois(const Operacao& operacao, const Fim& fim) {
    if (fim.falha == nullptr && fim.duracao < demora) return;
    Linha esta = linha(fim.falha != nullptr ? "operacao_falhou" : "operacao_lenta");
    esta.com_texto("operacao", sem_valores(operacao)).com("ms", milesimos(fim.duracao));
    if (fim.falha != nullptr) {
        const auto* numerada = dynamic_cast<const base::Falha*>(fim.falha);
        if (numerada != nullptr && numerada->numero() != 0)
            esta.com("numero", std::to_string(numerada->numero()));
        esta.com_texto("erro", base::descricao(*fim.falha));
    }
    escreve(esta);
}

void RegistoOperacoes::intencao(const confirmacao::Intencao& intencao) {
    confirmacao_ = Confirmacao{intencao, Relogio::now(), {}, {}};
}

void RegistoOperacoes::depois_do_erp(const confirmacao::PedidoERP& pedido,
                                     const confirmacao::RespostaERP& resposta) {
    const bool cria = pedido.accao == confirmacao::AccaoERP::cria;
    const ChaveDocumento& chave = resposta.chave.NossoNoDocumento != 0 ? resposta.chave : pedido.chave;
    if (confirmacao_ && resposta.desfecho == Desfecho::feito)
        (cria ? confirmacao_->criados : confirmacao_->anulados).push_back(chave);
    escreve(linha("erp")
                .com("operacao", cria ? "cria" : "anula")
                .com("desfecho", nome(resposta.desfecho))
                .com("chave", chave.texto())
                .com_texto("mensagem", resposta.mensagem));
}

Linha RegistoOperacoes::linha_da_confirmacao(const char* desfecho) const {
    Linha esta = linha("confirmacao");
    esta.com("desfecho", desfecho);
    if (!confirmacao_) return esta; // it failed before it was known what it was to do
    const confirmacao::Intencao& intencao = confirmacao_->intencao;
    return esta.com("fluxo", confirmacao::nome(intencao.fluxo))
        .com("criados", enumera(confirmacao_->criados))
        .com("anulados", enumera(confirmacao_->anulados))
        .com("cliente", intencao.Cliente)
        .com("data", intencao.Data.data_iso())
        .com("artigos", enumera(intencao.artigos))
        .com("ms", milesimos(Relogio::now() - confirmacao_->inicio));
}

void RegistoOperacoes::feita() noexcept {
    escreve(linha_da_confirmacao("feita"));
    confirmacao_.reset();
}

void RegistoOperacoes::compensada(const confirmacao::Compensacao& compensacao) noexcept {
    if (confirmacao_) // what the compensation cancelled has a place of its own
        std::erase_if(confirmacao_->anulados, [&](const ChaveDocumento& chave) {
            return std::find(compensacao.anulados.begin(), compensacao.anulados.end(), chave) !=
                   compensacao.anulados.end();
        });
    Linha esta = linha_da_confirmacao(compensacao.por_saber ? "por_saber" : "desfeita");
    esta.com_texto("erro", compensacao.erro)
        .com("compensados", enumera(compensacao.anulados))
        .com("por_anular", enumera(compensacao.por_anular));
    for (const std::string& texto : compensacao.por_verificar)
        esta.com_texto("por_verificar", texto);
    escreve(esta);
    confirmacao_.reset();
}

} // namespace orvex::platform::operacoes
