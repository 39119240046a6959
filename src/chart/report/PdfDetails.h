// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <vector>

class QPdfWriter;

namespace ostrel {

/// What a PDF document tells about itself.
struct PdfDetails {
    struct Bookmark {
        QString text;
        int page; ///< from 0
    };

    QString title;
    QString author;
    QDateTime created;
    std::vector<Bookmark> bookmarks{};
};

/// Before the pages are painted: the document is made for archives (PDF/A-1b), and has its details as such.
void describe(QPdfWriter &writer, const PdfDetails &details);

/// A document of QPdfWriter's with author, date and bookmarks, which that class does not write: they are appended, as
/// the format provides for changes, and agree with what describe() has written. A document of another form is left as
/// it is.
QByteArray withDetails(const QByteArray &document, const PdfDetails &details);

} // namespace ostrel
