// SPDX-License-Identifier: MIT
#include "chart/report/PdfDetails.h"

#include "base/Values.h"
#include "chart/run/IsoDate.h"
#include "chart/run/TextLines.h"

#include <QPdfWriter>
#include <QRegularExpression>
#include <QXmlStreamWriter>

#include <map>
#include <optional>

namespace ostrel {

namespace {

constexpr QLatin1String producer("Qt " QT_VERSION_STR);

/// A text string: UTF-16 in hexadecimal digits, so that no character of it has a meaning for the format.
QByteArray pdfText(const QString &text) {
    QByteArray units("\xfe\xff", 2);
    for (const QChar unit : text) {
        units += static_cast<char>(unit.unicode() >> 8);
        units += static_cast<char>(unit.unicode() & 0xff);
    }
    return '<' + units.toHex() + '>';
}

/// D:20261122073149+01'00'
QByteArray pdfDate(const QDateTime &date) {
    const QByteArray compact = compactDate(date).toLatin1();
    constexpr qsizetype minutes = 2; // digits
    return "D:" + compact.chopped(minutes) + '\'' + compact.last(minutes) + '\'';
}

QByteArray xmpOf(const PdfDetails &details) {
    const QString rdf = QStringLiteral("http://www.w3.org/1999/02/22-rdf-syntax-ns#");
    const QString dc = QStringLiteral("http://purl.org/dc/elements/1.1/");
    const QString xmp = QStringLiteral("http://ns.adobe.com/xap/1.0/");
    const QString pdf = QStringLiteral("http://ns.adobe.com/pdf/1.3/");
    const QString pdfaid = QStringLiteral("http://www.aiim.org/pdfa/ns/id/");
    QByteArray bytes("<?xpacket begin='\xef\xbb\xbf' id='W5M0MpCehiHzreSzNTczkc9d'?>\n");
    QXmlStreamWriter xml(&bytes);
    xml.writeNamespace(QStringLiteral("adobe:ns:meta/"), QStringLiteral("x"));
    xml.writeStartElement(QStringLiteral("adobe:ns:meta/"), QStringLiteral("xmpmeta"));
    xml.writeNamespace(rdf, QStringLiteral("rdf"));
    xml.writeStartElement(rdf, QStringLiteral("RDF"));
    xml.writeNamespace(dc, QStringLiteral("dc"));
    xml.writeNamespace(xmp, QStringLiteral("xmp"));
    xml.writeNamespace(pdf, QStringLiteral("pdf"));
    xml.writeNamespace(pdfaid, QStringLiteral("pdfaid"));
    xml.writeStartElement(rdf, QStringLiteral("Description"));
    xml.writeAttribute(rdf, QStringLiteral("about"), {});
    const auto listed = [&](const char *name, const char *list, const QString &text) {
        xml.writeStartElement(dc, QLatin1String(name));
        xml.writeStartElement(rdf, QLatin1String(list));
        xml.writeStartElement(rdf, QStringLiteral("li"));
        if (QLatin1String(list) == QLatin1String("Alt"))
            xml.writeAttribute(QStringLiteral("xml:lang"), QStringLiteral("x-default"));
        xml.writeCharacters(oneLine(text));
        for (int i = 0; i < 3; ++i)
            xml.writeEndElement();
    };
    listed("title", "Alt", details.title);
    listed("creator", "Seq", details.author);
    xml.writeTextElement(xmp, QStringLiteral("CreateDate"), isoDate(details.created));
    xml.writeTextElement(xmp, QStringLiteral("CreatorTool"), QLatin1String(AppTitle));
    xml.writeTextElement(pdf, QStringLiteral("Producer"), producer);
    xml.writeTextElement(pdfaid, QStringLiteral("part"), QStringLiteral("1"));
    xml.writeTextElement(pdfaid, QStringLiteral("conformance"), QStringLiteral("B"));
    xml.writeEndDocument();
    return bytes + "\n<?xpacket end='w'?>";
}

/// The objects of a document that QPdfWriter has just written, and what is to be appended to it.
class Appendix {
public:
    explicit Appendix(const QByteArray &document) : document_(document) {
        const QByteArray end = document.mid(document.lastIndexOf("trailer"));
        size_ = number(end, "/Size (\\d+)");
        info_ = number(end, "/Info (\\d+) 0 R");
        root_ = number(end, "/Root (\\d+) 0 R");
        start_ = number(end, "startxref\\s+(\\d+)");
        const auto id = QRegularExpression(QStringLiteral("/ID \\[[^\\]]*\\]")).match(QString::fromLatin1(end));
        id_ = id.captured().toLatin1();
        catalog_ = object(root_);
        const QByteArray pages = object(number(catalog_, "/Pages (\\d+) 0 R"));
        static const QRegularExpression reference(QStringLiteral("(\\d+) 0 R"));
        const qsizetype kids = pages.indexOf("/Kids");
        auto found = reference.globalMatch(QString::fromLatin1(pages.mid(kids, pages.indexOf(']', kids) - kids)));
        while (kids >= 0 && found.hasNext())
            pages_.push_back(found.next().captured(1).toInt());
    }

    bool understood() const {
        return size_ > 0 && info_ > 0 && start_ > 0 && catalog_.contains(">>") && !pages_.empty();
    }

    QByteArray written(const PdfDetails &details) {
        objects_[info_] = "<< /Title " + pdfText(oneLine(details.title)) + " /Author " +
                          pdfText(oneLine(details.author)) + " /Creator " + pdfText(QLatin1String(AppTitle)) +
                          " /Producer " + pdfText(producer) + " /CreationDate (" + pdfDate(details.created) + ") >>";
        addBookmarks(details.bookmarks);
        return document_ + (document_.endsWith('\n') ? "" : "\n") + appendix();
    }

private:
    static int number(const QByteArray &text, const char *pattern) {
        return QRegularExpression(QLatin1String(pattern)).match(QString::fromLatin1(text)).captured(1).toInt();
    }
    QByteArray object(int number) const {
        const QByteArray head = '\n' + QByteArray::number(number) + " 0 obj";
        const qsizetype begin = document_.indexOf(head);
        const qsizetype end = document_.indexOf("endobj", begin);
        return begin < 0 || end < 0 ? QByteArray() : document_.mid(begin + head.size(), end - begin - head.size());
    }
    static QByteArray reference(int object) { return QByteArray::number(object) + " 0 R"; }

    void addBookmarks(const std::vector<PdfDetails::Bookmark> &bookmarks) {
        if (bookmarks.empty())
            return;
        const int outlines = size_++;
        const int first = size_;
        size_ += static_cast<int>(bookmarks.size());
        objects_[outlines] = "<< /Type /Outlines /First " + reference(first) + " /Last " + reference(size_ - 1) +
                             " /Count " + QByteArray::number(bookmarks.size()) + " >>";
        for (int i = first; i < size_; ++i) {
            const PdfDetails::Bookmark &bookmark = bookmarks[static_cast<std::size_t>(i - first)];
            const auto page = std::min(static_cast<std::size_t>(bookmark.page), pages_.size() - 1);
            objects_[i] = "<< /Title " + pdfText(bookmark.text) + " /Parent " + reference(outlines) + " /Dest [" +
                          reference(pages_[page]) + " /Fit]" +
                          (i > first ? " /Prev " + reference(i - 1) : QByteArray()) +
                          (i + 1 < size_ ? " /Next " + reference(i + 1) : QByteArray()) + " >>";
        }
        const qsizetype end = catalog_.lastIndexOf(">>");
        objects_[root_] =
            catalog_.left(end) + " /Outlines " + reference(outlines) + " /PageMode /UseOutlines\n" + catalog_.mid(end);
    }

    QByteArray appendix() const {
        QByteArray text;
        QByteArray table = "xref\n";
        const qsizetype from = document_.size() + (document_.endsWith('\n') ? 0 : 1);
        for (const auto &[number, content] : objects_) {
            table += QByteArray::number(number) + " 1\n" +
                     QByteArray::number(from + text.size()).rightJustified(10, '0') + " 00000 n \n";
            text += QByteArray::number(number) + " 0 obj\n" + content + "\nendobj\n";
        }
        const QByteArray place = QByteArray::number(from + text.size());
        return text + table + "trailer\n<< /Size " + QByteArray::number(size_) + " /Info " + reference(info_) +
               " /Root " + reference(root_) + " /Prev " + QByteArray::number(start_) + ' ' + id_ + " >>\nstartxref\n" +
               place + "\n%%EOF\n";
    }

    const QByteArray &document_;
    int size_ = 0; ///< objects
    int info_ = 0;
    int root_ = 0;
    int start_ = 0; ///< of the document's own table
    QByteArray id_;
    QByteArray catalog_;
    std::vector<int> pages_;
    std::map<int, QByteArray> objects_; ///< new ones
};

} // namespace

void describe(QPdfWriter &writer, const PdfDetails &details) {
    writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
    writer.setTitle(oneLine(details.title));
    writer.setCreator(QLatin1String(AppTitle));
    writer.setDocumentXmpMetadata(xmpOf(details));
}

QByteArray withDetails(const QByteArray &document, const PdfDetails &details) {
    Appendix appendix(document);
    return appendix.understood() ? appendix.written(details) : document;
}

} // namespace ostrel
