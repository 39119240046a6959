// SPDX-License-Identifier: MIT
#include "fuzz/StreamScenario.h"

#include <QDir>
#include <gtest/gtest.h>

TEST(Corpus, EveryKnownScenarioHoldsTogether) {
    const QDir corpus(QStringLiteral(STREAM_CORPUS));
    const QStringList names = corpus.entryList(QDir::Files);
    ASSERT_FALSE(names.isEmpty());
    for (const QString &name : names) {
        QFile file(corpus.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const std::span scenario{reinterpret_cast<const std::uint8_t *>(bytes.data()), std::size_t(bytes.size())};
        EXPECT_NO_THROW(StreamScenario(scenario).play()) << name.toStdString();
    }
}
