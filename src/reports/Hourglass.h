// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Prompts.h"

namespace ostrel {

/// Shows the hourglass as long as it exists: also an exception removes it.
class Hourglass {
public:
    explicit Hourglass(Prompts &prompts) : prompts_(prompts) { prompts_.setMousePointer(MousePointer::Hourglass); }
    ~Hourglass() { prompts_.setMousePointer(MousePointer::Default); }
    Hourglass(const Hourglass &) = delete;
    Hourglass &operator=(const Hourglass &) = delete;

private:
    Prompts &prompts_;
};

} // namespace ostrel
