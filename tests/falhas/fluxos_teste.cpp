#include "tests/falhas/ciclo_de_falhas.h"

using namespace orvex::testes;

TEST(Falhas, AoEmitirUmaGuia) { ciclo_de_falhas(fluxos::emite_guia()); }
TEST(Falhas, AoAnularUmaGuia) { ciclo_de_falhas(fluxos::anula_guia()); }
TEST(Falhas, AoDevolverLinhasDeUmaGuia) { ciclo_de_falhas(fluxos::devolve()); }
TEST(Falhas, AoConfirmarUmAjuste) { ciclo_de_falhas(fluxos::ajusta()); }
TEST(Falhas, AoSubstituirUmAjuste) { ciclo_de_falhas(fluxos::substitui_ajuste()); }
TEST(Falhas, AoAnularUmAjuste) { ciclo_de_falhas(fluxos::anula_ajuste()); }
TEST(Falhas, AoTransferirUmArtigoParaAOrvex) { ciclo_de_falhas(fluxos::transfere_para_orvex()); }
TEST(Falhas, AoTransferirUmArtigoParaOutroCliente) { ciclo_de_falhas(fluxos::transfere_para_cliente()); }
