// SPDX-License-Identifier: MIT
#pragma once

#include "files/DurableFile.h"

#include <QByteArray>
#include <QStringList>

namespace ostrel {

/// Writes a table as a text file that spreadsheets open: UTF-8 with its mark, cells parted by tabs, rows ended by
/// CR LF. Whatever a text holds, it stays within its cell and is not taken for a formula: docs/text-export.md.
class SheetWriter {
public:
    /// The characters that a caller may write at `room` at one go.
    static constexpr int mostAtOnce = 1 << 14;

    SheetWriter(const QString &path, FileOperations &operations);

    /// A whole row of texts.
    void row(const QStringList &cells);
    /// A text where the row is; the caller puts the tabs and the row's end.
    void text(const QString &text);

    /// For numbers: a place for `mostAtOnce` characters, of which those before `end` are taken. What is written there
    /// is made of plain characters, tabs and row ends.
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
    QByteArray buffer_;
    qsizetype used_ = 0;
};

} // namespace ostrel
