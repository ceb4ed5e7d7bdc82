// A program that is started and left alone.
#pragma once

#include <QProcess>

namespace orvex::app {

// What it writes goes nowhere, and files and console of this process stay this one's: any of them can be let
// go of while the other still runs. Right before QProcess::startDetached.
void solta_do_sistema(QProcess& processo);

} // namespace orvex::app
