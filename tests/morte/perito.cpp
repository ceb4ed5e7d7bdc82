#include "tests/morte/perito.h"

namespace orvex::testes {
namespace {

namespace fs = std::filesystem;
namespace diario = platform::diario;
using confirmacao::Fluxo;

diario::Rascunhos::Meios rascunhos_em(const fs::path& pasta, const diario::Gaveta& gaveta,
                                      diario::Disco& disco = diario::disco_do_sistema()) {
    return {.pasta = pasta,
            .empresa = "E",
            .diarios = gaveta,
            .em_curso = [] { return fs::path(); },
            .engole = [](const std::string& texto) { ADD_FAILURE() << texto; },
            .disco = disco};
}

bool tem(const std::string& caixas, const std::string& texto) {
    return caixas.find(texto) != std::string::npos;
}

void exige(std::string& defeitos, const std::string& o_que, bool cumprido) {
    if (!cumprido) defeitos += o_que + "; ";
}

// What is found is the journal, and what its boxes name; nothing where nothing was to be decided.
std::string por_nomear(const auditoria::Relatorio& relatorio, const std::string& caixas, bool perguntou) {
    std::string sem_nome;
    for (const auditoria::Achado& este : relatorio.achados) {
        const auto p = partes(este.chave, "/"); // year, type, series, number
        // A transfer's document alone has its item where its holder is not.
        const bool dito = este.verificacao == "J1" ||
                          (este.verificacao == "E4" && tem(caixas, "    " + este.artigo + "   ")) ||
                          (p.size() >= 4 && tem(caixas, p[1] + "/" + p[2] + "/" + p[3] + "/" + p[0]));
        if (!perguntou || !dito) sem_nome += este.verificacao + " " + este.chave + " ";
    }
    return sem_nome + (perguntou && relatorio.limpo() ? "nothing is found of it" : "");
}

} // namespace

fs::path empresa_de(const fs::path& morto) {
    for (const fs::directory_entry& entrada : fs::directory_iterator(morto))
        if (fs::exists(entrada.path() / startup::ficheiro_parametros)) return entrada.path();
    throw std::runtime_error("it had no company yet: " + morto.string());
}

fs::path diarios_de(const fs::path& morto) { return morto / "diarios"; }
fs::path rascunhos_de(const fs::path& morto) { return morto / "rascunhos"; }
fs::path caixas_de(const fs::path& morto) { return morto / "caixas"; }
fs::path janela_de(const fs::path& morto) { return morto / "janela"; }

Vida::Vida(Fluxo fluxo, const fs::path& diarios, platform::diario::Disco& disco)
    : empresa(empresa_disputada(fluxo <= Fluxo::devolve ? Linha::duas : Linha::fechada)),
      gaveta(diarios.empty() ? sem_nome.pasta() : diarios, {}, disco) {
    Posto este = posto(empresa.pasta(), gaveta, gravacao);
    este.resolve = [this](auto& ficheiro) { return resolve(ficheiro); };
    programa.emplace(este, fluxo);
    if (!programa->prepara()) throw std::logic_error("the screen refused the flow");
    if (fluxo != Fluxo::emite_guia) return;
    auto meios =
        rascunhos_em(rascunhos_de(diarios.empty() ? sem_nome.pasta() : diarios.parent_path()), gaveta, disco);
    meios.em_curso = [this] { return programa->diario().caminho(); };
    rascunhos.emplace(meios);
    rascunhos->guarda(delivery::Rascunho{.Cliente = "CL'1", .linhas = {{.Artigo = "REEL'1"}}});
    programa->junta(*rascunhos);
}

Perito::Perito(Fluxo fluxo) {
    Vida vida(fluxo);
    antes_ = de(vida.empresa);
    vida.programa->prime();
    completo_ = retirado_ = de(vida.empresa);
    if (fluxo != Fluxo::substitui_ajuste) return;
    Vida so_anula(Fluxo::anula_ajuste);
    so_anula.programa->prime();
    retirado_ = de(so_anula.empresa);
}

// A warehouse that was never used is one that has nothing.
Perito::Estado Perito::de(EmpresaTeste& empresa) {
    return empresa.livro() + empresa.linhas("select CODIGO, VLREXIST, STDISP from Artigos order by CODIGO") +
           empresa.linhas("select Artigo, Armazem, Existenc from artarm where Existenc<>0 "
                          "order by Artigo, Armazem");
}

const char* Perito::nome_de(const Estado& estado) const {
    return estado == antes_      ? "before"
           : estado == completo_ ? "complete"
           : estado == retirado_ ? "withdrawn"
                                 : "something else";
}

// Read from the files themselves, whatever engine the program worked on; what holds the same is audited once.
const auditoria::Relatorio& Perito::audita(EmpresaTeste& empresa, const platform::diario::Gaveta& gaveta) {
    std::string tudo = de(empresa) + std::to_string(gaveta.por_acabar().size());
    for (const char* tabela : {"U_DocGcLin1", "DocGcCab", "DocGcLin", "artarm"})
        tudo += "\n" + empresa.linhas(std::string("select * from ") + tabela);
    const auto [esta, nova] = auditadas_.try_emplace(tudo);
    if (!nova) return esta->second;
    auditoria::Pedido pedido = pedido_de_auditoria(empresa.pasta(), relogio);
    pedido.abre = [&] { return abre_empresa(empresa.pasta()); };
    pedido.gaveta.emplace(gaveta);
    SemProgresso progresso;
    return esta->second = auditoria::audita(pedido, progresso);
}

// Who is asked nothing cannot answer otherwise.
std::string Perito::julga(const fs::path& morto) {
    bool perguntou = false;
    const std::string com_sim = julga(morto, true, perguntou);
    return perguntou ? com_sim + julga(morto, false, perguntou) : com_sim;
}

std::string Perito::julga(const fs::path& morto, bool aceita_tudo, bool& perguntou) {
    EmpresaTeste empresa(empresa_de(morto));
    const PastaTemporaria diarios;
    if (fs::exists(diarios_de(morto))) fs::copy(diarios_de(morto), diarios.pasta());
    platform::diario::Gaveta gaveta(diarios.pasta());
    const Estado ao_morrer = de(empresa);
    Arranque arranque(empresa.pasta(), gaveta, aceita_tudo);
    const std::string janela = arranque.janela();
    if (!janela.empty()) janelas.try_emplace(janela, morto);
    if (fs::exists(janela_de(morto)) && conteudo_de(janela_de(morto)) != janela)
        return morto.filename().string() + " was seen at once as " + conteudo_de(janela_de(morto));
    const std::string primeiras = arranque.recupera(0), segundas = arranque.recupera(11);
    perguntou = arranque.perguntas > 0;
    const Estado agora = de(empresa);
    std::string defeitos;
    if (aceita_tudo)
        defeitos = com_sim(agora, conteudo_de(caixas_de(morto)) + primeiras + segundas);
    else
        exige(defeitos, "touched, without being told to", agora == ao_morrer);
    defeitos += do_rascunho(morto, gaveta, agora);
    // What stays is listed again.
    const std::string achados = por_nomear(audita(empresa, gaveta), segundas, perguntou && !aceita_tudo);
    exige(defeitos, "audit: " + achados, achados.empty());
    if (defeitos.empty()) return "";
    return morto.filename().string() + (aceita_tudo ? " yes: " : " later: ") + defeitos + "\n  found " +
           nome_de(ao_morrer) + ", left " + nome_de(agora) + "\n  boxes " + primeiras + segundas + "\n";
}

// Offered when nothing was made of it, gone when all was, and held back while that is open.
std::string Perito::do_rascunho(const fs::path& morto, const diario::Gaveta& gaveta,
                                const Estado& agora) const {
    if (!fs::exists(rascunhos_de(morto))) return "";
    const PastaTemporaria copia;
    fs::copy(rascunhos_de(morto), copia.pasta());
    diario::Rascunhos rascunhos(rascunhos_em(copia.pasta(), gaveta));
    const auto* oferta = rascunhos.oferta();
    const bool livre = oferta != nullptr && oferta->estado == diario::Rascunhos::Estado::livre;
    std::string defeitos;
    exige(defeitos, "the draft of an issued note is there", agora != completo_ || oferta == nullptr);
    exige(defeitos, "offered, and not known to be unmade", !livre || agora == antes_);
    exige(defeitos, "the draft is lost", livre || agora != antes_ || !gaveta.por_acabar().empty());
    return defeitos;
}

// ERP and ledger are as the user was told.
std::string Perito::com_sim(const Estado& agora, const std::string& caixas) const {
    std::string defeitos;
    if (tem(caixas, "gravada por inteiro"))
        exige(defeitos, "not complete, as told", agora == completo_);
    else if (tem(caixas, "Completar agora"))
        exige(defeitos, "not withdrawn, as told", agora == retirado_);
    else if (tem(caixas, "ficou anulado no ERP."))
        exige(defeitos, "not as before, as told", agora == antes_);
    else
        exige(defeitos, "neither as before nor complete", agora == antes_ || agora == completo_);
    return defeitos;
}

} // namespace orvex::testes
