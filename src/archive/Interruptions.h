// SPDX-License-Identifier: MIT
#pragma once

namespace ostrel {

/// From now on a signal that ends the program first removes the temporary files that are being written. Signals that
/// were ignored at the start stay ignored, except SIGPIPE. A file size limit (SIGXFSZ) makes the write fail instead.
void tidyWhenInterrupted();

} // namespace ostrel
