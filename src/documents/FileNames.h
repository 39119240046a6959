// SPDX-License-Identifier: MIT
#pragma once

#include "documents/DocumentPorts.h"

#include <QString>

#include <functional>

namespace ostrel {

/// How files are named to the operator.

/// All behind the last separator of a path: the name with its extension.
QString GetFileTitle(const QString &path);

/// All before the first point: "run" for "run.2.chd", nothing for a name that begins with a point.
QString StripExtension(const QString &name);

/// The text as it is when it fits `MaxWidth`; otherwise as many of its first characters, at least one, as leave room
/// for "..." behind them. Widths are in the unit of `textWidth`.
QString ShortenCaption(const QString &text, float MaxWidth, const std::function<float(const QString &)> &textWidth);

/// The caption of a tab without a file.
inline constexpr char emptyTab[] = "(empty)";

/// The two kinds of file, as the file dialogs take them.
inline constexpr char dataFilter[] = "Quillchart Data(*.chd)|*.chd|All Files(*.*)|*.*";
inline constexpr char dataExtension[] = "chd";
inline constexpr char logFilter[] = "Quillchart Log(*.chl)|*.chl|All Files(*.*)|*.*";
inline constexpr char logExtension[] = "chl";

/// Names a tab after its file: the caption without extension and shortened, the tool tip in full.
void nameTab(DocumentWindow &window, int tab, const QString &FileTitle);

} // namespace ostrel
