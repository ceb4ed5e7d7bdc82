#include "app/processo_solto.h"

#include <QDir>

#include <fcntl.h>
#include <unistd.h>

namespace orvex::app {
namespace {

// Files of ours no other program inherits, but a database's driver opens its sockets as it likes: a program
// that had one would keep a transaction open after this process.
void nada_se_herda() {
    constexpr int depois_dos_normais = 3;
    if (close_range(depois_dos_normais, ~0U, CLOSE_RANGE_CLOEXEC) == 0) return;
    for (const QString& este :
         QDir("/proc/self/fd").entryList(QDir::System | QDir::AllEntries)) // older kernels
        if (const int qual = este.toInt(); qual >= depois_dos_normais) fcntl(qual, F_SETFD, FD_CLOEXEC);
}

} // namespace

void solta_do_sistema(QProcess& processo) {
    nada_se_herda();
    processo.setStandardInputFile(QProcess::nullDevice());
    processo.setStandardOutputFile(QProcess::nullDevice());
    processo.setStandardErrorFile(QProcess::nullDevice());
}

} // namespace orvex::app
