#include "common/servicos.h"

#include "base/falha.h"
#include "startup/arranque.h"

#include <utility>
#include <vector>

namespace orvex::common {

Servicos::Servicos(ServicosEcra servicos)
    : BD(servicos.BD), gERP(servicos.gERP), servicos_(std::move(servicos)) {}

Janela& Servicos::janela() const {
    if (janela_ == nullptr) throw base::Falha("O ecrã ainda não tem janela.");
    return *janela_;
}

namespace {

constexpr const char* titulo = "Informação";

} // namespace

bool Servicos::AvisaLido(const std::string& Aviso) {
    janela().mostra();
    return janela().caixa(Aviso, titulo, Icone::informacao, Botoes::ok) == resposta_ok;
}

std::int32_t Servicos::Avisa(const std::string& campo, const std::string& Aviso, std::int16_t Tipo) {
    janela().mostra();
    switch (Tipo) {
    case aviso_obrigatorio:
        janela().caixa("Campo obrigatório [" + campo + "].", titulo, Icone::exclamacao, Botoes::ok);
        return 0;
    case aviso_informacao:
        AvisaLido(Aviso);
        return 0;
    case aviso_ok_cancelar:
        return janela().caixa(Aviso, titulo, Icone::informacao, Botoes::ok_cancelar);
    case aviso_sim_nao:
        return janela().caixa(Aviso, titulo, Icone::informacao, Botoes::sim_nao);
    default:
        return 0;
    }
}

std::int16_t Servicos::MostraMensagem(const std::string& Texto, int Tipo) {
    constexpr Icone icones[] = {Icone::exclamacao, Icone::informacao, Icone::critico};
    if (Tipo < mensagem_exclamacao || Tipo > mensagem_critica) return 0;
    janela().mostra();
    return static_cast<std::int16_t>(
        janela().caixa(Texto, startup::descricao_programa, icones[Tipo], Botoes::ok));
}

std::string Servicos::escolhe_da_lista(const ListaPesquisa& lista) {
    janela().mostra();
    return janela().escolhe(lista);
}

int Servicos::Comprimento(std::initializer_list<ColunaBD> colunas) {
    std::size_t menor = 0;
    for (const auto& [tabela, coluna] : colunas)
        if (const std::size_t este = BD.Comprimento(tabela, coluna); este > 0 && (menor == 0 || este < menor))
            menor = este;
    return static_cast<int>(menor);
}

void Servicos::ComComprimentos(std::initializer_list<const char*> tabelas,
                               const std::function<void()>& trabalho) {
    std::vector<std::string> perguntas;
    for (const char* tabela : tabelas)
        perguntas.push_back(startup::SessaoBD::pergunta_das_colunas(tabela));
    BD.EmPasso(perguntas, trabalho);
}

} // namespace orvex::common
