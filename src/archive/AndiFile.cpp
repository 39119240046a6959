// SPDX-License-Identifier: MIT
#include "archive/AndiFile.h"

#include "base/ProgramVersion.h"
#include "chart/run/IsoDate.h"
#include "chart/run/TextLines.h"
#include "chart/table/Digits.h"
#include "chart/table/SheetWriter.h"
#include "files/DurableFile.h"

#include <QFile>
#include <QFileInfo>
#include <netcdf.h>
#include <netcdf_mem.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

namespace ostrel {

namespace {

constexpr std::size_t mostGapsTold = 200;

/// What differs between the two files.
struct SignalRow {
    float SamplePair::*value;
    const char *signal;
    const char *unit;
    const char *experiment; ///< null for none: readers take a file with this type for one of UV
};

constexpr SignalRow uvRow{&SamplePair::uv, "UV", "AU", "Liquid Chromatography"};
constexpr SignalRow condRow{&SamplePair::cond, "Conductivity", "mS/cm", nullptr};

/// A netCDF file of the classic format, made in memory. Its first failure is kept, and found in finish().
class ClassicFile {
public:
    /// `leastSize`: more than the file would have makes it longer than it is.
    explicit ClassicFile(std::size_t leastSize) {
        ::setenv("NCRCENV_IGNORE", "1", 0); // no settings from the user's folder or the present one
        take(::nc_create_mem("run", NC_CLOBBER, leastSize, &id_));
        int previous = 0;
        take(::nc_set_fill(id_, NC_NOFILL, &previous)); // everything is written
    }
    ~ClassicFile() {
        if (!closed_)
            ::nc_abort(id_);
        std::free(content_.memory);
    }
    ClassicFile(const ClassicFile &) = delete;
    ClassicFile &operator=(const ClassicFile &) = delete;

    void text(const char *name, const QString &value) { text(NC_GLOBAL, name, value); }
    void text(int variable, const char *name, const QString &value) {
        const QByteArray bytes = value.toUtf8();
        take(::nc_put_att_text(id_, variable, name, static_cast<std::size_t>(bytes.size()), bytes.constData()));
    }
    int dimension(const char *name, std::size_t size) {
        int dimension = 0;
        take(::nc_def_dim(id_, name, size, &dimension));
        return dimension;
    }
    int scalar(const char *name) { return variable(name, 0, nullptr); }
    int list(const char *name, int dimension) { return variable(name, 1, &dimension); }
    void endDefinitions() { take(::nc_enddef(id_)); }
    void write(int variable, float value) { take(::nc_put_var_float(id_, variable, &value)); }
    void write(int variable, std::size_t from, const std::vector<float> &values) {
        const std::size_t count = values.size();
        take(::nc_put_vara_float(id_, variable, &from, &count, values.data()));
    }

    std::error_code finish() {
        const int status = ::nc_close_memio(id_, &content_);
        closed_ = true;
        take(status);
        if (status_ == NC_NOERR)
            return {};
        return {status_ == NC_ENOMEM ? ENOMEM : status_ > 0 ? status_ : EIO, std::generic_category()};
    }
    QByteArrayView content() const {
        return {static_cast<const char *>(content_.memory), static_cast<qsizetype>(content_.size)};
    }

private:
    void take(int status) {
        if (status_ == NC_NOERR)
            status_ = status;
    }
    int variable(const char *name, int dimensions, const int *dimension) {
        int variable = 0;
        take(::nc_def_var(id_, name, NC_FLOAT, dimensions, dimension, &variable));
        return variable;
    }

    int id_ = -1;
    int status_ = NC_NOERR;
    bool closed_ = false;
    NC_memio content_{};
};

struct Gap {
    qint64 from; // samples
    qint64 count;
};

/// Where a signal has no values, which readers do not know.
std::vector<Gap> gapsOf(const SampleStore &samples, float SamplePair::*value) {
    std::vector<Gap> gaps;
    for (qint64 number = 0; number < samples.size();) {
        for (const SamplePair &sample : samples.stretchFrom(number)) {
            if (!std::isfinite(sample.*value)) {
                if (gaps.empty() || gaps.back().from + gaps.back().count < number)
                    gaps.push_back({number, 0});
                ++gaps.back().count;
            }
            ++number;
        }
    }
    return gaps;
}

/// Writes all values; a gap gets the last value before it, at the start the first one.
void writeValues(ClassicFile &file, int variable, const SampleStore &samples, float SamplePair::*value,
                 const std::vector<Gap> &gaps) {
    const qint64 first = gaps.empty() || gaps.front().from > 0 ? 0 : gaps.front().count;
    float last = first < samples.size() ? samples.at(first).*value : 0;
    std::vector<float> values;
    for (qint64 number = 0; number < samples.size(); number += static_cast<qint64>(values.size())) {
        values.clear();
        for (const SamplePair &sample : samples.stretchFrom(number)) {
            last = std::isfinite(sample.*value) ? sample.*value : last;
            values.push_back(last);
        }
        file.write(variable, static_cast<std::size_t>(number), values);
    }
}

QString seconds(qint64 samples) { return QString::number(static_cast<double>(samples) * sampleInterval, 'f', 1); }

/// Where values were filled in; empty without gaps.
QString gapsInWords(const std::vector<Gap> &gaps, qint64 samples) {
    if (gaps.empty())
        return {};
    if (gaps.front().count == samples)
        return QStringLiteral("No value was measured: all are given as 0.");
    QStringList places;
    for (std::size_t i = 0; i < std::min(gaps.size(), mostGapsTold); ++i)
        places << QStringLiteral("from minute %1 for %2 s")
                      .arg(QString::number(ChartData::timeOf(gaps[i].from), 'f', 4), seconds(gaps[i].count));
    if (gaps.size() > mostGapsTold)
        places << QStringLiteral("and %1 times more").arg(gaps.size() - mostGapsTold);
    return QStringLiteral("No value was measured %1. The last value before is given instead, at the start the first "
                          "one behind.")
        .arg(places.join(QStringLiteral(", ")));
}

/// Seconds from the first sample to the last, rounded up: a reader that divides this by the number of intervals and
/// keeps whole milliseconds must find 200 of them, not 199.
float runTime(qint64 samples) {
    constexpr double samplesPerSecond = samplesPerMinute / 60;
    const auto intervals = static_cast<double>(samples - 1);
    const auto length = static_cast<float>(intervals / samplesPerSecond);
    const bool tooShort = static_cast<double>(length) * samplesPerSecond < intervals; // exact in a double
    return tooShort ? std::nextafter(length, std::numeric_limits<float>::infinity()) : length;
}

void describe(ClassicFile &file, const ChartData &run, const AndiOrigin &origin, const SignalRow &row,
              const std::vector<Gap> &gaps) {
    const auto known = [&](const char *name, const QString &text) {
        if (const QString line = oneLine(text); !line.isEmpty())
            file.text(name, line);
    };
    const QString title = oneLine(run.title).trimmed().isEmpty() ? origin.file : run.title;
    known("dataset_completeness", "C1");
    known("aia_template_revision", "1.0");
    known("netcdf_revision", QString(::nc_inq_libvers()).section(' ', 0, 0));
    known("languages", "English");
    known("administrative_comments", gapsInWords(gaps, run.samples.size()));
    known("dataset_origin", run.provenance.system);
    known("dataset_date_time_stamp", compactDate(origin.made));
    if (run.provenance.begun().isValid())
        known("injection_date_time_stamp", compactDate(run.provenance.begun()));
    known("experiment_title", title);
    known("operator_name", "unknown");
    if (row.experiment != nullptr)
        known("separation_experiment_type", row.experiment);
    known("pre_experiment_program_name", run.provenance.program);
    known("post_experiment_program_name", programVersion());
    known("source_file_reference", origin.file);
    known("sample_id", run.provenance.identity);
    known("sample_name", title);
    known("sample_id_comments", run.notes);
    known("detector_name", row.signal);
    known("detector_unit", row.unit);
    known("raw_data_table_name", row.signal);
    known("retention_unit", "seconds");
}

/// The file of one signal in `file`.
std::error_code make(ClassicFile &file, const ChartData &run, const AndiOrigin &origin, const SignalRow &row) {
    const std::vector<Gap> gaps = gapsOf(run.samples, row.value);
    const Extent extent = run.samples.extent(0, run.samples.size());
    const bool isUv = row.value == &SamplePair::uv;
    const float least = isUv ? extent.uvMin() : extent.condMin();
    const float greatest = isUv ? extent.uvMax() : extent.condMax();
    const struct {
        const char *name;
        float value;
    } scalars[] = {
        {"actual_delay_time", 0},
        {"actual_sampling_interval", static_cast<float>(sampleInterval)},
        {"actual_run_time_length", runTime(run.samples.size())},
        {"detector_maximum_value", std::isfinite(greatest) ? greatest : 0},
        {"detector_minimum_value", std::isfinite(least) ? least : 0},
    };
    describe(file, run, origin, row, gaps);
    std::vector<int> variables;
    for (const auto &scalar : scalars)
        variables.push_back(file.scalar(scalar.name));
    const int values =
        file.list("ordinate_values", file.dimension("point_number", static_cast<std::size_t>(run.samples.size())));
    file.text(values, "uniform_sampling_flag", "Y");
    file.endDefinitions();
    for (std::size_t i = 0; i < variables.size(); ++i)
        file.write(variables[i], scalars[i].value);
    writeValues(file, values, run.samples, row.value, gaps);
    return file.finish();
}

/// Brings the content to the disk, beside the old file.
std::error_code write(DurableFile &target, QByteArrayView content) {
    target.write(content);
    return target.bringToDisk();
}

std::error_code write(DurableFile &target, const ChartData &run, const AndiOrigin &origin, const SignalRow &row) {
    ClassicFile file(static_cast<std::size_t>(run.samples.size()) * sizeof(float));
    const std::error_code error = make(file, run, origin, row);
    return error ? error : write(target, file.content());
}

const char *kindOf(const QString &label) {
    static constexpr struct {
        const char *label;
        const char *kind;
    } kinds[] = {{"S", "start"}, {"E", "end"}, {"P", "pause"}, {"H", "hold"}, {"C", "continue"}, {"M", "mark"}};
    const auto *const row = std::find_if(std::begin(kinds), std::end(kinds),
                                         [&](const auto &kind) { return label == QLatin1String(kind.label); });
    if (row != std::end(kinds))
        return row->kind;
    const bool number = !label.isEmpty() && std::all_of(label.cbegin(), label.cend(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
    return number ? "event" : "other";
}

QByteArray marksTable(const std::vector<EventMark> &marks) {
    std::vector<const EventMark *> order;
    for (const EventMark &mark : marks) {
        if (std::isfinite(mark.time))
            order.push_back(&mark);
    }
    std::stable_sort(order.begin(), order.end(),
                     [](const EventMark *a, const EventMark *b) { return a->time < b->time; });
    QByteArray table = "time_min\tlabel\tkind\n";
    for (const EventMark *mark : order) {
        char time[longestNumber];
        table.append(time, writeFixed<6>(time, mark->time) - time);
        table += '\t' + cellOf(oneLine(mark->label)) + '\t' + kindOf(mark->label) + '\n';
    }
    return table;
}

/// A new file that goes away again when the others that belong to it cannot be written.
class NewFile {
public:
    NewFile(const QString &path, FileOperations &operations)
        : path_(QFile::encodeName(path)), wasThere_(QFileInfo::exists(path) || QFileInfo(path).isSymLink()),
          operations_(operations), file_(path, operations) {}

    DurableFile &file() { return file_; }
    std::error_code commit() { return file_.commit(); }
    void takeBack() {
        if (!wasThere_)
            operations_.remove(path_.constData());
    }

private:
    QByteArray path_;
    bool wasThere_;
    FileOperations &operations_;
    DurableFile file_;
};

} // namespace

QStringList andiNames(const QString &path) {
    const QString stem = path.endsWith(QStringLiteral(".cdf"), Qt::CaseInsensitive) ? path.chopped(4) : path;
    return {stem + QStringLiteral("-conductivity.cdf"), stem + QStringLiteral("-marks.txt"), path};
}

std::error_code exportAndi(const QString &path, const ChartData &run, const AndiOrigin &origin,
                           FileOperations &operations) {
    const QStringList names = andiNames(path);
    NewFile cond(names[0], operations);
    NewFile marks(names[1], operations);
    NewFile uv(names[2], operations);
    std::error_code error = write(cond.file(), run, origin, condRow);
    if (!error)
        error = write(marks.file(), marksTable(run.marks));
    if (!error)
        error = write(uv.file(), run, origin, uvRow);
    if (error)
        return error;
    NewFile *const order[] = {&cond, &marks, &uv};
    for (std::size_t i = 0; i < std::size(order); ++i) {
        error = order[i]->commit();
        if (error) {
            for (std::size_t taken = 0; taken <= i; ++taken)
                order[taken]->takeBack();
            return error;
        }
    }
    return {};
}

} // namespace ostrel
