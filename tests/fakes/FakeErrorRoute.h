// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorRoute.h"

#include <functional>
#include <vector>

using namespace ostrel;

class FakeErrorRoute : public ErrorRoute {
public:
    void HandelError(qint32 ErrorCode) override {
        codes.push_back(ErrorCode);
        if (reaction)
            reaction(ErrorCode);
    }

    std::vector<qint32> codes;
    std::function<void(qint32)> reaction; ///< what the real route would do beyond telling
};
