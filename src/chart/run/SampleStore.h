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

/// Four floats that the processor handles at once.
using Lanes = float __attribute__((vector_size(16)));

/// The least and the greatest values of a stretch: uv, cond, then the greatest of both negated, so that two stretches
/// are joined by one minimum. What is not finite does not count; without any finite value all lanes of a trace are
/// infinite.
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

/// The samples of a run, numbered from 0, bit for bit as they came. They lie in chunks that never move, so that adding
/// costs the same at every size. Each chunk carries a pyramid of extents, sixteen to one, anchored to the sample
/// numbers: any stretch of any length is summed up in some hundred steps.
class SampleStore {
public:
    static constexpr int chunkSize = 1 << 16;

    SampleStore() = default;
    SampleStore(SampleStore &&) = default;
    SampleStore &operator=(SampleStore &&) = default;

    /// Out of memory leaves the store as it was and raises std::bad_alloc.
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
    /// Many samples at one go, without a copy: they are laid into the room behind the last one, which ends with the
    /// chunk, and then count from append() on. Room alone changes nothing.
    std::span<SamplePair> room();
    void appendFromRoom(std::size_t count);
    /// At most so many more samples are about to come at one go. Their memory is had cheaply if there is enough.
    void expect(qint64 count);
    void clear();

    qint64 size() const { return size_; }
    SamplePair at(qint64 index) const { return chunks_[index / chunkSize]->samples[index % chunkSize]; }
    /// The samples from `index` on that lie side by side: to the end of the chunk or of the run.
    std::span<const SamplePair> stretchFrom(qint64 index) const;
    /// Of the samples from `from` to before `to`, both within the run.
    Extent extent(qint64 from, qint64 to) const;

private:
    static constexpr int fanOut = 16;
    static constexpr int levels = 4; // the topmost box of a chunk holds all of it

    struct Chunk {
        std::array<SamplePair, chunkSize> samples;
        std::array<Extent, 4096 + 256 + 16 + 1> boxes; // those of sixteen samples first; set when they are full
        Chunk() {}                                     // no clearing: half a megabyte at once would be felt
        static constexpr int levelStart[levels] = {0, 4096, 4096 + 256, 4096 + 256 + 16};
    };

    void ensureChunk();
    std::shared_ptr<Chunk> newChunk();
    void closeBoxes(int place);
    static void joinRange(const Chunk &chunk, int from, int to, Extent &extent);

    std::vector<std::shared_ptr<Chunk>> chunks_;
    std::shared_ptr<std::byte> expected_; // memory for the chunks to come, and for how many of them
    qint64 expectedChunks_ = 0;
    Chunk *last_ = nullptr;
    qint64 size_ = 0;
};

} // namespace ostrel
