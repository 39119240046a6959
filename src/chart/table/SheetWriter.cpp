// SPDX-License-Identifier: MIT
#include "chart/table/SheetWriter.h"

#include "chart/run/TextLines.h"

#include <QRegularExpression>

#include <algorithm>
#include <cstring>

namespace ostrel {

namespace {

/// The text in one line, an apostrophe in front of a formula, and in quotes if a reader would split the cell.
QByteArray cellOf(const QString &text) {
    QString cell = linesOf(text).join(QLatin1Char(' '));
    if (!cell.isEmpty() && QStringLiteral("=+-@").contains(cell.front()))
        cell.prepend(QLatin1Char('\''));
    static const QRegularExpression breaking(QStringLiteral("[\t\",;]"));
    if (cell.contains(breaking)) {
        cell.replace(QLatin1Char('"'), QStringLiteral("\"\""));
        cell = QLatin1Char('"') + cell + QLatin1Char('"');
    }
    return cell.toUtf8();
}

} // namespace

SheetWriter::SheetWriter(const QString &path, FileOperations &operations)
    : file_(path, operations), buffer_(pieceSize + mostAtOnce, Qt::Uninitialized) {
    put("\xef\xbb\xbf"); // tells a spreadsheet that this is UTF-8
}

void SheetWriter::row(const QStringList &cells) {
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0)
            put("\t");
        text(cells[i]);
    }
    put("\r\n");
}

void SheetWriter::text(const QString &text) { put(cellOf(text)); }

void SheetWriter::put(QByteArrayView characters) {
    while (!characters.isEmpty()) {
        const qsizetype piece = std::min<qsizetype>(characters.size(), mostAtOnce);
        char *at = room();
        std::memcpy(at, characters.data(), static_cast<std::size_t>(piece));
        taken(at + piece);
        characters = characters.sliced(piece);
    }
}

void SheetWriter::flush() {
    file_.write(QByteArrayView(buffer_.constData(), used_));
    used_ = 0;
}

std::error_code SheetWriter::commit() {
    flush();
    return file_.commit();
}

} // namespace ostrel
