// What the delivery-note window shows beyond the screen's controls: what became of the note that is loaded,
// what the lines of its grids weigh, and the weights and the way back of each line in the return panel. It
// asks the database itself, once for each note that is loaded.
#pragma once

#include "delivery/guias_remessa.h"

#include <QLabel>

#include <optional>

namespace orvex::platform::qt {

class EtiquetaElidida;
class VistaGrelha;

class ResumoDaGuia {
  public:
    explicit ResumoDaGuia(delivery::GuiasRemessa& ecra);

    // The widgets, for the window to place.
    QLabel& marca() const { return *marca_; }
    QLabel& totais_abertas() const { return *totais_abertas_; }
    QLabel& totais_guia() const { return *totais_guia_; }
    QLabel& totais_devolucao() const { return *totais_devolucao_; }
    void junta_colunas(VistaGrelha& final);

    // `pode_perguntar` once no handler is running: the rules' questions and ours stay apart.
    void mostra(bool pode_perguntar);
    void mostra_nome(EtiquetaElidida& nome) const; // where the rules have none
    // Nothing where no note is loaded, or nobody can tell what became of it.
    const std::optional<delivery::ResumoGuia>& guia() const { return guia_; }

  private:
    void pergunta();
    void mostra_marca();
    void mostra_totais();
    std::string volta_da_linha(int linha) const;
    std::string no_ecra() const;

    delivery::GuiasRemessa& ecra_;
    QLabel* marca_;
    QLabel* totais_abertas_;
    QLabel* totais_guia_;
    QLabel* totais_devolucao_;
    int carregada_ = 0;   // the note that was asked about
    std::string no_ecra_; // what said which note it was
    std::optional<delivery::ResumoGuia> guia_;
    std::string falha_; // why there is none
    std::uint64_t versao_abertas_ = 0;
};

} // namespace orvex::platform::qt
