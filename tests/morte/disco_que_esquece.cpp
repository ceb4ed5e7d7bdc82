#include "tests/morte/disco_que_esquece.h"

#include "tests/morte/perito.h"

#include <sqlite3.h>

namespace orvex::testes {
namespace {

namespace fs = std::filesystem;
using Conteudo = DiscoQueEsquece::Conteudo;
using Escrita = Conteudo::Escrita;

constexpr std::size_t sector = 512;

void aplica(std::string& bytes, const Escrita& escrita) {
    if (escrita.corta) return bytes.resize(escrita.onde);
    if (bytes.size() < escrita.onde + escrita.bytes.size()) bytes.resize(escrita.onde + escrita.bytes.size());
    bytes.replace(escrita.onde, escrita.bytes.size(), escrita.bytes);
}

// Sector by sector, some.
void aplica_em_parte(std::string& bytes, const Escrita& escrita, std::mt19937& sorte) {
    if (escrita.corta) {
        if (sorte() % 2 == 0) aplica(bytes, escrita);
        return;
    }
    for (std::size_t i = 0; i < escrita.bytes.size(); i += sector)
        if (sorte() % 2 == 0) aplica(bytes, {escrita.onde + i, escrita.bytes.substr(i, sector)});
}

// The engine's files are the real ones; what is written to a company's, and flushed, is told.
DiscoQueEsquece* actual = nullptr;
std::map<sqlite3_file*, Conteudo*> abertos;
const sqlite3_io_methods* reais = nullptr;

sqlite3_vfs* o_real() { return sqlite3_vfs_find("unix"); }

int escreve(sqlite3_file* f, const void* bytes, int quantos, sqlite3_int64 onde) {
    abertos.at(f)->por_descarregar.push_back(
        {static_cast<std::size_t>(onde),
         std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(quantos))});
    return reais->xWrite(f, bytes, quantos, onde);
}
int corta(sqlite3_file* f, sqlite3_int64 tamanho) {
    abertos.at(f)->por_descarregar.push_back({static_cast<std::size_t>(tamanho), "", true});
    return reais->xTruncate(f, tamanho);
}
int descarrega(sqlite3_file* f, int modo) {
    actual->descarrega(*abertos.at(f));
    return reais->xSync(f, modo);
}

int abre(sqlite3_vfs*, const char* nome, sqlite3_file* f, int modo, int* dado) {
    const bool da_empresa = (modo & (SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_WAL)) != 0;
    if (da_empresa) abertos[f] = &actual->do_motor(nome); // asked for before it is created
    const int codigo = o_real()->xOpen(o_real(), nome, f, modo, dado);
    if (!da_empresa || f->pMethods == nullptr) return codigo;
    static std::map<const sqlite3_io_methods*, sqlite3_io_methods> todos; // a log is locked otherwise
    sqlite3_io_methods& nossos = todos[f->pMethods];
    nossos = *(reais = f->pMethods);
    nossos.iVersion = 2; // without memory maps of the file
    nossos.xWrite = escreve;
    nossos.xTruncate = corta;
    nossos.xSync = descarrega;
    // None is promised: neither that a sector is whole, nor the order of writes.
    nossos.xDeviceCharacteristics = [](sqlite3_file*) { return 0; };
    f->pMethods = &nossos;
    return codigo;
}

// The default of every connection opened from now on; null for the real one alone.
void poe_no_motor(DiscoQueEsquece* disco) {
    static sqlite3_vfs nosso;
    if (disco == nullptr) {
        sqlite3_vfs_unregister(&nosso);
    } else {
        nosso = *o_real();
        nosso.zName = "esquece";
        nosso.xOpen = abre;
    }
    sqlite3_vfs_register(disco == nullptr ? o_real() : &nosso, 1);
    actual = disco;
}

} // namespace

class DiscoQueEsquece::Ficheiro final : public platform::diario::FicheiroTrancado {
  public:
    Ficheiro(DiscoQueEsquece& disco, Trancado real, Caminho nome, std::shared_ptr<Conteudo> conteudo)
        : disco_(disco), real_(std::move(real)), nome_(std::move(nome)), conteudo_(std::move(conteudo)) {}

    std::string le() override { return real_->le(); }
    void corta(std::size_t bytes) override {
        real_->corta(bytes);
        conteudo_->por_descarregar.push_back({bytes, "", true});
    }
    void acrescenta(std::string_view bytes) override {
        conteudo_->por_descarregar.push_back({real_->le().size(), std::string(bytes)});
        real_->acrescenta(bytes);
    }
    void descarrega() override { disco_.descarrega(*conteudo_); }
    void muda_nome(const Caminho& novo) override {
        real_->muda_nome(novo);
        disco_.nomes_.erase(nome_);
        disco_.nomes_[nome_ = novo] = conteudo_;
    }

  private:
    DiscoQueEsquece& disco_;
    Trancado real_;
    Caminho nome_;
    std::shared_ptr<Conteudo> conteudo_;
};

DiscoQueEsquece::DiscoQueEsquece(Caminho raiz_dos_diarios)
    : raiz_(std::move(raiz_dos_diarios)), pastas_no_disco_{raiz_} {
    poe_no_motor(this);
}

DiscoQueEsquece::~DiscoQueEsquece() { poe_no_motor(nullptr); }

DiscoQueEsquece::Trancado DiscoQueEsquece::cria(const Caminho& novo) {
    auto conteudo = nomes_[novo] = std::make_shared<Conteudo>();
    return std::make_unique<Ficheiro>(*this, real().cria(novo), novo, std::move(conteudo));
}

void DiscoQueEsquece::descarrega(Conteudo& conteudo) {
    antes_de_descarregar();
    for (const Escrita& escrita : conteudo.por_descarregar)
        aplica(conteudo.descarregado, escrita);
    conteudo.por_descarregar.clear();
    conteudo.existe = true;
}

void DiscoQueEsquece::descarrega_pasta(const Caminho& pasta) {
    antes_de_descarregar();
    for (const fs::directory_entry& entrada : fs::directory_iterator(pasta))
        if (entrada.is_directory()) pastas_no_disco_.insert(entrada.path());
    std::erase_if(nomes_no_disco_, [&](const auto& um) { return um.first.parent_path() == pasta; });
    for (const auto& [nome, conteudo] : nomes_)
        if (nome.parent_path() == pasta) nomes_no_disco_[nome] = conteudo;
}

DiscoQueEsquece::Conteudo& DiscoQueEsquece::do_motor(const char* nome) {
    const auto [encontrado, novo] = livros_.try_emplace(nome);
    if (novo && fs::exists(nome)) encontrado->second = {true, conteudo_de(nome)};
    return encontrado->second;
}

void DiscoQueEsquece::guarda(const Caminho& empresa, const Caminho& onde,
                             std::optional<unsigned> semente) const {
    std::mt19937 sorte(semente.value_or(0));
    const auto escreve = [&](const Caminho& ficheiro, const Conteudo& conteudo) {
        std::string bytes = conteudo.descarregado;
        if (semente)
            for (const Escrita& escrita : conteudo.por_descarregar)
                aplica_em_parte(bytes, escrita, sorte);
        std::ofstream(ficheiro, std::ios::binary) << bytes;
    };
    fs::create_directories(onde / empresa.filename());
    for (const auto& [nome, conteudo] : livros_)
        if (nome.parent_path() == empresa && conteudo.existe)
            escreve(onde / empresa.filename() / nome.filename(), conteudo);
    fs::create_directories(diarios_de(onde));
    const bool mais = semente && sorte() % 2 == 0; // the folder got to the disk by itself
    for (const auto& [nome, conteudo] : mais ? nomes_ : nomes_no_disco_) {
        bool chega_se_la = true;
        for (Caminho pasta = nome.parent_path(); pasta != raiz_; pasta = pasta.parent_path())
            chega_se_la = chega_se_la && (mais || pastas_no_disco_.contains(pasta));
        if (chega_se_la) escreve(diarios_de(onde) / nome.filename(), *conteudo);
    }
}

} // namespace orvex::testes
