// SPDX-License-Identifier: MIT
#pragma once

namespace ostrel {

/// The recorder on the real desktop, from its start to its end.
int runOstrel(int argc, char **argv);

} // namespace ostrel
