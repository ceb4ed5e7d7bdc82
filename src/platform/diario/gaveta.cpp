#include "platform/diario/gaveta.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "base/texto.h"

#include <algorithm>
#include <array>
#include <random>
#include <zlib.h>

namespace orvex::platform::diario {
namespace {

namespace fs = std::filesystem;

constexpr const char* por_fazer = ".novo";
constexpr const char* aberto = ".diario";
constexpr const char* acabado = ".fim";

[[noreturn]] void incompreensivel(const fs::path& ficheiro) {
    throw base::Falha("O diário «" + base::texto_de(ficheiro) +
                      "» está danificado, ou foi escrito por uma versão mais recente.");
}

fs::path com_fim(fs::path ficheiro, const char* fim) { return ficheiro.replace_extension(fim); }

} // namespace

std::string novo_nome() {
    const base::DataHora agora = base::DataHora::agora();
    std::array<char, 48> nome{};
    std::snprintf(nome.data(), nome.size(), "%04d%02d%02d-%02d%02d%02d-%08x", agora.ano, agora.mes, agora.dia,
                  agora.hora, agora.minuto, agora.segundo, std::random_device()());
    return nome.data();
}

Passos FicheiroDiario::passos() {
    const auto leitura = le_passos(ficheiro_->le());
    if (!leitura) incompreensivel(caminho_);
    return leitura->passos;
}

void FicheiroDiario::escreve(const std::string& linha, Descarga descarga) {
    if (incompleto_)
        throw base::Falha("O diário «" + base::texto_de(caminho_) + "» não pôde ser escrito até ao fim.");
    try {
        ficheiro_->acrescenta(linha);
        bytes_ += linha.size();
    } catch (...) {
        incompleto_ = true;
        ficheiro_->corta(bytes_); // what of it was written
        throw;
    }
    if (descarga == Descarga::sim) ficheiro_->descarrega();
}

void FicheiroDiario::acaba(Resultado resultado) {
    escreve(linha_do_fim(resultado), Descarga::nao);
    const fs::path novo = com_fim(caminho_, acabado);
    ficheiro_->muda_nome(novo);
    caminho_ = novo;
}

void Gaveta::exige_raiz() const {
    if (pasta_.empty()) throw base::Falha("O sistema não diz qual é a pasta do utilizador.");
    std::error_code erro;
    if (!raiz_.empty() && !fs::is_directory(raiz_, erro))
        throw base::Falha("A pasta dos diários, «" + base::texto_de(raiz_) + "», não está acessível.");
}

void faz_pasta(const fs::path& pasta, Disco& disco) {
    std::error_code erro;
    if (fs::is_directory(pasta, erro)) return;
    const fs::path acima = pasta.parent_path();
    if (acima != pasta) faz_pasta(acima, disco);
    if (fs::create_directory(pasta, erro)) fs::permissions(pasta, fs::status(acima).permissions(), erro);
    if (!fs::is_directory(pasta)) throw base::Falha(base::causa(pasta, erro));
    disco.descarrega_pasta(acima);
}

std::unique_ptr<FicheiroDiario> Gaveta::cria(const std::string& intencao) {
    exige_raiz();
    faz_pasta(pasta_, disco_);
    const fs::path novo = pasta_ / (novo_nome() + por_fazer);
    auto ficheiro = disco_.cria(novo);
    try {
        ficheiro->acrescenta(intencao);
        ficheiro->descarrega();
        const fs::path caminho = com_fim(novo, aberto);
        ficheiro->muda_nome(caminho);
        disco_.descarrega_pasta(pasta_);
        return std::make_unique<FicheiroDiario>(std::move(ficheiro), caminho, intencao.size());
    } catch (...) {
        ficheiro.reset();
        std::error_code ignorado;
        fs::remove(novo, ignorado);
        fs::remove(com_fim(novo, aberto), ignorado);
        throw;
    }
}

std::vector<fs::path> Gaveta::por_acabar() const {
    exige_raiz();
    std::vector<fs::path> ficheiros;
    for (fs::path& este : disco_.ficheiros(pasta_))
        if (este.extension() == aberto) ficheiros.push_back(std::move(este));
    std::sort(ficheiros.begin(), ficheiros.end());
    return ficheiros;
}

// What a torn line left is taken away, so that the next line stands on its own.
std::unique_ptr<FicheiroDiario> Gaveta::tranca(const fs::path& caminho) {
    auto ficheiro = disco_.tranca(caminho);
    if (ficheiro == nullptr) return nullptr;
    const std::string texto = ficheiro->le();
    std::size_t bytes = texto.size();
    if (const auto leitura = le_passos(texto)) {
        bytes = leitura->bytes;
        if (bytes < texto.size()) ficheiro->corta(bytes);
        if (leitura->passos.fim) { // its program died before it gave it the other name
            ficheiro->muda_nome(com_fim(caminho, acabado));
            return nullptr;
        }
    }
    return std::make_unique<FicheiroDiario>(std::move(ficheiro), caminho, bytes);
}

Passos Gaveta::le(const fs::path& ficheiro) const {
    const auto leitura = le_passos(disco_.le(ficheiro));
    if (!leitura) incompreensivel(ficheiro);
    return leitura->passos;
}

// It may be given its other name in between, never the first one again.
std::optional<Passos> Gaveta::le_acabado_ou_nao(const std::string& nome) const {
    const fs::path ficheiro = pasta_ / base::caminho_de(nome);
    for (const fs::path& este : {com_fim(ficheiro, aberto), com_fim(ficheiro, acabado)})
        if (fs::exists(este)) return le(este);
    return std::nullopt;
}

void Gaveta::arruma() noexcept {
    try {
        const auto agora = fs::file_time_type::clock::now();
        std::error_code erro;
        for (const fs::path& este : disco_.ficheiros(pasta_)) {
            const auto extensao = este.extension();
            if (extensao != acabado && extensao != por_fazer) continue;
            if (agora - fs::last_write_time(este) < guarda) continue;
            fs::remove(este, erro);
        }
    } catch (const std::exception&) { // it is looked at again at the next start
    }
}

fs::path pasta_da_empresa(const fs::path& todas, const std::string& servidor,
                          const std::string& base_de_dados, const std::string& maquina) {
    constexpr std::size_t legivel = 40;
    const std::string nome_servidor = base::maiusculas(servidor.substr(0, servidor.find_first_of(",\\")));
    std::string qual = base::maiusculas(servidor) + "|" + base_de_dados;
    for (const char* daqui : {"SQLITE", "LOCALHOST", "127.0.0.1", "(LOCAL)", "."})
        if (nome_servidor == daqui) qual += "|" + maquina;
    std::string nome;
    for (const char c : base_de_dados.substr(base_de_dados.size() - std::min(base_de_dados.size(), legivel)))
        nome += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    std::array<char, 16> soma{};
    std::snprintf(
        soma.data(), soma.size(), "-%08x",
        static_cast<unsigned>(::crc32_z(0, reinterpret_cast<const Bytef*>(qual.data()), qual.size())));
    return todas / (nome + soma.data());
}

} // namespace orvex::platform::diario
