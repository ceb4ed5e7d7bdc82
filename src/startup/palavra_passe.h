// A password of the settings file, as it is or protected by the system:
//
//     PalavraPasse=segredo
//     PalavraPasse=protegida:T1JWRVgBAQAAANCMnd8BFdERjHoAwE...
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace orvex::startup {

// What a protected password begins with. The letters after the colon make it ours: a password that merely
// begins with the word is what it says. They are whole in base64, and so is the mark without the word.
inline constexpr std::string_view marca_protegida = "protegida:T1JWRVgB";

// Gives the password that was protected as the text behind the mark, or throws Falha with the reason why it
// cannot. Only the system can do it, so who knows the system hands it in.
using AbreProtegida = std::function<std::string(const std::string& protegida)>;

inline bool protegida(std::string_view escrita) { return escrita.starts_with(marca_protegida); }

} // namespace orvex::startup
