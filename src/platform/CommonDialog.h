// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace ostrel {

/// The dialogs for files and for the printer, which keep what they were set to from one use to the next.
class CommonDialog {
public:
    enum Flag : int {
        OverwritePrompt = 2, ///< saving over a file asks first
        HideReadOnly = 4,
        PrintSetup = 64,      ///< the printer is chosen, nothing is printed
        PathMustExist = 2048, ///< a folder that does not exist is refused
    };

    virtual ~CommonDialog() = default;

    /// Modal; events go on being dispatched. The chosen file is in FileName, with its folder, and in FileTitle,
    /// without. A Cancel leaves both empty and raises 32755 when CancelError is set.
    virtual void ShowOpen() = 0;
    virtual void ShowSave() = 0;
    /// The print setup, modal like the others. It offers Copies, which holds the chosen number after OK; the
    /// choices of printer, paper and orientation hold until the program ends. A Cancel changes nothing and raises 32755
    /// when CancelError is set. A dialog that cannot be shown raises a RunTimeError.
    virtual void ShowPrinter() = 0;

    /// Prints one copy of a report, a PDF document, on the printer that was set up or into the file that was chosen in
    /// its place; `name` is that of the job. False when it was not taken. An existing file is replaced only if the
    /// operator has agreed to that in the setup, and once; otherwise the report gets the next free name beside it.
    virtual bool print(const QByteArray &document, const QString &name) = 0;
    /// The copies of one print come between these: into a file goes the first alone, the others add nothing to it.
    /// The end answers the file that the print made, with its folder; empty when there is none.
    virtual void beginPrint() = 0;
    virtual QString endPrint() = 0;

    QString DialogTitle;
    QString Filter; ///< "Text File(*.txt)|*.txt|All Files(*.*)|*.*": what is shown and what it takes, in turn
    /// Ends every name to save under, whatever is typed or picked; where it is missing it is appended. To open, it goes
    /// to a name without a point, unless there is a file of just that name.
    QString DefaultExt;
    QString FileName; ///< offered when the dialog comes up
    QString FileTitle;
    int Flags = 0;
    bool CancelError = false;
    int Copies = 1; ///< of a print
};

} // namespace ostrel
