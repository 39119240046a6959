// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <cstdint>
#include <span>

/// Plays every scenario of a corpus.
template <typename Scenario>
void playCorpus(const QString &folder) {
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files);
    ASSERT_FALSE(files.isEmpty());
    for (const QFileInfo &info : files) {
        QFile file(info.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const std::span scenario{reinterpret_cast<const std::uint8_t *>(bytes.data()), std::size_t(bytes.size())};
        EXPECT_NO_THROW(Scenario(scenario).play()) << info.filePath().toStdString();
    }
}
