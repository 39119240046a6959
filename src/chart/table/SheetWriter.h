// SPDX-License-Identifier: MIT
#pragma once

#include "files/DurableFile.h"

#include <QByteArray>
#include <QStringList>

namespace ostrel {

/// A text as the cell of a table, UTF-8: in one line, with an apostrophe in front of a formula, and in quotation marks
/// where a reader would split it. Half a surrogate pair becomes a question mark.
QByteArray cellOf(const QString &text);

struct SheetForm {
    char separator = '\t';
    bool byteOrderMark = true;
};

/// Writes a table as a text file that spreadsheets open: UTF-8, rows ended by CR LF, by default with a byte order mark
/// and with tabs between cells. No text can leave its cell or be taken for a formula: docs/text-export.md.
class SheetWriter {
public:
    /// The number of characters that a caller may write to room() at once.
    static constexpr int mostAtOnce = 1 << 14;

    SheetWriter(const QString &path, FileOperations &operations, SheetForm form = {});

    /// Writes a whole row of texts.
    void row(const QStringList &cells);
    /// Writes a text; the caller writes the separators and the end of the row.
    void text(const QString &text);

    /// For numbers: room for `mostAtOnce` characters; taken() keeps those before `end`. Only plain characters,
    /// separators and row ends may be written there.
    char *room() {
        if (used_ > pieceSize)
            flush();
        return buffer_.data() + used_;
    }
    void taken(const char *end) { used_ = end - buffer_.constData(); }
    void put(QByteArrayView characters);

    /// No error means: the new file is on the disk.
    std::error_code commit();

private:
    static constexpr qsizetype pieceSize = 1 << 18;

    void flush();

    DurableFile file_;
    char separator_;
    QByteArray buffer_;
    qsizetype used_ = 0;
};

} // namespace ostrel
