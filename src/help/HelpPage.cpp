// SPDX-License-Identifier: MIT
#include "help/HelpPage.h"

#include "help/HelpTopics.h"

#include <QDir>
#include <QEvent>
#include <QImage>
#include <QTextBlock>

#include <algorithm>

namespace ostrel {

namespace {

constexpr int margin = 18;              // pixels around the text
constexpr double picturePixelRatio = 2; // of the screen on which the pictures were taken
constexpr int smallestZoom = -4;
constexpr int largestZoom = 12;
constexpr int middleLightness = 128;

QString missingPage(const QString &path) {
    return QStringLiteral("<h1>This page of the help is missing</h1><p>It should be in the file</p><p><b>%1</b></p>"
                          "<p>The help came with the program. Installing Ostrel MS again brings it back.</p>")
        .arg(QDir::toNativeSeparators(path).toHtmlEscaped());
}

} // namespace

HelpPage::HelpPage(QWidget *parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    document()->setDocumentMargin(margin);
    colourLinks();
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl &link) {
        if (link.isLocalFile())
            setSource(link);
    });
}

void HelpPage::open(const QString &path) {
    if (path != this->path())
        setSource(QUrl::fromLocalFile(path));
}

void HelpPage::mark(const QStringList &words) {
    QList<ExtraSelection> marks;
    QTextCharFormat marked;
    marked.setBackground(QColor(0xff, 0xe0, 0x66));
    marked.setForeground(Qt::black);
    for (const QString &word : words) {
        for (QTextCursor place = document()->find(word); !place.isNull(); place = document()->find(word, place))
            marks.push_back({place, marked});
    }
    std::sort(marks.begin(), marks.end(), [](const ExtraSelection &a, const ExtraSelection &b) {
        return a.cursor.selectionStart() < b.cursor.selectionStart();
    });
    setExtraSelections(marks);
    moveCursor(QTextCursor::Start);
    goToMark(true);
}

void HelpPage::goToMark(bool forward) {
    const QList<ExtraSelection> marks = extraSelections();
    if (marks.isEmpty())
        return;
    const int here = textCursor().selectionStart();
    const bool atMark = textCursor().hasSelection();
    const ExtraSelection *next = forward ? &marks.first() : &marks.last();
    const auto lies = [&](const ExtraSelection &mark) {
        const int there = mark.cursor.selectionStart();
        return forward ? there > here || (there == here && !atMark) : there < here;
    };
    if (forward) {
        if (const auto found = std::find_if(marks.begin(), marks.end(), lies); found != marks.end())
            next = &*found;
    } else if (const auto found = std::find_if(marks.rbegin(), marks.rend(), lies); found != marks.rend()) {
        next = &*found;
    }
    setTextCursor(next->cursor);
}

void HelpPage::zoom(int steps) {
    const int wanted = steps == 0 ? 0 : std::clamp(zoomed_ + steps, smallestZoom, largestZoom);
    zoomIn(wanted - zoomed_);
    zoomed_ = wanted;
}

QVariant HelpPage::loadResource(int type, const QUrl &name) {
    const QString path = source().resolved(name).toLocalFile();
    if (type == QTextDocument::ImageResource)
        return picture(path);
    const QString text = helpText(path);
    return text.isNull() && type == QTextDocument::HtmlResource ? missingPage(path) : text;
}

/// Scales a picture to the pixel ratio of this screen. A missing picture takes no room.
QImage HelpPage::picture(const QString &path) const {
    QImage image(path);
    if (image.isNull()) {
        image = QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        return image;
    }
    const double ratio = std::min(devicePixelRatioF(), picturePixelRatio);
    image = image.scaled((QSizeF(image.size()) * ratio / picturePixelRatio).toSize(), Qt::IgnoreAspectRatio,
                         Qt::SmoothTransformation);
    image.setDevicePixelRatio(ratio);
    return image;
}

/// Few dark desktops define a link colour that can be read on a dark ground.
void HelpPage::colourLinks() {
    const bool dark = palette().base().color().lightness() < middleLightness;
    document()->setDefaultStyleSheet(dark ? QStringLiteral("a { color: #8cb8ff; }") : QString());
}

// A page keeps the colours that the desktop had when the page was loaded, so it is loaded again.
void HelpPage::changeEvent(QEvent *event) {
    QTextBrowser::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    colourLinks();
    if (!source().isEmpty())
        reload();
}

} // namespace ostrel
