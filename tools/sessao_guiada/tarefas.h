// The tasks of the program as a person does them, with keys. What is pictured on the way is what the manual
// shows.
#pragma once

#include "resumo.h"
#include "roteiro.h"

namespace orvex::demo {

// Client, two open lines, a lower weight, a text line, confirm; the same note again, and cancel it; two lines
// go out once more, and one comes back.
void joga_guias(Roteiro& roteiro, Resumo& resumo);
void joga_sobra(Roteiro& roteiro);
void joga_quebra(Roteiro& roteiro);
void joga_consumo(Roteiro& roteiro); // and the same movement again, to be replaced or cancelled
void joga_para_orvex(Roteiro& roteiro);
void joga_para_cliente(Roteiro& roteiro);

// The enquiries on what the others wrote: their window, each view, labels and the client's statement.
void joga_consultas(const std::filesystem::path& instalacao, const std::filesystem::path& saida);

} // namespace orvex::demo
