#include "tools/componente/classe.h"

#include "base/falha.h"
#include "platform/erp/sessao_erp_embebida.h"
#include "tools/componente/sessao.h"

#include <optional>
#include <system_error>

namespace orvex::componente {
namespace {

class Fabrica final : public IClassFactory {
  public:
    Fabrica(FazSessao faz, Modo modo) : faz_(std::move(faz)) {
        if (modo == Modo::biblioteca) vida_.emplace();
    }
    virtual ~Fabrica() = default;

    STDMETHODIMP QueryInterface(REFIID qual, void** objecto) override {
        if (objecto == nullptr) return E_POINTER;
        *objecto = nullptr;
        if (qual != __uuidof(IUnknown) && qual != __uuidof(IClassFactory)) return E_NOINTERFACE;
        *objecto = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++referencias_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG restam = --referencias_;
        if (restam == 0) delete this;
        return restam;
    }
    STDMETHODIMP CreateInstance(IUnknown* exterior, REFIID qual, void** objecto) override {
        if (objecto == nullptr) return E_POINTER;
        *objecto = nullptr;
        if (exterior != nullptr) return CLASS_E_NOAGGREGATION;
        return sem_lancar([&] { return faz_()->QueryInterface(qual, objecto); });
    }
    STDMETHODIMP LockServer(BOOL sim) override {
        sim != FALSE ? Vida::tranca() : Vida::destranca();
        return S_OK;
    }

  private:
    FazSessao faz_;
    std::atomic<ULONG> referencias_ = 0;
    std::optional<Vida> vida_;
};

const std::wstring raiz = L"Software\\Classes\\";
constexpr const wchar_t* chave_do_modo[] = {L"\\LocalServer32", L"\\InprocServer32"};

void exige(LSTATUS resposta) {
    if (resposta == ERROR_SUCCESS) return;
    if (resposta == ERROR_ACCESS_DENIED)
        throw base::Falha("É preciso ser administrador da máquina para registar o componente.");
    throw base::Falha("O sistema não deixou registar o componente: " +
                      std::system_category().message(static_cast<int>(resposta)));
}

// Without a name it is the key's own value.
void escreve(const std::wstring& chave, const wchar_t* nome, const std::wstring& valor) {
    exige(::RegSetKeyValueW(HKEY_LOCAL_MACHINE, (raiz + chave).c_str(), nome, REG_SZ, valor.c_str(),
                            static_cast<DWORD>((valor.size() + 1) * sizeof(wchar_t))));
}

void apaga(const std::wstring& chave) {
    const LSTATUS resposta = ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, (raiz + chave).c_str());
    if (resposta != ERROR_FILE_NOT_FOUND) exige(resposta);
}

bool existe(const std::wstring& chave) {
    HKEY aberta = nullptr;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, (raiz + chave).c_str(), 0, KEY_READ, &aberta) != ERROR_SUCCESS)
        return false;
    ::RegCloseKey(aberta);
    return true;
}

std::wstring chave_da(const Classe& classe) { return L"CLSID\\" + texto_do_numero(classe.numero); }

} // namespace

const Classe classe_da_emulacao{
    {0xb3f1a6d4, 0x2c57, 0x4e8b, {0x8f, 0x19, 0x60, 0x7d, 0xc2, 0x5a, 0xe3, 0x41}},
    L"Orvex.SessaoERP",
    L"ORVEX: sessão da emulação do ERP"};

std::wstring texto_do_numero(const CLSID& numero) {
    constexpr int letras = 39; // braces, digits, dashes and the end
    wchar_t texto[letras];
    ::StringFromGUID2(numero, texto, letras);
    return texto;
}

FazSessao sessoes_da_emulacao() {
    return [] { return despacho_da_sessao(std::make_unique<platform::erp::SessaoERPEmbebida>()); };
}

Referencia<IClassFactory> fabrica(FazSessao faz, Modo modo) { return new Fabrica(std::move(faz), modo); }

void regista(const Classe& classe, Modo modo, const std::wstring& ficheiro) {
    const std::wstring chave = chave_da(classe), servidor = chave + chave_do_modo[static_cast<int>(modo)];
    escreve(chave, nullptr, classe.descricao);
    escreve(chave + L"\\ProgID", nullptr, classe.nome);
    escreve(servidor, nullptr, ficheiro);
    if (modo == Modo::biblioteca) escreve(servidor, L"ThreadingModel", L"Apartment");
    escreve(classe.nome, nullptr, classe.descricao);
    escreve(classe.nome + L"\\CLSID", nullptr, texto_do_numero(classe.numero));
}

void retira(const Classe& classe, Modo modo) {
    const std::wstring chave = chave_da(classe);
    apaga(chave + chave_do_modo[static_cast<int>(modo)]);
    if (existe(chave + chave_do_modo[1 - static_cast<int>(modo)])) return;
    apaga(chave);
    apaga(classe.nome);
}

} // namespace orvex::componente
