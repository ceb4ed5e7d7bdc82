#include "platform/diario/diario.h"

#include "base/descricao.h"
#include "livro/documentos.h"
#include "platform/diario/decisao.h"

#include <algorithm>

namespace orvex::platform::diario {

using confirmacao::Compensacao;
using confirmacao::Intencao;
using confirmacao::PedidoERP;
using confirmacao::RespostaERP;

namespace {

constexpr const char* nada_foi_feito = "Nada foi feito, e o ecrã fica como está: ";

template <typename Trabalho>
auto ou_recusa(const char* porque, const Trabalho& trabalho) {
    try {
        return trabalho();
    } catch (const confirmacao::Recusada&) {
        throw;
    } catch (const std::exception& falha) {
        throw confirmacao::Recusada(nada_foi_feito + std::string(porque) + "\r\n" + base::descricao(falha) +
                                    "\r\nResolva a causa, ou espere um pouco, e volte a confirmar.");
    }
}

} // namespace

void Diario::intencao(const Intencao& intencao) {
    ficheiro_.reset();
    ou_recusa("não foi possível ver o que é feito de uma operação anterior.",
              [this] { resolve_pendentes(); });
    const Cabecalho este = ou_recusa("não foi possível ler o estado do ERP e dos movimentos.", [&] {
        try {
            return cabecalho(intencao);
        } catch (...) {
            sessao_.reset(); // a connection that failed is not asked again
            throw;
        }
    });
    ficheiro_ =
        ou_recusa("não foi possível escrever no diário o que se ia fazer, e sem ele um corte a meio não "
                  "se saberia reparar.",
                  [&] { return gaveta_.cria(linha_da_intencao(este, intencao)); });
}

// What this program could not tell at the time may be told by now. Who is told of it confirms again: what he
// was about to do may be what was done. What he put off is for the next start.
void Diario::resolve_pendentes() {
    bool dito = false;
    for (auto um = pendentes_.begin(); um != pendentes_.end();) {
        const Tratamento este = meios_.resolve(**um);
        um = este.assente || este.dito ? pendentes_.erase(um) : std::next(um);
        dito = dito || este.dito;
    }
    if (dito)
        throw confirmacao::Recusada(
            nada_foi_feito + std::string("houve notícias de uma operação anterior.\r\nSe esta ainda for "
                                         "precisa, volte a confirmar."));
}

Cabecalho Diario::cabecalho(const Intencao& intencao) {
    Cabecalho este{.empresa = meios_.identidade.empresa,
                   .utilizador = meios_.identidade.utilizador,
                   .maquina = meios_.identidade.maquina,
                   .hora = base::DataHora::agora()};
    const bool cria = !intencao.cria.TipoDocumento.empty();
    std::vector<std::string> anunciadas;
    if (cria) anunciadas.push_back(livro::perguntas::ultimo_numero(intencao.cria));
    anunciadas.push_back(livro::perguntas::ultimo_registo());
    sessao().EmPasso(anunciadas, [&] {
        if (cria) este.ultimo_numero = livro::ultimo_numero(sessao(), intencao.cria);
        este.ultimo_registo = livro::ultimo_registo(sessao());
    });
    return este;
}

startup::SessaoBD& Diario::sessao() {
    if (sessao_ == nullptr) sessao_ = meios_.abre_sessao();
    return *sessao_;
}

void Diario::antes_do_erp(const PedidoERP& pedido) {
    if (ficheiro_ != nullptr) ficheiro_->escreve(linha_da_chamada(pedido), Descarga::sim);
}

// The next step flushes it. Lost with the power before that, it is as if the answer had not come.
void Diario::depois_do_erp(const PedidoERP& pedido, const RespostaERP& resposta) {
    if (ficheiro_ != nullptr) ficheiro_->escreve(linha_da_resposta(pedido, resposta), Descarga::nao);
}

void Diario::antes_de_confirmar() {
    if (ficheiro_ != nullptr) ficheiro_->escreve(linha_de_confirmar(), Descarga::sim);
}

void Diario::feita() noexcept {
    acaba_se([this] {
        const Passos passos = ficheiro_->passos();
        const bool como_dito =
            std::all_of(passos.intencao.anula.begin(), passos.intencao.anula.end(), [&](const auto& chave) {
                const Chamada* chamada = anulacao(passos, chave);
                const bool dita = chamada != nullptr && chamada->resposta &&
                                  chamada->resposta->desfecho == confirmacao::Desfecho::feito;
                return !dita || anulado(chave);
            });
        return como_dito ? std::optional(Resultado::feita) : std::nullopt;
    });
}

void Diario::compensada(const Compensacao& fim) noexcept {
    acaba_se([&] { return assente(fim); });
}

// What became of a confirmation that failed, where nothing is left to be found out of it: by what ERP and
// ledger hold, whatever the ERP answered, and not counting what the user was told.
std::optional<Resultado> Diario::assente(const Compensacao& fim) {
    if (fim.por_saber || !fim.avisado || !fim.por_verificar.empty()) return std::nullopt;
    if (!std::all_of(fim.anulados.begin(), fim.anulados.end(),
                     [this](const auto& chave) { return anulado(chave); }))
        return std::nullopt;
    const Passos passos = ficheiro_->passos();
    const Decisao decisao = decide(passos, le_factos(sessao(), passos));
    for (const auto* documentos :
         {&decisao.a_anular, &decisao.a_completar, &decisao.a_procurar, &decisao.a_ver})
        for (const startup::ChaveDocumento& chave : *documentos)
            if (std::find(fim.por_anular.begin(), fim.por_anular.end(), chave) == fim.por_anular.end())
                return std::nullopt;
    if (decisao.desfecho == Desfecho::feita) return Resultado::feita;
    return decisao.desfecho == Desfecho::por_decidir ? Resultado::por_ver : Resultado::desfeita;
}

bool Diario::anulado(const startup::ChaveDocumento& chave) {
    return livro::estado_no_erp(sessao(), chave) == livro::EstadoERP::anulado;
}

// What cannot be told stays unfinished.
void Diario::acaba_se(const std::function<std::optional<Resultado>()>& assente) noexcept {
    if (ficheiro_ == nullptr) return;
    try {
        if (const auto resultado = assente()) return acaba(*resultado);
    } catch (const std::exception& falha) {
        sessao_.reset();
        meios_.engole(base::descricao(falha));
    }
    pendentes_.push_back(std::move(ficheiro_));
}

// Left unfinished, the next start finds what it did in place and says so.
void Diario::acaba(Resultado resultado) noexcept {
    try {
        ficheiro_->acaba(resultado);
    } catch (const std::exception& falha) {
        meios_.engole(base::descricao(falha));
    }
    ficheiro_.reset();
}

} // namespace orvex::platform::diario
