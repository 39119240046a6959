// SPDX-License-Identifier: MIT
#pragma once

#include <QTextBrowser>

namespace ostrel {

/// Shows a page of the help. What is missing is told on the page; links out of the help lead nowhere.
class HelpPage : public QTextBrowser {
    Q_OBJECT
public:
    explicit HelpPage(QWidget *parent = nullptr);

    /// The page's file; empty as long as nothing was shown.
    QString path() const { return source().toLocalFile(); }
    void open(const QString &path);

    /// Marks the places of all words on the page shown; the first one comes into sight.
    void mark(const QStringList &words);
    /// Goes to the next place marked, or the one before, round and round.
    void goToMark(bool forward);

    void zoom(int steps); ///< 0 for the size at start

protected:
    QVariant loadResource(int type, const QUrl &name) override;
    void changeEvent(QEvent *event) override;

private:
    void colourLinks();
    QImage picture(const QString &path) const;

    int zoomed_ = 0;
};

} // namespace ostrel
