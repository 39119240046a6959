// SPDX-License-Identifier: MIT
#include "archive/AndiFile.h"

#include "ArchiveFolder.h"

#include <netcdf.h>

#include <cstring>
#include <map>

namespace {

/// A file as other programs read it.
struct ReadFile {
    explicit ReadFile(const QString &path) {
        int id = 0;
        if (::nc_open(qPrintable(path), NC_NOWRITE, &id) != NC_NOERR)
            return;
        ::nc_inq_format(id, &format);
        int point = 0;
        ::nc_inq_dimid(id, "point_number", &point);
        ::nc_inq_dimlen(id, point, &points);
        int count = 0;
        ::nc_inq_natts(id, &count);
        for (int i = 0; i < count; ++i) {
            char name[NC_MAX_NAME + 1];
            std::size_t length = 0;
            ::nc_inq_attname(id, NC_GLOBAL, i, name);
            ::nc_inq_attlen(id, NC_GLOBAL, name, &length);
            QByteArray text(static_cast<qsizetype>(length), 0);
            ::nc_get_att_text(id, NC_GLOBAL, name, text.data());
            texts[name] = text;
        }
        ::nc_inq_nvars(id, &count);
        for (int i = 0; i < count; ++i) {
            char name[NC_MAX_NAME + 1];
            nc_type type = NC_NAT;
            int dimensions = 0;
            int dimension = -1;
            ::nc_inq_var(id, i, name, &type, &dimensions, &dimension, nullptr);
            EXPECT_EQ(type, NC_FLOAT) << name;
            std::vector<float> values(dimensions == 1 && dimension == point ? points : 1);
            EXPECT_EQ(::nc_get_var_float(id, i, values.data()), NC_NOERR);
            numbers[name] = values;
        }
        ::nc_close(id);
    }
    QByteArray text(const char *name) const { return texts.count(name) != 0 ? texts.at(name) : QByteArray("none"); }
    float number(const char *name) const { return numbers.count(name) != 0 ? numbers.at(name)[0] : NAN; }

    int format = 0;
    std::size_t points = 0;
    std::map<std::string, QByteArray> texts;
    std::map<std::string, std::vector<float>> numbers;
};

struct AndiFile : ArchiveFolder {
    void samples(std::initializer_list<SamplePair> values) { run.samples.append(std::vector<SamplePair>(values)); }
    /// Writes the run as it is here: a file need not keep all of it.
    void write() {
        const QDateTime made(QDate(2026, 11, 23), QTime(1, 2, 3), Qt::OffsetFromUTC, -12600);
        EXPECT_FALSE(exportAndi("out.cdf", run, {"run 7.chd", made}));
    }
};

TEST_F(AndiFile, holdsWhatReadersAskFor) {
    samples({{0.5F, 20}, {-0.25F, 21}, {0.75F, 22}});
    run.title = "Größe";
    run.notes = "Column B\r\nold buffer";
    const QDateTime begun(QDate(2026, 11, 22), QTime(9, 5, 7), Qt::OffsetFromUTC, 3600);
    run.provenance.identity = "5f3a";
    run.provenance.system = "Cold room";
    run.provenance.program = "Ostrel MS 2.0";
    run.provenance.stretches = {{0, 1, begun, QDateTime()}};
    write();
    const QByteArray bytes = content("out.cdf");
    EXPECT_TRUE(bytes.startsWith("CDF\x01") && bytes.endsWith(QByteArray("\x3f\x40\0\0", 4))); // ends with 0.75
    const ReadFile uv("out.cdf");
    const ReadFile cond("out-conductivity.cdf");
    EXPECT_EQ(uv.format, NC_FORMAT_CLASSIC);
    EXPECT_EQ(uv.points, 3U);
    EXPECT_EQ(uv.numbers.at("ordinate_values"), (std::vector{0.5F, -0.25F, 0.75F}));
    EXPECT_EQ(cond.numbers.at("ordinate_values"), (std::vector{20.0F, 21.0F, 22.0F}));
    EXPECT_EQ(uv.number("detector_minimum_value"), -0.25F);
    EXPECT_EQ(uv.number("detector_maximum_value"), 0.75F);
    EXPECT_EQ(cond.number("detector_maximum_value"), 22);
    const std::pair<const char *, const char *> both[] = {
        {"dataset_completeness", "C1"},
        {"aia_template_revision", "1.0"},
        {"languages", "English"},
        {"retention_unit", "seconds"},
        {"dataset_date_time_stamp", "20261123010203-0330"},
        {"injection_date_time_stamp", "20261122090507+0100"},
        {"experiment_title", "Größe"},
        {"sample_name", "Größe"},
        {"operator_name", "unknown"},
        {"dataset_origin", "Cold room"},
        {"sample_id", "5f3a"},
        {"sample_id_comments", "Column B old buffer"},
        {"pre_experiment_program_name", "Ostrel MS 2.0"},
        {"source_file_reference", "run 7.chd"},
        {"administrative_comments", "none"},
    };
    for (const ReadFile &file : {uv, cond}) {
        EXPECT_EQ(file.number("actual_delay_time"), 0);
        EXPECT_EQ(file.number("actual_sampling_interval"), 0.2F);
        EXPECT_EQ(file.number("actual_run_time_length"), 0.4F);
        EXPECT_NE(file.text("netcdf_revision"), "none");
        for (const auto &[name, text] : both)
            EXPECT_EQ(file.text(name), text) << name;
    }
    EXPECT_EQ(uv.text("detector_unit"), "AU");
    EXPECT_EQ(uv.text("separation_experiment_type"), "Liquid Chromatography");
    EXPECT_EQ(cond.text("detector_unit"), "mS/cm");
    EXPECT_EQ(cond.text("detector_name"), "Conductivity");
    EXPECT_EQ(cond.text("separation_experiment_type"), "none"); // or it would be taken for UV
}

TEST_F(AndiFile, ofAnUnknownStartAndTitleSaysNothingOrTheFile) {
    samples({{0, 0}, {0, 0}});
    run.title = " ";
    write();
    EXPECT_EQ(ReadFile("out.cdf").text("injection_date_time_stamp"), "none");
    EXPECT_EQ(ReadFile("out.cdf").text("experiment_title"), "run 7.chd");
}

/// By float or by double, whole milliseconds from the length and the number of points.
TEST_F(AndiFile, aRunsLengthIsNeverAMillisecondShort) {
    run.samples.append({0, 0});
    for (const int size : {2, 3, 4, 8, 301, 4243, 65537, 432000}) {
        while (run.samples.size() < size)
            run.samples.append({0, 0});
        write();
        const ReadFile file("out.cdf");
        const float length = file.number("actual_run_time_length");
        const auto intervals = static_cast<double>(size - 1);
        EXPECT_GE(double{length} * 5, intervals) << size;
        EXPECT_LT(double{std::nextafter(length, 0.0F)} * 5, intervals) << size;
        EXPECT_EQ(static_cast<int>(length / static_cast<float>(size - 1) * 1000), 200) << size;
        EXPECT_EQ(static_cast<int>(double{length} * 1000 / intervals), 200) << size;
        EXPECT_EQ(file.points, static_cast<std::size_t>(size));
    }
}

TEST_F(AndiFile, aGapIsFilledAndTold) {
    const float none = NAN;
    samples({{none, none}, {INFINITY, none}, {3, none}, {none, none}, {5, none}, {-INFINITY, none}, {none, none}});
    write();
    const ReadFile uv("out.cdf");
    EXPECT_EQ(uv.numbers.at("ordinate_values"), (std::vector<float>{3, 3, 3, 3, 5, 5, 5}));
    EXPECT_EQ(uv.text("administrative_comments"),
              "No value was measured from minute 0.0000 for 0.4 s, from minute 0.0100 for 0.2 s, from minute 0.0167 "
              "for 0.4 s. The last value before is given instead, at the start the first one behind.");
    EXPECT_EQ(uv.number("detector_maximum_value"), 5);
    const ReadFile cond("out-conductivity.cdf");
    EXPECT_EQ(cond.numbers.at("ordinate_values"), std::vector<float>(7, 0));
    EXPECT_EQ(cond.text("administrative_comments"), "No value was measured: all are given as 0.");
    for (int i = 0; i < 500; ++i)
        samples({{1, 1}, {none, 1}});
    write();
    EXPECT_TRUE(ReadFile("out.cdf").text("administrative_comments").contains("and 303 times more."));
}

TEST_F(AndiFile, theMarksAreATableBesideIt) {
    samples({{0, 0}, {0, 0}});
    float time = 0;
    for (const char *label : {"S", "12", "P", "H", "C", "M", "F", "", "s"})
        run.marks.push_back({label, 0, 10, time += 0.5F});
    run.marks.push_back({"E", 0, 10, 0.25F});
    write();
    EXPECT_EQ(content("out-marks.txt"), "time_min\tlabel\tkind\n"
                                        "0.250000\tE\tend\n"
                                        "0.500000\tS\tstart\n"
                                        "1.000000\t12\tevent\n"
                                        "1.500000\tP\tpause\n"
                                        "2.000000\tH\thold\n"
                                        "2.500000\tC\tcontinue\n"
                                        "3.000000\tM\tmark\n"
                                        "3.500000\tF\tother\n"
                                        "4.000000\t\tother\n"
                                        "4.500000\ts\tother\n");
}

TEST_F(AndiFile, noTextBreaksAnAttributeOrARow) {
    samples({{0, 0}, {0, 0}});
    run.title = run.notes = run.provenance.system = hostile;
    run.marks = {{hostile, 0, 10, 0}};
    write();
    const ReadFile file("out.cdf");
    for (const char *name : {"experiment_title", "sample_id_comments", "dataset_origin"})
        EXPECT_EQ(file.text(name), "=1+1 \"a\",b; c     \xef\xbf\xbd<&>\xef\xbf\xbd\xc3\xa9\xef\xbf\xbd") << name;
    const QByteArray marks = content("out-marks.txt");
    EXPECT_EQ(marks.count('\n'), 2);
    EXPECT_EQ(marks.count('\t'), 4);
    EXPECT_TRUE(marks.contains("\t\"'=1+1 \"\"a")) << marks.toStdString();
}

TEST_F(AndiFile, aRunOfLessThanTwoSamplesIsRefused) {
    samples({{0, 0}});
    save("one.chd");
    EXPECT_EQ(call("andi one.chd out.cdf"), Failed);
    EXPECT_TRUE(complaint.contains("fewer than two samples")) << complaint.toStdString();
    samples({{0, 0}});
    save("two.chd");
    EXPECT_EQ(call("andi two.chd out.nc"), Misused);
    EXPECT_EQ(names("."), "one.chd two.chd");
    lay("out-marks.txt", "not ours");
    EXPECT_EQ(call("andi two.chd out.cdf"), Failed);
    EXPECT_EQ(names("."), "one.chd out-marks.txt two.chd");
    EXPECT_EQ(call("andi --overwrite two.chd out.cdf"), Good);
    EXPECT_EQ(names("."), "one.chd out-conductivity.cdf out-marks.txt out.cdf two.chd");
}

TEST_F(AndiFile, onAFailingDiskThereAreAllFilesOrNone) {
    samples({{0, 0}, {0, 0}});
    for (int n = 1;; ++n) {
        FaultyDisk disk(n, EIO, 1000);
        const std::error_code error = exportAndi("out.cdf", run, {"run.chd", QDateTime::currentDateTime()}, disk);
        EXPECT_EQ(names("."), error ? "" : "out-conductivity.cdf out-marks.txt out.cdf") << n;
        if (!disk.struck())
            break;
        for (const QString &name : andiNames("out.cdf"))
            QFile::remove(name);
    }
}

} // namespace
