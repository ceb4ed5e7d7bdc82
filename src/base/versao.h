// The program's version, which the build alone knows.
#pragma once

namespace orvex::base {

const char* versao(); // "1.2.3"

} // namespace orvex::base
