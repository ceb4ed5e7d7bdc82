// The note on the screen as it goes to paper: the texts of the sheet, in their order, whatever paints it. It
// is no transport document, and says so.
#pragma once

#include <string>
#include <vector>

namespace orvex::delivery {

class GuiasRemessa;

struct FolhaGuia {
    struct Dado {
        std::string legenda, texto;
    };
    struct Linha {
        std::string Artigo{}; // none in a line of text, which has a designation alone
        std::string Nome{};
        std::string Doc{};
        std::string PesoLiquido{};
        std::string PesoBruto{};
    };

    static constexpr const char* aviso = "Não é o documento de transporte";

    std::string empresa{};
    std::string titulo{};
    std::string numero{}; // none of a note that was not issued yet
    std::string estado{};
    std::vector<Dado> dados{};      // whose note it is, from where and when; what is empty is left out
    std::vector<Dado> transporte{}; //
    std::vector<Linha> linhas{};
    Linha totais{};
};

// Of the screen as it is now, issued or not. Without any line there is nothing to put on paper. What became
// of an issued note is asked anew; throws what that throws, and Falha where the screen shows another's
// number, date or client.
FolhaGuia folha_da_guia(GuiasRemessa& ecra, std::string empresa);

} // namespace orvex::delivery
