#include "platform/diario/rascunhos.h"

#include "base/caminho.h"
#include "base/descricao.h"
#include "base/falha.h"

#include <algorithm>
#include <set>
#include <utility>

namespace orvex::platform::diario {
namespace {

namespace fs = std::filesystem;

constexpr const char* com_a_nota = ".rascunho";
constexpr const char* do_posto = ".posto";
constexpr const char* por_fazer = ".novo";
constexpr const char* estragado = ".estragado";

fs::path com_fim(fs::path nome, const char* fim) { return nome.replace_extension(fim); }

} // namespace

Rascunhos::Rascunhos(Meios meios) : meios_(std::move(meios)) {
    try {
        procura();
    } catch (const std::exception& falha) {
        meios_.engole(base::descricao(falha));
    }
}

void Rascunhos::procura() {
    std::set<fs::path, std::greater<>> nomes;
    for (const fs::path& este : meios_.disco.ficheiros(meios_.pasta))
        if (este.extension() == com_a_nota || este.extension() == do_posto) nomes.insert(com_fim(este, ""));
    for (const fs::path& nome : nomes)
        try { // one that cannot be looked at keeps no other from being offered
            if (auto este = toma(nome)) ofertas_.push_back(std::move(*este));
        } catch (const std::exception& falha) {
            meios_.engole(base::descricao(falha));
        }
}

std::unique_ptr<FicheiroTrancado> Rascunhos::tranca(const fs::path& posto) {
    if (auto trancado = meios_.disco.tranca(posto)) return trancado;
    return fs::exists(posto) ? nullptr : meios_.disco.cria(posto);
}

// Nothing where there is none, or a living window has it, or it is not for this program.
std::optional<Rascunhos::Guardado> Rascunhos::toma(const fs::path& nome) {
    Guardado este{.ficheiro = com_fim(nome, com_a_nota), .posto = tranca(com_fim(nome, do_posto))};
    if (este.posto == nullptr) return std::nullopt;
    if (!fs::exists(este.ficheiro)) { // its window died before it wrote it, or after it took it away
        apaga(este);
        return std::nullopt;
    }
    auto lido = le_rascunho(meios_.disco.le(este.ficheiro));
    if (!lido) {
        const fs::path posto_de_lado = com_fim(nome, estragado);
        fs::rename(este.ficheiro, posto_de_lado);
        apaga(este);
        throw base::Falha("Um rascunho de guia não se percebe, e ficou em «" + base::texto_de(posto_de_lado) +
                          "».");
    }
    if (lido->empresa != meios_.empresa) return std::nullopt;
    este.diarios = std::move(lido->diarios);
    este.oferta = {std::move(lido->rascunho), lido->quando};
    if (!ve_diarios(este)) return std::nullopt;
    return este;
}

// A mark goes with what its journal tells: one by one, because what one says of its confirmation says nothing
// of an earlier one.
bool Rascunhos::ve_diarios(Guardado& este) noexcept {
    este.oferta.estado = Estado::livre;
    for (auto um = este.diarios.begin(); um != este.diarios.end();) {
        Estado estado = Estado::sem_noticia;
        try {
            if (const auto passos = meios_.diarios.le_acabado_ou_nao(*um)) {
                if (passos->resultado == Resultado::feita) return apaga(este), false;
                if (passos->resultado == Resultado::desfeita) {
                    um = este.diarios.erase(um);
                    continue;
                }
                if (!passos->fim) estado = Estado::por_assentar;
            }
        } catch (const std::exception& falha) {
            meios_.engole(base::descricao(falha));
        }
        este.oferta.estado = std::max(este.oferta.estado, estado);
        ++um;
    }
    return true;
}

void Rascunhos::ve_ofertas() noexcept {
    ofertas_.remove_if([this](Guardado& este) { return !ve_diarios(este); });
}

Rascunhos::Guardado Rascunhos::novo() {
    if (!fs::is_directory(meios_.pasta)) {
        faz_pasta(meios_.pasta, meios_.disco);
        fs::permissions(meios_.pasta, fs::perms::owner_all);
    }
    const fs::path nome = meios_.pasta / novo_nome();
    return {.ficheiro = com_fim(nome, com_a_nota), .posto = meios_.disco.cria(com_fim(nome, do_posto))};
}

// Whole, or as it was. Only a mark is waited for until it is on the disk: a program that dies loses nothing
// of what it wrote.
void Rascunhos::escreve(const Guardado& este, Descarga descarga) {
    const fs::path feito = com_fim(este.ficheiro, por_fazer);
    fs::remove(feito);
    {
        const auto ficheiro = meios_.disco.cria(feito);
        ficheiro->acrescenta(texto_de(
            RascunhoEscrito{meios_.empresa, este.oferta.quando, este.diarios, este.oferta.rascunho}));
        if (descarga == Descarga::sim) ficheiro->descarrega();
    }
    fs::rename(feito, este.ficheiro);
    if (descarga == Descarga::sim) meios_.disco.descarrega_pasta(meios_.pasta);
}

void Rascunhos::escreve_ou_diz(const Guardado& este) noexcept {
    try {
        escreve(este, Descarga::nao);
        avariado_ = false;
    } catch (const std::exception& falha) {
        if (!std::exchange(avariado_, true)) meios_.engole(base::descricao(falha));
    }
}

// The note first: one without its holder would be taken for a dead window's.
bool Rascunhos::apaga(Guardado& este) noexcept {
    std::error_code erro;
    fs::remove(com_fim(este.ficheiro, por_fazer), erro);
    fs::remove(este.ficheiro, erro);
    if (erro) return false;
    fs::remove(com_fim(este.ficheiro, do_posto), erro);
    este.posto.reset();
    return true;
}

void Rascunhos::guarda(const std::optional<delivery::Rascunho>& rascunho) noexcept {
    if (!rascunho) {
        if (std::exchange(falhou_, false))
            larga();
        else if (actual_)
            apaga(*actual_);
        actual_.reset();
        avariado_ = false;
        return;
    }
    falhou_ = false;
    if (actual_ && actual_->oferta.rascunho == *rascunho) return;
    try {
        if (!actual_) actual_ = novo();
    } catch (const std::exception& falha) {
        if (!std::exchange(avariado_, true)) meios_.engole(base::descricao(falha));
        return;
    }
    actual_->oferta.rascunho = *rascunho;
    actual_->oferta.quando = base::DataHora::agora();
    escreve_ou_diz(*actual_);
}

bool Rascunhos::larga() noexcept {
    if (!actual_) return false;
    ofertas_.push_front(std::move(*actual_));
    actual_.reset();
    ve_ofertas();
    return true;
}

std::list<Rascunhos::Guardado>::iterator Rascunhos::oferecido() noexcept {
    const auto livre = std::find_if(ofertas_.begin(), ofertas_.end(),
                                    [](const Guardado& este) { return este.oferta.estado == Estado::livre; });
    return livre != ofertas_.end() ? livre : ofertas_.begin();
}

const delivery::GuardaRascunhos::Oferta* Rascunhos::oferta() const noexcept {
    const auto esta = const_cast<Rascunhos*>(this)->oferecido();
    return esta != ofertas_.end() ? &esta->oferta : nullptr;
}

void Rascunhos::retoma() noexcept {
    const auto esta = oferecido();
    if (esta == ofertas_.end() || esta->oferta.estado != Estado::livre) return;
    if (actual_) ofertas_.push_back(std::move(*actual_));
    actual_ = std::move(*esta);
    ofertas_.erase(esta);
}

void Rascunhos::deita_fora() noexcept {
    const auto esta = oferecido();
    if (esta == ofertas_.end()) return;
    apaga(*esta);
    ofertas_.erase(esta);
}

void Rascunhos::intencao(const confirmacao::Intencao& intencao) {
    a_confirmar_ = actual_ && intencao.fluxo == confirmacao::Fluxo::emite_guia;
    if (!a_confirmar_) return;
    actual_->diarios.push_back(base::texto_de(meios_.em_curso().filename()));
    try {
        return escreve(*actual_, Descarga::sim);
    } catch (const std::exception& falha) {
        meios_.engole(base::descricao(falha));
    }
    try { // without a file there is nothing to be offered
        fs::remove(actual_->ficheiro);
        if (fs::is_directory(meios_.pasta)) meios_.disco.descarrega_pasta(meios_.pasta);
    } catch (const std::exception& falha) {
        actual_->diarios.pop_back();
        a_confirmar_ = false;
        throw confirmacao::Recusada(
            "Nada foi feito, e o ecrã fica como está: o rascunho desta guia não pôde ser marcado nem "
            "apagado, e voltaria a oferecê-la depois de emitida.\r\n" +
            base::descricao(falha) + "\r\nResolva a causa e volte a confirmar.");
    }
}

// Where its file cannot be taken away, the mark and its journal see to it at the next start.
void Rascunhos::feita() noexcept {
    if (!std::exchange(a_confirmar_, false)) return;
    apaga(*actual_);
    actual_.reset();
    ve_ofertas();
}

void Rascunhos::compensada(const confirmacao::Compensacao&) noexcept {
    falhou_ = true;
    if (std::exchange(a_confirmar_, false) && !ve_diarios(*actual_)) actual_.reset();
    if (actual_ && actual_->diarios.empty()) escreve_ou_diz(*actual_);
    ve_ofertas();
}

} // namespace orvex::platform::diario
