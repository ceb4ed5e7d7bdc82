#include "delivery/guias_remessa.h"

#include "base/falha.h"
#include "base/texto.h"

namespace orvex::delivery {

using base::DataHora;
using base::Moeda;
using base::Variante;

namespace {

// A null weight stays null, whatever is taken from it or given back.
void soma(startup::ConjuntoRegistos& registo, const char* coluna, Moeda quantidade) {
    const Variante valor = registo.valor(coluna);
    if (!valor.nulo()) registo.define(coluna, valor.moeda() + quantidade);
}

bool mesmo_artigo(const std::string& a, const std::string& b) {
    return base::maiusculas(base::apara(a)) == base::maiusculas(base::apara(b));
}

Moeda moeda_ou_zero(const Variante& valor) { return valor.nulo() ? Moeda() : valor.moeda(); }

} // namespace

std::string GuiasRemessa::ChaveLinhaGuia(const std::string& NumLinha) const {
    return std::to_string(DTPicker1.Value.ano) + "/" + GUIASREMESSA[0] + "/" + GUIASREMESSA[1] + "/" +
           std::to_string(NumGuia) + "/" + NumLinha + "/00000";
}

bool GuiasRemessa::TemChave(const std::string& chave) {
    const std::vector<std::string> p = base::divide(chave, '/');
    return p.size() >= 5 && base::le_inteiro(p[0]) && !p[1].empty() && base::le_inteiro(p[2]) &&
           base::le_inteiro(p[3]) && base::le_inteiro(p[4]);
}

bool GuiasRemessa::LinhaDevolvida(const std::string& NumLinha) {
    return !BD.Consulta("Select * from xel_ORVEX_MOV where TpDoc=" + base::entre_plicas(GUIADEVOLUCAO[0]) +
                        " and Origem=" + base::entre_plicas(ChaveLinhaGuia(NumLinha)))
                ->fim();
}

std::string GuiasRemessa::Detentor() const {
    return ARMAZEM[0] != ArmazemGuia ? CLIENTEORVEX[0] : campo(0).Text;
}

void GuiasRemessa::SomaAOrigem(const std::string& origem, Moeda quantidade, Moeda peso_liquido,
                               Moeda peso_bruto) {
    if (!TemChave(origem)) return; // no source line
    const std::vector<std::string> p = base::divide(origem, '/');
    const auto linha = BD.AbreActualizavel(
        "Select * from xel_ORVEX_MOV where Ano=" + p[0] + " and TpDoc=" + base::entre_plicas(p[1]) +
        "     and NumDoc=" + p[3] + " and SerieDoc=" + p[2] + " and NumLinha=" + p[4]);
    if (linha->fim()) return;
    // The open quantity may have been sent by somebody else since it was listed; sent twice, its weight would
    // be lost.
    if (quantidade < Moeda() && moeda_ou_zero(linha->valor("Qtd")) + quantidade < Moeda())
        throw base::FalhaGuarda("A linha " + origem + " já não tem em aberto a quantidade pedida.");
    soma(*linha, "Qtd", quantidade);
    soma(*linha, "PesoLiquido", peso_liquido);
    soma(*linha, "PesoBruto", peso_bruto);
    linha->actualiza();
}

void GuiasRemessa::RegistaLinhasERP(const startup::ListaParametros& documento, std::int32_t NoDoc,
                                    const DataHora& data, Sentido sentido) {
    const auto L = BD.Consulta("Select * from DocGcLin where ano=" + std::to_string(data.ano) +
                               " and tpDocum=" + base::entre_plicas(documento[0]) +
                               " and Serie=" + documento[1] + " and NnumDoc=" + std::to_string(NoDoc));
    for (; !L->fim(); L->move_seguinte()) {
        if (L->valor("artigo").vazio()) continue;
        const Variante Ano = L->valor("Ano"), TpDocum = L->valor("TpDocum"), Serie = L->valor("Serie"),
                       NNumDoc = L->valor("NNumDoc"), NumLinha = L->valor("Numlinha"),
                       Artigo = L->valor("Artigo");
        const Moeda Quant = moeda_ou_zero(L->valor("Quant"));
        const auto n = static_cast<std::size_t>(NumLinha.inteiro());
        if (n >= PesosLinha.size())
            throw base::FalhaGuarda("O ERP deu à guia a linha " + std::to_string(n) +
                                    ", que a guia não tem.");

        const auto mov = BD.AbreActualizavel("Select * from xel_ORVEX_MOV where Ano=-1");
        mov->acrescenta();
        mov->define("Ano", Ano);
        mov->define("TpDoc", TpDocum);
        mov->define("NumDoc", NNumDoc);
        mov->define("SerieDoc", Serie);
        mov->define("NumLinha", NumLinha);
        mov->define("Data", data);
        mov->define("Artigo", Artigo);
        mov->define("Cliente", campo(0).Text);
        mov->define("Descritivo", L->valor("Descr"));
        mov->define("QtdOrig", Quant);
        mov->define("Qtd", Quant);
        mov->define("Origem", OutrosDocsLinha[n]);
        mov->define("PesoLiquido", Quant);
        mov->define("PesoBruto", PesosLinha[n]);
        mov->actualiza();

        const auto historico = BD.AbreActualizavel("Select * from xel_ORVEX where Ano=-1");
        historico->acrescenta();
        historico->define("NumSerie", Artigo);
        historico->define("Cliente", Detentor());
        historico->define("Data", data);
        historico->define("Quantidade", sentido == Sentido::saida ? -Quant : Quant);
        historico->define("Obs", Label2(1).Caption);
        historico->define("Funcionario", "");
        historico->define("CliFinal", Detentor());
        historico->define("Preco", 0);
        historico->define("Ano", Ano);
        historico->define("TpDoc", TpDocum);
        historico->define("NNumDoc", NNumDoc);
        historico->define("Serie", Serie);
        historico->define("NumLin", NumLinha);
        historico->actualiza();

        const auto extensao = BD.AbreActualizavel("Select * from U_DocGcLin1 where ano=-1");
        extensao->acrescenta();
        extensao->define("TpDocUM", TpDocum);
        extensao->define("NNumDoc", NNumDoc);
        extensao->define("NumLinha", NumLinha);
        extensao->define("Serie", Serie);
        extensao->define("Ano", Ano);
        extensao->define("PesoBruto", PesosLinha[n]);
        extensao->actualiza();
        LinhasEnviadas[n].registada = mesmo_artigo(Artigo.texto(), LinhasEnviadas[n].Artigo);
    }
}

void GuiasRemessa::ExigeLinhasRegistadas(const startup::ChaveDocumento& criado) const {
    for (const LinhaEnviada& linha : LinhasEnviadas)
        if (!linha.Artigo.empty() && !linha.registada)
            throw base::FalhaGuarda("O ERP não mostra o artigo " + linha.Artigo + " no documento " +
                                    criado.texto() + " que acabou de criar.");
}

void GuiasRemessa::ActualizaMov(std::int32_t NoDoc) {
    regista_falha([&] {
        for (int i = 0; i < Gr.linhas(); ++i) {
            if (Gr.valor(i, "Artigo").vazio()) continue;
            const Moeda Quant = Gr.moeda(i, "Quant");
            SomaAOrigem(Gr.texto(i, "OutroDocMesmo"), -Quant, -Quant, -Gr.moeda(i, "PesoBruto"));
        }
        RegistaLinhasERP(GUIASREMESSA, NoDoc, DTPicker1.Value, Sentido::saida);
    });
}

std::string GuiasRemessa::DaGuia(const char* coluna_serie, const char* coluna_numero,
                                 std::int32_t NoDoc) const {
    return " where Ano=" + std::to_string(DTPicker1.Value.ano) +
           " and TpDoc=" + base::entre_plicas(GUIASREMESSA[0]) + "     and " + coluna_numero + "=" +
           std::to_string(NoDoc) + " and " + coluna_serie + "=" + GUIASREMESSA[1] + " ";
}

void GuiasRemessa::ActualizaMovGR(std::int32_t NoDoc) {
    regista_falha([&] {
        BD.Tranca();
        const auto M = BD.Consulta("Select * from xel_ORVEX_MOV" + DaGuia("SerieDoc", "NumDoc", NoDoc));
        for (; !M->fim(); M->move_seguinte()) {
            SomaAOrigem(M->valor("Origem").texto(), moeda_ou_zero(M->valor("Qtd")),
                        moeda_ou_zero(M->valor("PesoLiquido")), moeda_ou_zero(M->valor("PesoBruto")));
            if (LinhaDevolvida(M->valor("NumLinha").texto()))
                throw base::FalhaGuarda("O artigo " + M->valor("Artigo").texto() + " da guia " +
                                        std::to_string(NoDoc) + " já foi devolvido.");
        }
        BD.Executa("Delete xel_ORVEX_MOV" + DaGuia("SerieDoc", "NumDoc", NoDoc));
        BD.Executa("Delete xel_ORVEX" + DaGuia("Serie", "NNumDoc", NoDoc));
    });
}

} // namespace orvex::delivery
