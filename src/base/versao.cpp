#include "base/versao.h"

namespace orvex::base {

const char* versao() { return ORVEX_VERSAO; }

} // namespace orvex::base
