// SPDX-License-Identifier: MIT
#include "chart/table/SampleTables.h"

#include "chart/run/AxisTitles.h"
#include "chart/table/Digits.h"
#include "chart/table/RowLabels.h"
#include "chart/table/SheetWriter.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <cstring>

namespace ostrel {

namespace {

constexpr int uvDecimals = 6;
constexpr int condDecimals = 4;
constexpr int longestRow = 3 * longestNumber + 8;
constexpr std::size_t rowsAtOnce = SheetWriter::mostAtOnce / longestRow;

constexpr qint64 perMinute = static_cast<qint64>(samplesPerMinute);
constexpr int fractionLength = 7; // ".003333"

/// The fractions of a minute at which samples are, eight characters each.
constexpr auto fractions = [] {
    std::array<char, 8 * perMinute> texts{};
    for (int sample = 0; sample < perMinute; ++sample) {
        int millionths = (sample * 1000000 + perMinute / 2) / perMinute; // never just between two
        char *text = texts.data() + 8 * sample;
        for (int place = fractionLength - 1; place > 0; --place, millionths /= 10)
            text[place] = static_cast<char>('0' + millionths % 10);
        text[0] = '.';
    }
    return texts;
}();

/// Writes the minutes of successive samples. Only the whole minutes are computed, once a minute.
class Minutes {
public:
    char *write(char *at, qint64 sample) {
        const qint64 minute = sample / perMinute;
        if (minute != minute_) {
            minute_ = minute;
            length_ = writeWhole(whole_.data(), static_cast<quint32>(minute)) - whole_.data();
        }
        std::memcpy(at, whole_.data(), 8);
        std::memcpy(at + length_, fractions.data() + 8 * (sample - minute * perMinute), 8);
        return at + length_ + fractionLength;
    }

private:
    std::array<char, longestNumber> whole_{};
    qint64 minute_ = -1;
    qptrdiff length_ = 0;
};

template <int decimals>
void writeXy(SheetWriter &file, const SampleStore &samples, float SamplePair::*value) {
    Minutes minutes;
    for (qint64 row = 0; row < samples.size();) {
        const std::span<const SamplePair> stretch = samples.stretchFrom(row);
        char *at = file.room();
        for (const SamplePair &sample : stretch.first(std::min(stretch.size(), rowsAtOnce))) {
            at = minutes.write(at, row++);
            *at++ = '\t';
            const float number = sample.*value;
            if (std::isfinite(number)) {
                at = writeFixed<decimals>(at, number);
            } else {
                for (const char letter : {'N', 'a', 'N'})
                    *at++ = letter;
            }
            *at++ = '\n';
        }
        file.taken(at);
    }
}

/// A comma and the value; an empty cell when the value is not finite.
template <int decimals>
char *cell(char *at, float value) {
    *at++ = ',';
    return std::isfinite(value) ? writeFixed<decimals>(at, value) : at;
}

void writeCsv(SheetWriter &sheet, const SampleStore &samples, const ExportRows &rows, RowLabels &labels) {
    Minutes minutes;
    for (qint64 row = 0; row < samples.size();) {
        const qint64 labelled = labels.row();
        char *at = sheet.room();
        for (const qint64 end = std::min({row + qint64{rowsAtOnce}, labelled + 1, rows.count()}); row < end; ++row) {
            const SamplePair sample = samples.at(row);
            at = minutes.write(at, row);
            at = cell<uvDecimals>(at, sample.uv);
            at = cell<condDecimals>(at, sample.cond);
            *at++ = ',';
            if (row < labelled) {
                *at++ = '\r';
                *at++ = '\n';
            }
        }
        sheet.taken(at);
        if (row > labelled) {
            sheet.text(labels.take());
            sheet.put("\r\n");
        }
    }
    while (const EventMark *mark = labels.takeLate()) {
        sheet.taken(writeFixed<6>(sheet.room(), mark->time));
        sheet.put(",,,");
        sheet.text(mark->label);
        sheet.put("\r\n");
    }
}

} // namespace

std::error_code exportXy(const QString &path, const ChartData &data, Signal signal, FileOperations &operations) {
    SheetWriter file(path, operations, {.separator = '\t', .byteOrderMark = false});
    if (signal == Signal::Uv)
        writeXy<uvDecimals>(file, data.samples, &SamplePair::uv);
    else
        writeXy<condDecimals>(file, data.samples, &SamplePair::cond);
    return file.commit();
}

std::error_code exportCsv(const QString &path, const ChartData &data, FileOperations &operations) {
    SheetWriter sheet(path, operations, {.separator = ',', .byteOrderMark = false});
    sheet.row({timeAxisTitle(), uvAxisTitle(), condAxisTitle(), QStringLiteral("Event marks")});
    constexpr float fullRate = ExportRows::fullRate;
    const ExportRows rows(data.samples, 0, FLT_MAX, fullRate, static_cast<qint32>(data.samples.size()));
    RowLabels labels(rows);
    labels.add(data.marks, 0, FLT_MAX);
    writeCsv(sheet, data.samples, rows, labels);
    return sheet.commit();
}

} // namespace ostrel
