// The controls of a screen as plain values: what the rules read and write. A window shows them and passes the
// user's events on; it never keeps state of its own about them.
#pragma once

#include "base/datahora.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::common {

inline constexpr int tecla_enter = 13;
inline constexpr int tecla_esc = 27;
inline constexpr int tecla_esquerda = 37;

// Labels and the tab background: RGB(D5, DE, F2).
inline constexpr std::uint32_t cor_fundo = 0xD5DEF2;

struct Separadores;
struct Botao;

// What a text is the code of, where it is one that can be looked up.
enum class CodigoDe { nada, artigo, cliente };

struct CodigoEscrito {
    CodigoDe de = CodigoDe::nada;
    std::string codigo;
};

struct Controlo {
    std::string nome;    // "campo(0)": the name the rules use; also the widget's object name
    std::string Legenda; // the label beside it, which is also its accessible name
    std::string ToolTip;
    bool Enabled = true;
    bool Visible = true;

    // Where it lies: inside another control (a frame), and on which page when that is a tab control.
    const Controlo* dentro_de = nullptr;
    int pagina = -1;

    Controlo() = default;
    virtual ~Controlo() = default;
    Controlo(const Controlo&) = delete; // other controls and the focus point at it
    Controlo& operator=(const Controlo&) = delete;

    bool a_vista() const; // visible, its page shown, everything around it too
    bool recebe_foco() const { return Enabled && a_vista(); }
    // What Esc presses here: the cancelling button of the frame it lies in; none where there is none.
    Botao* cancela() const;
};

struct Campo : Controlo {
    int Index = 0;
    std::string Text;
    int SelStart = 0;
    int SelLength = 0;
    int MaxLength = 0; // UTF-16 units the user may type; 0 is no limit; never cuts what the program sets
    bool so_leitura = false;
    bool numerico = false; // shown aligned to the right
    CodigoDe codigo_de = CodigoDe::nada;

    void selecciona_tudo();
};

struct Etiqueta : Controlo {
    std::string Caption;
};

struct Botao : Controlo {
    // What is being typed elsewhere is validated before the button happens; one that cancels or leaves lets
    // go of it.
    enum class Papel { faz, cancela, sai };

    std::string Caption; // "&" marks the access key
    Papel papel = Papel::faz;
    std::function<void()> Click;
};

struct SelectorData : Controlo {
    base::DataHora Value;
    bool com_hora = false; // dd-MM-yyyy HH:mm instead of a date alone; the hidden time is kept
    // What is being typed. It is read into Value when the keyboard leaves.
    std::optional<std::string> Texto;
    std::optional<base::DataHora> escolhida; // the last value that came from the user
    // Both as they were when the keyboard came: Esc puts them back.
    base::DataHora ao_entrar;
    std::optional<base::DataHora> escolhida_ao_entrar;

    std::string texto_mostrado() const {
        return Texto ? *Texto : com_hora ? Value.data_hora() : Value.data();
    }
    bool do_utilizador() const { return escolhida == Value; } // the program has set no other since
    std::function<void(int& KeyCode, int Shift)> KeyDown;
};

struct Combo : Controlo {
    std::vector<std::string> itens;
    int ListIndex = -1;
    std::function<void(int anterior)> Change; // after the user chose another item
};

struct Separadores : Controlo {
    std::vector<std::string> Captions;
    int Tab = 0;
};

struct Quadro : Controlo {
    std::string Caption;
    Botao* Cancela = nullptr; // leaves the frame
};

// Throws Falha: the screen has no control of this name.
[[noreturn]] void falta_o_controlo(std::string_view nome);

// A control array: members are reached by their fixed index, and stay where they are.
template <typename Tipo>
class Vector {
  public:
    explicit Vector(const char* nome) : nome_(nome) {} // "campo"

    std::string nome(int indice) const { return nome_ + ("(" + std::to_string(indice) + ")"); } // "campo(7)"

    // The member, made where there was none: for the registration of a screen's controls alone.
    Tipo& cria(int indice) { return membros_[indice]; }

    // Throws Falha for an index that was not registered.
    Tipo& operator()(int indice) { return const_cast<Tipo&>(std::as_const(*this)(indice)); }
    const Tipo& operator()(int indice) const {
        const auto membro = membros_.find(indice);
        if (membro != membros_.end()) return membro->second;
        falta_o_controlo(nome(indice));
    }
    auto begin() { return membros_.begin(); }
    auto end() { return membros_.end(); }

  private:
    const char* nome_;
    std::map<int, Tipo> membros_;
};

} // namespace orvex::common
