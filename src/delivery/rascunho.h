// A note that is being made, as a value: what was picked and typed of it, to be put back on the screen later.
// Its lines name the open lines that they take from; what is open of these is looked up when they are put
// back.
#pragma once

#include "base/datahora.h"
#include "base/moeda.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvex::delivery {

struct LinhaRascunho {
    std::string Origem{};    // 2019/FA/1/123/2; none of a line of text
    std::string Artigo{};    //
    std::string Nome{};      //
    base::Moeda Quant{};     // tonnes
    base::Moeda PesoBruto{}; // tonnes

    friend bool operator==(const LinhaRascunho&, const LinhaRascunho&) = default;
};

struct Rascunho {
    std::string Cliente{};
    int Armazem = 0;                     // of the choice of warehouse
    std::map<int, std::string> Campos{}; // the other fields, by their numbers
    // Those that the user gave; any other is that of the moment it is put back.
    std::optional<base::DataHora> Data{};
    std::optional<base::DataHora> Carga{};
    std::optional<base::DataHora> Descarga{};
    std::vector<LinhaRascunho> linhas{};

    friend bool operator==(const Rascunho&, const Rascunho&) = default;
};

// Who keeps the note of a window beyond it, and those that other windows left unfinished.
class GuardaRascunhos {
  public:
    enum class Estado {
        livre,
        por_assentar, // was being confirmed, and what became of that is not settled
        sem_noticia   // the same, and nothing here will tell
    };
    struct Oferta {
        Rascunho rascunho{};
        base::DataHora quando{}; // it was last changed
        Estado estado = Estado::livre;
    };

    virtual ~GuardaRascunhos() = default;

    // The note as it is now, after each event; nothing once it was emptied, given up or issued. Neither this
    // nor any other member throws.
    virtual void guarda(const std::optional<Rascunho>& rascunho) noexcept = 0;
    // The screen shows something else: what was kept stays, and is offered. False where nothing was.
    virtual bool larga() noexcept = 0;
    // What is offered next; null where nothing is. Stays until it is taken or thrown away.
    virtual const Oferta* oferta() const noexcept = 0;
    virtual void retoma() noexcept = 0; // the screen shows it now
    virtual void deita_fora() noexcept = 0;
};

} // namespace orvex::delivery
