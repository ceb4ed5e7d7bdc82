// The component in a program of its own: a program of another word size reaches it, and outlives it.
#include "tools/componente/programa.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    return orvex::componente::corre_programa(orvex::componente::classe_da_emulacao,
                                             orvex::componente::sessoes_da_emulacao());
}
