// SPDX-License-Identifier: MIT
#pragma once

namespace ostrel {

/// From here on a signal that ends the program first takes away the file that is being written. A signal that was
/// ignored at the start stays so, but for that of a reader who has gone. A limit on the size of files is told as a
/// failed writing.
void tidyWhenInterrupted();

} // namespace ostrel
