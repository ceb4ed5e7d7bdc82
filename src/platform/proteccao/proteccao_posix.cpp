#include "platform/proteccao/proteccao.h"

#include "base/falha.h"

namespace orvex::platform::proteccao {
namespace {

constexpr const char* so_no_windows = "só o Windows guarda palavras-passe protegidas.";

} // namespace

std::string impedimento(const std::filesystem::path&) { return so_no_windows; }
std::string protege(const std::string&) { throw base::Falha(so_no_windows); }
std::string abre(const std::string&) { throw base::Falha(so_no_windows); }
void substitui(const std::filesystem::path&, std::string_view) { throw base::Falha(so_no_windows); }

} // namespace orvex::platform::proteccao
