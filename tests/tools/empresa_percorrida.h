// A company that every flow has worked on, to be damaged in one way or another.
#pragma once

#include "platform/sqlite/empresa.h"
#include "tests/adjust/ecra_ajuste.h"
#include "tests/apoio/auditada.h"
#include "tests/delivery/ecra_guias.h"
#include "tests/transfer/ecra_trf.h"

#include <regex>

namespace orvex::testes {

// Items R1, R2 and R5 are ORVEX's, R3 and R4 of the client CL2; the invoice FA/1/10 has 4 t of R1 and 3 t of
// R2.
inline void comeca(EmpresaTeste& empresa) {
    startup::SessaoBD& BD = empresa.outra();
    BD.IniciaTransaccao();
    empresa.recomeca();
    for (const std::string item : {"R1", "R2", "R3", "R4", "R5"})
        empresa.insere_item(item, item == "R3" || item == "R4" ? "CL2" : "ORVEX", m("6"));
    empresa.insere_factura({"FA", 1, 10, 1, "R1", m("4"), m("4.1"), "OR", "CL2", m("4")});
    empresa.insere_factura({"FA", 1, 10, 2, "R2", m("3"), m("3.1"), "OR", "CL2", m("3")});
    BD.ConfirmaTransaccao();
}

inline void emite(EmpresaTeste& empresa, const std::vector<std::string>& pesos) {
    EcraGuias guias(empresa);
    guias.cliente("CL2");
    for (int linha = 1; const std::string& peso : pesos) {
        guias.escolhe(linha);
        guias.edita(linha++, "Quant", peso);
    }
    guias.confirma();
}

inline void ajusta(EmpresaTeste& empresa, std::int16_t modo, const char* novo, const char* numero = nullptr) {
    EcraAjuste ajustes(empresa, modo);
    numero != nullptr ? ajustes.carrega(numero) : ajustes.item("R5");
    ajustes.op.escreve(ajustes.ecra.campo(3), novo);
    ajustes.confirma();
}

inline void transfere(EmpresaTeste& empresa, std::int16_t modo, const char* artigo, const char* destino) {
    EcraTrf trf(empresa, modo);
    trf.item(artigo);
    if (modo == 2) trf.destino(destino);
    trf.confirma();
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
        EcraGuias devolucao(empresa);
        devolucao.carrega("1");
        devolucao.devolve({2}); // GV/1/1 brings R2 back
        emite(empresa, {"1"});
        EcraGuias anulacao(empresa);
        anulacao.carrega("2"); // GR/1/2 is cancelled
        anulacao.anula();
        emite(empresa, {"0.5"}); // GR/1/3, line 3
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

// A damage is told in short: mov, det, cab, lin and peso stand for the tables; FA1 and GR3 for the rows of
// the invoice's first line and of GR/1/1, line 3, ERP3 for what the ERP has of the latter; COPIA copies a
// document's rows of one table to another number.
inline std::string por_extenso(std::string sql) {
    for (const auto& [curta, longa] :
         {std::pair{"COPIA (\\w+) (\\w+) (\\d+) (\\d+)",
                    "create temp table c as select * from $1 where $1_tipo='$2' and $1_numero=$3; "
                    "update c set $1_novo=$4; insert into $1 select * from c; drop table c"},
          {"det_novo", "Registo=null, NNumDoc"},
          {"mov_n\\w+", "NumDoc"},
          {"\\w+_n\\w+", "NNumDoc"},
          {"(lin|peso)_tipo", "TpDocum"},
          {"\\w+_tipo", "TpDoc"},
          {"\\bmov\\b", "xel_ORVEX_Mov"},
          {"\\bdet\\b", "xel_ORVEX"},
          {"\\bcab\\b", "erp.DocGcCab"},
          {"\\blin\\b", "erp.DocGcLin"},
          {"\\bpeso\\b", "U_DocGcLin1"},
          {"FA1", "TpDoc='FA' and NumLinha=1"},
          {"GR3", "TpDoc='GR' and NumDoc=1 and NumLinha=3"},
          {"ERP3", "TpDocum='GR' and NNumDoc=1 and NumLinha=3"}})
        sql = std::regex_replace(sql, std::regex(curta), longa);
    return sql;
}

struct Estragada {
    PastaTemporaria copia;
    explicit Estragada(const std::string& sql) {
        std::filesystem::copy(modelo(), copia.pasta());
        estraga(sql);
    }
    void estraga(const std::string& sql) const {
        auto livro = platform::sqlite::abre_base(copia.pasta() / platform::sqlite::ficheiro_livro);
        livro.exec("attach '" + (copia.pasta() / platform::sqlite::ficheiro_erp).string() + "' as erp");
        livro.exec(por_extenso(sql));
    }
    auditoria::Pedido pedido() const { return pedido_de_auditoria(copia.pasta(), relogio); }
};

} // namespace orvex::testes
