// A draft as the text of its file: JSON, one object.
//
//     {"versao":1,"empresa":"ORVEX","quando":"2026-11-23 15:40:00","diarios":[],
//      "cliente":"C0001","armazem":0,"campos":{"25":"00-AA-00"},"data":"2026-11-24 15:30:00",
//      "linhas":[{"origem":"2019/FA/1/123/2","artigo":"BOB2","nome":"Bobina","quant":"1.5","bruto":"1.6"}]}
#pragma once

#include "delivery/rascunho.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::platform::diario {

struct RascunhoEscrito {
    std::string empresa{};
    base::DataHora quando{};
    std::vector<std::string> diarios{}; // the names of those of the confirmations that it was in
    delivery::Rascunho rascunho{};
};

std::string texto_de(const RascunhoEscrito& escrito);
// Nothing for what this version of the program did not write.
std::optional<RascunhoEscrito> le_rascunho(std::string_view texto);

} // namespace orvex::platform::diario
