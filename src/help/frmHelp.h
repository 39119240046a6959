// SPDX-License-Identifier: MIT
#pragma once

#include "help/HelpSearch.h"
#include "help/HelpTopics.h"

#include <QStringList>
#include <QWidget>

#include <functional>

class QAction;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QToolBar;

namespace ostrel {

class HelpPage;

/// The help window: contents and search at the left, the page at the right. It stays usable while a modal dialog of the
/// program is open, and blocks nothing itself.
class frmHelp : public QWidget {
    Q_OBJECT
public:
    explicit frmHelp(const QString &HelpFile);

    /// Shows the page of this context, in front of all other windows.
    void showTopic(int HelpContextID);

protected:
    bool event(QEvent *event) override;

private:
    void makeToolbar();
    void makeContents();
    void arrange();
    QAction *addCommand(const char *name, const QString &text, const QList<QKeySequence> &keys,
                        std::function<void()> work);

    void search();
    void goOn(bool forward);
    QStringList words() const;
    void addTopic(std::size_t row);
    void select(const QString &page);
    void openItem(const QListWidgetItem *item);
    void pageChanged();
    void standOverModal();

    const HelpTopics topics_;
    HelpSearch search_{topics_.rows()};
    QToolBar *bar_;
    QLineEdit *txtSearch_;
    QListWidget *lstTopics_;
    HelpPage *page_;
};

} // namespace ostrel
