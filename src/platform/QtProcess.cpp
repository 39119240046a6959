// SPDX-License-Identifier: MIT
#include "platform/QtProcess.h"

#include "platform/HeldPort.h"

#include <cstdio>
#include <cstdlib>

QtProcess::QtProcess() { HeldPort::letGoAtEveryEnd(); }

void QtProcess::end() {
    HeldPort::letGoOfAll();
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}
