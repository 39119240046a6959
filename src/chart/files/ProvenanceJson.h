// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/Provenance.h"

#include <QJsonObject>

namespace ostrel {

/// Where a run comes from, as files and scripts have it; docs/file-format.md describes every key. What is not known is
/// null.
QJsonObject toJson(const Provenance &provenance);
/// Keys that are missing, unknown or of another type are passed over.
Provenance provenanceFrom(const QJsonObject &object);

} // namespace ostrel
