#include "platform/qt/grelhas/procura_grelha.h"

#include "base/dobrado.h"
#include "base/texto.h"
#include "platform/qt/teclas.h"
#include "platform/qt/textos.h"

#include <QApplication>

#include <algorithm>

namespace orvex::platform::qt {
namespace {

constexpr int pausa_da_procura_ms = 2000;

} // namespace

ProcuraGrelha::ProcuraGrelha(const common::Grelha& grelha, Vista vista)
    : grelha_(grelha), vista_(std::move(vista)) {
    pausa_.setSingleShot(true);
    pausa_.setInterval(pausa_da_procura_ms);
    QObject::connect(&pausa_, &QTimer::timeout, &pausa_, [this] { larga(); });
}

bool ProcuraGrelha::tecla(const QKeyEvent& evento) {
    if (!grelha_.com_procura) return false;
    const bool de_leitor = desde_a_ultima_.isValid() &&
                           desde_a_ultima_.elapsed() < pausa_de_leitor_ms; // on the heels of the last
    if (e_enter(evento) && (de_leitor || !texto_.isEmpty())) {
        if (!texto_.isEmpty())
            escolhe(de_leitor);
        else
            vista_.diz(recusa_); // the second one of a reader that sends two: as if it had not come
        return true;
    }
    if (evento.key() == Qt::Key_Backspace) {
        if (texto_.size() > 1)
            escreve(texto_.chopped(1));
        else
            larga();
        return true;
    }
    const QString mais = escrito(evento);
    if (mais.isEmpty() || (texto_.isEmpty() && evento.key() == Qt::Key_Space)) {
        larga();
        return false;
    }
    escreve(texto_ + mais);
    return true;
}

bool ProcuraGrelha::larga() {
    pausa_.stop();
    desde_a_ultima_.invalidate();
    if (texto_.isEmpty()) return false;
    texto_.clear();
    achada_.reset();
    vista_.diz({});
    return true;
}

void ProcuraGrelha::escreve(const QString& texto) {
    const auto achada = linha_que_diz(texto);
    if (achada) vista_.vai(*achada);
    texto_ = texto;
    achada_ = achada;
    vista_.diz("Procurar: " + texto_ + (achada ? "" : "   (não há)"));
    pausa_.start();
    desde_a_ultima_.start();
}

void ProcuraGrelha::escolhe(bool de_leitor) {
    const QString texto = texto_.trimmed();
    const std::vector<int> linhas = linhas_do_artigo(texto);
    const auto achada = achada_;
    larga();
    recusa_.clear();
    if (!linhas.empty()) {
        escolhe_uma(linhas, de_leitor);
    } else if (!de_leitor && achada) {
        escolhe_uma({*achada}, de_leitor);
    } else {
        QApplication::beep();
        recusa_ = "Não há aqui nenhuma linha do artigo " + texto + ". Nada mudou.";
        vista_.diz(recusa_);
    }
    desde_a_ultima_.start();
}

void ProcuraGrelha::escolhe_uma(const std::vector<int>& linhas, bool de_leitor) {
    const SoTeclasDePessoa so_de_pessoa(de_leitor);
    const auto linha = linhas.size() == 1 ? linhas.front() : vista_.pergunta(linhas);
    if (linha) vista_.escolhe(*linha, de_leitor);
}

std::optional<int> ProcuraGrelha::linha_que_diz(const QString& texto) const {
    const std::string procurado = base::dobrado(texto.trimmed().toStdString());
    std::optional<int> comeca, contem;
    for (int linha = 0; linha < grelha_.linhas(); ++linha) {
        const std::string artigo = base::dobrado(grelha_.texto(linha, "Artigo"));
        if (artigo.empty()) continue;
        if (artigo == procurado) return linha;
        if (!comeca && artigo.starts_with(procurado)) comeca = linha;
        if (comeca || contem) continue;
        std::string tudo;
        for (int c = 0; const common::ColunaGrelha& coluna : grelha_.colunas()) {
            if (!coluna.oculta && coluna.tipo == common::TipoCelula::texto)
                base::dobra_em(grelha_.valor(linha, c).texto() + "\n", tudo);
            ++c;
        }
        if (tudo.find(procurado) != std::string::npos) contem = linha;
    }
    return comeca ? comeca : contem;
}

// As the database compares codes: without case and blanks around, zeros and accents as they stand.
std::vector<int> ProcuraGrelha::linhas_do_artigo(const QString& texto) const {
    const std::string procurado = base::maiusculas(texto.toStdString());
    std::vector<int> linhas;
    for (int linha = 0; linha < grelha_.linhas(); ++linha)
        if (base::maiusculas(base::apara(grelha_.texto(linha, "Artigo"))) == procurado)
            linhas.push_back(linha);
    return linhas;
}

} // namespace orvex::platform::qt
