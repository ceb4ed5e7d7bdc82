// A company that every flow has worked on, to be damaged in one way or another.
#pragma once

#include "adjust/mov_stocks.h"
#include "delivery/guias_remessa.h"
#include "platform/sqlite/empresa.h"
#include "tests/apoio/auditada.h"
#include "transfer/trf_bobines.h"

#include <gtest/gtest.h>

namespace orvex::testes {

// Items R1, R2 and R5 are ORVEX's, R3 and R4 of the client CL2; the invoice FA/1/10 has 4 t of R1 and 3 t of
// R2.
inline void comeca(EmpresaTeste& empresa) {
    startup::SessaoBD& BD = empresa.outra();
    BD.IniciaTransaccao();
    for (const char* tabela : {"xel_ORVEX_MOV", "U_DocGcLin1", "DocGcLin", "Artigos", "artarm"})
        BD.Executa(std::string("Delete ") + tabela);
    empresa.com_ajustes_e_transferencias();
    for (const std::string item : {"R1", "R2", "R3", "R4", "R5"}) {
        const bool de_cliente = item == "R3" || item == "R4";
        const char* dono = de_cliente ? "CL2" : "ORVEX";
        empresa.insere_artigo(item, m("6"), de_cliente ? "CL" : "OR");
        insere(BD, "xel_ORVEX",
               {"NumSerie", "Cliente", "CliFinal", "Data", "Quantidade", "Ano", "TpDoc", "Serie", "NNumDoc"},
               {{item, dono, dono, base::DataHora{2018, 5, 2}, m("6"), 2018, "FC", 1, 7}});
    }
    insere(BD, "DocGcCab", {"Ano", "TpDoc", "Serie", "NNumDoc", "Data", "Terceiro"},
           {{2019, "FA", 1, 10, base::DataHora{2019, 3, 1}, "CL2"}});
    for (const auto& [linha, artigo, peso, bruto] :
         {std::tuple{1, "R1", "4", "4.1"}, std::tuple{2, "R2", "3", "3.1"}}) {
        insere_linha(BD, {"FA", 1, 10, linha, artigo, m(peso), m(bruto), "OR", "CL2", m(peso)});
        BD.Executa(std::string("update DocGcLin set Quant=") + peso +
                   " where NumLinha=" + std::to_string(linha));
        insere(BD, "U_DocGcLin1", {"Ano", "TpDocUM", "Serie", "NNumDoc", "NumLinha", "PesoBruto"},
               {{2019, "FA", 1, 10, linha, m(bruto)}});
    }
    BD.ConfirmaTransaccao();
}

template <typename TEcra>
struct Programa : Bancada<TEcra> {
    template <typename... Argumentos>
    explicit Programa(EmpresaTeste& em, Argumentos... argumentos) : Bancada<TEcra>(&em, argumentos...) {
        this->abre();
    }
};

inline void emite(EmpresaTeste& empresa, const std::vector<std::string>& pesos) {
    Programa<delivery::GuiasRemessa> guias(empresa);
    guias.op.preenche(guias.ecra.campo(0), "CL2");
    for (int linha = 1; const std::string& peso : pesos) {
        guias.op.duplo_clique(guias.ecra.Detalhe, linha);
        guias.op.edita(guias.ecra.Gr, linha++, "Quant", peso);
    }
    guias.op.prime(guias.ecra.btConf(0));
}

inline void na_guia(EmpresaTeste& empresa, const char* numero, bool devolve) {
    Programa<delivery::GuiasRemessa> guias(empresa);
    guias.op.preenche(guias.ecra.campo(1), numero);
    if (!devolve) return guias.op.prime(guias.ecra.btConf(1));
    guias.op.prime(guias.ecra.btGV(0));
    guias.op.edita(guias.ecra.Final, 2, "Transf", "-1");
    guias.op.prime(guias.ecra.btGV(1));
}

inline void ajusta(EmpresaTeste& empresa, std::int16_t modo, const char* novo, const char* numero = nullptr) {
    Programa<adjust::MovStocks> ajustes(empresa, modo);
    if (numero != nullptr) {
        ajustes.janela.escolhe_a_primeira_com("No.Doc.", numero);
        ajustes.op.prime(ajustes.ecra.btFx(5));
        ajustes.op.escreve(ajustes.ecra.campo(3), novo);
    } else {
        ajustes.op.preenche(ajustes.ecra.campo(0), "R5");
        ajustes.op.preenche(ajustes.ecra.campo(3), novo);
    }
    ajustes.op.prime(ajustes.ecra.btConf);
}

inline void transfere(EmpresaTeste& empresa, std::int16_t modo, const char* artigo, const char* destino) {
    Programa<transfer::TrfBobines> trf(empresa, modo);
    trf.op.preenche(trf.ecra.campo(0), artigo);
    if (modo == 2) trf.op.preenche(trf.ecra.campo(2), destino);
    trf.op.prime(trf.ecra.btConf);
}

// Made once, and copied: every flow was confirmed in it. Its holder rows are
//     1-5 the items, 6-7 GR/1/1, 8 GV/1/1, 10 GR/1/3, 11 SB/1/1, 13 QB/2/2, 14 CI/3/1, 15-16 and 17-18
//     transfers
inline const std::filesystem::path& modelo() {
    static const PastaTemporaria pasta;
    if (!std::filesystem::is_empty(pasta.pasta())) return pasta.pasta();
    {
        EmpresaTeste empresa;
        comeca(empresa);
        emite(empresa, {"2.5", "3"}); // GR/1/1, lines 3 and 4
        na_guia(empresa, "1", true);  // GV/1/1 brings R2 back
        emite(empresa, {"1"});
        na_guia(empresa, "2", false); // GR/1/2 is cancelled
        emite(empresa, {"0.5"});      // GR/1/3, line 3
        ajusta(empresa, 1, "6.1");
        ajusta(empresa, 2, "6");
        ajusta(empresa, 2, "0.2", "1"); // QB/2/2 for QB/2/1
        ajusta(empresa, 3, "0.1");
        transfere(empresa, 1, "R3", "");
        transfere(empresa, 2, "R4", "CL3");
        std::filesystem::copy(empresa.pasta(), pasta.pasta());
    }
    return pasta.pasta();
}

struct Estragada {
    PastaTemporaria copia;
    explicit Estragada(const std::string& sql = "") {
        std::filesystem::copy(modelo(), copia.pasta());
        estraga(sql);
    }
    void estraga(const std::string& sql) const {
        auto livro = platform::sqlite::abre_base(copia.pasta() / platform::sqlite::ficheiro_livro);
        livro.exec("attach '" + (copia.pasta() / platform::sqlite::ficheiro_erp).string() + "' as erp");
        livro.exec(sql);
    }
    auditoria::Pedido pedido() const { return pedido_de_auditoria(copia.pasta(), relogio); }
    auditoria::Relatorio audita(const auditoria::Pedido& pedido) const {
        SemProgresso progresso;
        return auditoria::audita(pedido, progresso);
    }
};

// FA1 and GR3 stand for the rows of the invoice's first line and of GR/1/1, line 3; COPIA copies the return.
inline std::string por_extenso(std::string sql) {
    const auto troca = [&](const std::string& de, const std::string& por) {
        for (std::size_t i = 0; (i = sql.find(de, i)) != std::string::npos; i += por.size())
            sql.replace(i, de.size(), por);
    };
    const auto linha = [&](const char* nome, const std::string& onde) {
        troca(std::string("delete from ") + nome, "delete from xel_ORVEX_Mov where " + onde);
        for (std::size_t i = 0; (i = sql.find(std::string("update ") + nome)) != std::string::npos;) {
            sql.replace(i, 10, "update xel_ORVEX_Mov");
            sql.insert(std::min(sql.find(';', i), sql.size()), " where " + onde);
        }
    };
    linha("FA1", "TpDoc='FA' and NumLinha=1");
    linha("GR3", "TpDoc='GR' and NumDoc=1 and NumLinha=3");
    std::string copias;
    for (const auto& [tabela, tipo, numero] : {std::tuple{"xel_ORVEX_Mov", "TpDoc", "NumDoc"},
                                               {"U_DocGcLin1", "TpDocUM", "NNumDoc"},
                                               {"erp.DocGcCab", "TpDoc", "NNumDoc"},
                                               {"erp.DocGcLin", "TpDocum", "NNumDoc"}})
        copias += std::string("create temp table c as select * from ") + tabela + " where " + tipo +
                  "='GV'; update c set " + numero + "=2; insert into " + tabela +
                  " select * from c; drop table c; ";
    troca("COPIA GV 2;",
          copias + "insert into xel_ORVEX(NumSerie,Cliente,CliFinal,Data,Quantidade,Ano,TpDoc,Serie,"
                   "NNumDoc,NumLin) select NumSerie,Cliente,CliFinal,Data,Quantidade,Ano,TpDoc,Serie,2,"
                   "NumLin from xel_ORVEX where TpDoc='GV';");
    return sql;
}

} // namespace orvex::testes
