// SPDX-License-Identifier: MIT
#pragma once

#include "forms/Controls.h"
#include "forms/Shapes.h"

#include <QLabel>

#include <span>

namespace ostrel {

/// A HiddenButton is for scripts only: no operator sees it, and its text needs no room.
enum class Kind { Frame, Label, Led, Picture, Text, Combo, Option, Button, HiddenButton };

/// One control of a form. Places are in twips within the parent; "" is the form. A parent's row must come first. A
/// control of width 0 gets the size that its text needs.
struct ControlRow {
    const char *name;
    Kind kind;
    const char *text; ///< caption, first text of an entry, file of a picture
    const char *parent;
    float left;
    float top;
    float width;
    float height;
    Ink ink = Ink::Plain;         ///< of a frame and of all that it contains
    const char *spoken = nullptr; ///< name for screen readers, where the caption does not say enough
};

/// The name of a member of a control array: `cmdSet(1)`.
inline QString arrayName(const char *array, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index);
}

/// Turns rows into the controls of a form, each with its name as objectName.
class FormBuilder {
public:
    explicit FormBuilder(QWidget &form) : form_(form) {}

    /// Makes and places the controls. They are enlarged where the desktop's fonts are larger than those that the form
    /// was drawn for.
    void build(std::span<const ControlRow> rows);

    /// The control with this name.
    template <typename Control>
    Control *control(const QString &name) const {
        return form_.findChild<Control *>(name);
    }

private:
    QWidget *parentOf(const ControlRow &row) const;

    QWidget &form_;
};

} // namespace ostrel
