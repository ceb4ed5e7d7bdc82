#include "app/processo_solto.h"

#include <windows.h>

namespace orvex::app {

// What the standard library opens would be inherited.
void solta_do_sistema(QProcess& processo) {
    processo.setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments* como) {
        como->inheritHandles = FALSE;
        como->startupInfo->dwFlags &= ~static_cast<DWORD>(STARTF_USESTDHANDLES);
        como->flags = (como->flags & ~static_cast<DWORD>(CREATE_NO_WINDOW)) | DETACHED_PROCESS;
    });
}

} // namespace orvex::app
