// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/Spooler.h"

namespace ostrel {

/// The spooler of the computer, or of the server that replaces it. Qt hands its jobs over too, but does not tell
/// when one is refused. Nobody is asked for a password: a printer that wants one refuses.
class CupsSpooler : public Spooler {
public:
    bool take(const PrintJob &job) override;
};

} // namespace ostrel
