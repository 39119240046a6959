// SPDX-License-Identifier: MIT
#include "documents/FileNames.h"

#include <QTextBoundaryFinder>

namespace ostrel {

namespace {

constexpr float captionWidth = 1080; // twips

}

QString GetFileTitle(const QString &path) { return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1); }

QString StripExtension(const QString &name) { return name.left(name.indexOf(QLatin1Char('.'))); }

QString ShortenCaption(const QString &text, float MaxWidth, const std::function<float(const QString &)> &textWidth) {
    const QString ellipsis = QStringLiteral("...");
    if (textWidth(text) <= MaxWidth)
        return text;
    const float room = MaxWidth - textWidth(ellipsis);
    QString cut = text;
    // One visible character may be several characters of the text.
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    characters.toEnd();
    while (characters.toPreviousBoundary() > 0) {
        cut = text.left(characters.position());
        if (textWidth(cut) <= room)
            break;
    }
    return cut + ellipsis;
}

void nameTab(DocumentWindow &window, int tab, const QString &FileTitle) {
    const auto textWidth = [&window](const QString &text) { return window.textWidth(text); };
    window.setTabHead(tab, ShortenCaption(StripExtension(FileTitle), captionWidth, textWidth), FileTitle);
}

} // namespace ostrel
