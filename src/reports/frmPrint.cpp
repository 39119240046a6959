// SPDX-License-Identifier: MIT
#include "reports/frmPrint.h"

#include "base/HelpContexts.h"
#include "forms/Controls.h"
#include "forms/FixedDialog.h"
#include "forms/HelpContext.h"
#include "forms/NamedControl.h"
#include "forms/Shapes.h"
#include "reports/Indent.h"

#include <QVBoxLayout>

#include <algorithm>
#include <limits>
#include <utility>

namespace ostrel {

namespace {

constexpr int titleLetters = 45;  // letters of average width that the entry shows at once
constexpr int captionMargin = 16; // pixels; styles alone leave hardly any beside a long caption

} // namespace

frmPrint::frmPrint(Run &chart, PrintValues &values, std::function<void()> mnuPrintSetup_Click, QWidget *parent)
    : QDialog(parent, fixedDialog), chart_(chart), values_(values),
      mnuPrintSetup_Click_(std::move(mnuPrintSetup_Click)) {
    setObjectName(QStringLiteral("frmPrint"));
    setWindowTitle(QStringLiteral("Print"));

    auto *lblTitle = namedControl<QLabel>("lblTitle", "Print Title:", this);
    txtTitel_ = namedControl<TextEntry>("txtTitel", "", this);
    txtTitel_->setMaxLength(std::numeric_limits<int>::max());
    txtTitel_->setMinimumWidth(txtTitel_->fontMetrics().averageCharWidth() * titleLetters);
    lblTitle->setBuddy(txtTitel_);
    auto *title = new QHBoxLayout;
    title->addWidget(lblTitle);
    title->addWidget(txtTitel_);

    auto *form = new QVBoxLayout(this);
    form->setSizeConstraint(QLayout::SetFixedSize);
    form->setSpacing(12);
    form->addLayout(title);
    form->addWidget(makeBoxes());

    cmdPrintSetup_ = namedControl<CommandButton>("cmdPrintSetup", "&Print Setup", this);
    cmdPrintSetup_->setMinimumWidth(cmdPrintSetup_->sizeHint().width() + captionMargin);
    cmdOk_ = namedControl<CommandButton>("cmdOk", "&Ok", this);
    cmdCancel_ = namedControl<CommandButton>("cmdCancel", "&Cancel", this);
    cmdOk_->setDefault(true);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdPrintSetup_);
    buttons->addStretch();
    buttons->addWidget(cmdOk_);
    buttons->addWidget(cmdCancel_);
    form->addLayout(buttons);

    attach();
    InitPrint();
    txtTitel_->setFocus();
}

Frame *frmPrint::makeBoxes() {
    auto *framePrint = new Frame(QStringLiteral("Add Information to the report"), Ink::Plain, this);
    framePrint->setObjectName(QStringLiteral("framePrint"));
    auto *rows = new QVBoxLayout(framePrint);
    const auto box = [&](QBoxLayout &column, const char *name, const char *caption) {
        auto *control = namedControl<CheckBox>(name, caption, framePrint);
        control->setValue(1);
        column.addWidget(control);
        return control;
    };
    chkChromotogram_ = box(*rows, "chkChromotogram", "Chromatogram");
    auto *traces = new QVBoxLayout;
    traces->setContentsMargins(indentOf(*chkChromotogram_), 0, 0, 0);
    rows->addLayout(traces);
    chkUVTrace_ = box(*traces, "chkUVTrace", "UV Trace");
    chkCondTrace_ = box(*traces, "chkCondTrace", "Conductivity Trace");
    chkEvents_ = box(*traces, "chkEvents", "Events Marks");
    chkNotes_ = box(*rows, "chkNotes", "Notes");
    chkMethod_ = box(*rows, "chkMethod", "Method");
    return framePrint;
}

void frmPrint::attach() {
    chkChromotogram_->Click = [this] { chkChromotogram_Click(); };
    for (CheckBox *trace : {chkUVTrace_, chkCondTrace_, chkEvents_})
        trace->Click = [this] { SyncChromatogram(); };
    for (CheckBox *text : {chkNotes_, chkMethod_})
        text->Click = [this] { UpdatePrintButton(); };
    cmdOk_->Click = [this] { cmdOk_Click(); };
    cmdCancel_->Click = [this] { reject(); };
    cmdPrintSetup_->Click = mnuPrintSetup_Click_;
}

void frmPrint::InitPrint() {
    values_.PrintCancelled = true;
    txtTitel_->setText(chart_.ChartTitle());
    txtTitel_->selectWhole();
    setHelpContext(*this, HelpContext::Print);
}

void frmPrint::chkChromotogram_Click() {
    InChromatogramClick_ = true;
    UpdatePrintButton();
    if (!InTraceClick_) {
        for (CheckBox *trace : {chkUVTrace_, chkCondTrace_, chkEvents_})
            trace->setValue(chkChromotogram_->Value());
    }
    InChromatogramClick_ = false;
}

void frmPrint::SyncChromatogram() {
    InTraceClick_ = true;
    if (!InChromatogramClick_)
        chkChromotogram_->setValue(chkUVTrace_->Value() | chkCondTrace_->Value() | chkEvents_->Value());
    InTraceClick_ = false;
}

void frmPrint::UpdatePrintButton() {
    const auto boxes = {chkChromotogram_, chkMethod_, chkNotes_};
    cmdOk_->setEnabled(std::any_of(boxes.begin(), boxes.end(), [](auto *box) { return box->Value() != 0; }));
    if (!cmdOk_->isEnabled())
        cmdCancel_->setFocus();
}

void frmPrint::cmdOk_Click() {
    values_.PrintChromatogram = chkChromotogram_->Value() != 0;
    values_.PrintNotes = chkNotes_->Value() != 0;
    values_.PrintMethod = chkMethod_->Value() != 0;
    values_.PrintTraceFlags = chkUVTrace_->Value() * 4 + chkCondTrace_->Value() * 2 + chkEvents_->Value();
    chart_.setChartTitle(txtTitel_->Text());
    chart_.Redraw(); // the tab shows the title that is printed
    accept();
    values_.PrintCancelled = false;
}

} // namespace ostrel
