// SPDX-License-Identifier: MIT
#pragma once

#include "forms/Controls.h"
#include "platform/Prompts.h"

#include <QChar>

namespace ostrel {

/// Checks the keys that are typed into the numeric entries of the window.
class NumericKeys {
public:
    /// `DecimalPoint` is read at each key, since the locale's separator is known only when the window is set up.
    NumericKeys(const QChar &DecimalPoint, Prompts &prompts) : DecimalPoint_(DecimalPoint), prompts_(prompts) {}

    /// Returns the key, or beeps and returns keyRefused.
    int FilterNumericKey(int KeyAscii, const EntryText &Control, bool AllowPoint, bool AllowMinus) const;

    /// Handles all keys of an entry for a number with a decimal point: Enter runs `apply` and selects the whole entry.
    template <typename Apply>
    int entryKey(int KeyAscii, EntryText &Control, bool AllowMinus, Apply &&apply) const {
        if (KeyAscii != enter)
            return FilterNumericKey(KeyAscii, Control, true, AllowMinus);
        apply();
        Control.selectWhole();
        return keyRefused;
    }

private:
    static constexpr int enter = 13;

    bool isWanted(int KeyAscii, const EntryText &Control, bool AllowPoint, bool AllowMinus) const;

    const QChar &DecimalPoint_;
    Prompts &prompts_;
};

/// The number in an entry; 0 when its text holds none.
double entryValue(const EntryText &Control);

} // namespace ostrel
