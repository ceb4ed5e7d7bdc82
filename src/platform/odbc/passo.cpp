// The steps of the rules: what they ask is read ahead, what they write is sent together.
#include "platform/odbc/motor_odbc.h"

#include "base/descricao.h"

#include <algorithm>

namespace orvex::platform::odbc {
namespace {

using base::Falha;
using startup::FalhaAdiada;
using Natureza = FalhaODBC::Natureza;

constexpr const char* por_enviar =
    "O que estava a ser gravado não foi enviado todo: a transacção tem de ser anulada.";

bool do_servidor(const Falha& falha) {
    const auto* odbc = dynamic_cast<const FalhaODBC*>(&falha);
    return odbc != nullptr && odbc->natureza() == Natureza::outra;
}

Resposta le_resposta(Instrucao& resultados, std::vector<registos::Coluna> colunas) {
    registos::Linhas linhas(colunas.size());
    while (resultados.avanca()) {
        linhas.junta_linha();
        for (std::size_t i = 0; i < colunas.size(); ++i)
            linhas.junta(resultados.celula(i));
    }
    return {std::move(colunas), std::move(linhas)};
}

// Those that are followed by their own marks.
void junta_respostas(Instrucao& resultados, std::vector<Resposta>& lidas) {
    std::optional<Resposta> sem_marca;
    do {
        auto colunas = resultados.le_colunas();
        if (const auto marca = le_marca(resultados, colunas)) {
            if (!sem_marca || marca->causa || marca->lugar != lidas.size() + 1) return;
            lidas.push_back(std::move(*sem_marca));
            sem_marca.reset();
        } else {
            if (sem_marca) return;
            sem_marca = le_resposta(resultados, std::move(colunas));
        }
    } while (resultados.seguinte());
}

} // namespace

void MotorODBC::em_passo(const std::vector<std::string>& perguntas, const std::function<void()>& trabalho) {
    envia(); // of the step around this one
    Passo passo(passo_);
    le_adiante(passo, perguntas);
    struct Dentro {
        Passo*& onde;
        Passo* antes;
        ~Dentro() { onde = antes; }
    } const dentro{passo_, std::exchange(passo_, &passo)};
    try {
        trabalho();
    } catch (...) {
        larga_o_adiado();
        throw;
    }
    envia();
}

// The work has failed, and that is what is told.
void MotorODBC::larga_o_adiado() {
    if (!passo_->ha_escritas()) return;
    if (transaccao_ != Transaccao::nenhuma) return exige_anulacao(Falha(por_enviar));
    try {
        envia();
    } catch (const std::exception& falha) {
        engole(falha);
    }
}

// --- Reading ahead -----------------------------------------------------------------------------------------

// Those that cannot stand between others are asked for when the work asks.
void MotorODBC::le_adiante(Passo& passo, const std::vector<std::string>& perguntas) {
    std::vector<std::string> juntas;
    std::size_t texto = 0;
    const auto le = [&] {
        const bool todas = le_juntas(passo, juntas);
        juntas.clear();
        texto = 0;
        return todas;
    };
    for (const std::string& pergunta : perguntas) {
        if (!e_consulta(pergunta) || !cabe_entre_outras(pergunta)) continue;
        if (juntas.size() == Passo::perguntas_juntas ||
            (!juntas.empty() && texto + pergunta.size() > Passo::texto_junto))
            if (!le()) return;
        juntas.push_back(pergunta);
        texto += pergunta.size();
    }
    if (!juntas.empty()) le();
}

// Every query has one result, which its mark follows. One that the server refuses, or that came otherwise,
// ends the reading: it fails by itself when the work asks for it, and those after it are asked one by one.
bool MotorODBC::le_juntas(Passo& passo, const std::vector<std::string>& perguntas) {
    std::string texto = variaveis_das_marcas;
    for (std::size_t i = 0; i < perguntas.size(); ++i)
        texto += perguntas[i] + marca_de(i + 1);
    std::vector<Resposta> lidas;
    const auto guarda = [&] {
        for (std::size_t i = 0; i < lidas.size(); ++i)
            passo.guarda(perguntas[i], std::move(lidas[i]));
        return lidas.size() == perguntas.size();
    };
    try {
        corre(Repete::sim, [&] {
            lidas.clear();
            Instrucao resultados = instrucao();
            ligacao_->chama(espera::Motivo::servidor, [&] {
                resultados.consulta(texto);
                junta_respostas(resultados, lidas);
            });
        });
        return guarda();
    } catch (const Falha& falha) {
        const bool anulada = do_servidor(falha) && anulada_pelo_servidor();
        if (do_servidor(falha) && !anulada) {
            guarda();
            return false;
        }
        throw FalhaAdiada(anulada ? com(falha, nada_ficou) : falha, FalhaAdiada::Genero::pergunta,
                          perguntas.at(std::min(lidas.size(), perguntas.size() - 1)));
    }
}

// --- Writing behind ----------------------------------------------------------------------------------------

// Whether a statement may wait: it changes rows and nothing else.
bool MotorODBC::pode_esperar(const std::string& sql) const {
    return passo_ != nullptr && escreve_linhas(sql) && cabe_entre_outras(sql);
}

// What is asked after it sees it, and the lock is taken when it is asked for, not when it is sent.
void MotorODBC::adia(Escrita escrita) {
    exige_transaccao_viva();
    tranca_para_escrever();
    if (!passo_->cabe(escrita)) envia();
    passo_->junta(std::move(escrita));
}

void MotorODBC::acaba_o_adiado() {
    envia();
    if (passo_ != nullptr) passo_->esquece_respostas();
}

void MotorODBC::envia() {
    if (passo_ == nullptr || !passo_->ha_escritas()) return;
    transaccao_ == Transaccao::nenhuma ? envia_sozinhas(passo_->retira_escritas())
                                       : envia_na_transaccao(passo_->retira_escritas());
}

void MotorODBC::corre_lote(Lote& lote, std::size_t quantas) {
    Instrucao resultados = instrucao();
    ligacao_->chama(espera::Motivo::servidor, [&] { lote.corre(resultados, quantas); });
}

// The first failure ends it. What comes over the connection after it changes only what became of the
// transaction.
void MotorODBC::envia_na_transaccao(std::vector<Escrita> escritas) {
    Lote lote(std::move(escritas), Lote::AoFalhar::para);
    try {
        corre(Repete::nao, [&] {
            corre_lote(lote, lote.por_saber());
            if (lote.falhou()) throw lote.falhadas().front().causa;
        });
    } catch (const Falha& apanhada) {
        Falha dita = apanhada;
        if (!lote.falhou()) {
            lote.acabou(apanhada);
        } else {
            dita = lote.falhadas().front().causa;
            if (transaccao_ == Transaccao::perdida) dita = com(dita, nada_ficou);
        }
        const FalhaAdiada primeira = lote.adiada(lote.falhadas().front(), dita);
        exige_anulacao(primeira);
        throw primeira;
    }
}

// Each stands or fails by itself. But with the connection it is lost which of them the server made, and none
// is repeated.
void MotorODBC::envia_sozinhas(std::vector<Escrita> escritas) {
    Lote lote(std::move(escritas), Lote::AoFalhar::segue);
    std::size_t juntas = lote.por_saber();
    bool incerto = false;
    while (lote.por_saber() > 0) {
        bool enviadas = false;
        try {
            corre(Repete::nao, [&] {
                enviadas = true;
                corre_lote(lote, juntas);
            });
        } catch (const Falha& apanhada) {
            // As a rule one of them cannot even be understood, and none was run.
            if (juntas > 1 && !lote.comecou() && do_servidor(apanhada)) {
                juntas = 1;
                continue;
            }
            lote.acabou(apanhada);
            if (ligacao_ != nullptr) continue;
            incerto = enviadas;
            break;
        }
    }
    if (lote.falhou()) throw a_dizer(lote, incerto);
}

// Of several: that of a row that others changed may be looked for by the rules, and says nothing of another.
FalhaAdiada MotorODBC::a_dizer(const Lote& lote, bool incerto) const {
    const auto& todas = lote.falhadas();
    auto dita = std::find_if(todas.begin(), todas.end(), [](const Lote::Falhada& esta) {
        return esta.causa.numero() != startup::numeros_bd::registo_alterado;
    });
    if (dita == todas.end()) dita = todas.begin();
    for (auto outra = todas.begin(); outra != todas.end(); ++outra)
        if (outra != dita) engole(outra->causa);
    const Falha& causa = dita->causa;
    return lote.adiada(*dita, incerto ? com(causa, nao_se_sabe) : causa);
}

// What the program believes to be written is not: only going back is right.
void MotorODBC::exige_anulacao(const Falha& causa) {
    if (transaccao_ != Transaccao::aberta) return;
    transaccao_ = Transaccao::falhada;
    causa_ = causa;
}

} // namespace orvex::platform::odbc
