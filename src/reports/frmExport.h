// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorRoute.h"
#include "platform/CommonDialog.h"
#include "platform/Prompts.h"
#include "reports/ReportPorts.h"

#include <QDialog>

#include <array>

class QLabel;

namespace ostrel {

class CheckBox;
class CommandButton;
class DropDownList;
class Frame;
class OptionButton;

/// Asks which parts of a chart go to a text file, and has the chart write it. The form is made for each showing and
/// always begins with the whole run at one point a second and all contents ticked.
class frmExport : public QDialog {
    Q_OBJECT
public:
    /// `ComDlg` is the form's own. Samples that the chart gets from now on are not exported.
    frmExport(Quillchart &chart, const ZoomedTime &time, CommonDialog &ComDlg, Prompts &prompts, ErrorRoute &errors,
              QWidget *parent);

private:
    Frame *makeData();
    Frame *makeContent();
    void attach();
    void InitExport();

    void optDataRegion_Click(int Index);
    void cmbSamlingRate_Click();
    void chkMethod_Click();
    void cmdExport_Click();

    void UpdatePointCount();
    void UpdateExportButton();
    void GetMethodPosition(qint16 &Position) const;
    QString askForFile();
    void exportTo(const QString &FileName);

    Quillchart &chart_;
    const ZoomedTime &time_;
    CommonDialog &ComDlg_;
    Prompts &prompts_;
    ErrorRoute &errors_;

    // Minutes.
    float SelectedFrom_ = 0;
    float SelectedTo_ = 0;
    float ExportFrom_ = 0;
    float ExportTo_ = 0;
    float LastTime_ = 0;

    float SampleRate_ = 0; // points a second
    qint32 PointCount_ = 0;

    std::array<OptionButton *, 2> optDataRegion_{};
    DropDownList *cmbSamlingRate_ = nullptr;
    QLabel *lblTotal_ = nullptr;
    QLabel *lblNumPoints_ = nullptr;
    CheckBox *chkUV_ = nullptr;
    CheckBox *chkCond_ = nullptr;
    CheckBox *chkEvents_ = nullptr;
    CheckBox *chkNotes_ = nullptr;
    CheckBox *chkMethod_ = nullptr;
    std::array<OptionButton *, 3> optMethodPos_{};
    CommandButton *cmdExport_ = nullptr;
    CommandButton *cmdCancel_ = nullptr;
};

} // namespace ostrel
