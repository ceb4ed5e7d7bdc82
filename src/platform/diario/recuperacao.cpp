#include "platform/diario/recuperacao.h"

#include "base/caminho.h"
#include "base/descricao.h"
#include "base/texto.h"
#include "livro/movimentos.h"

#include <algorithm>

namespace orvex::platform::diario {
namespace {

using confirmacao::Fluxo;
using startup::ChaveDocumento;

const char* por_extenso(Fluxo fluxo) {
    switch (fluxo) {
    case Fluxo::emite_guia:
        return "emissão de uma guia de remessa";
    case Fluxo::anula_guia:
        return "anulação de uma guia de remessa";
    case Fluxo::devolve:
        return "devolução de uma guia de remessa";
    case Fluxo::ajusta:
        return "ajuste de stock";
    case Fluxo::substitui_ajuste:
        return "substituição de um ajuste de stock";
    case Fluxo::anula_ajuste:
        return "anulação de um ajuste de stock";
    case Fluxo::transfere_para_orvex:
        return "transferência para a ORVEX";
    case Fluxo::transfere_para_cliente:
        return "transferência para outro cliente";
    }
    return "";
}

std::string nomes(const std::vector<ChaveDocumento>& documentos) {
    std::string texto;
    for (const ChaveDocumento& chave : documentos)
        texto += (texto.empty() ? "" : ", ") + chave.texto();
    return texto;
}

// What there is to weigh before a document in force, that the ledger does not know, is cancelled.
const char* conselho(Fluxo fluxo) {
    switch (fluxo) {
    case Fluxo::emite_guia:
        return "Se o material não saiu com ele, anule-o agora; depois pode repetir a operação. Se já saiu, "
               "ou se "
               "não sabe, decida depois.";
    case Fluxo::devolve:
        return "Anule-o agora e repita a devolução, se o material voltou. Se o documento já foi entregue a "
               "alguém, ou se não sabe, decida depois.";
    case Fluxo::transfere_para_orvex:
    case Fluxo::transfere_para_cliente:
        return "Anule-o agora e repita a transferência, se ainda for precisa. Se não sabe, decida depois.";
    case Fluxo::ajusta:
    case Fluxo::substitui_ajuste:
    case Fluxo::anula_guia:
    case Fluxo::anula_ajuste:
        break;
    }
    return "Anule-o agora e repita a operação, se ainda for precisa. Se não sabe, decida depois.";
}

constexpr const char* ia_ser_anulado =
    "A operação era anulá-lo, e já saiu dos movimentos: anule-o agora. Se não sabe, decida depois.";

bool contem(const std::vector<ChaveDocumento>& documentos, const ChaveDocumento& chave) {
    return std::find(documentos.begin(), documentos.end(), chave) != documentos.end();
}

} // namespace

void Recuperacao::trata_tudo() {
    std::string por_ler;
    const auto nota = [&](const std::exception& falha) { por_ler += "\r\n" + base::descricao(falha); };
    try {
        gaveta_.arruma();
        for (const auto& caminho : gaveta_.por_acabar()) {
            std::unique_ptr<FicheiroDiario> ficheiro;
            try {
                ficheiro = gaveta_.tranca(caminho);
                if (ficheiro != nullptr) ficheiro->passos();
            } catch (const std::exception& falha) { // this one alone
                nota(falha);
                continue;
            }
            if (ficheiro != nullptr) trata(*ficheiro);
        }
    } catch (const std::exception& falha) { // the database does not answer, or the folder
        nota(falha);
    }
    if (!por_ler.empty())
        meios_.atendimento.diz(
            "Há operações de que não se viu o fim, ou pode haver, e não foi possível ver o "
            "que é feito delas." +
            por_ler + "\r\nVolta a tentar-se quando o programa voltar a ser aberto.");
}

Tratamento Recuperacao::trata(FicheiroDiario& ficheiro) {
    bool dito = false;
    for (;;) {
        const Passos passos = ficheiro.passos();
        if (passos.cabecalho.empresa != meios_.empresa)
            throw base::Falha("O diário «" + base::texto_de(ficheiro.caminho()) + "» é da empresa " +
                              passos.cabecalho.empresa + ".");
        const Decisao decisao = decide_agora(passos);
        switch (decisao.desfecho) {
        case Desfecho::feita:
            if (!meios_.atendimento.diz(
                    "Uma operação de que não se viu o fim ficou gravada por inteiro.\r\n" +
                    descricao(passos) +
                    (decisao.feitos.empty() ? "" : "\r\nDocumento: " + nomes(decisao.feitos))))
                return {false, true};
            ficheiro.acaba(Resultado::feita);
            return {true, true};
        case Desfecho::desfeita:
            ficheiro.acaba(Resultado::desfeita);
            return {true, dito};
        case Desfecho::nada:
            return {espera(ficheiro, passos), dito};
        case Desfecho::por_decidir:
            dito = true;
            if (!oferece(ficheiro, passos, decisao)) return {false, true};
            break; // something was done: it is read again
        }
    }
}

Decisao Recuperacao::decide_agora(const Passos& passos) {
    return decide(passos, le_factos(meios_.BD, passos));
}

// Closed at the second look only.
bool Recuperacao::espera(FicheiroDiario& ficheiro, const Passos& passos) {
    if (!passos.visto) {
        ficheiro.escreve(linha_do_visto(meios_.agora()), Descarga::nao);
        return false;
    }
    if (meios_.agora() - *passos.visto < segunda_vista) return false;
    ficheiro.acaba(Resultado::desfeita);
    return true;
}

// True when something was done.
bool Recuperacao::oferece(FicheiroDiario& ficheiro, const Passos& passos, const Decisao& decisao) {
    bool feito = false;
    for (const ChaveDocumento& chave : decisao.a_completar)
        if (meios_.atendimento.aceita(
                "Uma operação ficou a meio: o documento " + chave.texto() +
                    " está anulado no ERP, e continua nos movimentos da ORVEX.\r\n\r\n" + descricao(passos) +
                    "\r\n\r\nCompletar agora retira-o dos movimentos, e desfaz nas linhas de origem o que "
                    "levou ou repôs.",
                "Completar agora", "Decidir depois"))
            feito = completa(passos, chave) || feito;
    for (const ChaveDocumento& chave : decisao.a_anular)
        if (meios_.atendimento.aceita("Uma operação ficou a meio: o ERP tem em vigor o documento " +
                                          chave.texto() + ", que não está nos movimentos da ORVEX.\r\n\r\n" +
                                          descricao(passos) + "\r\n\r\n" +
                                          (anulacao(passos, chave) != nullptr && criacao(passos) == nullptr
                                               ? ia_ser_anulado
                                               : conselho(passos.intencao.fluxo)),
                                      "Anular agora", "Decidir depois"))
            feito = anula(ficheiro, passos, chave) || feito;
    if (!decisao.a_procurar.empty())
        meios_.atendimento.diz(
            "Uma operação ficou a meio, e não se sabe qual destes documentos o ERP criou por ela. Nenhum "
            "está "
            "nos movimentos da ORVEX: procure-os no ERP e anule o que não corresponder a material que se "
            "moveu.\r\n" +
            nomes(decisao.a_procurar) + "\r\n\r\n" + descricao(passos));
    if (!decisao.a_ver.empty())
        meios_.atendimento.diz(
            "Uma operação está nos movimentos da ORVEX, e o seu documento não está em vigor "
            "no ERP. Não pode ser retirada daqui: peça a correcção dos movimentos.\r\n" +
            nomes(decisao.a_ver) + "\r\n\r\n" + descricao(passos));
    return feito;
}

// The user may have taken long to answer: what he was asked about must still be so.
bool Recuperacao::anula(FicheiroDiario& ficheiro, const Passos& passos, const ChaveDocumento& chave) {
    if (!contem(decide_agora(passos).a_anular, chave)) return true;
    // From here on it is known by its key, cancelled or not.
    if (anulacao(passos, chave) == nullptr) ficheiro.escreve(linha_do_encontrado(chave), Descarga::sim);
    std::string porque;
    try {
        porque = pede_anulacao(chave);
    } catch (const std::exception& falha) {
        porque = base::descricao(falha);
    }
    if (livro::estado_no_erp(meios_.BD, chave) == livro::EstadoERP::anulado) {
        meios_.atendimento.diz("O documento " + chave.texto() + " ficou anulado no ERP.");
        return true;
    }
    meios_.atendimento.diz("O ERP não anulou o documento " + chave.texto() + ".\r\n" + porque +
                           "\r\nContinua por decidir.");
    return false;
}

std::string Recuperacao::pede_anulacao(const ChaveDocumento& chave) {
    const confirmacao::PedidoERP pedido{confirmacao::AccaoERP::anula, chave};
    meios_.observador.antes_do_erp(pedido);
    const startup::ResultadoERP resultado = meios_.gERP.AnulaDocumento(1, chave);
    meios_.observador.depois_do_erp(
        pedido, {resultado.sucesso ? confirmacao::Desfecho::feito : confirmacao::Desfecho::recusado, chave,
                 resultado.mensagem});
    return resultado.mensagem;
}

// True when it was taken out of the ledger.
bool Recuperacao::completa(const Passos& passos, const ChaveDocumento& chave) {
    startup::SessaoBD& BD = meios_.BD;
    try {
        BD.IniciaTransaccao();
        BD.Tranca();
        // Both facts again: cancelled there, and still here.
        const bool ainda =
            livro::estado_no_erp(BD, chave) == livro::EstadoERP::anulado && livro::no_livro(BD, chave);
        if (ainda) retira_do_livro(passos.intencao.fluxo, chave);
        BD.ConfirmaTransaccao();
        return ainda;
    } catch (const std::exception& falha) {
        desfaz(BD);
        meios_.atendimento.diz("O documento " + chave.texto() +
                               " não foi retirado dos movimentos da ORVEX.\r\n" + base::descricao(falha) +
                               "\r\nContinua por decidir.");
        return false;
    }
}

void Recuperacao::retira_do_livro(Fluxo fluxo, const ChaveDocumento& chave) {
    livro::Documento documento = livro::documento_de(chave);
    switch (fluxo) {
    case Fluxo::emite_guia:
    case Fluxo::anula_guia: {
        const DocumentosDeGuias guias = meios_.guias();
        if (base::le_inteiro(guias.SerieEscrita) == chave.Serie) documento.Serie = guias.SerieEscrita;
        return livro::retira_guia(meios_.BD, documento, guias.TpDocDevolucao);
    }
    case Fluxo::devolve:
        return livro::retira_devolucao(meios_.BD, documento);
    case Fluxo::ajusta:
    case Fluxo::substitui_ajuste:
    case Fluxo::anula_ajuste:
    case Fluxo::transfere_para_orvex:
    case Fluxo::transfere_para_cliente:
        break;
    }
    livro::apaga_linhas(meios_.BD, documento);
}

// By what the user knows it.
std::string Recuperacao::descricao(const Passos& passos) const {
    const Cabecalho& cabecalho = passos.cabecalho;
    const confirmacao::Intencao& intencao = passos.intencao;
    std::string texto = std::string("Operação: ") + por_extenso(intencao.fluxo) + ", pedida em " +
                        cabecalho.hora.data_hora() + " por " + cabecalho.utilizador + " em " +
                        cabecalho.maquina + "\r\nCliente: " + intencao.Cliente + "\r\nArtigos:";
    for (const confirmacao::ArtigoMovido& artigo : intencao.artigos)
        texto += "\r\n    " + artigo.Artigo + "   " + meios_.formato.texto(artigo.Quantidade) + " t";
    return texto;
}

} // namespace orvex::platform::diario
