// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/Spooler.h"

namespace ostrel {

/// The spooler of the computer, or of the configured print server. Qt's own printing is not used, since it does not
/// report a refused job. A printer that requires a password refuses the job: the operator is not asked for one.
class CupsSpooler : public Spooler {
public:
    bool take(const PrintJob &job) override;
};

} // namespace ostrel
