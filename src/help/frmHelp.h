// SPDX-License-Identifier: MIT
#pragma once

#include "help/HelpTopics.h"

#include <QStringList>
#include <QWidget>

#include <functional>
#include <vector>

class QAction;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QToolBar;

namespace ostrel {

class HelpPage;

/// The help's window: contents and search at the left, the page at the right. It stays usable whatever dialog of the
/// program is up, and keeps nothing waiting.
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
    bool holds(std::size_t row, const QStringList &wanted);
    void openItem(const QListWidgetItem *item);
    void pageChanged();
    void standOverModal();

    const HelpTopics topics_;
    std::vector<QString> texts_; ///< of the topics, title included, once they are searched
    QToolBar *bar_;
    QLineEdit *txtSearch_;
    QListWidget *lstTopics_;
    HelpPage *page_;
};

} // namespace ostrel
