// SPDX-License-Identifier: MIT
#include "chart/run/SampleStore.h"

#include "chart/run/HugePages.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace ostrel {

namespace {

/// Handles two pairs at a time; looks at each sample only when a value is not finite.
Extent extentOf(const SamplePair *samples, int count) {
    const auto pairs = [samples](int i) {
        Lanes both;
        std::memcpy(&both, samples + i, sizeof both);
        return both;
    };
    // NOLINTBEGIN(misc-redundant-expression): what is no number is unlike itself
    Lanes least = pairs(0);
    Lanes greatest = least;
    auto gaps = least != least; // all bits set where any sample is not a number
    for (int i = 2; i < count; i += 2) {
        const Lanes both = pairs(i);
        least = both < least ? both : least;
        greatest = both > greatest ? both : greatest;
        gaps |= both != both;
    }
    gaps |= (least - least != 0) | (greatest - greatest != 0); // infinities count too
    // NOLINTEND(misc-redundant-expression)
    Extent extent;
    if ((gaps[0] | gaps[1] | gaps[2] | gaps[3]) == 0) {
        extent.lanes = __builtin_shufflevector(least, -greatest, 0, 1, 4, 5);
        extent.join(Extent{__builtin_shufflevector(least, -greatest, 2, 3, 6, 7)});
    } else {
        for (int i = 0; i < count; ++i)
            extent.join(samples[i]);
    }
    return extent;
}

} // namespace

void SampleStore::append(std::span<const SamplePair> samples) {
    while (!samples.empty()) {
        const std::span<SamplePair> to = room();
        const std::size_t count = std::min(samples.size(), to.size());
        std::copy_n(samples.begin(), count, to.begin());
        appendFromRoom(count);
        samples = samples.subspan(count);
    }
}

void SampleStore::appendMissing(qint64 count) {
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    for (; count > 0; --count)
        append(SamplePair{none, none});
}

std::span<SamplePair> SampleStore::room() {
    const auto place = static_cast<std::size_t>(size_ % chunkSize);
    if (place == 0)
        ensureChunk();
    return std::span(last_->samples).subspan(place);
}

void SampleStore::appendFromRoom(std::size_t count) {
    const qint64 end = size_ + static_cast<qint64>(count);
    for (qint64 box = size_ / fanOut; box < end / fanOut; ++box)
        closeBoxes(static_cast<int>((box * fanOut + fanOut - 1) % chunkSize));
    size_ = end;
}

void SampleStore::expect(qint64 count) {
    constexpr qint64 fewest = 4; // chunks; fewer would not fill large pages
    const qint64 beyond = size_ + count - static_cast<qint64>(chunks_.size()) * chunkSize;
    expectedChunks_ = (beyond + chunkSize - 1) / chunkSize;
    if (expectedChunks_ < fewest)
        expectedChunks_ = 0;
    else
        expected_ = hugePages(static_cast<std::size_t>(expectedChunks_) * sizeof(Chunk));
}

void SampleStore::clear() { *this = SampleStore(); }

/// Makes sure that there is a chunk for the next sample; room() may have made it already.
void SampleStore::ensureChunk() {
    if (static_cast<qint64>(chunks_.size()) * chunkSize == size_)
        chunks_.push_back(newChunk());
    last_ = chunks_.back().get();
}

std::shared_ptr<SampleStore::Chunk> SampleStore::newChunk() {
    if (expectedChunks_ == 0 || expected_ == nullptr)
        return std::shared_ptr<Chunk>(new Chunk);
    std::shared_ptr<Chunk> chunk(expected_, new (expected_.get()) Chunk);
    expected_ = {expected_, expected_.get() + sizeof(Chunk)};
    --expectedChunks_;
    return chunk;
}

void SampleStore::closeBoxes(int place) {
    int number = place / fanOut;
    last_->boxes[number] = extentOf(&last_->samples[place - (fanOut - 1)], fanOut);
    for (int level = 1; level < levels && number % fanOut == fanOut - 1; ++level, number /= fanOut) {
        const Extent *below = &last_->boxes[Chunk::levelStart[level - 1] + number - (fanOut - 1)];
        Extent joined = below[0];
        for (int i = 1; i < fanOut; ++i)
            joined.join(below[i]);
        last_->boxes[Chunk::levelStart[level] + number / fanOut] = joined;
    }
}

std::span<const SamplePair> SampleStore::stretchFrom(qint64 index) const {
    const qint64 chunk = index / chunkSize;
    const qint64 end = std::min(size_, (chunk + 1) * chunkSize);
    return {&chunks_[chunk]->samples[index % chunkSize], static_cast<std::size_t>(end - index)};
}

Extent SampleStore::extent(qint64 from, qint64 to) const {
    Extent extent;
    while (from < to) {
        const qint64 chunk = from / chunkSize;
        const qint64 start = chunk * chunkSize;
        const qint64 end = std::min(to, start + chunkSize);
        joinRange(*chunks_[chunk], static_cast<int>(from - start), static_cast<int>(end - start), extent);
        from = end;
    }
    return extent;
}

void SampleStore::joinRange(const Chunk &chunk, int from, int to, Extent &extent) {
    while (from < to && from % fanOut != 0)
        extent.join(chunk.samples[from++]);
    while (from < to && to % fanOut != 0)
        extent.join(chunk.samples[--to]);
    for (int level = 0; level < levels && from < to; ++level) {
        const Extent *boxes = &chunk.boxes[Chunk::levelStart[level]];
        from /= fanOut;
        to /= fanOut;
        while (from < to && (from % fanOut != 0 || level == levels - 1))
            extent.join(boxes[from++]);
        while (from < to && to % fanOut != 0)
            extent.join(boxes[--to]);
    }
}

} // namespace ostrel
