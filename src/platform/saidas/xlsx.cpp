#include "platform/saidas/xlsx.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "base/texto.h"
#include "platform/saidas/arquivo.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <random>
#include <utility>

namespace orvex::platform::saidas {
namespace {

using namespace livro::consultas;
namespace fs = std::filesystem;

constexpr std::size_t letras_do_nome = 31; // of a sheet

constexpr const char* sem_espaco = "veja se o disco tem espaço";
constexpr const char* nao_chegam = "a memória ou o disco não chegam";

// Where paths have letters that the library's names of files have not, it is given one that needs none, in
// the folder where it stands.
constexpr bool so_o_nome = sizeof(fs::path::value_type) > 1;

class NaPasta {
  public:
    explicit NaPasta(const fs::path& pasta) : antes_(so_o_nome ? fs::current_path() : fs::path()) {
        if (so_o_nome) fs::current_path(pasta);
    }
    NaPasta(const NaPasta&) = delete;
    NaPasta& operator=(const NaPasta&) = delete;
    ~NaPasta() {
        std::error_code erro;
        if (so_o_nome) fs::current_path(antes_, erro);
    }

  private:
    fs::path antes_;
};

std::string nome_da_folha(const std::string& titulo) {
    std::string nome = titulo.substr(0, titulo.find(','));
    if (base::comprimento(nome) > letras_do_nome) {
        nome = base::primeiros(nome, letras_do_nome + 1);
        const std::size_t branco = nome.rfind(' ');
        nome = branco == std::string::npos ? base::primeiros(nome, letras_do_nome) : nome.substr(0, branco);
    }
    std::replace_if(
        nome.begin(), nome.end(),
        [](char c) { return std::string_view("[]:*?/\\'").find(c) != std::string_view::npos; }, ' ');
    return nome;
}

double largura(const Coluna& coluna) {
    switch (coluna.tipo) {
    case Tipo::data:
        return 12;
    case Tipo::peso:
        return 15;
    case Tipo::inteiro:
        return 9;
    case Tipo::codigo:
        return 18;
    default:
        return 38;
    }
}

} // namespace

struct Xlsx::Livro {
    fs::path ficheiro, parte;
    lxw_workbook* livro = nullptr;
    lxw_worksheet* folha = nullptr;
    lxw_format *titulo = nullptr, *data = nullptr, *peso = nullptr, *inteiro = nullptr;
    lxw_format *total = nullptr, *peso_total = nullptr;
    Vista vista;
    Quadro quadro;
    lxw_row_t linha = 0;

    explicit Livro(const fs::path& este)
        : ficheiro(base::caminho_completo(este)),
          parte(ficheiro.parent_path() / ("orvex-" + std::to_string(std::random_device()()) + ".parte")) {
        exige(std::ofstream(parte).is_open(), "veja se a pasta existe, e se nela pode gravar");
        // Codes and names are many, and each once: in the rows, they need no table kept in memory.
        lxw_workbook_options opcoes{};
        opcoes.constant_memory = LXW_TRUE;
        // Rows wait on the same disk; on Windows in the system's own place, since files of theirs would
        // stay behind on this one.
        std::string temporarios = base::texto_de(ficheiro.parent_path());
        if (!so_o_nome) opcoes.tmpdir = temporarios.data(); // copied
        livro = workbook_new_opt(base::texto_de(so_o_nome ? parte.filename() : parte).c_str(), &opcoes);
        exige(livro != nullptr, nao_chegam);
        titulo = formato(nullptr, true);
        format_set_bottom(titulo, LXW_BORDER_THIN);
        data = formato("dd-mm-yyyy", false);
        peso = formato("#,##0.000", false);
        inteiro = formato("0", false);
        total = formato(nullptr, true);
        peso_total = formato("#,##0.000", true);
    }
    Livro(const Livro&) = delete;
    Livro& operator=(const Livro&) = delete;
    ~Livro() {
        if (livro != nullptr) lxw_workbook_free(livro);
        std::error_code erro;
        fs::remove(parte, erro);
    }

    void exige(bool certo, const std::string& porque) const {
        if (!certo)
            throw base::Falha("«" + base::texto_de(ficheiro) + "» não pôde ser escrito: " + porque +
                              ". O que lá estava ficou como estava.");
    }
    lxw_format* formato(const char* numero, bool gordo) {
        lxw_format* novo = workbook_add_format(livro);
        exige(novo != nullptr, nao_chegam);
        if (numero != nullptr) format_set_num_format(novo, numero);
        if (gordo) format_set_bold(novo);
        return novo;
    }
    void abre_folha(const std::string& nome) {
        const NaPasta aqui(parte.parent_path());
        folha = workbook_add_worksheet(livro, nome.c_str());
        if (folha == nullptr) folha = workbook_add_worksheet(livro, nullptr); // a name that there is already
        exige(folha != nullptr, nao_chegam);
        linha = 0;
    }
    void texto(std::size_t coluna, const std::string& valor, lxw_format* com) {
        const auto onde = static_cast<lxw_col_t>(coluna);
        const lxw_error erro = worksheet_write_string(folha, linha, onde, valor.c_str(), com);
        exige(erro != LXW_ERROR_MAX_STRING_LENGTH_EXCEEDED,
              "um dos textos é longo demais para uma célula. Peça-o em CSV");
        exige(erro == LXW_NO_ERROR, nao_chegam);
    }
    void celula(std::size_t em, const Coluna& coluna, const base::Variante& valor, bool de_total) {
        const auto onde = static_cast<lxw_col_t>(em);
        if (valor.nulo()) return;
        if (const auto* esta = std::get_if<base::DataHora>(&valor.valor())) {
            lxw_datetime dia{esta->ano, esta->mes, esta->dia, 0, 0, 0};
            if (worksheet_write_datetime(folha, linha, onde, &dia, data) != LXW_NO_ERROR) // of before 1900
                texto(em, esta->data(), nullptr);
        } else if (const auto* escrito = std::get_if<std::string>(&valor.valor())) {
            texto(em, *escrito, de_total ? total : nullptr);
        } else {
            lxw_format* com = de_total ? total : inteiro;
            if (coluna.tipo == Tipo::peso) com = de_total ? peso_total : peso;
            exige(worksheet_write_number(folha, linha, onde, valor.real(), com) == LXW_NO_ERROR, nao_chegam);
        }
    }
    void escreve(const Linha& esta, bool de_total) {
        exige(linha < LXW_ROW_MAX,
              "uma folha não leva tantas linhas. Peça-o em CSV, ou um período mais curto");
        for (std::size_t i = 0; i < esta.size(); ++i)
            celula(i, quadro.colunas[i], esta[i], de_total);
        ++linha;
    }
    void escreve_ficha(const Linha& esta) {
        for (std::size_t i = 0; i < esta.size(); ++i) {
            if (esta[i].nulo()) continue;
            texto(0, quadro.colunas[i].titulo, total);
            celula(1, quadro.colunas[i], esta[i], false);
            ++linha;
        }
    }
    // The library looks at no failed write to the files where rows wait, and reads back what there is.
    std::vector<std::uint64_t> exige_linhas_inteiras() {
        std::vector<std::uint64_t> bytes;
        lxw_worksheet* esta = nullptr;
        STAILQ_FOREACH(esta, livro->worksheets, list_pointers) {
            lxw_worksheet_write_single_row(esta); // the last, which it keeps
            exige(std::fflush(esta->optimize_tmpfile) == 0 && std::ferror(esta->optimize_tmpfile) == 0,
                  sem_espaco);
            bytes.push_back(static_cast<std::uint64_t>(std::ftell(esta->optimize_tmpfile)));
        }
        return bytes;
    }
    void acerca() {
        abre_folha("Sobre");
        worksheet_set_column(folha, 0, 1, 38, nullptr);
        texto(0, vista.titulo, total);
        for (const Filtro& filtro : vista.filtros) {
            ++linha;
            texto(0, filtro.nome, nullptr);
            texto(1, filtro.valor, nullptr);
        }
    }
};

Xlsx::Xlsx(const fs::path& ficheiro) : livro_(std::make_unique<Livro>(ficheiro)) {}
Xlsx::~Xlsx() = default;

void Xlsx::vista(const Vista& esta) { livro_->vista = esta; }

void Xlsx::quadro(const Quadro& este) {
    Livro& l = *livro_;
    l.quadro = este;
    l.abre_folha(nome_da_folha(este.titulo));
    if (este.ficha) {
        worksheet_set_column(l.folha, 0, 1, 38, nullptr);
        return;
    }
    for (std::size_t i = 0; i < este.colunas.size(); ++i) {
        const auto coluna = static_cast<lxw_col_t>(i);
        worksheet_set_column(l.folha, coluna, coluna, largura(este.colunas[i]), nullptr);
        l.texto(i, este.colunas[i].titulo, l.titulo);
    }
    worksheet_freeze_panes(l.folha, 1, 0);
    l.linha = 1;
}

bool Xlsx::linha(const Linha& esta) {
    livro_->quadro.ficha ? livro_->escreve_ficha(esta) : livro_->escreve(esta, false);
    return true;
}

void Xlsx::total(const Linha& este) {
    if (livro_->linha > 1) livro_->escreve(este, true);
}

void Xlsx::acaba() {
    Livro& l = *livro_;
    l.acerca();
    const std::vector<std::uint64_t> das_linhas = l.exige_linhas_inteiras();
    const lxw_error erro = [&] {
        const NaPasta aqui(l.parte.parent_path());
        return workbook_close(std::exchange(l.livro, nullptr));
    }();
    l.exige(erro == LXW_NO_ERROR && arquivo_inteiro(l.parte, das_linhas), sem_espaco);
    std::error_code falhou;
    fs::rename(l.parte, l.ficheiro, falhou);
    l.exige(!falhou, "veja se não está aberto noutro programa");
}

} // namespace orvex::platform::saidas
