// The system's automation types, owned: what is allocated or counted there is given back when it goes out of
// scope.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <string>
#include <string_view>
#include <utility>

namespace orvex::platform::automacao {

// A counted pointer. Its members are named as those of the compilers' own, which do not all count alike.
template <typename Interface>
class Referencia {
  public:
    Referencia() = default;
    Referencia(Interface* objecto) : objecto_(objecto) {
        if (objecto_ != nullptr) objecto_->AddRef();
    }
    Referencia(const Referencia& outra) : Referencia(outra.objecto_) {}
    Referencia(Referencia&& outra) noexcept : objecto_(outra.Detach()) {}
    Referencia& operator=(Referencia outra) noexcept {
        std::swap(objecto_, outra.objecto_);
        return *this;
    }
    ~Referencia() {
        if (objecto_ != nullptr) objecto_->Release();
    }

    Interface* Get() const { return objecto_; }
    Interface* operator->() const { return objecto_; }
    explicit operator bool() const { return objecto_ != nullptr; }
    Interface** GetAddressOf() { return &objecto_; }                 // of an empty one
    Interface* Detach() { return std::exchange(objecto_, nullptr); } // counted still, by whoever takes it
    void Attach(Interface* contado) {                                // counted already, by whoever gives it
        Referencia largada(std::move(*this));
        objecto_ = contado;
    }

  private:
    Interface* objecto_ = nullptr;
};

constexpr bool falhou(HRESULT resposta) { return resposta < 0; }

// Null characters are letters like others; half of a surrogate pair becomes U+FFFD.
std::wstring utf16_de(std::string_view utf8);
std::string utf8_de(std::wstring_view utf16);

// A text as the automation allocates it; the null pointer is the empty text.
class Texto {
  public:
    Texto() = default;
    explicit Texto(std::string_view utf8);
    Texto(const Texto&) = delete;
    Texto& operator=(const Texto&) = delete;
    ~Texto() { ::SysFreeString(texto_); }

    std::string utf8() const { return utf8_de({texto_, ::SysStringLen(texto_)}); }
    BSTR get() const { return texto_; }
    BSTR larga() { return std::exchange(texto_, nullptr); } // freed by whoever takes it
    BSTR* para_receber() { return &texto_; }                // of an empty one

  private:
    BSTR texto_ = nullptr;
};

// A VARIANT that clears itself.
class Valor {
  public:
    Valor() { ::VariantInit(&variant_); }
    explicit Valor(const VARIANT& tomado) : variant_(tomado) {} // from here on this one clears it
    Valor(Valor&& outro) noexcept : variant_(outro.larga()) {}
    Valor& operator=(Valor&& outro) noexcept {
        std::swap(variant_, outro.variant_);
        return *this;
    }
    ~Valor() { ::VariantClear(&variant_); }

    VARTYPE tipo() const { return variant_.vt; }
    const VARIANT& variant() const { return variant_; }
    VARIANT& variant() { return variant_; }
    VARIANT larga() { // cleared by whoever takes it
        const VARIANT tomado = variant_;
        ::VariantInit(&variant_);
        return tomado;
    }

  private:
    VARIANT variant_;
};

} // namespace orvex::platform::automacao
