#include "platform/automacao/componente.h"

#include "platform/automacao/falhas.h"

#include <algorithm>
#include <array>

namespace orvex::platform::automacao {

Argumentos& Argumentos::por_valor(Valor valor) {
    valores_.push_back(std::move(valor));
    postos_.push_back(valores_.back().variant()); // seen only: valores_ clears it
    return *this;
}

Argumentos& Argumentos::por_referencia(Valor valor) {
    valores_.push_back(std::move(valor));
    postos_.push_back(referencia_ao_conteudo(valores_.back().variant()));
    return *this;
}

Argumentos& Argumentos::de_saida() {
    valores_.emplace_back();
    postos_.push_back(referencia_a(valores_.back().variant()));
    return *this;
}

Componente::Componente(Referencia<IDispatch> da_sessao) {
    objectos_[sessao] = {std::move(da_sessao), "", ""};
}

Componente::Objecto Componente::junta(Referencia<IDispatch> objecto, const std::string& de_onde) {
    objectos_[++ultimo_] = {std::move(objecto), de_onde, ""};
    return ultimo_;
}

std::string Componente::nome(Objecto objecto, std::string_view membro) const {
    const std::string& de_onde = objectos_.at(objecto).de_onde;
    if (de_onde.empty()) return std::string(membro);
    const std::size_t ponto = de_onde.rfind('.'); // npos + 1 is the beginning
    return de_onde.substr(ponto + 1) + "." + std::string(membro);
}

// The number that the object's own description has, besides where it came from: components there are that
// give one number to objects of every kind.
const std::string& Componente::tipo_de(Aberto& objecto) {
    if (!objecto.tipo.empty()) return objecto.tipo;
    objecto.tipo = objecto.de_onde + "/";
    Referencia<ITypeInfo> descricao;
    TYPEATTR* atributos = nullptr;
    if (!falhou(objecto.despacho->GetTypeInfo(0, LOCALE_USER_DEFAULT, descricao.GetAddressOf())) &&
        descricao && !falhou(descricao->GetTypeAttr(&atributos))) {
        std::array<wchar_t, 64> letras{};
        ::StringFromGUID2(atributos->guid, letras.data(), static_cast<int>(letras.size()));
        descricao->ReleaseTypeAttr(atributos);
        objecto.tipo += utf8_de(letras.data());
    }
    return objecto.tipo;
}

namespace {

constexpr int vezes_ocupado = 100;
constexpr DWORD entre_vezes_ms = 100;

// A component that serves another program just now takes no call: what it refuses so was not begun, and is
// asked again, for ten seconds.
template <typename Chamada>
HRESULT enquanto_ocupado(const Chamada& chama) {
    for (int vez = 1;; ++vez) {
        const HRESULT resposta = chama();
        const bool ocupado = resposta == RPC_E_CALL_REJECTED || resposta == RPC_E_SERVERCALL_RETRYLATER;
        if (!ocupado || vez == vezes_ocupado) return resposta;
        ::Sleep(entre_vezes_ms);
    }
}

} // namespace

DISPID Componente::pergunta(Aberto& objecto, const std::string& nome, std::string_view membro) {
    DISPID numero = DISPID_UNKNOWN;
    std::wstring letras = utf16_de(membro);
    wchar_t* procurado = letras.data();
    const HRESULT resposta = enquanto_ocupado([&] {
        return objecto.despacho->GetIDsOfNames(IID_NULL, &procurado, 1, LOCALE_USER_DEFAULT, &numero);
    });
    Excepcao nenhuma;
    if (falhou(resposta)) lanca_e_lembra(nome, resposta, nenhuma, nullptr, 0);
    return numero;
}

Valor Componente::invoca(Objecto objecto, std::string_view membro, WORD modo, Argumentos& argumentos) {
    if (terminou()) throw base::Falha(terminou_);
    Aberto& este = objectos_.at(objecto);
    const std::string completo = nome(objecto, membro);
    const std::string chave = tipo_de(este) + "." + std::string(membro);
    auto conhecido = numeros_.find(chave);
    if (conhecido == numeros_.end())
        conhecido = numeros_.emplace(chave, pergunta(este, completo, membro)).first;

    std::vector<VARIANT> postos(argumentos.postos().rbegin(), argumentos.postos().rend());
    DISPID de_propriedade = DISPID_PROPERTYPUT;
    DISPPARAMS parametros{postos.data(), nullptr, static_cast<UINT>(postos.size()), 0};
    const bool poe = (modo & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (poe) {
        parametros.rgdispidNamedArgs = &de_propriedade;
        parametros.cNamedArgs = 1;
    }
    for (bool repetida = false;; repetida = true) {
        Valor resultado;
        Excepcao excepcao;
        UINT argumento = UINT_MAX; // which, where it is not said
        const HRESULT resposta = enquanto_ocupado([&] {
            return este.despacho->Invoke(conhecido->second, IID_NULL, LOCALE_USER_DEFAULT, modo, &parametros,
                                         poe ? nullptr : &resultado.variant(), excepcao.para_receber(),
                                         &argumento);
        });
        if (!falhou(resposta)) return resultado;
        // Nothing was done. Some components number the names of each object as they are asked for.
        if (resposta == DISP_E_MEMBERNOTFOUND && !repetida) {
            const DISPID deste = pergunta(este, completo, membro);
            if (std::exchange(conhecido->second, deste) != deste) continue;
        }
        const bool diz_qual = resposta == DISP_E_TYPEMISMATCH || resposta == DISP_E_PARAMNOTFOUND;
        lanca_e_lembra(completo, resposta, excepcao, diz_qual ? &argumento : nullptr, postos.size());
    }
}

void Componente::lanca_e_lembra(const std::string& nome, HRESULT resposta, Excepcao& excepcao,
                                const UINT* argumento, std::size_t quantos) {
    try {
        // They are counted from the last one on.
        if (argumento != nullptr && *argumento < quantos)
            lanca(nome, resposta, excepcao, static_cast<unsigned>(quantos) - *argumento);
        lanca(nome, resposta, excepcao);
    } catch (const ComponenteTerminou& falha) {
        terminou_ = falha.what();
        throw;
    }
}

Valor Componente::le(Objecto objecto, std::string_view membro) {
    Argumentos nenhuns;
    return invoca(objecto, membro, DISPATCH_METHOD | DISPATCH_PROPERTYGET, nenhuns);
}

void Componente::poe(Objecto objecto, std::string_view membro, Valor valor) {
    const bool referencia = valor.tipo() == VT_DISPATCH;
    Argumentos posto;
    posto.por_valor(std::move(valor));
    try {
        invoca(objecto, membro, referencia ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT, posto);
    } catch (const base::Falha& falha) {
        if (!referencia || falha.numero() != DISP_E_MEMBERNOTFOUND) throw;
        invoca(objecto, membro, DISPATCH_PROPERTYPUT, posto);
    }
}

void Componente::fecha() noexcept {
    objectos_.erase(std::next(objectos_.begin()), objectos_.end());
    try {
        Argumentos nenhuns;
        if (ligada_ && !terminou()) invoca(sessao, "Desliga", DISPATCH_METHOD, nenhuns);
    } catch (...) { // nobody is left to be told
    }
    objectos_.clear();
}

} // namespace orvex::platform::automacao
