// A table as assistive tools find it: with the columns that are in sight, and no others.
#pragma once

namespace orvex::platform::qt {

void instala_tabelas_acessiveis(); // once, for all tables of the program

} // namespace orvex::platform::qt
