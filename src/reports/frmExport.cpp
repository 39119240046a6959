// SPDX-License-Identifier: MIT
#include "reports/frmExport.h"

#include "base/ErrorNumbers.h"
#include "base/HelpContexts.h"
#include "base/Numbers.h"
#include "base/Steps.h"
#include "chart/table/ExportedPoints.h"
#include "forms/Controls.h"
#include "forms/FixedDialog.h"
#include "forms/FormBuilder.h"
#include "forms/HelpContext.h"
#include "forms/NamedControl.h"
#include "forms/Shapes.h"
#include "reports/Hourglass.h"
#include "reports/Indent.h"

#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

constexpr int selectedData = 0;
constexpr int allData = 1;

constexpr const char *samplingRates[] = {"0.01",  "0.02", "0.025", "0.0333", "0.05", "0.1", "0.2", "0.25",
                                         "0.333", "0.5",  "1",     "2",      "3",    "4",   "5"};
constexpr int onePointASecond = 10;

constexpr std::array methodPositions = {"Before Data", "After Data", "Separate Column"};

/// The list has decimal points in every locale. Where the point is not the decimal mark, it still counts as one.
float pointsPerSecond(const QString &text) {
    double rate = 0;
    if (errorNumberOf([&] { rate = numberFrom(text); }) != 0)
        rate = leadingNumber(text);
    return static_cast<float>(rate);
}

/// Blanks in the captions line up the two rows to within a few pixels. The rest is added to the word gaps of the
/// narrower one.
void lineUp(OptionButton &upper, OptionButton &lower) {
    constexpr int gaps = 2; // in front of the bracket
    const QFontMetricsF metrics(upper.font());
    const auto head = [&](const OptionButton &option) {
        return metrics.horizontalAdvance(option.text().section(QLatin1Char('('), 0, 0));
    };
    const qreal wider = head(upper) - head(lower);
    OptionButton &narrower = wider > 0 ? lower : upper;
    QFont font = narrower.font();
    font.setWordSpacing(std::abs(wider) / gaps);
    narrower.setFont(font);
}

/// Room for the points of a month at the full rate, so that the form keeps its size while the count changes.
void holdRoom(QLabel &label, const QString &caption) {
    label.setMinimumWidth(label.fontMetrics().horizontalAdvance(QStringLiteral("00000000") + caption));
}

QString dataPoints() { return QStringLiteral("  data points"); }
QString totalPoints() { return QStringLiteral("  Data Points)"); }

} // namespace

frmExport::frmExport(Quillchart &chart, const ZoomedTime &time, CommonDialog &ComDlg, Prompts &prompts,
                     ErrorRoute &errors, QWidget *parent)
    : QDialog(parent, fixedDialog), chart_(chart), time_(time), ComDlg_(ComDlg), prompts_(prompts), errors_(errors) {
    setObjectName(QStringLiteral("frmExport"));
    setWindowTitle(QStringLiteral("Export Data"));

    auto *form = new QVBoxLayout(this);
    form->setSizeConstraint(QLayout::SetFixedSize);
    form->setSpacing(12);
    form->addWidget(makeData());
    form->addWidget(makeContent());

    cmdExport_ = namedControl<CommandButton>("cmdExport", "&Export", this);
    cmdCancel_ = namedControl<CommandButton>("cmdCancel", "&Cancel", this);
    cmdExport_->setDefault(true);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdExport_);
    buttons->addWidget(cmdCancel_);
    form->addLayout(buttons);

    attach();
    InitExport();
    lineUp(*optDataRegion_[selectedData], *optDataRegion_[allData]);
    optDataRegion_[allData]->setFocus();
}

Frame *frmExport::makeData() {
    auto *frameData = new Frame(QStringLiteral("Data Parameters for Export File"), Ink::Plain, this);
    frameData->setObjectName(QStringLiteral("frameData"));
    auto *rows = new QVBoxLayout(frameData);
    for (int i = 0; i < int(optDataRegion_.size()); ++i) {
        optDataRegion_[i] = namedControl<OptionButton>(qPrintable(arrayName("optDataRegion", i)), "", frameData);
        rows->addWidget(optDataRegion_[i]);
    }
    optDataRegion_[selectedData]->setText(QStringLiteral("Selected Data"));
    optDataRegion_[allData]->setValue(true);

    cmbSamlingRate_ = new DropDownList(frameData);
    cmbSamlingRate_->setObjectName(QStringLiteral("cmbSamlingRate"));
    cmbSamlingRate_->setAccessibleName(QStringLiteral("Sampling rate, points a second"));
    for (const char *rate : samplingRates)
        cmbSamlingRate_->addItem(QLatin1String(rate));

    const auto addRow = [&](const QList<QWidget *> &controls) {
        auto *row = new QHBoxLayout;
        for (QWidget *control : controls)
            row->addWidget(control);
        row->addStretch();
        rows->addLayout(row);
    };
    lblTotal_ = namedControl<QLabel>("lblTotal", "", frameData);
    lblNumPoints_ = namedControl<QLabel>("lblNumPoints", "", frameData);
    holdRoom(*lblTotal_, totalPoints());
    holdRoom(*lblNumPoints_, dataPoints());
    addRow({namedControl<QLabel>("lblSampRateCaption", "Sampling Rate:                  ", frameData), cmbSamlingRate_,
            namedControl<QLabel>("lblPtPerSec", "Points/sec  (Total:", frameData), lblTotal_});
    addRow({namedControl<QLabel>("lbTotal", "Exported Data File will include:", frameData), lblNumPoints_});
    return frameData;
}

Frame *frmExport::makeContent() {
    auto *frameContent = new Frame(QStringLiteral("Select Information for Export File"), Ink::Plain, this);
    frameContent->setObjectName(QStringLiteral("frameContent"));
    auto *rows = new QVBoxLayout(frameContent);
    const auto box = [&](const char *name, const char *caption) {
        auto *control = namedControl<CheckBox>(name, caption, frameContent);
        control->setValue(1);
        rows->addWidget(control);
        return control;
    };
    chkUV_ = box("chkUV", "UV Data");
    chkCond_ = box("chkCond", "Conductivity Data");
    chkEvents_ = box("chkEvents", "Event Marks");
    chkNotes_ = box("chkNotes", "Notes");
    chkMethod_ = box("chkMethod", "Method List");

    auto *row = new QHBoxLayout;
    row->setContentsMargins(indentOf(*chkMethod_), 0, 0, 0);
    row->addWidget(namedControl<QLabel>("lblPosition", "Method Position", frameContent));
    for (int i = 0; i < int(optMethodPos_.size()); ++i) {
        optMethodPos_[i] =
            namedControl<OptionButton>(qPrintable(arrayName("optMethodPos", i)), methodPositions[i], frameContent);
        row->addWidget(optMethodPos_[i]);
    }
    row->addStretch();
    rows->addLayout(row);
    optMethodPos_[0]->setValue(true);
    return frameContent;
}

void frmExport::attach() {
    for (int i = 0; i < int(optDataRegion_.size()); ++i)
        optDataRegion_[i]->Click = [this, i] { optDataRegion_Click(i); };
    cmbSamlingRate_->Click = [this] { cmbSamlingRate_Click(); };
    for (CheckBox *box : {chkUV_, chkCond_, chkEvents_, chkNotes_})
        box->Click = [this] { UpdateExportButton(); };
    chkMethod_->Click = [this] { chkMethod_Click(); };
    cmdExport_->Click = [this] { cmdExport_Click(); };
    cmdCancel_->Click = [this] { reject(); };
}

void frmExport::InitExport() {
    setHelpContext(*this, HelpContext::Export);
    cmbSamlingRate_->setListIndex(onePointASecond);
    LastTime_ = chart_.GetLastTime();
    ExportFrom_ = 0;
    ExportTo_ = LastTime_;
    time_.GetZoomedTime(SelectedFrom_, SelectedTo_);
    SelectedTo_ = std::min(SelectedTo_, LastTime_);
    SelectedFrom_ = std::min(SelectedFrom_, LastTime_);
    optDataRegion_[allData]->setText(
        QStringLiteral("All Data               (Time:  0.00  to  %1  minutes) ").arg(fixedNumber(LastTime_, 2)));
    optDataRegion_[selectedData]->setText(QStringLiteral("Selected Data     (Time:  %1  to  %2  minutes) ")
                                              .arg(fixedNumber(SelectedFrom_, 2), fixedNumber(SelectedTo_, 2)));
    UpdatePointCount();
}

void frmExport::optDataRegion_Click(int Index) {
    ExportFrom_ = Index == allData ? 0 : SelectedFrom_;
    ExportTo_ = Index == allData ? LastTime_ : SelectedTo_;
    UpdatePointCount();
}

void frmExport::cmbSamlingRate_Click() {
    SampleRate_ = pointsPerSecond(cmbSamlingRate_->currentText());
    UpdatePointCount();
}

void frmExport::chkMethod_Click() {
    for (OptionButton *optMethodPos : optMethodPos_)
        optMethodPos->setEnabled(chkMethod_->Value() != 0);
    UpdateExportButton();
}

void frmExport::UpdatePointCount() {
    PointCount_ = LastTime_ > ExportFrom_ ? rounded32(exportedPoints(ExportFrom_, ExportTo_, SampleRate_)) : 0;
    const QString count = QString::number(PointCount_);
    lblNumPoints_->setText(count + dataPoints());
    lblTotal_->setText(count + totalPoints());
}

void frmExport::UpdateExportButton() {
    const auto boxes = {chkUV_, chkCond_, chkEvents_, chkNotes_, chkMethod_};
    cmdExport_->setEnabled(std::any_of(boxes.begin(), boxes.end(), [](auto *box) { return box->Value() != 0; }));
    if (!cmdExport_->isEnabled())
        cmdCancel_->setFocus();
}

void frmExport::GetMethodPosition(qint16 &Position) const {
    const auto chosen =
        std::find_if(optMethodPos_.begin(), optMethodPos_.end(), [](auto *opt) { return opt->Value(); });
    Position = static_cast<qint16>(chosen - optMethodPos_.begin());
}

void frmExport::cmdExport_Click() {
    if (const QString FileName = askForFile(); !FileName.isEmpty())
        exportTo(FileName);
    accept();
}

QString frmExport::askForFile() {
    ComDlg_.Flags = CommonDialog::Saving;
    ComDlg_.DialogTitle = QStringLiteral("Export Data Text File As...");
    ComDlg_.FileName.clear();
    ComDlg_.HelpContextID = HelpContext::Export;
    ComDlg_.Filter = QStringLiteral("Text File(*.txt)|*.txt|All Files(*.*)|*.*");
    ComDlg_.DefaultExt = QStringLiteral("txt");
    ComDlg_.ShowSave();
    return ComDlg_.FileName;
}

void frmExport::exportTo(const QString &FileName) {
    const Hourglass hourglass(prompts_);
    const auto value = [](const CheckBox *box) { return static_cast<qint16>(box->Value()); };
    qint16 Position = 0;
    GetMethodPosition(Position);
    const qint16 status =
        chart_.ExportData(FileName, value(chkUV_), value(chkCond_), value(chkEvents_), value(chkNotes_),
                          value(chkMethod_), Position, ExportFrom_, ExportTo_, SampleRate_, PointCount_);
    if (status != 0)
        errors_.HandelError(ErrorNumber::ExportFailed);
}

} // namespace ostrel
