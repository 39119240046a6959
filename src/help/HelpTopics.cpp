// SPDX-License-Identifier: MIT
#include "help/HelpTopics.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace ostrel {

namespace {

constexpr int indexNumber = 0;

HelpTopic topicOf(const QString &line, const QDir &folder) {
    const QString first = line.section(u' ', 0, 0);
    if (first == QLatin1String("=="))
        return {HelpTopic::noNumber, {}, line.section(u' ', 1)};
    bool isNumber = false;
    const int number = first.toInt(&isNumber);
    return {.number = isNumber ? number : HelpTopic::noNumber,
            .page = folder.filePath(line.section(u' ', 1, 1)),
            .title = line.section(u' ', 2)};
}

} // namespace

HelpTopics::HelpTopics(const QString &HelpFile) : file_(HelpFile) {
    const QDir folder = QFileInfo(HelpFile).absoluteDir();
    for (const QString &row : helpText(HelpFile).split(u'\n')) {
        const QString line = row.simplified();
        if (!line.isEmpty() && !line.startsWith(u'#'))
            rows_.push_back(topicOf(line, folder));
    }
}

QString HelpTopics::pageOf(int HelpContextID) const {
    for (const int number : {HelpContextID, indexNumber}) {
        const auto row =
            std::find_if(rows_.begin(), rows_.end(), [&](const HelpTopic &topic) { return topic.number == number; });
        if (row != rows_.end() && number != HelpTopic::noNumber)
            return row->page;
    }
    return {};
}

QString helpText(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace ostrel
