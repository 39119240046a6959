// SPDX-License-Identifier: MIT
#include "desktop/QtProcess.h"

#include "desktop/HeldPort.h"

#include <cstdio>
#include <cstdlib>

namespace ostrel {

QtProcess::QtProcess() { HeldPort::letGoAtEveryEnd(); }

void QtProcess::end() {
    HeldPort::letGoOfAll();
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

} // namespace ostrel
