// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <array>
#include <limits>
#include <memory>
#include <span>
#include <vector>

namespace ostrel {

/// One sample of a run: UV in AU, conductivity in mS/cm.
struct SamplePair {
    float uv;
    float cond;
};

inline constexpr double samplesPerMinute = 300;
inline constexpr double sampleInterval = 60 / samplesPerMinute; ///< seconds

/// Four floats that the processor handles at once.
using Lanes = float __attribute__((vector_size(16)));

/// The least and greatest values of a range of samples. Lanes: least uv and cond, then the negated greatest uv and
/// cond, so that one minimum joins two ranges. Values that are not finite do not count; a trace without finite values
/// has infinity in both lanes.
struct Extent {
    Lanes lanes = {infinity, infinity, infinity, infinity};

    float uvMin() const { return lanes[0]; }
    float condMin() const { return lanes[1]; }
    float uvMax() const { return -lanes[2]; }
    float condMax() const { return -lanes[3]; }

    void join(const Extent &other) { lanes = other.lanes < lanes ? other.lanes : lanes; }
    void join(SamplePair sample) {
        const Lanes values = {sample.uv, sample.cond, -sample.uv, -sample.cond};
        join(Extent{values * 0 == 0 ? values : Lanes{infinity, infinity, infinity, infinity}});
    }

    static constexpr float infinity = std::numeric_limits<float>::infinity();
};

/// The samples of a run, numbered from 0 and kept bit for bit, in chunks that never move: adding one costs the same at
/// every size. Each chunk has a pyramid of extents, sixteen of one level in one of the next, aligned to the sample
/// numbers. So the extent of any range takes a few hundred steps at most.
class SampleStore {
public:
    static constexpr int chunkSize = 1 << 16;

    SampleStore() = default;
    SampleStore(SampleStore &&) = default;
    SampleStore &operator=(SampleStore &&) = default;

    /// Raises std::bad_alloc without memory; the store is then unchanged.
    void append(SamplePair sample) {
        const int place = static_cast<int>(size_ & (chunkSize - 1));
        if (place == 0)
            ensureChunk();
        last_->samples[place] = sample;
        ++size_;
        if ((place & (fanOut - 1)) == fanOut - 1)
            closeBoxes(place);
    }
    void append(std::span<const SamplePair> samples);
    /// Adds samples that are not a number, in the place of missing ones.
    void appendMissing(qint64 count);
    /// Adds many samples without a copy: write them to room(), which is the free part of the last chunk, then call
    /// appendFromRoom(). room() alone adds no sample.
    std::span<SamplePair> room();
    void appendFromRoom(std::size_t count);
    /// Announces that up to `count` more samples follow at once, so that large pages can be allocated for them.
    void expect(qint64 count);
    void clear();

    qint64 size() const { return size_; }
    SamplePair at(qint64 index) const { return chunks_[index / chunkSize]->samples[index % chunkSize]; }
    /// The samples from `index` to the end of its chunk or of the run, which are contiguous.
    std::span<const SamplePair> stretchFrom(qint64 index) const;
    /// The extent of the samples from `from` to before `to`, both within the run.
    Extent extent(qint64 from, qint64 to) const;

private:
    static constexpr int fanOut = 16;
    static constexpr int levels = 4; // the top box covers the whole chunk

    struct Chunk {
        std::array<SamplePair, chunkSize> samples;
        std::array<Extent, 4096 + 256 + 16 + 1> boxes; // lowest level first; a box is set when it is full
        Chunk() {}                                     // not cleared: clearing half a megabyte takes too long
        static constexpr int levelStart[levels] = {0, 4096, 4096 + 256, 4096 + 256 + 16};
    };

    void ensureChunk();
    std::shared_ptr<Chunk> newChunk();
    void closeBoxes(int place);
    static void joinRange(const Chunk &chunk, int from, int to, Extent &extent);

    std::vector<std::shared_ptr<Chunk>> chunks_;
    std::shared_ptr<std::byte> expected_; // memory for further chunks, and their number
    qint64 expectedChunks_ = 0;
    Chunk *last_ = nullptr;
    qint64 size_ = 0;
};

} // namespace ostrel
