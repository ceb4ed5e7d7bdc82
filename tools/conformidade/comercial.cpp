// Notes and returns: the members in the order and with the values that the screens give them.
#include "verificacao.h"

#include "base/falha.h"
#include "base/texto.h"

#include <initializer_list>

namespace orvex::conformidade {
namespace {

using base::DataHora;
using base::Variante;
using startup::ParametroDocumento;
using startup::ReferenciaERP;
using startup::ValorERP;

constexpr const char* classe_documento = "SageApiNextPlus.DocumentoComercial";
constexpr const char* classe_linha = "SageApiNextPlus.DocumentosGcLin";
constexpr std::int16_t especie_guia = 3;
constexpr int area_gestao = 4, origem_devolucao = 3;

// Letters of the ERP's code page that a wrong one loses.
constexpr const char* texto_da_linha = "Posição «ensaio» de José O'Neill, 5 €";
constexpr const char* nome_da_linha = "Bobina d'aço nº 1";

// What is put into the header after it was validated, and read back.
enum class Como { texto, data, hora };
struct Membro {
    const char* nome;
    Como como;
    std::string valor;
};
std::vector<Membro> membros(const Ensaio& ensaio, const Guia& guia) {
    const DataHora& agora = ensaio.pedido.agora;
    std::vector<Membro> todos{{"NumeroContribuinte", Como::texto, "999999990"},
                              {"Processo", Como::texto, ""},
                              {"VossoNoDocumento", Como::texto, "Ensaio nº 1"},
                              {"Vendedor", Como::texto, ""},
                              {"MeiodeTransporte", Como::texto, "Camião próprio"},
                              {"Matricula", Como::texto, "00-ÀÇ-00"},
                              {"LocalCarga", Como::texto, "Cais 3, «Estação» d'Água"},
                              {"LocalDescarga", Como::texto, "Rua São João, 5 €"}};
    if (!guia.devolucao)
        for (const char* hora : {"HoraCarga", "HoraDescarga"})
            todos.push_back({hora, Como::hora, agora.so_hora()});
    for (const char* data : {"DataCarga", "DataDescarga"})
        todos.push_back({data, Como::data, agora.data()});
    return todos;
}

ReferenciaERP objecto(const ValorERP& valor, const char* membro) {
    if (!valor.objecto) throw base::Falha(std::string(membro) + " não dá um objecto.");
    return valor.objecto;
}

ReferenciaERP novo(Ensaio& ensaio, const char* classe) {
    ReferenciaERP feito = ensaio.gERP.CriaObjecto(classe);
    if (!feito) throw base::Falha(std::string("CriaObjecto não dá um objecto da classe ") + classe + ".");
    return feito;
}

ReferenciaERP com_cabecalho(Ensaio& ensaio, const ParametroDocumento& tipo, const Guia& guia) {
    ReferenciaERP documento = novo(ensaio, classe_documento);
    const ReferenciaERP Cab = objecto(documento->obtem("Cab"), "Cab");
    const DataHora& agora = ensaio.pedido.agora;
    Cab->poe("Ano", agora.ano);
    Cab->poe("Data", agora.data());
    Cab->poe("AreaGestao", area_gestao);
    Cab->poe("Sector", tipo.Sector());
    Cab->poe("Serie", tipo.Serie());
    Cab->poe("TipoDocumento", tipo.TpDoc());
    Cab->poe("TipoTerceiro", startup::terceiro_cliente);
    Cab->poe("Terceiro", guia.cliente);
    Cab->poe("TipoPreco", 0);
    if (guia.devolucao) documento->poe("Origem", origem_devolucao);
    documento->chama("Validar", {});
    for (const Membro& membro : membros(ensaio, guia))
        Cab->poe(membro.nome, membro.valor);
    Cab->poe("IvaIncluido", false);
    return documento;
}

void acrescenta_linha(Ensaio& ensaio, startup::ObjectoERP& documento, const ParametroDocumento& tipo,
                      const std::string& artigo, base::Moeda quantidade) {
    const ReferenciaERP linha = novo(ensaio, classe_linha);
    const bool de_texto = artigo.empty();
    linha->poe("TipoDeLinha", 1);
    linha->poe("Artigo", artigo);
    if (!de_texto) linha->poe("Armazem", ensaio.pedido.casa.armazem);
    documento.chama("SugereValoresLin", {linha, true, true, true, true, true, false, true});
    linha->poe("descricao", de_texto ? texto_da_linha : nome_da_linha);
    if (de_texto) {
        linha->poe("Quantidade", 0);
        linha->poe("Unidade", "");
        linha->poe("TaxaIVA", 0);
    } else {
        linha->poe("Quantidade", quantidade);
        linha->poe("QuantidadeOrigem", quantidade);
    }
    linha->poe("DataMvStock", ensaio.pedido.agora.data());
    linha->poe("PrecoUnitario", 0);
    linha->poe("Sector", tipo.Sector());
    linha->poe("Desconto", 0);
    linha->poe("TaxaDesconto", 0);
    if (de_texto) linha->poe("Armazem", "");
    documento.chama("AdicionaLinha", {linha});
}

startup::ChaveDocumento chave_de(const ReferenciaERP& documento) {
    const ReferenciaERP Cab = objecto(documento->obtem("Cab"), "Cab");
    return {static_cast<std::int16_t>(Cab->obtem("Ano").valor.inteiro()),
            Cab->obtem("TipoDocumento").valor.texto(),
            static_cast<std::int16_t>(Cab->obtem("Serie").valor.inteiro()),
            static_cast<std::int32_t>(Cab->obtem("NossoNoDocumento").valor.inteiro())};
}

// A date may come as a date or as a text, a time too.
std::string lido(startup::ObjectoERP& Cab, const Membro& membro) {
    const Variante valor = Cab.obtem(membro.nome).valor;
    const auto* data = std::get_if<DataHora>(&valor.valor());
    if (membro.como == Como::texto) return std::string(base::apara(valor.texto()));
    if (membro.como == Como::hora) return data != nullptr ? data->so_hora() : valor.texto();
    const auto dia = data != nullptr ? *data : DataHora::le(valor.texto());
    return dia ? dia->data() : valor.texto();
}

// One line for what is as it was put, and one for each that is not.
class Comparacao {
  public:
    Comparacao(Relatorio& relatorio, std::string o_que)
        : relatorio_(relatorio), o_que_(std::move(o_que)), errados_(relatorio.errados()) {}

    void igual(const std::string& membro, const std::string& esperado, const std::string& encontrado) {
        if (encontrado != esperado) relatorio_.errado(o_que_ + ", " + membro, esperado, encontrado);
    }
    void acaba() {
        if (relatorio_.errados() == errados_) relatorio_.certo(o_que_ + ", como se puseram");
    }

  private:
    Relatorio& relatorio_;
    std::string o_que_;
    int errados_;
};

ReferenciaERP le(Ensaio& ensaio, const startup::ChaveDocumento& chave) {
    ReferenciaERP documento = novo(ensaio, classe_documento);
    const auto resposta =
        documento->chama("Ler", {chave.Ano, chave.Serie, chave.NossoNoDocumento, chave.TipoDocumento});
    if (resposta.valor.inteiro() != 0)
        throw base::Falha("Ler recusou: " + documento->chama("UltimaMensagem", {}).valor.texto());
    return documento;
}

void confere_cabecalho(Ensaio& ensaio, const startup::ChaveDocumento& chave, const Guia& guia,
                       startup::ObjectoERP& Cab) {
    Comparacao cabecalho(ensaio.relatorio, chave.texto() + ": cabeçalho");
    for (const Membro& membro : membros(ensaio, guia))
        if (!membro.valor.empty()) // what is left empty the ERP may fill
            cabecalho.igual(membro.nome, membro.valor, lido(Cab, membro));
    cabecalho.igual("Data", ensaio.pedido.agora.data(), lido(Cab, {"Data", Como::data, {}}));
    cabecalho.igual("Terceiro", guia.cliente, lido(Cab, {"Terceiro", Como::texto, {}}));
    cabecalho.igual("convertido", "0", std::to_string(Cab.obtem("convertido").valor.inteiro()));
    for (const char* do_erp : {"Processo", "Vendedor", "RegimeIva"})
        Cab.obtem(do_erp);
    if (Cab.obtem("NumeroViasemitidas").valor.inteiro() == startup::documento_anulado)
        cabecalho.igual("NumeroViasemitidas", "outro número", std::to_string(startup::documento_anulado));
    cabecalho.acaba();
}

void confere_linhas(Ensaio& ensaio, const startup::ChaveDocumento& chave, const Guia& guia,
                    const ReferenciaERP& Linhas) {
    Comparacao linhas(ensaio.relatorio, chave.texto() + ": linhas");
    const std::int64_t quantas = Linhas->obtem("Count").valor.inteiro();
    linhas.igual("Count", std::to_string(guia.linhas.size()), std::to_string(quantas));
    for (std::int64_t i = 1; i <= quantas && i <= static_cast<std::int64_t>(guia.linhas.size()); ++i) {
        const auto& [artigo, quantidade] = guia.linhas[static_cast<std::size_t>(i - 1)];
        const ReferenciaERP linha = objecto(Linhas->chama("Item", {i}), "Item");
        const auto membro = [&](const char* nome, const std::string& esperado) {
            linhas.igual(nome + (" da linha " + std::to_string(i)), esperado,
                         std::string(base::apara(linha->obtem(nome).valor.texto())));
        };
        membro("NumeroDaLinha", std::to_string(i));
        membro("Artigo", artigo);
        membro("descricao", artigo.empty() ? texto_da_linha : nome_da_linha);
        membro("Armazem", artigo.empty() ? "" : ensaio.pedido.casa.armazem);
        linhas.igual("Quantidade da linha " + std::to_string(i), quantidade.texto(),
                     linha->obtem("Quantidade").valor.moeda().texto());
    }
    linhas.acaba();
}

} // namespace

Resposta pede_comercial(Ensaio& ensaio, const ParametroDocumento& tipo, const Guia& guia) {
    const ReferenciaERP documento = com_cabecalho(ensaio, tipo, guia);
    for (const auto& [artigo, quantidade] : guia.linhas)
        acrescenta_linha(ensaio, *documento, tipo, artigo, quantidade);
    const startup::ChaveDocumento pedida = chave_de(documento);
    if (ensaio.gERP.SubmeteDocumento(especie_guia, documento) != 0)
        return {.recusa = mensagem_da_recusa(ensaio, "SubmeteDocumento")};
    const ReferenciaERP submetido = ensaio.gERP.DocumentoSubmetido();
    if (!submetido) throw base::Falha("DocumentoSubmetido não dá um objecto.");
    const auto final =
        submetido->chama("Finalizar", {pedida.NossoNoDocumento, 0, pedida.TipoDocumento, pedida.Ano});
    if (final.valor.inteiro() != 0) {
        mensagem_da_recusa(ensaio, "Finalizar");
        return {.recusa = submetido->chama("UltimaMensagem", {}).valor.texto()};
    }
    const startup::ChaveDocumento chave = chave_de(submetido);
    anota(ensaio, tipo, chave);
    return {.chave = chave};
}

void confere_lido(Ensaio& ensaio, const startup::ChaveDocumento& chave, const Guia& guia) {
    const ReferenciaERP documento = le(ensaio, chave);
    ensaio.relatorio.compara("Ler a chave " + chave.texto(), chave.texto(), chave_de(documento).texto());
    confere_cabecalho(ensaio, chave, guia, *objecto(documento->obtem("Cab"), "Cab"));
    confere_linhas(ensaio, chave, guia, objecto(documento->obtem("Linhas"), "Linhas"));
}

void confere_anulado(Ensaio& ensaio, const startup::ChaveDocumento& chave) {
    const ReferenciaERP Cab = objecto(le(ensaio, chave)->obtem("Cab"), "Cab");
    ensaio.relatorio.compara(chave.texto() + ": NumeroViasemitidas depois de anulado",
                             std::to_string(startup::documento_anulado),
                             std::to_string(Cab->obtem("NumeroViasemitidas").valor.inteiro()));
}

void recusas_dos_comerciais(Ensaio& ensaio) {
    const ParametroDocumento& tipo = ensaio.pedido.casa.guias;
    const std::string &cliente = ensaio.pedido.cliente, &artigo = ensaio.pedido.artigo;
    const base::Moeda quantidade = quantidade_de_ensaio;
    const struct {
        const char* o_que;
        Guia guia;
    } casos[] = {
        {"guia sem linhas", {.cliente = cliente, .linhas = {}}},
        {"guia de um artigo desconhecido", {.cliente = cliente, .linhas = {{desconhecido, quantidade}}}},
        {"guia de um cliente desconhecido", {.cliente = desconhecido, .linhas = {{artigo, quantidade}}}}};
    for (const auto& caso : casos)
        recusado(ensaio, caso.o_que, [&] { return pede_comercial(ensaio, tipo, caso.guia); });

    const auto ler = [&](const Variante& numero) {
        const ReferenciaERP documento = novo(ensaio, classe_documento);
        const auto resposta =
            documento->chama("Ler", {ensaio.pedido.agora.ano, tipo.Serie(), numero, tipo.TpDoc()});
        if (resposta.valor.inteiro() == 0) return Resposta{.chave = chave_de(documento)};
        return Resposta{.recusa = documento->chama("UltimaMensagem", {}).valor.texto()};
    };
    recusado(ensaio, "Ler um documento que não existe", [&] { return ler(numero_desconhecido); });
    recusado(ensaio, "Ler um número que é texto", [&] { return ler("doze"); });
}

void recusas_dos_objectos(Ensaio& ensaio) {
    constexpr const char* membro = "MembroQueNaoExiste";
    falha(ensaio, "classe desconhecida", [&] { ensaio.gERP.CriaObjecto("Orvex.ClasseQueNaoExiste"); });
    for (const char* classe : {classe_documento, classe_linha}) {
        const std::string de = std::string(" de ") + classe;
        const ReferenciaERP vazio = novo(ensaio, classe);
        falha(ensaio, "ler um membro desconhecido" + de, [&] { vazio->obtem(membro); });
        falha(ensaio, "pôr um membro desconhecido" + de, [&] { vazio->poe(membro, 1); });
        falha(ensaio, "chamar um membro desconhecido" + de, [&] { vazio->chama(membro, {1}); });
    }
    const ReferenciaERP vazio = novo(ensaio, classe_documento);
    ensaio.relatorio.compara(
        "linhas de um documento novo", "0",
        std::to_string(objecto(vazio->obtem("Linhas"), "Linhas")->obtem("Count").valor.inteiro()));
    falha(ensaio, "linha 1 de um documento sem linhas",
          [&] { objecto(vazio->obtem("Linhas"), "Linhas")->chama("Item", {1}); });
}

} // namespace orvex::conformidade
