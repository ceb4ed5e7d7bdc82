// What a screen asks of its window. The Qt window answers with widgets, the tests' window with a script.
#pragma once

#include "common/controlos.h"
#include "startup/sessao_bd.h"

#include <optional>

namespace orvex::common {

enum class Icone { nenhum, exclamacao, informacao, critico };
enum class Botoes { ok, ok_cancelar, sim_nao };

// Results of a message box.
inline constexpr int resposta_nenhuma = 0; // an information that went unread, because the program is ending
inline constexpr int resposta_ok = 1;
inline constexpr int resposta_cancelar = 2;
inline constexpr int resposta_sim = 6;
inline constexpr int resposta_nao = 7;

struct ColunaLista {
    int numero = 1;  // they count from 1
    int largura = 0; // twips
    bool oculta = false;
};

// A modal list filled from a query. A column that is not named keeps the width its content asks for.
struct ListaPesquisa {
    startup::SessaoBD& ligacao;
    std::string titulo;
    std::string sql;
    int largura = 8000;
    std::vector<ColunaLista> colunas;
    std::string inicial{}; // what the field holds that the list is for: where the user is looking already
    CodigoDe codigo_de = CodigoDe::nada; // the first column's texts
};

class Janela {
  public:
    virtual ~Janela() = default;

    // Shows the controls as they are now. Called after every handler and before every modal box.
    virtual void mostra() = 0;
    // Puts the keyboard on the control. The rules of the focus (who may leave, what is validated) are the
    // screen's.
    virtual void da_foco(Controlo& controlo) = 0;
    // With Cancel on offer it is the default; otherwise the first button is.
    virtual int caixa(const std::string& texto, const std::string& titulo, Icone icone, Botoes botoes) = 0;
    // The text of the first column of the row chosen, or the empty text.
    virtual std::string escolhe(const ListaPesquisa& lista) = 0;
    // The busy cursor, on while a handler runs; boxes and lists are shown without it.
    virtual void ocupado(bool sim) = 0;
    // How far a long handler is ("A listar: 500 linhas"), shown once it lasts. False when the user gave it
    // up.
    virtual bool prossegue(const std::string& /*progresso*/) { return true; }
    virtual void descarrega() = 0; // closes the window once the running handler has returned
};

} // namespace orvex::common
