// What the diagnosis tells of the ERP's automation component.
#include "tools/diagnostico/componente.h"

#include <gmock/gmock.h>

#ifdef _WIN32
#include <windows.h>
#endif

namespace orvex::testes {
namespace {

using namespace diagnostico;
using namespace testing;

TEST(Componente, DizSeOQueCarregaOuPorqueNaoCarrega) {
    const int outros = bits_do_programa == 64 ? 32 : 64;
    const auto classe = [&](VistaDoRegisto propria, VistaDoRegisto outra) {
        propria.bits = bits_do_programa;
        outra.bits = outros;
        return ClasseRegistada{"{1}", {propria, outra}};
    };
    const VistaDoRegisto nada{}, dll{0, "C:\\a.dll"}, exe{0, "", "C:\\a.exe"},
        com_substituto{0, "C:\\a.dll", "", true}, sem_ficheiro{0, "C:\\a.dll", "", false, "C:\\a.dll"};
    const std::string destes = std::to_string(bits_do_programa) + " bits",
                      dos_outros = std::to_string(outros) + " bits";
    const struct {
        std::optional<ClasseRegistada> registada;
        Estado estado;
        std::string texto;
    } casos[] = {
        {classe(dll, exe), Estado::ok, "a.dll», carregado pelo próprio programa"},
        {classe(exe, dll), Estado::ok, "a.exe», um programa à parte, de " + destes},
        {classe(nada, exe), Estado::ok, "a.exe», um programa à parte, de " + dos_outros},
        {classe(nada, com_substituto), Estado::ok, "num processo substituto de " + dos_outros},
        {classe(nada, dll), Estado::erro, "programas de " + dos_outros + ", e este é de " + destes},
        {classe(sem_ficheiro, nada), Estado::erro, "a.dll» não existe"},
        {classe(nada, nada), Estado::erro, "nenhum servidor"},
        {std::nullopt, Estado::erro, "«ERP.Sessao»"},
    };
    for (const auto& caso : casos) {
        const Resultado este = verifica_componente("ERP.Sessao", caso.registada);
        EXPECT_THAT(este.texto, HasSubstr(caso.texto));
        EXPECT_EQ(este.estado, caso.estado) << este.texto;
    }
    EXPECT_THAT(verifica_componente("", classe(dll, dll)).texto, HasSubstr("falta Componente"));
}

#ifdef _WIN32
// Classes that every system has, and one with a size of its own.
TEST(Componente, LeSeDoRegistoNaVistaDeCadaTamanho) {
    EXPECT_FALSE(classe_registada("Orvex.NaoHa"));
    const auto grava = [](const wchar_t* chave, REGSAM vista, const wchar_t* nome, std::wstring valor) {
        HKEY aberta = nullptr;
        ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, (std::wstring(L"Software\\Classes\\") + chave).c_str(),
                                  0, nullptr, 0, KEY_WRITE | vista, nullptr, &aberta, nullptr),
                  ERROR_SUCCESS);
        RegSetValueExW(aberta, nome, 0, REG_EXPAND_SZ, reinterpret_cast<const BYTE*>(valor.c_str()),
                       static_cast<DWORD>((valor.size() + 1) * sizeof(wchar_t)));
        RegCloseKey(aberta);
    };
    constexpr auto* classe = L"CLSID\\{8A6B1E02-51C7-4D2F-9C44-0B7C3E0D9F11}";
    grava(L"Orvex.Exame\\CLSID", 0, nullptr, L"{8A6B1E02-51C7-4D2F-9C44-0B7C3E0D9F11}");
    grava(L"Orvex.ExameDeHoje\\CurVer", 0, nullptr, L"Orvex.Exame");
    grava(classe, KEY_WOW64_32KEY, L"AppID", L"{8A6B1E02-51C7-4D2F-9C44-0B7C3E0D9F12}");
    grava((std::wstring(classe) + L"\\InprocServer32").c_str(), KEY_WOW64_32KEY, nullptr,
          L"\"%SystemRoot%\\System32\\orvex há só de 32.dll\"");
    grava((std::wstring(classe) + L"\\LocalServer32").c_str(), KEY_WOW64_64KEY, nullptr,
          L"\"%SystemRoot%\\explorer.exe\" /x");
    grava(L"AppID\\{8A6B1E02-51C7-4D2F-9C44-0B7C3E0D9F12}", KEY_WOW64_32KEY, L"DllSurrogate", L"");
    const auto lida = classe_registada("orvex.exame");
    ASSERT_TRUE(lida);
    EXPECT_EQ(classe_registada(lida->classe)->vistas[1].executavel, lida->vistas[1].executavel);
    const bool primeiro = lida->vistas[0].bits == 64;
    const VistaDoRegisto &de64 = lida->vistas[primeiro ? 0 : 1], &de32 = lida->vistas[primeiro ? 1 : 0];
    EXPECT_THAT(de64.executavel, AllOf(EndsWith("explorer.exe"), Not(HasSubstr("%"))));
    EXPECT_EQ(de64.biblioteca + de64.em_falta, "");
    EXPECT_THAT(de32.biblioteca, EndsWith("orvex há só de 32.dll"));
    EXPECT_EQ(de32.em_falta, de32.biblioteca);
    EXPECT_EQ(classe_registada("Orvex.ExameDeHoje")->classe, lida->classe);
    EXPECT_TRUE(de32.substituto);
    EXPECT_FALSE(de64.substituto);
    for (const wchar_t* chave :
         {L"Orvex.Exame", L"Orvex.ExameDeHoje", classe, L"AppID\\{8A6B1E02-51C7-4D2F-9C44-0B7C3E0D9F12}"})
        for (const REGSAM vista : {KEY_WOW64_32KEY, KEY_WOW64_64KEY})
            RegDeleteKeyExW(HKEY_LOCAL_MACHINE, (std::wstring(L"Software\\Classes\\") + chave).c_str(), vista,
                            0);
}
#endif

} // namespace
} // namespace orvex::testes
