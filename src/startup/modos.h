// The modes that start-up opens a screen in, for the screen's life.
#pragma once

#include <cstdint>

namespace orvex::startup {

inline constexpr std::int16_t sem_modo = 0;

namespace modos_ajuste {
inline constexpr std::int16_t sobras = 1;
inline constexpr std::int16_t quebras = 2;
inline constexpr std::int16_t consumos = 3;
} // namespace modos_ajuste

namespace modos_transferencia {
inline constexpr std::int16_t para_orvex = 1;
inline constexpr std::int16_t para_cliente = 2;
} // namespace modos_transferencia

} // namespace orvex::startup
