// Values between the program and the automation.
#include "platform/automacao/assinaturas.h"
#include "platform/automacao/chaves.h"
#include "platform/automacao/datas.h"
#include "tests/apoio/falhas.h"
#include "tests/apoio/tabela.h"
#include "tests/windows/componente_duplo.h"

#include <limits>

using namespace orvex;
using namespace orvex::platform::automacao;
using namespace orvex::testes;
using base::DataHora;
using base::Moeda;
using base::Variante;
using testing::HasSubstr;

namespace {

Valor do_sistema(VARTYPE tipo, const std::function<void(VARIANT&)>& poe) {
    Valor valor;
    poe(valor.variant());
    valor.variant().vt = tipo;
    return valor;
}

std::string lido_de(const Valor& valor) { return variante_de(valor.variant()).texto(); }

Valor decimal(ULONG baixo, ULONG alto, BYTE casas, bool negativo) {
    return do_sistema(VT_DECIMAL, [&](VARIANT& v) {
        v.decVal.Lo64 = (static_cast<ULONGLONG>(alto) << 32) | baixo;
        v.decVal.Hi32 = 0;
        v.decVal.scale = casas;
        v.decVal.sign = negativo ? DECIMAL_NEG : 0;
    });
}

// A list with a lower bound of its own, of Variants.
Valor lista(LONG primeiro, const std::vector<Variante>& valores) {
    SAFEARRAYBOUND limites{static_cast<ULONG>(valores.size()), primeiro};
    Valor resultado;
    resultado.variant().vt = VT_ARRAY | VT_VARIANT;
    resultado.variant().parray = ::SafeArrayCreate(VT_VARIANT, 1, &limites);
    for (LONG i = 0; i < static_cast<LONG>(valores.size()); ++i) {
        LONG posicao = primeiro + i;
        Valor valor = variant_de(valores[static_cast<std::size_t>(i)]);
        if (valores[static_cast<std::size_t>(i)] == Variante("Empty")) valor = Valor();
        ::SafeArrayPutElement(resultado.variant().parray, &posicao, &valor.variant());
    }
    return resultado;
}

std::string chave(const VARIANT& valor) {
    return chave_de(valor, [](const auto&, const char*) { return Variante(); }).texto();
}

} // namespace

TEST(Valores, CadaTipoDoProgramaVaiComOSeuTipoEVoltaComoFoi) {
    const std::string texto("\0a\xC3\xA7\xF0\x9F\x8D\x89\0", 9);
    const std::pair<Variante, const char*> casos[] = {
        {Variante(), "Null"},
        {true, "BOOL:-1"},
        {std::numeric_limits<std::int32_t>::min(), "I4:-2147483648"},
        {0.1, "R8:0.1"},
        {Moeda::de_decimos_milesimos(std::numeric_limits<std::int64_t>::max()), "CY:922337203685477.5807"},
        {Moeda::de_decimos_milesimos(std::numeric_limits<std::int64_t>::min()), "CY:-922337203685477.5808"},
        {DataHora{2024, 2, 29, 23, 59, 59}, "DATE:2024-02-29 23:59:59"},
        {"", "BSTR:"},
        {texto, nullptr}};
    for (const auto& [valor, enviado] : casos) {
        const Valor variant = variant_de(valor);
        EXPECT_EQ(variante_de(variant.variant()), valor) << valor.texto();
        if (enviado != nullptr) {
            EXPECT_EQ(descrito(variant.variant()), enviado);
        }
    }
    const Valor longo = variant_de(texto);
    EXPECT_EQ(::SysStringLen(longo.variant().bstrVal),
              6u); // zeros counted, two units for the one beyond 16 bits
    EXPECT_EQ(utf8_de(std::wstring_view(L"a\xD83C"
                                        L"b\xDF49",
                                        4)),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD");
    EXPECT_EQ(descrito(variant_de(-32768, VT_I2).variant()), "I2:-32768");
    for (const std::int64_t numero : {32768LL, -32769LL})
        EXPECT_EQ(numero_da_falha([&] { variant_de(numero, VT_I2); }), base::numeros_falha::valor_excessivo);
    EXPECT_THAT(falha([&] { variant_de(3'000'000'000, VT_I4); }), HasSubstr("«3000000000»"));
}

TEST(Valores, OsTiposQueSoOsComponentesUsamPercebemSe) {
    const std::pair<Valor, const char*> casos[] = {
        {do_sistema(VT_I1, [](VARIANT& v) { v.cVal = -5; }), "-5"},
        {do_sistema(VT_UI1, [](VARIANT& v) { v.bVal = 200; }), "200"},
        {do_sistema(VT_UI2, [](VARIANT& v) { v.uiVal = 65535; }), "65535"},
        {do_sistema(VT_UI4, [](VARIANT& v) { v.ulVal = 4294967295U; }), "4294967295"},
        {do_sistema(VT_UINT, [](VARIANT& v) { v.uintVal = 4294967295U; }), "4294967295"},
        {do_sistema(VT_I8, [](VARIANT& v) { v.llVal = -9'000'000'000; }), "-9000000000"},
        {do_sistema(VT_R4, [](VARIANT& v) { v.fltVal = 2.5F; }), "2.5"},
        {do_sistema(VT_ERROR, [](VARIANT& v) { v.scode = DISP_E_PARAMNOTFOUND; }), ""},
        {do_sistema(VT_DISPATCH, [](VARIANT& v) { v.pdispVal = nullptr; }), ""},
        {do_sistema(VT_BSTR, [](VARIANT& v) { v.bstrVal = nullptr; }), ""},
        {decimal(123'456'750, 0, 5, true), "-1234.5675"},
        {decimal(1'000'005, 0, 5, false), "10.0001"}, // half away from zero
        {decimal(0, 1, 0, false), "4294967296"}};
    for (const auto& [valor, texto] : casos)
        EXPECT_EQ(lido_de(valor), texto) << valor.tipo();
    EXPECT_THAT(falha([&] { lido_de(decimal(0, 0x80000000U, 0, false)); }), HasSubstr("demasiado grande"));
    EXPECT_THAT(falha([&] { lido_de(do_sistema(VT_UI8, [](VARIANT& v) { v.ullVal = ~0ULL; })); }),
                HasSubstr("«18446744073709551615»"));
    EXPECT_THAT(falha([&] { lido_de(do_sistema(VT_ERROR, [](VARIANT& v) { v.scode = E_FAIL; })); }),
                HasSubstr("0x000A"));
    EXPECT_THAT(falha([&] { lido_de(lista_de_reais({1})); }), HasSubstr("uma lista"));
}

TEST(Valores, UmaDataContaSeAPartirDoDiaZeroComAHoraSempreParaAFrente) {
    const std::pair<double, const char*> casos[] = {
        {45351.0, "2024-02-29 00:00:00"},
        {2.5, "1900-01-01 12:00:00"},
        {0.25, "06:00:00"},
        {0.0, "00:00:00"},
        {-0.25, "06:00:00"}, // the day before does not exist: the fraction counts from day 0 either way
        {-1.25, "1899-12-29 06:00:00"},
        {-657434.0, "0100-01-01 00:00:00"},
        {2958465.999, "9999-12-31 23:58:34"},
        {45350.999999, "2024-02-29 00:00:00"}, // nearest second
        {-1.999999, "00:00:00"}};
    for (const auto& [data, texto] : casos) {
        const Variante lida = variante_da_data(data);
        EXPECT_EQ(lida.texto(), texto) << data;
        if (const auto* inteira = std::get_if<DataHora>(&lida.valor())) {
            EXPECT_EQ(variante_da_data(data_da_automacao(*inteira)), lida) << data;
        }
    }
    for (const double data : {-657435.0, 2958466.0, 2958465.9999999, std::nan("")})
        EXPECT_THAT(falha([&] { variante_da_data(data); }), HasSubstr("não é uma data")) << data;
    EXPECT_THAT(falha([&] { data_da_automacao({99, 12, 31}); }), HasSubstr("não é uma data"));
}

TEST(Valores, OQueVemPorReferenciaVeSeEOQueSeDeixaFicaComOTipoPedido) {
    Valor numero = variant_de(7, VT_I2);
    VARIANT tipada = referencia_ao_conteudo(numero.variant());
    VARIANT em_cadeia = referencia_a(tipada);
    EXPECT_EQ(variante_de(tipada), Variante(7));
    EXPECT_EQ(variante_de(em_cadeia), Variante(7));

    deixa(tipada, variant_de("40"));
    EXPECT_EQ(descrito(numero.variant()), "I2:40");
    EXPECT_THAT(falha([&] { deixa(tipada, variant_de(40000)); }), HasSubstr("não aceita"));
    EXPECT_EQ(descrito(numero.variant()), "I2:40");
    deixa(referencia_a(numero.variant()), variant_de("texto"));
    deixa(referencia_ao_conteudo(numero.variant()), variant_de(12, VT_I2));
    EXPECT_EQ(descrito(numero.variant()), "BSTR:12");
    EXPECT_NE(falha([&] { deixa(numero.variant(), variant_de(1)); }), "");
}

TEST(Valores, UmaListaLeSeDoSeuPrimeiroElementoQualquerQueSejaOSeuNumero) {
    EXPECT_EQ(descrito(lista_de_textos({"", "a", "ção"}).variant()), "BSTR[0..2]||a|ção");
    EXPECT_EQ(descrito(lista_de_reais({0, 2.5}).variant()), "R8[0..1]|0|2.5");
    EXPECT_EQ(descrito(lista_de_reais({}).variant()), "R8[0..-1]");
    EXPECT_EQ(descrito(lista(-3, {1, "x"}).variant()), "VARIANT[-3..-2]|I4:1|BSTR:x");
    EXPECT_FALSE(elementos_da_lista(variant_de("x").variant()));
}

TEST(Chaves, UmaListaDeQuatroOuDeCincoComOPrimeiroVazioEUmaChave) {
    const startup::ChaveDocumento enviada{2024, "GR", 1, 1'000'000};
    const Valor enviado = lista_da_chave(enviada);
    EXPECT_EQ(descrito(enviado.variant()), "VARIANT[0..4]|Empty|I2:2024|BSTR:GR|I2:1|I4:1000000");
    EXPECT_EQ(chave(enviado.variant()), enviada.texto());
    const std::vector<Variante> de_outros_tipos{"2024", "GR", 1.0, Moeda::de_inteiro(7)};
    EXPECT_EQ(chave(lista(3, de_outros_tipos).variant()), "GR/1/7/2024");
    for (const Valor& nenhuma : {variant_de(Variante()), Valor(), variant_do_objecto({}),
                                 lista(0, {Variante(), Variante(), Variante(), Variante()})})
        EXPECT_EQ(chave(nenhuma.variant()), "/0/0/0");

    const std::pair<std::vector<Variante>, const char*> casos[] = {
        {{2024, "GR", 1}, "3 elementos"},
        {{2023, 2024, "GR", 1, 7}, "5 elementos"},
        {{2024, "GR", 1, 7.5}, "NossoNoDocumento: «7.5»"},
        {{2024, "GR", 1, 3e9}, "demasiado grande"},
        {{40000, "GR", 1, 7}, "Ano: «40000» é um número demasiado grande"},
        {{2024, "GR", "um", 7}, "Serie: «um»"},
        {{2024, "GR", true, 7}, "Serie"},
        {{2024, "GR", 1, DataHora{2024, 1, 1}}, "não é um número inteiro"},
        {{2024, "GR", 1, Variante()}, "«nulo»"}};
    for (const auto& [partes, diz] : casos)
        EXPECT_THAT(falha([&] { chave(lista(0, partes).variant()); }), HasSubstr(diz));
    EXPECT_THAT(falha([&] { chave(variant_de("GR/1/7").variant()); }),
                HasSubstr("onde se esperava um objecto"));
}

// A record as components of compiled languages give them: its fields by name.
struct Registo final : IRecordInfo {
    std::map<std::string, Variante> campos;

    HRESULT STDMETHODCALLTYPE GetField(void*, LPCOLESTR nome, VARIANT* campo) override {
        const auto este = campos.find(utf8_de(nome));
        if (este == campos.end()) return E_INVALIDARG;
        *campo = variant_de(este->second).larga();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE RecordInit(void*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RecordClear(void*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RecordCopy(void*, void*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetGuid(GUID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetName(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSize(ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetFieldNoCopy(void*, LPCOLESTR, VARIANT*, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutField(ULONG, void*, LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE PutFieldNoCopy(ULONG, void*, LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetFieldNames(ULONG*, BSTR*) override { return E_NOTIMPL; }
    BOOL STDMETHODCALLTYPE IsMatchingType(IRecordInfo*) override { return FALSE; }
    void* STDMETHODCALLTYPE RecordCreate() override { return nullptr; }
    HRESULT STDMETHODCALLTYPE RecordCreateCopy(void*, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RecordDestroy(void*) override { return S_OK; }
};

TEST(Chaves, UmRegistoComOsQuatroCamposEUmaChave) {
    Registo registo;
    registo.campos = {{"Ano", 2024}, {"TipoDocumento", "GR"}, {"Serie", 1}, {"NossoNoDocumento", 7}};
    VARIANT valor{};
    valor.vt = VT_RECORD;
    valor.pvRecord = &registo;
    valor.pRecInfo = &registo;
    EXPECT_EQ(chave(referencia_a(valor)), "GR/1/7/2024");
    registo.campos.erase("Serie");
    EXPECT_THAT(falha([&] { chave(valor); }), HasSubstr("não tem o campo Serie"));
}

TEST(Assinaturas, CadaMembroVaiEVoltaComoSeEspera) {
    const auto enviado = [](const char* membro, const Variante& valor) {
        return descrito(posto(assinatura_de(membro).tipo, valor).variant());
    };
    EXPECT_EQ(enviado("ANO", 2024), "I2:2024");
    EXPECT_EQ(enviado("NossoNoDocumento", 7), "I4:7");
    EXPECT_EQ(enviado("Quantidade", 0), "CY:0");
    EXPECT_EQ(enviado("QuantidadeOrigem", Moeda::de_real(1.2345)), "CY:1.2345");
    EXPECT_EQ(enviado("PrecoUnitario", 0), "I4:0");
    EXPECT_EQ(enviado("IvaIncluido", false), "BOOL:0");

    const auto recebido = [](const char* membro, const Variante& valor) {
        return lido(assinatura_de(membro).tipo, valor);
    };
    for (const Variante& sete : {Variante("7"), Variante(7.0), Variante(Moeda::de_inteiro(7))})
        EXPECT_EQ(recebido("NumeroDaLinha", sete), Variante(7));
    EXPECT_EQ(recebido("convertido", true), Variante(-1));
    EXPECT_EQ(recebido("Quantidade", "2.5"), Variante(Moeda::de_real(2.5)));
    EXPECT_EQ(recebido("Quantidade", Variante()), Variante());
    EXPECT_EQ(recebido("Artigo", 12.5), Variante(12.5));
    for (const auto& [membro, valor] : std::initializer_list<std::pair<const char*, Variante>>{
             {"Ano", 70000}, {"Ano", Variante()}, {"Serie", 1.5}, {"Quantidade", "2,5"}, {"Ler", ""}})
        EXPECT_THROW(recebido(membro, valor), base::Falha) << membro;
}
