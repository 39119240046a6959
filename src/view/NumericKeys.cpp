// SPDX-License-Identifier: MIT
#include "view/NumericKeys.h"

#include "base/Numbers.h"
#include "base/Steps.h"

namespace ostrel {

namespace {

constexpr int backspace = 8;

/// An entry has at most one such sign: a new one may only replace one that is selected.
bool hasRoomFor(QChar sign, const EntryText &Control) {
    return !Control.Text().contains(sign) || Control.SelText().contains(sign);
}

} // namespace

int NumericKeys::FilterNumericKey(int KeyAscii, const EntryText &Control, bool AllowPoint, bool AllowMinus) const {
    if (isWanted(KeyAscii, Control, AllowPoint, AllowMinus))
        return KeyAscii;
    prompts_.beep();
    return keyRefused;
}

bool NumericKeys::isWanted(int KeyAscii, const EntryText &Control, bool AllowPoint, bool AllowMinus) const {
    const QChar ch(static_cast<char16_t>(KeyAscii));
    if (KeyAscii == backspace || (ch >= u'0' && ch <= u'9'))
        return true;
    if (ch == DecimalPoint_)
        return AllowPoint && hasRoomFor(ch, Control);
    if (ch == u'-')
        return AllowMinus && Control.SelStart() == 0 && hasRoomFor(ch, Control);
    return false;
}

double entryValue(const EntryText &Control) {
    double value = 0;
    skippingErrors([&] { value = numberFrom(Control.Text()); });
    return value;
}

} // namespace ostrel
