// SPDX-License-Identifier: MIT
#include "shell/frmDataRecovery.h"

#include "base/HelpContexts.h"
#include "forms/Controls.h"
#include "forms/FormBuilder.h"
#include "forms/HelpContext.h"
#include "shell/TextBox.h"

#include <QLabel>
#include <QListWidget>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace ostrel {

namespace {

constexpr int noColumn = -1;

struct PromptRow {
    const char *text;
    bool bold;
    int column; ///< for a heading: its column in the list, in characters
};

// clang-format off
constexpr PromptRow prompts[] = {
    {"One or more Log files from previous operation have been found!", true, noColumn},
    {"This situation occurs when Ostrel is not closed properly.  The most frequent cause of this situation is a power "
     "failure during operation.", false, noColumn},
    {"In most cases, data from the previous operation can be recovered.  Please select all log files that you wish to "
     "recover data from using the list below.", false, noColumn},
    {"(Note:  When the Log File name is unknown a unique number is assigned.)", false, noColumn},
    {"Log File Name", true,  2},
    {"Date",          true, 32},
    {"Time",          true, 45},
};
// clang-format on

constexpr int widestRow = 68; // characters: name, date and the longest form of a time
constexpr int shownRows = 8;

void embolden(QWidget &widget) {
    QFont font = widget.font();
    font.setBold(true);
    widget.setFont(font);
}

/// The left edge of a row's text within the list's viewport.
int textLeft(const QListWidget &list) {
    QStyleOptionViewItem row;
    row.initFrom(&list);
    row.font = list.font();
    row.rect = list.visualItemRect(list.item(0));
    row.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    row.text = list.item(0)->text();
    const QStyle &style = *list.style();
    return style.subElementRect(QStyle::SE_ItemViewItemText, &row, &list).left() +
           style.pixelMetric(QStyle::PM_FocusFrameHMargin, &row, &list) + 1;
}

} // namespace

frmDataRecovery::frmDataRecovery(Recovery &recovery, QWidget *parent)
    : QDialog(parent), recovery_(recovery), heads_(new QWidget(this)), lstLogFiles_(new QListWidget(this)),
      cmdRecoverButton_(new CommandButton(this)), cmdDoneButton_(new CommandButton(this)) {
    setObjectName(QStringLiteral("frmDataRecovery"));
    setWindowTitle(QStringLiteral("Ostrel - Recover Data"));
    setSizeGripEnabled(true);
    setHelpContext(*this, HelpContext::Recovery);

    auto *form = new QVBoxLayout(this);
    makePrompts(*form);
    makeList();
    form->addWidget(heads_);
    form->addWidget(lstLogFiles_, 1);
    makeButtons(*form);
    showRows();
}

void frmDataRecovery::makePrompts(QVBoxLayout &form) {
    for (int i = 0; i < int(std::size(prompts)); ++i) {
        const PromptRow &row = prompts[i];
        const bool isHead = row.column != noColumn;
        auto *lblPrompt = new QLabel(QLatin1String(row.text), isHead ? heads_ : this);
        lblPrompt->setObjectName(arrayName("lblPrompt", i));
        lblPrompt->setTextFormat(Qt::PlainText);
        if (row.bold)
            embolden(*lblPrompt);
        if (isHead) {
            heads_->setFixedHeight(lblPrompt->sizeHint().height());
        } else {
            lblPrompt->setWordWrap(true);
            form.addWidget(lblPrompt);
        }
    }
}

void frmDataRecovery::makeList() {
    QListWidget &list = *lstLogFiles_;
    list.setObjectName(QStringLiteral("lstLogFiles"));
    list.setAccessibleName(QStringLiteral("Log files from previous operation"));
    list.setFont(fixedPitchFont()); // the columns of the rows are made with blanks
    list.setSelectionMode(QAbstractItemView::NoSelection);
    list.setUniformItemSizes(true);
    const QFontMetrics letters(list.font());
    const int wanted =
        letters.horizontalAdvance(QString(widestRow, u'0')) + list.verticalScrollBar()->sizeHint().width();
    list.setMinimumSize(std::min(wanted, screen()->availableSize().width() * 9 / 10),
                        letters.lineSpacing() * shownRows);
    connect(&list, &QListWidget::itemChanged, this, [this](QListWidgetItem *item) { lstLogFiles_ItemCheck(*item); });
    // For a click on the check box the list emits no itemPressed. A click on the text checks the row too.
    connect(&list, &QListWidget::itemPressed, this, [this] { pressedOnText_ = true; });
    connect(&list, &QListWidget::itemClicked, this, [this](QListWidgetItem *item) {
        if (std::exchange(pressedOnText_, false))
            item->setCheckState(item->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    });
}

void frmDataRecovery::makeButtons(QVBoxLayout &form) {
    cmdRecoverButton_->setObjectName(QStringLiteral("cmdRecoverButton"));
    cmdRecoverButton_->setText(QStringLiteral("Recover"));
    cmdRecoverButton_->setDefault(true);
    cmdRecoverButton_->Click = [this] {
        if (recovery_.cmdRecoverButton_Click())
            accept();
        else
            showRows();
    };
    cmdDoneButton_->setObjectName(QStringLiteral("cmdDoneButton"));
    cmdDoneButton_->setText(QStringLiteral("Done"));
    cmdDoneButton_->Click = [this] {
        if (recovery_.cmdDoneButton_Click())
            accept();
    };
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (CommandButton *button : {cmdRecoverButton_, cmdDoneButton_}) {
        embolden(*button);
        buttons->addWidget(button);
    }
    form.addLayout(buttons);
}

void frmDataRecovery::showRows() {
    const QSignalBlocker quiet(lstLogFiles_);
    lstLogFiles_->clear();
    for (const RecoveryRow &row : recovery_.rows()) {
        auto *item = new QListWidgetItem(row.text, lstLogFiles_);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(row.checked ? Qt::Checked : Qt::Unchecked);
    }
    lstLogFiles_->setCurrentRow(0);
    lstLogFiles_->setFocus();
    cmdRecoverButton_->setEnabled(recovery_.cmdRecoverButtonEnabled());
}

void frmDataRecovery::lstLogFiles_ItemCheck(const QListWidgetItem &item) {
    pressedOnText_ = false; // forgets a press that has left its row
    recovery_.setChecked(static_cast<std::size_t>(lstLogFiles_->row(&item)), item.checkState() == Qt::Checked);
    cmdRecoverButton_->setEnabled(recovery_.cmdRecoverButtonEnabled());
}

/// Wrapped lines need more height in a narrower window, and a higher one than the screen has its buttons beyond it.
void frmDataRecovery::resizeEvent(QResizeEvent *event) {
    if (isVisible()) // before that the width is not yet that of the list, and a height would stay that is much too
                     // large
        setMinimumHeight(std::min(layout()->totalMinimumHeightForWidth(width()), screen()->availableSize().height()));
    QDialog::resizeEvent(event);
}

/// Style and positions are not final before this.
void frmDataRecovery::showEvent(QShowEvent *event) {
    resize(width(), std::min(layout()->totalHeightForWidth(width()), screen()->availableSize().height()));
    QDialog::showEvent(event);
    placeHeads();
}

void frmDataRecovery::placeHeads() {
    const QPoint rowStart = lstLogFiles_->viewport()->mapTo(this, QPoint(textLeft(*lstLogFiles_), 0));
    const int first = heads_->mapFrom(this, rowStart).x();
    const QFontMetrics letters(lstLogFiles_->font());
    for (int i = 0; i < int(std::size(prompts)); ++i) {
        if (prompts[i].column != noColumn)
            heads_->findChild<QLabel *>(arrayName("lblPrompt", i))
                ->move(first + letters.horizontalAdvance(QString(prompts[i].column, u' ')), 0);
    }
}

} // namespace ostrel
