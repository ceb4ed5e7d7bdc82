// What the enquiries must answer of a company, by the model, after whatever its users did.
#pragma once

#include "livro/consultas/consultas.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/propriedades/modelo.h"

#include <chrono>
#include <gtest/gtest.h>

namespace orvex::testes {

struct Pergunta { // at random
    std::string artigo, cliente;
    base::DataHora hoje;
    int dias; // back, and out
};

inline base::DataHora dias_antes(const base::DataHora& data, int dias) {
    using namespace std::chrono;
    const year_month_day antes{sys_days(year(data.ano) / data.mes / data.dia) - days(dias)};
    return {static_cast<int>(antes.year()), static_cast<int>(unsigned(antes.month())),
            static_cast<int>(unsigned(antes.day()))};
}

// Of the columns, a line a row: "a|b|c\n", then the totals.
inline std::string celulas(const livro::consultas::Recolhida& vista, const std::string& quadro,
                           const std::vector<std::string>& chaves) {
    std::string texto;
    for (const auto& parte : vista.partes) {
        if (parte.quadro.chave != quadro) continue;
        const auto escreve = [&](const livro::consultas::Linha& linha) {
            for (const std::string& chave : chaves)
                for (std::size_t i = 0; i < linha.size(); ++i)
                    if (parte.quadro.colunas[i].chave == chave) {
                        const auto* data = std::get_if<base::DataHora>(&linha[i].valor());
                        texto += (data != nullptr ? data->data_iso() : linha[i].texto()) + "|";
                    }
            texto += "\n";
        };
        for (const auto& linha : parte.linhas)
            escreve(linha);
        for (const auto& total : parte.totais)
            escreve(total);
    }
    return texto;
}

// Where an item is at the end of a day.
struct Onde {
    std::string detentor, desde;
    Kg kg = 0;
    bool lacuna = false; // what was cancelled between two rows leaves them apart
};
inline Onde onde(const Modelo& modelo, const std::string& artigo, const base::DataHora& ate) {
    Onde esta;
    const auto historia = modelo.historia(artigo, ate);
    for (const auto& [m, acto] : historia) {
        const bool nomeia = acto->cliente.empty() && m == &acto->movimentos[0] && m->chave.tipo != "FC";
        esta.lacuna = esta.lacuna || (nomeia && m->detentor != esta.detentor);
        if (m->detentor != esta.detentor) esta.desde = acto->data.data_iso();
        esta.detentor = m->detentor;
    }
    for (const auto& [m, acto] : historia)
        if ((m->detentor == "ORVEX") == (esta.detentor == "ORVEX")) esta.kg += m->kg;
    return esta;
}

inline std::string especie(const std::string& tipo, bool transferencia) {
    if (transferencia) return "Transferência";
    for (const auto& [este, palavra] :
         {std::pair{"GR", "Guia"}, {"GV", "Devolução"}, {"SB", "Sobra"}, {"QB", "Quebra"}, {"CI", "Consumo"}})
        if (tipo == este) return palavra;
    return "Outro";
}

// Its life, newest first: kind, document, from, to, holder, weight, balance.
inline std::string vida(const Modelo& modelo, const std::string& artigo, const base::DataHora& ate) {
    std::string texto, antes;
    Kg saldo = 0;
    const auto historia = modelo.historia(artigo, ate);
    for (std::size_t i = 0; i < historia.size(); ++i) {
        const auto& [m, acto] = historia[i];
        const bool transfere = acto->movimentos.size() == 2 && m->chave.numero == 0;
        saldo += m->kg;
        if (transfere && m == &acto->movimentos[0]) continue; // told with its entry
        std::string de, para;
        if (m->chave.tipo == "GR") de = m->detentor == "ORVEX" ? "ORVEX" : antes, para = acto->cliente;
        if (m->chave.tipo == "GV") de = acto->cliente, para = m->detentor;
        if (transfere) de = acto->movimentos[0].detentor, para = m->detentor;
        if (m->chave.tipo == "FC") para = m->detentor;
        texto = acto->data.data_iso() + "|" + especie(m->chave.tipo, transfere) + "|" +
                (transfere ? "" : m->chave.documento().texto()) + "|" + de + "|" + para + "|" + m->detentor +
                "|" + tn(m->kg) + "|" + tn(saldo) + "|\n" + texto;
        antes = m->detentor;
    }
    return texto;
}

inline void observa(EmpresaTeste& empresa, const Modelo& modelo, const Pergunta& p) {
    using namespace livro::consultas;
    const livro::Casa casa = livro::Casa::le(startup::Parametros(empresa.pasta()));
    const Meios meios{empresa.outra(), casa, p.hoje};
    const base::DataHora futuro{9999, 12, 31}, entao = dias_antes(p.hoje, p.dias);
    const auto pergunta = [&](const auto& qual, const auto& pedido) {
        Recolhida vista;
        EXPECT_TRUE(qual(meios, pedido, vista));
        return vista;
    };
    // An item.
    const Recolhida artigo_visto = pergunta(artigo, p.artigo);
    const Onde agora = onde(modelo, p.artigo, futuro);
    EXPECT_EQ(celulas(artigo_visto, "ficha", {"detentor", "desde", "peso"}),
              agora.detentor + "|" + agora.desde + "|" + tn(agora.kg) + "|\n");
    EXPECT_EQ(celulas(artigo_visto, "ficha", {"ressalvas"}) != "|\n", agora.lacuna);
    EXPECT_EQ(celulas(artigo_visto, "movimentos",
                      {"data", "tipo", "documento", "de", "para", "detentor", "peso", "saldo"}),
              vida(modelo, p.artigo, futuro));
    // A client then, and what is open of the client now.
    std::string detidos, abertas, parados_entao;
    std::map<std::string, std::string> por_data; // the oldest first, each day in the order of the items
    Kg soma = 0, soma_parados = 0;
    int quantos = 0, quantos_parados = 0;
    for (const auto& historia : modelo.actos) {
        if (historia.movimentos.empty() || historia.movimentos[0].chave.tipo != "FC") continue;
        const std::string& este = historia.movimentos[0].artigo;
        const Onde o = onde(modelo, este, entao);
        if (o.detentor == p.cliente) {
            detidos += este + "|" + o.desde + "|" + tn(o.kg) + "|\n";
            soma += o.kg;
            ++quantos;
        }
        if (o.detentor != "ORVEX" && o.desde < dias_antes(entao, p.dias).data_iso()) {
            por_data[o.desde] += este + "|" + o.detentor + "|" + o.desde + "|" + tn(o.kg) + "|\n";
            soma_parados += o.kg;
            ++quantos_parados;
        }
    }
    const Recolhida cliente_visto = pergunta(cliente, PedidoCliente{p.cliente, entao});
    EXPECT_EQ(celulas(cliente_visto, "artigos", {"artigo", "desde", "peso"}),
              detidos + "Total||" + tn(soma) + "|\n");
    EXPECT_EQ(cliente_visto.partes.back().linhas.back(), (Linha{entao, quantos, peso(soma)}));
    Kg aberto = 0;
    for (const auto& [chave, factura] : modelo.facturas)
        if (const auto [kg, bruto] = modelo.aberto(chave); factura.cliente == p.cliente && kg > 0) {
            abertas += chave.documento().texto() + "|" + std::to_string(chave.linha) + "|" + tn(kg) + "|\n";
            aberto += kg;
        }
    std::string vistas = celulas(cliente_visto, "abertas", {"documento", "linha", "em_aberto"});
    if (!abertas.empty()) abertas += "Total|" + vistas.substr(vistas.rfind("Total|") + 6);
    EXPECT_EQ(vistas, abertas);
    // What is out too long.
    for (const auto& [desde, linhas] : por_data)
        parados_entao += linhas;
    EXPECT_EQ(celulas(pergunta(parados, PedidoParados{p.dias, "", entao}), "parados",
                      {"artigo", "cliente", "desde", "peso"}),
              parados_entao + "Total|||" + tn(soma_parados) + "|\n");
    // What moved, one line a row of the ledger, in the order of its days and of its rows.
    std::map<std::string, std::string> por_dia;
    std::map<std::string, std::pair<int, Kg>> somas;
    for (const Acto& acto : modelo.actos)
        for (const Movimento& m : acto.movimentos)
            if (!acto.anulado && acto.data.data_iso() >= entao.data_iso() &&
                acto.data.data_iso() <= p.hoje.data_iso()) {
                const std::string qual = especie(m.chave.tipo, m.chave.numero == 0);
                por_dia[acto.data.data_iso()] +=
                    qual + "|" + m.artigo + "|" + acto.cliente + "|" + m.detentor + "|" + tn(m.kg) + "|\n";
                ++somas[qual].first;
                somas[qual].second += m.kg;
            }
    std::string movidos;
    for (const auto& [dia, linhas] : por_dia)
        movidos += linhas;
    for (const std::string& qual : especies())
        if (somas.contains(qual)) movidos += qual + "||||" + tn(somas[qual].second) + "|\n";
    EXPECT_EQ(celulas(pergunta(movimentos, PedidoMovimentos{entao, p.hoje}), "movimentos",
                      {"tipo", "artigo", "cliente", "detentor", "peso"}),
              movidos);
    // The newest document, and what came back of it.
    const Acto* ultimo = nullptr;
    for (const Acto& acto : modelo.actos)
        if (acto.documento.numero > 0) ultimo = &acto;
    if (ultimo == nullptr) return;
    std::string linhas;
    std::size_t voltaram = 0;
    for (const Movimento& m : ultimo->movimentos) {
        std::string volta;
        modelo.em_vigor([&](const Movimento& outro) {
            if (m.chave.linha > 0 && outro.origem == m.chave) volta = outro.chave.documento().texto();
        });
        voltaram += volta.empty() ? 0 : 1;
        linhas += m.artigo + "|" + volta + "|\n";
    }
    const bool guia = ultimo->documento.tipo == "GR";
    const std::string estado = ultimo->anulado                        ? "Anulada"
                               : !guia                                ? "Em vigor"
                               : voltaram == 0                        ? "Emitida"
                               : voltaram < ultimo->movimentos.size() ? "Devolvida em parte"
                                                                      : "Devolvida";
    const Recolhida visto = pergunta(documento, ultimo->documento.texto());
    EXPECT_EQ(celulas(visto, "ficha", {"documento", "estado"}),
              ultimo->documento.texto() + "|" + estado + "|\n");
    if (ultimo->documento.tipo[0] == 'G') {
        EXPECT_EQ(celulas(visto, "linhas", {"artigo", "devolvida_com"}), linhas + "||\n");
    }
}

} // namespace orvex::testes
