#include "nomes.h"

namespace orvex::demo {
namespace {

constexpr const char* nomes_proprios[] = {"João", "Conceição", "António", "Inês",   "Luís",    "Fátima",
                                          "Nuno", "Margarida", "Hélder",  "Teresa", "Gonçalo", "Sónia"};
constexpr const char* apelidos[] = {"Falcão", "D'Orey",   "Magalhães", "Simões",   "Guimarães", "Brandão",
                                    "Teles",  "Assunção", "Quintela",  "Lourenço", "Abrantes",  "Vilhena"};
constexpr const char* actividades[] = {
    "Metalúrgica",          "Serralharia",        "Electrificadora", "Construções",
    "Estruturas Metálicas", "Cabos e Condutores", "Caldeiraria",     "Instalações Eléctricas",
    "Trefilaria",           "Laminagem",          "Obras Públicas",  "Montagens Industriais"};
constexpr const char* formas[] = {", Lda.", ", S.A.", " & Filhos, Lda.", " & Irmãos, Lda.",
                                  ", Unipessoal, Lda."};

struct Lugar {
    const char* nome;
    const char* codigo_postal; // the first four digits
};
constexpr Lugar lugares[] = {{"Águeda", "3750"},
                             {"Vila Nova de Gaia", "4400"},
                             {"Maia", "4470"},
                             {"Setúbal", "2910"},
                             {"Marinha Grande", "2430"},
                             {"Guimarães", "4810"},
                             {"Évora", "7005"},
                             {"Covilhã", "6200"},
                             {"Loulé", "8100"},
                             {"Santarém", "2005"},
                             {"Santa Maria da Feira", "4520"},
                             {"Olhão", "8700"},
                             {"Torres Vedras", "2560"},
                             {"São João da Madeira", "3700"},
                             {"Mangualde", "3530"}};
constexpr const char* ruas[] = {
    "Rua da Fundição", "Zona Industrial, Lote", "Estrada Nacional 1, Km",   "Avenida dos Descobrimentos",
    "Rua do Cabeço",   "Travessa da Forja",     "Parque Empresarial, Lote", "Rua Eng.º Duarte Pacheco",
    "Largo da Estação"};

struct Pais {
    const char* codigo;
    const char* nomes[3];
    const char* cidades[3];
    const char* prefixo_contribuinte;
    int digitos;
    const char* regime;
};
constexpr Pais paises[] = {{"ES",
                            {"Aceros Mareta, S.L.", "Talleres Ourol, S.L.", "Cables Arteixo, S.A."},
                            {"Vigo", "Badajoz", "Zaragoza"},
                            "ESB",
                            8,
                            "UE"},
                           {"FR",
                            {"Câbleries Valois S.A.R.L.", "Tréfileries Aubin S.A.", "L'Acier du Mans S.A."},
                            {"Bordeaux", "Nantes", "Metz"},
                            "FR",
                            11,
                            "UE"},
                           {"DE",
                            {"Nordkabel GmbH", "Drahtwerk Hollen GmbH", "Stahlbau Wendt KG"},
                            {"Kassel", "Siegen", "Ulm"},
                            "DE",
                            9,
                            "UE"},
                           {"CV",
                            {"Metalúrgica do Sal, Lda.", "Ferro & Cabo, Lda.", "Obras do Porto Novo, S.A."},
                            {"Praia", "Mindelo", "Assomada"},
                            "",
                            9,
                            "EXT"},
                           {"AO",
                            {"Electro Kwanza, Lda.", "Aços da Huíla, S.A.", "Cabinda Condutores, Lda."},
                            {"Luanda", "Benguela", "Lubango"},
                            "",
                            10,
                            "EXT"}};

constexpr Familia familias[] = {{"BA", "Bobine de aço laminado a frio 1,5 mm", 780},
                                {"BG", "Bobine de aço galvanizado 0,8 mm", 910},
                                {"TC", "Tambor de cabo de cobre XV 4G16", 6850},
                                {"TA", "Tambor de cabo de alumínio LXV 95 mm²", 3120},
                                {"FM", "Bobine de fio-máquina 5,5 mm", 690},
                                {"BI", "Bobine de aço inoxidável 304 2,0 mm", 2940}};

std::string digitos(Sorteio& sorteio, int quantos) {
    std::string texto;
    for (int i = 0; i < quantos; ++i)
        texto += static_cast<char>('0' + sorteio.entre(i == 0 ? 1 : 0, 9));
    return texto;
}

std::string morada(Sorteio& sorteio) {
    return std::string(sorteio.de(ruas)) + " " + std::to_string(sorteio.entre(1, 290));
}

} // namespace

std::string nome_pessoa(Sorteio& sorteio) {
    const std::string proprio = sorteio.de(nomes_proprios);
    return proprio + " " + sorteio.de(apelidos);
}

std::string contribuinte_nacional(Sorteio& sorteio) {
    std::string numero = "5" + digitos(sorteio, 7);
    int soma = 0;
    for (int i = 0; i < 8; ++i)
        soma += (numero[static_cast<std::size_t>(i)] - '0') * (9 - i);
    const int resto = soma % 11;
    return numero + static_cast<char>('0' + (resto < 2 ? 0 : 11 - resto));
}

Terceiro cliente_nacional(Sorteio& sorteio) {
    Terceiro novo;
    const Lugar& lugar = sorteio.de(lugares);
    const std::string actividade = sorteio.de(actividades);
    const std::string apelido = sorteio.de(apelidos);
    novo.nome = actividade + " " + apelido + sorteio.de(formas);
    novo.morada = morada(sorteio);
    novo.localidade = lugar.nome;
    novo.codigo_postal = lugar.codigo_postal + std::string("-") + digitos(sorteio, 3);
    novo.pais = "PT";
    novo.contribuinte = contribuinte_nacional(sorteio);
    novo.regime_iva = "NAC";
    return novo;
}

Terceiro cliente_estrangeiro(Sorteio& sorteio) {
    Terceiro novo;
    const Pais& pais = sorteio.de(paises);
    novo.nome = sorteio.de(pais.nomes);
    novo.morada = morada(sorteio);
    novo.localidade = sorteio.de(pais.cidades);
    novo.codigo_postal = digitos(sorteio, 5);
    novo.pais = pais.codigo;
    novo.contribuinte = pais.prefixo_contribuinte + digitos(sorteio, pais.digitos);
    novo.regime_iva = pais.regime;
    return novo;
}

const Familia& familia(std::int64_t artigo) {
    return familias[static_cast<std::size_t>(artigo) % std::size(familias)];
}

} // namespace orvex::demo
