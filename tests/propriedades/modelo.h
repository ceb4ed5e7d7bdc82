// What ledger and ERP must hold after what was done so far: a list of what was done, and sums over it. The
// model reads no table and asks no rule of the program. Weights are whole kilograms.
#pragma once

#include "base/datahora.h"
#include "base/moeda.h"

#include <algorithm>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvex::testes {

using Kg = std::int64_t;

// In tonnes, as tables hold it and as users type it.
inline base::Moeda peso(Kg kg) { return base::Moeda::de_decimos_milesimos(kg * 10); }
inline std::string tn(Kg kg) { return peso(kg).texto(); }

struct Chave {
    int ano = 0;
    std::string tipo;
    int serie = 0, numero = 0, linha = 0; // 0 is the document itself

    auto operator<=>(const Chave&) const = default;
    Chave documento() const { return {ano, tipo, serie, numero}; }
    std::string texto(const std::string& entre = "/") const {
        return std::to_string(ano) + entre + tipo + entre + std::to_string(serie) + entre +
               std::to_string(numero) + (linha > 0 ? entre + std::to_string(linha) : "");
    }
};

struct Factura { // a line of an invoice, as it came
    std::string artigo, cliente, armazem;
    Kg kg, bruto;
};

struct Movimento { // of an item, to or from a holder and a warehouse
    Chave chave;   // as the ledger writes it
    std::string artigo, detentor, armazem;
    Kg kg, bruto = 0;          // negative kg leave
    Chave origem{}, factura{}; // of a line of a note or a return
};

struct Acto {
    Chave documento; // of the ERP; without number if there is none
    std::string cliente;
    std::vector<Movimento> movimentos{};
    bool anulado = false;
    base::DataHora data{2018, 5, 2}; // as the ledger writes it
};

struct Modelo {
    std::map<Chave, Factura> facturas;
    std::deque<Acto> actos; // oldest first

    static std::string armazem_de(const std::string& cliente) { return cliente == "ORVEX" ? "OR" : "CL"; }
    // With a number of its own within its year, type and series.
    Acto& novo(Chave chave, const std::string& cliente = "", const base::DataHora& data = {2018, 5, 2}) {
        for (const Acto& acto : actos)
            if (Chave{chave.ano, chave.tipo, chave.serie, acto.documento.numero} == acto.documento)
                chave.numero = std::max(chave.numero, acto.documento.numero);
        ++chave.numero;
        return actos.emplace_back(Acto{chave, cliente, {}, false, data});
    }
    void em_vigor(const auto& funcao) const {
        for (const Acto& acto : actos)
            for (const Movimento& movimento : acto.movimentos)
                if (!acto.anulado) funcao(movimento);
    }
    // The item's movements by the end of a day, oldest first, with what they belong to.
    std::vector<std::pair<const Movimento*, const Acto*>> historia(const std::string& artigo,
                                                                   const base::DataHora& ate) const {
        std::vector<std::pair<const Movimento*, const Acto*>> desta;
        for (const Acto& acto : actos)
            for (const Movimento& m : acto.movimentos)
                if (m.artigo == artigo && !acto.anulado && acto.data.data_iso() <= ate.data_iso())
                    desta.emplace_back(&m, &acto);
        return desta;
    }
    std::string detentor(const std::string& artigo) const {
        std::string ultimo;
        em_vigor([&](const Movimento& m) { ultimo = m.artigo == artigo ? m.detentor : ultimo; });
        return ultimo;
    }
    // Nothing where the item never was.
    std::optional<Kg> stock(const std::string& artigo, const std::string& armazem) const {
        std::optional<Kg> soma;
        for (const Acto& acto : actos)
            for (const Movimento& m : acto.movimentos)
                if (m.artigo == artigo && m.armazem == armazem)
                    soma = soma.value_or(0) + (acto.anulado ? 0 : m.kg);
        return soma;
    }
    // Net and gross weight still open of a line of an invoice.
    std::pair<Kg, Kg> aberto(const Chave& factura) const {
        std::pair<Kg, Kg> resto{facturas.at(factura).kg, facturas.at(factura).bruto};
        em_vigor([&](const Movimento& m) {
            if (m.factura != factura) return;
            resto.first += m.kg;
            resto.second += m.kg < 0 ? -m.bruto : m.bruto;
        });
        return resto;
    }
    std::vector<Chave> abertas(const auto& condicao) const {
        std::vector<Chave> chaves;
        for (const auto& [chave, factura] : facturas)
            if (condicao(factura) && aberto(chave).first > 0) chaves.push_back(chave);
        return chaves;
    }
    bool devolvido(const Movimento& linha_guia) const {
        bool sim = false;
        em_vigor([&](const Movimento& m) { sim = sim || m.origem == linha_guia.chave; });
        return sim;
    }

    // The tables' rows, a line each, in the order the game reads them.
    std::string estado() const {
        const auto linha = [](const auto&... celulas) {
            std::string t;
            ((t += celulas + "|"), ...);
            t.back() = '\n';
            return t;
        };
        std::map<std::string, std::string> livro;
        std::map<Chave, std::string> linhas, documentos;
        std::map<std::pair<std::string, std::string>, Kg> stock;
        for (const auto& [chave, f] : facturas) {
            const auto [kg, bruto] = aberto(chave);
            linhas[chave] = linha(chave.texto("|"), f.artigo, f.cliente, tn(f.kg), tn(kg), tn(kg), tn(bruto),
                                  std::string("null"));
        }
        for (const Acto& acto : actos) {
            if (acto.documento.numero > 0)
                documentos[acto.documento] = acto.documento.texto("|") + (acto.anulado ? "|-1\n" : "|0\n");
            for (const Movimento& m : acto.movimentos) {
                stock[{m.artigo, m.armazem}] += acto.anulado ? 0 : m.kg;
                if (acto.anulado) continue;
                livro[m.artigo] += linha(m.artigo, m.detentor, tn(m.kg), m.chave.documento().texto("|"));
                if (const std::string kg = tn(std::abs(m.kg)); m.chave.linha > 0)
                    linhas[m.chave] = linha(m.chave.texto("|"), m.artigo, acto.cliente, kg, kg, kg,
                                            tn(m.bruto), m.origem.texto() + "/00000");
            }
        }
        std::string t;
        for (const auto& [artigo, historia] : livro)
            t += historia;
        for (const auto* textos : {&linhas, &documentos})
            for (const auto& [chave, texto] : *textos)
                t += texto;
        for (const auto& [onde, kg] : stock)
            t += linha(onde.first, onde.second, tn(kg));
        return t;
    }
};

} // namespace orvex::testes
