// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace ostrel {

/// Wraps a routine that Qt or the platform calls, so that no exception leaves it. `place` names the routine.
using Guard = std::function<std::function<void()>(const char *place, std::function<void()> routine)>;

} // namespace ostrel
