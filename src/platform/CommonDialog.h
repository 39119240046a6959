// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A file dialog that keeps what it was set to from one use to the next.
class CommonDialog {
public:
    enum Flag : int {
        OverwritePrompt = 2, ///< saving over a file asks first
        HideReadOnly = 4,
        PathMustExist = 2048, ///< a folder that does not exist is refused
    };

    virtual ~CommonDialog() = default;

    /// Modal; events go on being dispatched. The chosen file stands in FileName, with its folder, and in FileTitle,
    /// without. A Cancel leaves both empty and raises 32755 when CancelError is set.
    virtual void ShowOpen() = 0;
    virtual void ShowSave() = 0;

    QString DialogTitle;
    QString Filter;     ///< "Text File(*.txt)|*.txt|All Files(*.*)|*.*": what is shown and what it takes, in turn
    QString DefaultExt; ///< goes to a name without an extension
    QString FileName;   ///< offered when the dialog comes up
    QString FileTitle;
    int Flags = 0;
    bool CancelError = false;
    int Copies = 1; ///< of a print
};
