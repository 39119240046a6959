// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Prompts.h"

namespace ostrel {

/// The hourglass while a report is made, gone again however that ends.
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
