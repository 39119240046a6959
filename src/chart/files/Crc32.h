// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <cstddef>

namespace ostrel {

/// Continues a CRC-32 (reflected polynomial EDB88320) over `size` more bytes; `crc` is 0 for the first call.
quint32 crc32Of(quint32 crc, const void *data, std::size_t size);

} // namespace ostrel
