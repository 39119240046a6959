// SPDX-License-Identifier: MIT
#include "chart/table/TextExport.h"

#include "chart/run/AxisTitles.h"
#include "chart/run/IsoDate.h"
#include "chart/run/TextLines.h"
#include "chart/table/Digits.h"
#include "chart/table/ExportRows.h"
#include "chart/table/RowLabels.h"
#include "chart/table/SheetWriter.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ostrel {

namespace {

constexpr int uvDecimals = 6; // a millionth of an AU: on the finest scale a thousandth of its height
constexpr int condDecimals = 4;

/// The table: a row for each point, then one for each mark behind the last point, then the rest of the method's column.
/// Without values only the marks make rows.
class Table {
public:
    Table(SheetWriter &sheet, const ChartData &data, const ExportOptions &options)
        : sheet_(sheet), options_(options), rows_(data.samples, options.from, options.to, options.sampleRate,
                                                  options.uv || options.cond ? options.pointCount : 0),
          labels_(rows_) {
        if (options.events)
            labels_.add(data.marks, options.from, options.to);
        if (hasMethod())
            method_ = methodLines(data.methodTexts);
    }

    const ExportRows &rows() const { return rows_; }
    bool exists() const { return options_.uv || options_.cond || options_.events; }
    /// The method's text has a column in the table.
    bool hasMethod() const {
        return exists() && options_.method && options_.position == MethodPosition::SeparateColumn;
    }

    void write() {
        if (!exists())
            return;
        heading();
        for (qint64 row = 0; row < rows_.count();) {
            const qint64 text = nextText(row);
            if (row < text)
                row = numbersAlone(row, std::min(text, row + rowsAtOnce));
            else
                numbersAndTexts(row++);
        }
        while (const EventMark *mark = labels_.takeLate())
            lateMark(*mark);
        while (line_ < method_.size()) {
            emptyCells(options_.uv + options_.cond + options_.events);
            endRow();
        }
    }

private:
    static constexpr qint64 rowsAtOnce = SheetWriter::mostAtOnce / (3 * longestNumber + 8);

    void heading() {
        QStringList names{timeAxisTitle()};
        if (options_.uv)
            names << uvAxisTitle();
        if (options_.cond)
            names << condAxisTitle();
        if (options_.events)
            names << QStringLiteral("Event marks");
        if (hasMethod())
            names << QStringLiteral("Method");
        sheet_.row(names);
    }

    /// The next row with a label or a line of the method.
    qint64 nextText(qint64 row) const { return line_ < method_.size() ? row : labels_.row(); }

    /// Writes rows without texts. In a long run nearly all rows are such.
    qint64 numbersAlone(qint64 row, qint64 end) {
        const int textCells = options_.events + hasMethod();
        const char *emptyTexts = &"\t\t\r\n\0"[2 - textCells];
        const Columns columns{options_.uv, options_.cond};
        char *at = sheet_.room();
        for (; row < end; ++row) {
            at = numbers(at, row, columns);
            std::memcpy(at, emptyTexts, 4);
            at += textCells + 2;
        }
        sheet_.taken(at);
        return end;
    }

    void numbersAndTexts(qint64 row) {
        sheet_.taken(numbers(sheet_.room(), row, {options_.uv, options_.cond}));
        emptyCells(options_.events);
        if (row == labels_.row())
            sheet_.text(labels_.take());
        endRow();
    }

    struct Columns {
        bool uv;
        bool cond;
    };
    char *numbers(char *at, qint64 row, Columns columns) const {
        const SamplePair values = rows_.values(row);
        at = writeTenThousandths(at, roundedWhole(rows_.tenThousandthsOf(row)));
        if (columns.uv)
            at = value<uvDecimals>(at, values.uv);
        if (columns.cond)
            at = value<condDecimals>(at, values.cond);
        return at;
    }

    /// Writes a tab and the value; an empty cell when the value is not finite.
    template <int decimals>
    static char *value(char *at, float value) {
        *at++ = '\t';
        return std::isfinite(value) ? writeFixed<decimals>(at, value) : at;
    }

    void lateMark(const EventMark &mark) {
        sheet_.taken(writeFixed<4>(sheet_.room(), mark.time));
        emptyCells(options_.uv + options_.cond);
        sheet_.put("\t");
        sheet_.text(mark.label);
        endRow();
    }

    void emptyCells(int count) { sheet_.put(QByteArray(count, '\t')); }

    void endRow() {
        if (hasMethod()) {
            sheet_.put("\t");
            if (line_ < method_.size())
                sheet_.text(method_[line_++]);
        }
        sheet_.put("\r\n");
    }

    SheetWriter &sheet_;
    const ExportOptions &options_;
    ExportRows rows_;
    RowLabels labels_;
    QStringList method_;
    qsizetype line_ = 0; // the next one to write
};

QString minutes(float time) { return QString::number(static_cast<double>(time), 'f', 4); }

void writeHead(SheetWriter &sheet, const ChartData &data, const ExportOptions &options, const Table &table) {
    const auto entry = [&sheet](const QString &name, const QString &value) {
        if (!value.isEmpty())
            sheet.row({name, value});
    };
    entry(QStringLiteral("Title"), data.title);
    entry(QStringLiteral("File"), options.sourceFile);
    entry(QStringLiteral("System"), data.provenance.system);
    entry(QStringLiteral("Run"), data.provenance.identity);
    entry(QStringLiteral("Recorded from"), isoDate(data.provenance.begun()));
    entry(QStringLiteral("Recorded to"), isoDate(data.provenance.ended()));
    entry(QStringLiteral("Recorded with"), data.provenance.program);
    entry(QStringLiteral("Exported"), isoDate(options.exported));
    if (table.exists())
        sheet.row({QStringLiteral("Range (min)"), minutes(options.from), minutes(options.to)});
    if (options.uv || options.cond) {
        const ExportRows &rows = table.rows();
        entry(QStringLiteral("Points per second"), QString::number(rows.rate(), 'g', 6));
        entry(QStringLiteral("Points"), QString::number(rows.count()));
        entry(QStringLiteral("Values"),
              rows.thinned() ? QStringLiteral("Means of the samples around each point (measured at 5 per second)")
                             : QStringLiteral("The samples as measured"));
    }
}

void writeSection(SheetWriter &sheet, const QString &heading, const QStringList &lines) {
    sheet.row({});
    sheet.row({heading});
    for (const QString &line : lines)
        sheet.row({line});
}

} // namespace

std::error_code exportText(const QString &path, const ChartData &data, const ExportOptions &options,
                           FileOperations &operations) {
    SheetWriter sheet(path, operations);
    Table table(sheet, data, options);
    const auto writeMethod = [&] { writeSection(sheet, QStringLiteral("Method"), methodLines(data.methodTexts)); };
    const bool methodAlone = options.method && !table.hasMethod();
    const bool methodBehind = options.position == MethodPosition::AfterData;

    writeHead(sheet, data, options, table);
    if (options.notes)
        writeSection(sheet, QStringLiteral("Notes"), linesOf(data.notes));
    if (methodAlone && !methodBehind)
        writeMethod();
    if (table.exists())
        sheet.row({});
    table.write();
    if (methodAlone && methodBehind)
        writeMethod();
    return sheet.commit();
}

} // namespace ostrel
