// SPDX-License-Identifier: MIT
#include "help/frmHelp.h"

#include "help/HelpPage.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QSplitter>
#include <QTextDocumentFragment>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace ostrel {

namespace {

constexpr QSize comfortable(980, 720); // pixels; less on a small screen
constexpr int contentsWidth = 260;
constexpr int indexContext = 0;

} // namespace

frmHelp::frmHelp(const QString &HelpFile)
    : topics_(HelpFile), bar_(new QToolBar(this)), txtSearch_(new QLineEdit(this)), lstTopics_(new QListWidget(this)),
      page_(new HelpPage(this)) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("Ostrel MS Help"));
    setAttribute(Qt::WA_QuitOnClose, false);
    page_->setObjectName(QStringLiteral("txtPage"));
    page_->setAccessibleName(tr("Help page"));
    makeContents();
    makeToolbar();
    arrange();
    connect(page_, &QTextBrowser::historyChanged, this, &frmHelp::pageChanged);
}

QAction *frmHelp::addCommand(const char *name, const QString &text, const QList<QKeySequence> &keys,
                             std::function<void()> work) {
    auto *command = new QAction(text, this);
    command->setObjectName(QLatin1String(name));
    command->setShortcuts(keys);
    if (!keys.isEmpty())
        command->setToolTip(QStringLiteral("%1 (%2)").arg(text, keys.first().toString(QKeySequence::NativeText)));
    connect(command, &QAction::triggered, this, std::move(work));
    addAction(command);
    return command;
}

void frmHelp::makeToolbar() {
    bar_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    QAction *back = addCommand("cmdBack", tr("Back"), {QKeySequence::Back}, [this] { page_->backward(); });
    QAction *forward = addCommand("cmdForward", tr("Forward"), {QKeySequence::Forward}, [this] { page_->forward(); });
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(page_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(page_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    bar_->addActions({back, forward});
    bar_->addAction(addCommand("cmdIndex", tr("Index"), {QKeySequence(Qt::ALT | Qt::Key_Home)},
                               [this] { page_->open(topics_.pageOf(indexContext)); }));
    bar_->addSeparator();
    bar_->addAction(addCommand("cmdLarger", tr("Larger"),
                               {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
                               [this] { page_->zoom(1); }));
    bar_->addAction(
        addCommand("cmdSmaller", tr("Smaller"), {QKeySequence(Qt::CTRL | Qt::Key_Minus)}, [this] { page_->zoom(-1); }));

    addCommand("cmdFirstSize", tr("First size"), {QKeySequence(Qt::CTRL | Qt::Key_0)}, [this] { page_->zoom(0); });
    addCommand("cmdSearch", tr("Search"), {QKeySequence::Find}, [this] {
        txtSearch_->setFocus(Qt::ShortcutFocusReason);
        txtSearch_->selectAll();
    });
    addCommand("cmdNext", tr("Next place"), {QKeySequence(Qt::Key_F3)}, [this] { goOn(true); });
    addCommand("cmdPrevious", tr("Previous place"), {QKeySequence(Qt::SHIFT | Qt::Key_F3)}, [this] { goOn(false); });
    addCommand("cmdClose", tr("Close"), {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)},
               [this] { close(); });
}

void frmHelp::makeContents() {
    txtSearch_->setObjectName(QStringLiteral("txtSearch"));
    txtSearch_->setAccessibleName(tr("Search the help"));
    txtSearch_->setPlaceholderText(tr("Search (Ctrl+F)"));
    txtSearch_->setClearButtonEnabled(true);
    connect(txtSearch_, &QLineEdit::textChanged, this, &frmHelp::search);
    connect(txtSearch_, &QLineEdit::returnPressed, this, [this] { goOn(true); });

    lstTopics_->setObjectName(QStringLiteral("lstTopics"));
    lstTopics_->setAccessibleName(tr("Topics"));
    lstTopics_->setSpacing(1);
    for (std::size_t row = 0; row < topics_.rows().size(); ++row)
        addTopic(row);
    connect(lstTopics_, &QListWidget::currentItemChanged, this, &frmHelp::openItem);
    connect(lstTopics_, &QListWidget::itemClicked, this, &frmHelp::openItem);
}

void frmHelp::addTopic(std::size_t row) {
    const HelpTopic &topic = topics_.rows()[row];
    auto *item = new QListWidgetItem(topic.title, lstTopics_);
    item->setData(Qt::UserRole, topic.page);
    if (!topic.page.isEmpty())
        return;
    QFont bold = item->font();
    bold.setBold(true);
    item->setFont(bold);
    item->setTextAlignment(Qt::AlignBottom);
    item->setSizeHint({0, lstTopics_->fontMetrics().height() * 2});
    item->setFlags(Qt::ItemIsEnabled); // a heading is read, not chosen
}

void frmHelp::arrange() {
    auto *contents = new QWidget;
    auto *column = new QVBoxLayout(contents);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(txtSearch_);
    column->addWidget(lstTopics_, 1);

    auto *halves = new QSplitter;
    halves->setChildrenCollapsible(false);
    halves->addWidget(contents);
    halves->addWidget(page_);
    halves->setStretchFactor(1, 1);

    auto *form = new QVBoxLayout(this);
    form->setContentsMargins(6, 0, 6, 6);
    form->setSpacing(4);
    form->addWidget(bar_);
    form->addWidget(halves, 1);
    resize(comfortable.boundedTo(screen()->availableSize() * 9 / 10));
    const int titles = lstTopics_->sizeHintForColumn(0) + 2 * lstTopics_->frameWidth() +
                       lstTopics_->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int contentsAtFirst = std::clamp(titles, contentsWidth, std::max(contentsWidth, width() / 3));
    halves->setSizes({contentsAtFirst, width() - contentsAtFirst});
    setTabOrder(txtSearch_, lstTopics_);
    setTabOrder(lstTopics_, page_);
}

void frmHelp::showTopic(int HelpContextID) {
    txtSearch_->clear(); // the last search must not hide rows of the contents now
    const QString page = topics_.pageOf(HelpContextID);
    page_->open(page.isEmpty() ? topics_.file() : page);
    winId(); // creates the native window, which can then get a transient parent
    windowHandle()->setTransientParent(nullptr);
    standOverModal();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    page_->setFocus();
}

/// A modal dialog does not block windows that are its children. This window has no parent, so that it outlives the
/// dialog; it only becomes transient for it.
void frmHelp::standOverModal() {
    const QWidget *modal = QApplication::activeModalWidget();
    QWindow *below = modal ? modal->windowHandle() : nullptr;
    // A box over the help window itself has to be answered first.
    if (below != nullptr && !windowHandle()->isAncestorOf(below))
        windowHandle()->setTransientParent(below);
}

bool frmHelp::event(QEvent *event) {
    if (event->type() == QEvent::WindowBlocked && isVisible())
        standOverModal();
    return QWidget::event(event);
}

QStringList frmHelp::words() const { return txtSearch_->text().simplified().split(u' ', Qt::SkipEmptyParts); }

/// Leaves only the topics in the contents that have the words, the most fitting first.
void frmHelp::search() {
    const QStringList wanted = words();
    {
        const QSignalBlocker quiet(lstTopics_);
        lstTopics_->clear();
        if (wanted.isEmpty()) {
            for (std::size_t row = 0; row < topics_.rows().size(); ++row)
                addTopic(row);
        }
        for (const std::size_t row : wanted.isEmpty() ? std::vector<std::size_t>() : search_.find(wanted))
            addTopic(row);
        if (lstTopics_->count() == 0) {
            lstTopics_->addItem(tr("No topic has these words."));
            lstTopics_->item(0)->setFlags(Qt::NoItemFlags);
        }
    }
    select(page_->path());
    page_->mark(wanted);
}

/// Goes to the next place of the words on the page, or to the first topic with them when the page has none.
void frmHelp::goOn(bool forward) {
    if (lstTopics_->currentItem() != nullptr)
        page_->goToMark(forward);
    else if (lstTopics_->item(0)->flags() != Qt::NoItemFlags)
        lstTopics_->setCurrentRow(0);
}

void frmHelp::openItem(const QListWidgetItem *item) {
    if (item == nullptr)
        return;
    if (const QString page = item->data(Qt::UserRole).toString(); !page.isEmpty())
        page_->open(page);
}

void frmHelp::pageChanged() {
    select(page_->path());
    if (!words().isEmpty())
        page_->mark(words());
}

/// Shows in the contents which page is open.
void frmHelp::select(const QString &page) {
    const QSignalBlocker quiet(lstTopics_);
    int shown = -1;
    for (int row = 0; row < lstTopics_->count() && shown < 0; ++row) {
        if (!page.isEmpty() && lstTopics_->item(row)->data(Qt::UserRole).toString() == page)
            shown = row;
    }
    lstTopics_->setCurrentRow(shown);
}

} // namespace ostrel
