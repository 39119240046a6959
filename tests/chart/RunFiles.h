// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "chart/run/Scale.h"
#include "fakes/FaultyDisk.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

/// The samples, bit for bit.
inline QByteArray print(const SampleStore &samples) {
    QByteArray bytes;
    for (qint64 i = 0; i < samples.size(); ++i) {
        const SamplePair sample = samples.at(i);
        bytes.append(reinterpret_cast<const char *>(&sample), sizeof sample);
    }
    return bytes;
}

/// All that a chart holds, bit for bit.
inline QByteArray print(const ChartData &run, const AxisValues &axes = {}) {
    QByteArray bytes = print(run.samples);
    QDataStream to(&bytes, QIODevice::Append);
    to.setFloatingPointPrecision(QDataStream::SinglePrecision);
    for (const EventMark &mark : run.marks)
        to << mark.color << mark.height << mark.time << QString(mark.label + u'.');
    for (const MethodText &text : run.methodTexts)
        to << text.time << QString(text.text + u'.');
    to << QString(run.notes + u'.') << QString(run.title + u'.');
    to << axes.uvMin << axes.uvMax << axes.condMin << axes.condMax << axes.timeMin << axes.timeMax;
    return bytes;
}

inline QByteArray content(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

inline void lay(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    file.remove(); // or some file systems would flush what is written over an old file
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

inline QByteArray flipped(QByteArray bytes, qsizetype place) {
    bytes[place] = static_cast<char>(bytes[place] ^ 0x10);
    return bytes;
}

/// The names in a folder, with blanks between.
inline QString names(const QString &folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).join(u' ');
}
