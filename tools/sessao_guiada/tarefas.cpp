#include "tarefas.h"

namespace orvex::demo {
namespace {

void emite(Roteiro& roteiro, Resumo& resumo) {
    roteiro.retrata("guia-vazia")
        .tecla(Qt::Key_F4)
        .retrata("lista-clientes")
        .tecla(Qt::Key_Return)
        .retrata("linhas-abertas");
    roteiro.tecla(Qt::Key_Tab, {}, 4).tecla(Qt::Key_Return);
    roteiro.tecla(Qt::Key_Tab, Qt::ShiftModifier).tecla(Qt::Key_Down).tecla(Qt::Key_Return);
    roteiro.escreve("1,5").tecla(Qt::Key_Return, {},
                                 2); // past the gross weight to the designation of the next row
    roteiro.escreve("Entregar ao cuidado da Sr.ª Conceição").tecla(Qt::Key_Return);
    roteiro.retrata("guia-por-confirmar").tecla(Qt::Key_C, Qt::AltModifier).retrata("guia-criada");
    roteiro.tecla(Qt::Key_Return).faz([&resumo] { resumo.estado("Depois de emitir"); });
}

void carrega_e_anula(Roteiro& roteiro, Resumo& resumo) {
    roteiro.tecla(Qt::Key_Tab).escreve("12").tecla(Qt::Key_Tab).retrata("guia-carregada");
    roteiro.tecla(Qt::Key_A, Qt::AltModifier).retrata("guia-anular");
    roteiro.tecla(Qt::Key_Left).tecla(Qt::Key_Return);
    roteiro.faz([&resumo] { resumo.estado("Depois de anular"); });
}

void devolve(Roteiro& roteiro, Resumo& resumo) {
    roteiro.escreve("C0001").tecla(Qt::Key_Tab, {}, 5).tecla(Qt::Key_Return);
    roteiro.tecla(Qt::Key_Tab, Qt::ShiftModifier).tecla(Qt::Key_Down).tecla(Qt::Key_Return);
    roteiro.tecla(Qt::Key_C, Qt::AltModifier).tecla(Qt::Key_Return);
    roteiro.faz([&resumo] { resumo.estado("Depois de emitir outra vez", 13); });

    roteiro.tecla(Qt::Key_Tab).escreve("13").tecla(Qt::Key_Tab);
    roteiro.retrata_folha("folha", "ORVEX (empresa de treino)");
    roteiro.tecla(Qt::Key_Right).retrata("guia-diversos").tecla(Qt::Key_Left);
    roteiro.tecla(Qt::Key_D, Qt::AltModifier);
    roteiro.tecla(Qt::Key_Space).retrata("devolucao").tecla(Qt::Key_D, Qt::AltModifier);
    roteiro.tecla(Qt::Key_Left).tecla(Qt::Key_Return).retrata("devolucao-criada").tecla(Qt::Key_Return);
    roteiro.faz([&resumo] {
        resumo.estado("Depois de devolver uma linha", 13);
        resumo.devolucao();
    });
}

// The item and what was counted of it, up to the first box.
void ajusta(Roteiro& roteiro, const char* artigo, const char* processo, const char* quantidade) {
    roteiro.escreve(artigo).tecla(Qt::Key_Return);
    roteiro.escreve(processo).tecla(Qt::Key_Return);
    roteiro.escreve(quantidade).tecla(Qt::Key_Return);
}

void confirma(Roteiro& roteiro) { roteiro.tecla(Qt::Key_C, Qt::AltModifier); }
void aceita(Roteiro& roteiro) {
    roteiro.tecla(Qt::Key_Left).tecla(Qt::Key_Return);
} // "Cancelar" is the default

} // namespace

void joga_guias(Roteiro& roteiro, Resumo& resumo) {
    emite(roteiro, resumo);
    carrega_e_anula(roteiro, resumo);
    devolve(roteiro, resumo);
}

void joga_sobra(Roteiro& roteiro) {
    ajusta(roteiro, "BA000001", "PES-2041", "9,75");
    roteiro.retrata("sobra");
    confirma(roteiro);
    roteiro.retrata("ajuste-150-kg");
    aceita(roteiro);
    aceita(roteiro);
    roteiro.tecla(Qt::Key_Return);
}

void joga_quebra(Roteiro& roteiro) {
    ajusta(roteiro, "BA000001", "PES-2042", "9,7");
    confirma(roteiro);
    roteiro.retrata("quebra");
    aceita(roteiro);
    roteiro.tecla(Qt::Key_Return);
}

void joga_consumo(Roteiro& roteiro) {
    ajusta(roteiro, "BA000001", "OBR-118", "0,5");
    confirma(roteiro);
    aceita(roteiro);
    roteiro.tecla(Qt::Key_Return);
    roteiro.clica("btFx(5)").retrata("lista-ajustes").tecla(Qt::Key_Return);
    roteiro.retrata("ajuste-carregado");
}

void joga_para_orvex(Roteiro& roteiro) {
    roteiro.escreve("BG000008").tecla(Qt::Key_Return).retrata("transferencia-orvex");
    confirma(roteiro);
}

void joga_para_cliente(Roteiro& roteiro) {
    roteiro.escreve("BG000020").tecla(Qt::Key_Return);
    roteiro.escreve("C0002").tecla(Qt::Key_Return).retrata("transferencia-cliente");
    confirma(roteiro);
}

} // namespace orvex::demo
