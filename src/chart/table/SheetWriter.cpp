// SPDX-License-Identifier: MIT
#include "chart/table/SheetWriter.h"

#include "chart/run/TextLines.h"

#include <algorithm>
#include <cstring>

namespace ostrel {

namespace {

/// A spreadsheet would compute it. Some skip blanks and tabs in front.
bool isFormula(const QString &cell) {
    const auto *const first = std::find_if_not(cell.constBegin(), cell.constEnd(), [](QChar c) { return c.isSpace(); });
    return first != cell.constEnd() && QStringLiteral("=+-@").contains(*first);
}

} // namespace

// Character by character: a regular expression finds nothing at all in a text that has half a surrogate pair.
QByteArray cellOf(const QString &text) {
    QString cell = linesOf(text).join(QLatin1Char(' '));
    if (isFormula(cell))
        cell.prepend(QLatin1Char('\''));
    if (std::any_of(cell.cbegin(), cell.cend(), [](QChar c) { return QStringLiteral("\t\",;").contains(c); })) {
        cell.replace(QLatin1Char('"'), QStringLiteral("\"\""));
        cell = QLatin1Char('"') + cell + QLatin1Char('"');
    }
    return cell.toUtf8();
}

SheetWriter::SheetWriter(const QString &path, FileOperations &operations, SheetForm form)
    : file_(path, operations), separator_(form.separator), buffer_(pieceSize + mostAtOnce, Qt::Uninitialized) {
    if (form.byteOrderMark)
        put("\xef\xbb\xbf"); // tells a spreadsheet that this is UTF-8
}

void SheetWriter::row(const QStringList &cells) {
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0)
            put({&separator_, 1});
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
