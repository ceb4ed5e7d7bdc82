#include "tests/morte/cemiterio.h"

#include "tests/morte/disco_contado.h"
#include "tools/ensaio/base_ensaio.h"

#include <sstream>

namespace orvex::testes {
namespace {

namespace fs = std::filesystem;

// Counts the steps of a program, and ends it, really, before the one asked for: the first is 1.
struct Momentos {
    int passados = 0;
    int morre_no = 0;

    void operator()() {
        if (++passados == morre_no) ::kill(::getpid(), SIGKILL);
    }
    // On the wire, where each takes longer, those that others can see alone.
    void conta(Diario& gravacao) {
        gravacao.momento = [this](const Diario::Operacao& esta) {
            if (!pelo_fio() || Diario::sai_do_programa(esta)) (*this)();
        };
    }
};

} // namespace

std::string Sentenca::nomes() const {
    std::string todos;
    for (const auto& [janela, morto] : janelas)
        todos += (todos.empty() ? "" : "|") + janela;
    return todos;
}

// In memory, where there is room for thousands of companies: on a disk most of the time would go into making
// and deleting their files.
fs::path Cemiterio::onde_ha_muito_espaco() {
    constexpr std::uintmax_t chega = std::uintmax_t{2} << 30;
    const fs::path memoria = "/dev/shm";
    std::error_code erro;
    const fs::space_info espaco = fs::space(memoria, erro);
    return !erro && espaco.available > chega ? memoria : fs::temp_directory_path();
}

Cemiterio::Cemiterio() {
    em(modelo(), [this] { return faz_disputadas(modelo()), ""; });
}

Cemiterio::~Cemiterio() { unsetenv(ensaio::variavel_motor); }

void Cemiterio::novo_servidor() {
    setenv(ensaio::variavel_motor, "fio", 1);
    servidor_.reset();
    servidor_.emplace(raiz_.pasta());
}

Cemiterio::Fim Cemiterio::em(const fs::path& onde, const std::function<std::string()>& trabalho) const {
    fs::create_directories(onde);
    const fs::path dito = onde / "dito";
    std::fflush(nullptr);
    const pid_t filho = ::fork();
    if (filho == 0) {
        setenv("TMPDIR", onde.c_str(), 1);
        if (fs::exists(modelo() / "dito")) disputadas_feitas = modelo();
        if (servidor_) usa_servidor_em(servidor_->porta(), raiz_.pasta());
        int codigo = 0;
        std::string texto;
        try {
            texto = trabalho();
        } catch (const std::exception& falha) {
            texto = falha.what();
            codigo = 1;
        }
        std::ofstream(dito) << texto;
        ::_exit(codigo);
    }
    int estado = 0;
    ::waitpid(filho, &estado, 0);
    const bool morreu = WIFSIGNALED(estado) && WTERMSIG(estado) == SIGKILL;
    EXPECT_TRUE(morreu || estado == 0) << onde << ": " << conteudo_de(dito);
    return {morreu, morreu ? "" : conteudo_de(dito)};
}

Cemiterio::Pastas Cemiterio::mata(const Commit& commit) const {
    Pastas mortos;
    int commit_no = 0;
    const auto corre = [&](const fs::path& onde, int morre_no) {
        return em(onde, [&] {
            Momentos momentos;
            DiscoContado disco(std::ref(momentos), !pelo_fio());
            Vida vida(GetParam(), diarios_de(onde), disco);
            momentos = {.morre_no = morre_no};
            momentos.conta(vida.gravacao);
            vida.programa->janela.com_a_caixa_aberta = std::ref(momentos);
            vida.gravacao.do_commit = commit.falha;
            vida.gravacao.espia = [&](const std::string& linha) {
                if (linha == "CONFIRMA") commit_no = momentos.passados;
            };
            vida.programa->prime();
            momentos();
            return std::to_string(commit_no);
        });
    };
    commit_no = std::stoi(corre(pasta("medida"), 0).texto);
    EXPECT_GT(commit_no, 0);
    for (int momento = commit.falha ? commit_no + 1 : 1;; ++momento) {
        const fs::path morto = pasta(commit.nome + std::to_string(momento));
        if (!corre(morto, momento).morreu) return mortos;
        if (servidor_) olha_logo(morto);
        mortos.push_back(morto);
    }
}

// While the server may not even have noticed that its client is gone.
void Cemiterio::olha_logo(const fs::path& morto) const {
    const Fim fim = em(morto, [&] {
        platform::diario::Gaveta gaveta(diarios_de(morto));
        return gaveta.por_acabar().empty() ? "" : Arranque(empresa_de(morto), gaveta, false).janela();
    });
    std::ofstream(janela_de(morto)) << fim.texto;
}

Cemiterio::Pastas Cemiterio::mata_servidor(bool depois_de_cumprido) {
    Pastas vivos;
    for (int pedido = 1;; ++pedido) {
        novo_servidor();
        const fs::path vivo = pasta((depois_de_cumprido ? "after" : "before") + std::to_string(pedido));
        em(vivo, [&] {
            auto* fica = new Vida(GetParam(), diarios_de(vivo)); // and its company
            servidor_->morre_no(pedido, depois_de_cumprido);
            fica->programa->prime();
            std::ofstream(caixas_de(vivo)) << fica->programa->janela.retira_caixas();
            return "";
        });
        if (servidor_->vive()) return vivos;
        vivos.push_back(vivo);
    }
}

Cemiterio::Pastas Cemiterio::mata_recuperacao(const fs::path& morto) const {
    Pastas mortos;
    for (int momento = 1;; ++momento) {
        const fs::path outro = pasta(morto.filename().string() + "-" + std::to_string(momento));
        const Fim fim = em(outro, [&] {
            EmpresaTeste empresa(empresa_de(morto));
            fs::copy(diarios_de(morto), diarios_de(outro));
            if (fs::exists(rascunhos_de(morto))) fs::copy(rascunhos_de(morto), rascunhos_de(outro));
            Momentos momentos;
            DiscoContado disco(std::ref(momentos), !pelo_fio());
            platform::diario::Gaveta gaveta(diarios_de(outro), {}, disco);
            Arranque arranque(empresa.pasta(), gaveta, true);
            momentos.morre_no = momentos.passados + momento;
            momentos.conta(arranque.gravacao);
            arranque.com_a_caixa_aberta = [&](const std::string& texto) {
                std::ofstream(caixas_de(outro), std::ios::app) << texto << '|';
                momentos();
            };
            arranque.recupera(0);
            arranque.recupera(11);
            return "";
        });
        if (!fim.morreu) {
            EXPECT_GT(momento, 5) << "it took no steps";
            return mortos;
        }
        mortos.push_back(outro);
    }
}

Sentenca Cemiterio::julga(const Pastas& mortos) const {
    const Fim fim = em(pasta("perito"), [&] {
        Perito perito(GetParam());
        std::string defeitos;
        for (const fs::path& morto : mortos)
            defeitos += perito.julga(morto);
        std::string texto;
        for (const auto& [janela, morto] : perito.janelas)
            texto += janela + "\t" + morto.string() + "\n";
        return texto + "\n" + defeitos;
    });
    Sentenca sentenca;
    std::istringstream linhas(fim.texto);
    for (std::string linha; std::getline(linhas, linha) && !linha.empty();)
        sentenca.janelas[linha.substr(0, linha.find('\t'))] = linha.substr(linha.find('\t') + 1);
    sentenca.defeitos.assign(std::istreambuf_iterator<char>(linhas), {});
    return sentenca;
}

} // namespace orvex::testes
