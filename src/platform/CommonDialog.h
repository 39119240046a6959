// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace ostrel {

/// The dialogs for files and for the printer. They keep their settings from one use to the next.
class CommonDialog {
public:
    enum Flag : int {
        OverwritePrompt = 2, ///< saving over a file asks first
        HideReadOnly = 4,
        PrintSetup = 64,                                         ///< the printer is chosen, nothing is printed
        PathMustExist = 2048,                                    ///< a folder that does not exist is refused
        Saving = OverwritePrompt | HideReadOnly | PathMustExist, ///< those of every dialog that saves
    };

    virtual ~CommonDialog() = default;

    /// Modal; events go on being dispatched. FileName is the chosen file with its folder, FileTitle without. A Cancel
    /// leaves both empty and raises 32755 when CancelError is set.
    virtual void ShowOpen() = 0;
    virtual void ShowSave() = 0;
    /// The print setup, modal like the others. It offers Copies, which is the chosen number after OK; the choices of
    /// printer, paper and orientation last until the program ends. A Cancel changes nothing and raises 32755 when
    /// CancelError is set. A dialog that cannot be shown raises a RunTimeError.
    virtual void ShowPrinter() = 0;

    /// There is a printer, or a file was chosen instead.
    virtual bool canPrint() = 0;
    /// Prints one copy of a report, a PDF document, on the chosen printer or into the file chosen instead; `name` is
    /// the job's name. False when it was not accepted. An existing file is replaced only once, and only if the operator
    /// has agreed to that in the setup; otherwise the report gets the next free name in the same folder.
    virtual bool print(const QByteArray &document, const QString &name) = 0;
    /// beginPrint() and endPrint() enclose the copies of one print: a file gets only the first copy. endPrint() returns
    /// the file that was made, with its folder; empty when there is none.
    virtual void beginPrint() = 0;
    virtual QString endPrint() = 0;

    QString DialogTitle;
    QString Filter; ///< "Text File(*.txt)|*.txt|All Files(*.*)|*.*": pairs of shown text and pattern
    /// Saving: appended to every name that does not end with it. Opening: appended to a name without a point, unless a
    /// file of exactly that name exists.
    QString DefaultExt;
    QString FileName; ///< the file offered when the dialog opens
    QString FileTitle;
    int HelpContextID = 0; ///< topic of F1 in the dialog; 0: that of the window below it
    int Flags = 0;
    bool CancelError = false;
    int Copies = 1;     ///< number of copies of a print
    QString ReportName; ///< the run's file, beside which a file for its report is offered; empty for none
};

} // namespace ostrel
