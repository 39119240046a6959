// SPDX-License-Identifier: MIT
#include "simulator/TruthRecord.h"

#include <bit>
#include <utility>

namespace ostrel {

namespace {

QByteArray bitsOf(float value) { return QByteArray::number(std::bit_cast<quint32>(value), 16).rightJustified(8, '0'); }

QByteArray onOneLine(const QByteArray &text) {
    return QString::fromLatin1(text)
        .toUtf8()
        .replace('\\', "\\\\")
        .replace('\r', "\\r")
        .replace('\n', "\\n")
        .replace('\t', "\\t");
}

} // namespace

TruthRecord::TruthRecord(ByteSink sink) : sink_(std::move(sink)) {
    sink_("seconds\twhat\tnumber\tletter\tuv bits\tcond bits\tuv\tcond\n");
}

void TruthRecord::addSample(double seconds, qint64 number, char letter, const Measurement &pair) {
    write(seconds, "sample\t" + QByteArray::number(number) + '\t' + letter + '\t' + bitsOf(pair.uv) + '\t' +
                       bitsOf(pair.cond) + '\t' + QByteArray::number(pair.uv, 'g', 9) + '\t' +
                       QByteArray::number(pair.cond, 'g', 9));
}

void TruthRecord::addNews(double seconds, const Step &step) {
    const bool isMethod = step.action == Action::Method;
    write(seconds, step.statement.toUtf8() + (isMethod ? '\t' + onOneLine(step.bytes) : QByteArray{}));
}

void TruthRecord::write(double seconds, const QByteArray &row) {
    sink_(QByteArray::number(seconds, 'f', 1) + '\t' + row + '\n');
}

} // namespace ostrel
