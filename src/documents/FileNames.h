// SPDX-License-Identifier: MIT
#pragma once

#include "documents/DocumentPorts.h"

#include <QString>

#include <functional>

namespace ostrel {

/// File names as the operator sees them.

/// The part of a path after the last separator: the name with its extension.
QString GetFileTitle(const QString &path);

/// The part before the first point: "run" for "run.2.chd", empty for a name that begins with a point.
QString StripExtension(const QString &name);

/// The text unchanged if it fits `MaxWidth`; otherwise its first characters, at least one, as many as fit with "..."
/// after them. Widths are in the unit of `textWidth`.
QString ShortenCaption(const QString &text, float MaxWidth, const std::function<float(const QString &)> &textWidth);

/// The caption of a tab without a file.
inline constexpr char emptyTab[] = "(empty)";

/// The two kinds of file, as filters for the file dialogs.
inline constexpr char dataFilter[] = "Quillchart Data(*.chd)|*.chd|All Files(*.*)|*.*";
inline constexpr char dataExtension[] = "chd";
inline constexpr char logFilter[] = "Quillchart Log(*.chl)|*.chl|All Files(*.*)|*.*";
inline constexpr char logExtension[] = "chl";

/// Names a tab after its file: the caption is shortened and without extension, the tool tip is the full name.
void nameTab(DocumentWindow &window, int tab, const QString &FileTitle);

} // namespace ostrel
