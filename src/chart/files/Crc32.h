// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <cstddef>

namespace ostrel {

/// Goes on with a CRC-32 (that of zlib, PNG and Ethernet; 0 to begin with) over `size` bytes more.
quint32 crc32Of(quint32 crc, const void *data, std::size_t size);

} // namespace ostrel
