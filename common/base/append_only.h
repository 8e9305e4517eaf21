// A list that one thread at a time appends to while any thread reads: nothing in it ever moves.
#pragma once

#include <array>
#include <atomic>
#include <cassert>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace zorvane {

/// Elements lie in segments of 8,192. A reader takes no lock: what `size` tells of is whole and
/// stays as it is. Two threads may append one after the other, never at once.
template <class T>
class AppendOnly {
  public:
    AppendOnly() = default;
    AppendOnly(const AppendOnly&) = delete;
    AppendOnly& operator=(const AppendOnly&) = delete;

    /// Seen by readers at once.
    void Append(T value) {
        const std::size_t index = count_.load(std::memory_order_relaxed);
        SegmentFor(index)[index % kSegment] = std::move(value);
        count_.store(index + 1, std::memory_order_release);
    }
    std::size_t size() const { return count_.load(std::memory_order_acquire); }
    bool empty() const { return size() == 0; }
    /// `index` is below a `size` that the caller has seen.
    const T& operator[](std::size_t index) const {
        assert(index < size());
        return blocks_[index / kPerBlock]->segments[index % kPerBlock / kSegment][index % kSegment];
    }
    /// No reader may be at work.
    void Clear() {
        count_.store(0, std::memory_order_release);
        for (std::unique_ptr<Block>& block : blocks_)
            block.reset();
    }

  private:
    static constexpr std::size_t kSegment = 8192;
    static constexpr std::size_t kSegmentsOfBlock = 512;
    static constexpr std::size_t kPerBlock = kSegment * kSegmentsOfBlock;
    static constexpr std::size_t kBlocks = 512;  // some two thousand million elements

    struct Block {
        std::array<std::unique_ptr<T[]>, kSegmentsOfBlock> segments;
    };

    // A reader looks at a block or segment only behind a count that was stored after it was made.
    T* SegmentFor(std::size_t index) {
        assert(index < kPerBlock * kBlocks);
        std::unique_ptr<Block>& block = blocks_[index / kPerBlock];
        if (!block)
            block = std::make_unique<Block>();
        std::unique_ptr<T[]>& segment = block->segments[index % kPerBlock / kSegment];
        if (!segment)
            segment = std::make_unique<T[]>(kSegment);
        return segment.get();
    }

    std::atomic<std::size_t> count_{0};
    std::array<std::unique_ptr<Block>, kBlocks> blocks_;
};

/// Texts that never move, for the names of such records. One thread at a time adds; whoever got a
/// text through a published record may read it.
class TextArena {
  public:
    /// The copy lives as long as the arena.
    std::string_view Add(std::string_view text) {
        if (text.size() > left_) {
            const std::size_t size = text.size() > kBlock ? text.size() : kBlock;
            blocks_.push_back(std::make_unique<char[]>(size));
            next_ = blocks_.back().get();
            left_ = size;
        }
        if (!text.empty())
            std::memcpy(next_, text.data(), text.size());
        const std::string_view copy(next_, text.size());
        next_ += text.size();
        left_ -= text.size();
        return copy;
    }
    void Clear() {
        blocks_.clear();
        next_ = nullptr;
        left_ = 0;
    }

  private:
    static constexpr std::size_t kBlock = 1 << 16;

    std::vector<std::unique_ptr<char[]>> blocks_;
    char* next_ = nullptr;
    std::size_t left_ = 0;
};

}  // namespace zorvane
