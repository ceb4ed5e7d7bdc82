#include "platform/automacao/falhas.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace orvex::platform::automacao {
namespace {

constexpr HRESULT do_sistema(DWORD erro) { return static_cast<HRESULT>(0x80070000U | erro); }

// Answers of the system when nobody is there to answer.
constexpr std::array sem_ninguem{RPC_E_DISCONNECTED,
                                 RPC_E_SERVER_DIED,
                                 RPC_E_SERVER_DIED_DNE,
                                 RPC_E_CONNECTION_TERMINATED,
                                 CO_E_OBJNOTCONNECTED,
                                 do_sistema(RPC_S_SERVER_UNAVAILABLE),
                                 do_sistema(RPC_S_CALL_FAILED),
                                 do_sistema(RPC_S_CALL_FAILED_DNE)};

std::string texto_de(BSTR texto) { return aparado(utf8_de({texto, ::SysStringLen(texto)})); }

} // namespace

std::string aparado(const std::string& texto) {
    constexpr const char* brancos = " \t\r\n";
    const std::size_t primeiro = texto.find_first_not_of(brancos);
    if (primeiro == std::string::npos) return {};
    return texto.substr(primeiro, texto.find_last_not_of(brancos) - primeiro + 1);
}

std::string texto_do_sistema(HRESULT numero) {
    std::array<wchar_t, 1024> letras{};
    const DWORD tamanho = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                           nullptr, static_cast<DWORD>(numero), 0, letras.data(),
                                           static_cast<DWORD>(letras.size()), nullptr);
    const std::string texto = aparado(utf8_de({letras.data(), tamanho}));
    std::array<char, 16> algarismos{};
    std::snprintf(algarismos.data(), algarismos.size(), "(0x%08lX)", static_cast<unsigned long>(numero));
    return (texto.empty() ? "o sistema não diz o que é este erro" : texto) + " " + algarismos.data();
}

Excepcao::~Excepcao() {
    ::SysFreeString(info_.bstrSource);
    ::SysFreeString(info_.bstrDescription);
    ::SysFreeString(info_.bstrHelpFile);
}

void Excepcao::completa() {
    if (auto* const mais_tarde = std::exchange(info_.pfnDeferredFillIn, nullptr)) mais_tarde(&info_);
}

std::string Excepcao::descricao() const { return texto_de(info_.bstrDescription); }
std::string Excepcao::origem() const { return texto_de(info_.bstrSource); }

// A number of 16 bits is one of the component's language, which are known by it in this form.
HRESULT Excepcao::numero() const {
    if (info_.scode != 0 || info_.wCode == 0) return info_.scode;
    return static_cast<HRESULT>(0x800A0000U | info_.wCode);
}

void lanca(const std::string& nome, HRESULT resposta, Excepcao& excepcao, std::optional<unsigned> argumento) {
    if (std::find(sem_ninguem.begin(), sem_ninguem.end(), resposta) != sem_ninguem.end())
        throw ComponenteTerminou("O componente do ERP terminou a meio da operação «" + nome + "».", resposta);
    if (resposta == DISP_E_UNKNOWNNAME)
        throw base::Falha(nome + ": o componente do ERP não conhece este nome.", resposta);
    if (resposta != DISP_E_EXCEPTION)
        throw base::Falha(nome + (argumento ? ", argumento " + std::to_string(*argumento) : "") + ": " +
                              texto_do_sistema(resposta),
                          resposta);
    excepcao.completa();
    const HRESULT numero = excepcao.numero() != 0 ? excepcao.numero() : resposta;
    const std::string descricao = excepcao.descricao(), origem = excepcao.origem();
    if (descricao.empty()) throw base::Falha(nome + ": " + texto_do_sistema(numero), numero);
    throw base::Falha(nome + ": " + descricao + (origem.empty() ? "" : " (" + origem + ")"), numero);
}

} // namespace orvex::platform::automacao
