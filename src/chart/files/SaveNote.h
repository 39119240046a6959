// SPDX-License-Identifier: MIT
#pragma once

#include "base/ProgramVersion.h"
#include "chart/run/Provenance.h"

namespace ostrel {

/// Notes that this program now writes the run to a file; `change` says in words what is not as before. A run without an
/// identity gets one.
inline void noteSave(Provenance &provenance, const QString &change) {
    if (provenance.identity.isEmpty())
        provenance.identity = Provenance::newIdentity();
    provenance.history.push_back({QDateTime::currentDateTime(), programVersion(), change});
}

} // namespace ostrel
