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
    const QDir corpus(folder);
    const QStringList names = corpus.entryList(QDir::Files);
    ASSERT_FALSE(names.isEmpty());
    for (const QString &name : names) {
        QFile file(corpus.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const std::span scenario{reinterpret_cast<const std::uint8_t *>(bytes.data()), std::size_t(bytes.size())};
        EXPECT_NO_THROW(Scenario(scenario).play()) << name.toStdString();
    }
}
