#include "linha_comando.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "base/texto.h"
#include "tools/comum/valor_da_opcao.h"

#include <algorithm>

namespace orvex::consulta {
namespace {

using namespace livro::consultas;

struct Escritos { // the options of enquiries
    std::vector<std::string> palavras;
    std::optional<base::DataHora> data;
    std::string cliente, artigo, especie, documento;

    bool operator==(const Escritos&) const = default;
};

base::DataHora data(const std::string& texto) {
    const auto lida = base::DataHora::le(texto);
    constexpr int ano_sem_seguinte = 9999; // periods end before the day after
    if (!lida || lida->ano < base::primeiro_ano_do_servidor || lida->ano >= ano_sem_seguinte)
        throw base::Falha("«" + texto + "» não é uma data. Escreva-a como 2026-10-31 ou 31-10-2026.");
    return {lida->ano, lida->mes, lida->dia};
}

int dias(const std::string& texto) {
    constexpr std::int64_t maximo = 100'000;
    const auto lidos = base::le_inteiro(texto);
    if (!lidos || *lidos < 0 || *lidos > maximo)
        throw base::Falha("«" + texto + "» não é um número de dias.");
    return static_cast<int>(*lidos);
}

// In whatever case, and without its accents.
std::string especie(const std::string& escrita) {
    const auto simples = [](std::string texto) {
        texto = base::maiusculas(texto);
        for (const auto& [letra, base] : {std::pair{"Ç", "C"}, {"Ã", "A"}, {"Ê", "E"}})
            for (auto i = texto.find(letra); i != std::string::npos; i = texto.find(letra))
                texto.replace(i, std::string(letra).size(), base);
        return texto;
    };
    std::string todas;
    for (const std::string& esta : especies()) {
        if (simples(esta) == simples(escrita)) return esta;
        todas += (todas.empty() ? "" : ", ") + esta;
    }
    throw base::Falha("«" + escrita + "» não é um tipo de movimento. São: " + todas + ".");
}

void exige_so(const Escritos& e, const std::string& aceites) {
    const std::pair<const char*, bool> dadas[] = {{"--data", e.data.has_value()},
                                                  {"--cliente", !e.cliente.empty()},
                                                  {"--artigo", !e.artigo.empty()},
                                                  {"--documento", !e.documento.empty()},
                                                  {"--tipo", !e.especie.empty()}};
    for (const auto& [opcao, dada] : dadas)
        if (dada && (" " + aceites + " ").find(std::string(" ") + opcao + " ") == std::string::npos)
            throw base::Falha("A opção " + std::string(opcao) + " não serve para a consulta «" +
                              e.palavras[0] + "».");
}

Pedido pedido(const Escritos& e) {
    const auto& p = e.palavras;
    const auto e_a = [&](const char* qual, std::size_t com, const char* aceites) {
        if (p[0] != qual) return false;
        if (p.size() != com + 1)
            throw base::Falha("A consulta «" + p[0] + "» precisa de " + std::to_string(com) +
                              (com == 1 ? " valor" : " valores") +
                              " a seguir. Os que têm espaços vão entre aspas.");
        exige_so(e, aceites);
        return true;
    };
    if (e_a("artigo", 1, "")) return PedidoArtigo{p[1]};
    if (e_a("cliente", 1, "--data")) return PedidoCliente{.codigo = p[1], .data = e.data};
    if (e_a("documento", 1, "")) return PedidoDocumento{p[1]};
    if (e_a("parados", 1, "--data --cliente")) return PedidoParados{dias(p[1]), e.cliente, e.data};
    if (e_a("movimentos", 2, "--cliente --artigo --documento --tipo")) {
        PedidoMovimentos este{data(p[1]), data(p[2]), e.especie, e.artigo, e.cliente, e.documento};
        if (este.ate < este.de) throw base::Falha("O período acaba antes de começar.");
        return este;
    }
    if (e_a("procura", 1, "")) return PedidoProcura{p[1]};
    throw base::Falha("«" + p[0] + "» não é uma consulta.\n\n" + uso());
}

} // namespace

std::string uso() {
    return "Uso: orvex-consulta [CONSULTA] [opções]\n"
           "Responde pelo livro da instalação, sem nada alterar; sem consulta, abre a janela. As consultas "
           "são:\n\n"
           "  artigo CÓDIGO               quem o tem, desde quando, e toda a sua vida\n"
           "  cliente CÓDIGO              o que tem em seu poder, há quanto tempo, e o que está em aberto\n"
           "  documento GR/5/12           as linhas, a origem de cada uma, e o que voltou\n"
           "  parados DIAS                o que está fora há mais de tantos dias\n"
           "  movimentos DE ATÉ           os de um período, com totais por tipo\n"
           "  procura TEXTO               artigos, clientes e documentos que o tenham\n\n"
           "  --data AAAA-MM-DD           como era nesse dia (cliente, parados)\n"
           "  --cliente CÓDIGO            só deste cliente (parados, movimentos)\n"
           "  --artigo CÓDIGO             só deste artigo (movimentos)\n"
           "  --documento GR/5/12         só deste documento (movimentos)\n"
           "  --tipo TIPO                 só guia, devolução, sobra, quebra, consumo, transferência ou "
           "outro\n"
           "                              (movimentos)\n"
           "  --janela                    na janela, em vez de aqui\n"
           "  --csv                       para folhas de cálculo, em texto\n"
           "  --xlsx FICHEIRO             para folhas de cálculo, num livro delas\n"
           "  --json                      para outros programas\n"
           "  --instalacao PASTA          a da instalação, se não é a deste programa\n\n"
           "Acaba com 0 se respondeu, 2 se o que foi pedido não existe, 1 se não pôde ver.";
}

Opcoes le_argumentos(std::span<const std::string> argumentos) {
    Opcoes opcoes;
    Escritos escritos;
    int formatos = 0;
    for (std::size_t i = 0; i < argumentos.size(); ++i) {
        const std::string& argumento = argumentos[i];
        const auto valor = [&] { return valor_da_opcao(argumentos, i); };
        const auto formato = [&](Formato qual) {
            opcoes.formato = qual;
            if (++formatos > 1) throw base::Falha("Indique um só formato.");
        };
        if (argumento == "--csv")
            formato(Formato::csv);
        else if (argumento == "--xlsx") {
            formato(Formato::xlsx);
            opcoes.ficheiro = base::caminho_de(valor());
        } else if (argumento == "--json")
            formato(Formato::json);
        else if (argumento == "--help" || argumento == "--ajuda")
            opcoes.ajuda = true;
        else if (argumento == "--janela")
            opcoes.janela = true;
        else if (argumento == "--data")
            escritos.data = data(valor());
        else if (argumento == "--cliente")
            escritos.cliente = valor();
        else if (argumento == "--artigo")
            escritos.artigo = valor();
        else if (argumento == "--documento")
            escritos.documento = valor();
        else if (argumento == "--tipo")
            escritos.especie = especie(valor());
        else if (argumento == "--instalacao")
            opcoes.pasta = base::caminho_de(valor());
        else if (!argumento.starts_with("--"))
            escritos.palavras.push_back(argumento);
        else
            throw base::Falha("Argumento desconhecido: «" + argumento + "».");
    }
    if (opcoes.ajuda) return opcoes;
    if (!escritos.palavras.empty()) opcoes.pedido = pedido(escritos);
    const bool sem_consulta = escritos == Escritos() && formatos == 0;
    if (!opcoes.pedido && !sem_consulta) throw base::Falha("Falta a consulta.\n\n" + uso());
    if (opcoes.janela && formatos > 0) throw base::Falha("A opção --janela não escreve em formato nenhum.");
    opcoes.janela = opcoes.janela || sem_consulta;
    return opcoes;
}

} // namespace orvex::consulta
