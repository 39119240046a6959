// SPDX-License-Identifier: MIT
#pragma once

#include "forms/Controls.h"
#include "forms/Shapes.h"

#include <QLabel>

#include <span>

namespace ostrel {

/// A HiddenButton is there for scripts alone: no operator sees it, and it takes no room.
enum class Kind { Frame, Label, Led, Picture, Text, Combo, Option, Button, HiddenButton };

/// One control of a form. Places are twips within the parent, "" being the form itself; a parent's row comes first. A
/// control of width 0 is as large as its text asks.
struct ControlRow {
    const char *name;
    Kind kind;
    const char *text; ///< caption, first text of an entry, file of a picture
    const char *parent;
    float left;
    float top;
    float width;
    float height;
    Ink ink = Ink::Plain;         ///< of a frame, with all that it holds
    const char *spoken = nullptr; ///< how a screen reader names what has no caption of its own
};

/// The name of a member of a control array: `cmdSet(1)`.
inline QString arrayName(const char *array, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index);
}

/// Turns rows into the controls of a form, each with its name as objectName.
class FormBuilder {
public:
    explicit FormBuilder(QWidget &form) : form_(form) {}

    /// Makes and places the controls. On a desktop with larger fonts than the form was drawn for, they make room for
    /// their texts.
    void build(std::span<const ControlRow> rows);

    /// A control by the name of its row.
    template <typename Control>
    Control *control(const QString &name) const {
        return form_.findChild<Control *>(name);
    }

private:
    QWidget *parentOf(const ControlRow &row) const;

    QWidget &form_;
};

} // namespace ostrel
