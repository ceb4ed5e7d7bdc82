#include "saida.h"

#include "base/texto.h"

#include <algorithm>
#include <map>

namespace orvex::auditoria {
namespace {

std::string largura(const std::string& texto, std::size_t quanto) {
    const std::size_t tem = base::comprimento(texto);
    return texto + std::string(tem < quanto ? quanto - tem : 1, ' ');
}

std::string numa_linha(std::string texto) {
    // What a terminal would obey is shown as nothing.
    std::replace_if(
        texto.begin(), texto.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; },
        ' ');
    return texto;
}

std::string conta(int quantos, const char* um, const char* varios) {
    return std::to_string(quantos) + " " + (quantos == 1 ? um : varios);
}

std::string conta(const Total& total) {
    std::string texto;
    const auto junta = [&](int quantos, const char* um, const char* varios) {
        if (quantos > 0) texto += (texto.empty() ? "" : ", ") + conta(quantos, um, varios);
    };
    junta(total.erros, "erro", "erros");
    junta(total.avisos, "aviso", "avisos");
    junta(total.informacoes, "informação", "informações");
    return texto;
}

std::string linha_do_total(const std::string& nome, const Total& total, std::size_t largura_do_nome) {
    return "  " + largura(nome, largura_do_nome) + largura(conta(total), 30) +
           (total.peso != base::Moeda() ? quilos(total.peso) : "");
}

std::string por_verificacao(const Achados& achados) {
    std::string texto = "Por verificação:\n";
    for (const Verificacao& esta : verificacoes()) {
        Total total;
        for (const Achado& achado : achados)
            if (achado.verificacao == esta.nome) total.conta(achado);
        if (!conta(total).empty())
            texto += largura(linha_do_total(esta.nome, total, 4), 50) + esta.titulo + "\n";
    }
    return texto;
}

std::string por_cliente(const Achados& achados) {
    std::map<std::string, Total> totais;
    for (const Achado& achado : achados)
        if (achado.gravidade != Gravidade::informacao)
            totais[achado.cliente.empty() ? "(sem cliente)" : achado.cliente].conta(achado);
    if (totais.empty()) return {};
    std::vector<std::pair<std::string, Total>> ordenados(totais.begin(), totais.end());
    std::stable_sort(ordenados.begin(), ordenados.end(),
                     [](const auto& a, const auto& b) { return a.second.peso > b.second.peso; });
    std::string texto = "\nPor cliente:\n";
    for (const auto& [cliente, total] : ordenados)
        texto += numa_linha(linha_do_total(cliente, total, 16)) + "\n";
    return texto;
}

} // namespace

void Total::conta(const Achado& achado) {
    if (achado.gravidade == Gravidade::informacao) {
        ++informacoes;
        return;
    }
    ++(achado.gravidade == Gravidade::erro ? erros : avisos);
    peso += achado.peso;
}

std::string texto(const Achado& achado) {
    std::string linha =
        largura(base::maiusculas(nome(achado.gravidade)), 6) + achado.verificacao + "  " + achado.chave;
    const auto junta = [&](const char* o_que, const std::string& valor) {
        if (!valor.empty()) linha += std::string(" | ") + o_que + valor;
    };
    junta("artigo ", achado.artigo);
    junta("cliente ", achado.cliente);
    junta("esperado: ", achado.esperado);
    junta("encontrado: ", achado.encontrado);
    if (achado.peso != base::Moeda()) junta("diferença ", quilos(achado.peso));
    junta("desde ", achado.desde + (achado.data ? " de " + achado.data->data() : ""));
    junta("o que fazer: ", achado.que_fazer);
    return numa_linha(linha);
}

std::string texto(const Relatorio& relatorio, const std::string& empresa, const base::DataHora& quando) {
    std::string tudo = "Auditoria de " + empresa + " em " + quando.data_hora() + "\n";
    for (const NaoVisto& este : relatorio.nao_vistos)
        tudo += numa_linha("NÃO VERIFICADO: " + este.verificacoes + ": " + este.porque) + "\n";
    Total total;
    for (const Achado& achado : relatorio.achados)
        total.conta(achado);
    if (relatorio.limpo())
        tudo +=
            relatorio.nao_vistos.empty() ? "Nada a corrigir.\n" : "Nada a corrigir no que foi verificado.\n";
    if (!relatorio.achados.empty())
        tudo += conta(total) + (total.peso != base::Moeda() ? ", " + quilos(total.peso) : "") + ".\n";
    if (!relatorio.aceites.empty())
        tudo += conta(static_cast<int>(relatorio.aceites.size()), "achado aceite não é mostrado",
                      "achados aceites não são mostrados") +
                ".\n";
    if (relatorio.achados.empty()) return tudo;
    tudo += "\n" + por_verificacao(relatorio.achados) + por_cliente(relatorio.achados) + "\n";
    for (const Achado& achado : relatorio.achados)
        tudo += texto(achado) + "\n";
    return tudo;
}

} // namespace orvex::auditoria
