// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/RunScript.h"

#include <QStringList>

namespace ostrel {

/// The column, from 1, of the character at an index of a line. Each character is one column, a tab too.
int columnAt(const QString &line, qsizetype index);

/// A word of a statement and the column it begins in.
struct ScriptWord {
    QString text;
    int column;
};

/// Every form of a statement, as the help shows it: words in capitals are values, brackets enclose optional parts.
QStringList statementForms();

/// Reads the words of a line as a step; `line` is the line number for the ScriptError that it throws for a mistake.
Step readStatement(const std::vector<ScriptWord> &words, int line);

} // namespace ostrel
