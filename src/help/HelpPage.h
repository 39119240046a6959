// SPDX-License-Identifier: MIT
#pragma once

#include <QTextBrowser>

namespace ostrel {

/// Shows a page of the help. A missing page is reported in its place. Only links to local files work.
class HelpPage : public QTextBrowser {
    Q_OBJECT
public:
    explicit HelpPage(QWidget *parent = nullptr);

    /// The page's file; empty before the first page.
    QString path() const { return source().toLocalFile(); }
    void open(const QString &path);

    /// Marks all places of the words on the shown page and scrolls to the first one.
    void mark(const QStringList &words);
    /// Goes to the next or the previous marked place, and from the last to the first and back.
    void goToMark(bool forward);

    void zoom(int steps); ///< 0: the initial size

protected:
    QVariant loadResource(int type, const QUrl &name) override;
    void changeEvent(QEvent *event) override;

private:
    void colourLinks();
    QImage picture(const QString &path) const;

    int zoomed_ = 0;
};

} // namespace ostrel
