#pragma once

#include "media/container/Av.h"

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace daylark {

/// Where the decoders of one movie put their pictures. Blocks given back are used again, which is several
/// times cheaper than new ones from the system; at most a few are kept idle, so that what the cache gives up
/// is the system's again, whichever decoder made it. Internal to media/; shared by the decoders and by every
/// picture still held, which may outlive the reader. Any thread. A codec that cannot draw into memory of ours
/// keeps its own.
class PictureMemory : public std::enable_shared_from_this<PictureMemory> {
public:
    /// Makes the codec take its pictures' memory from here; before it is opened. This object must outlive it.
    void serve(AVCodecContext& codec);
    /// A block for a picture that no codec makes, given back by the last who lets it go; null where there is no memory.
    [[nodiscard]] AVBufferRef* block(size_t bytes);
    ~PictureMemory();
    /// Of all blocks, whoever holds them, and of those kept idle.
    [[nodiscard]] size_t byteCount() const { return bytes_; }
    /// So many bytes at most are kept idle, and what is usual at the utmost; lets go what is too much. A
    /// picture that is given back is let go here or by the next decoder that wants memory, never by who gave it
    /// back, since the system takes its time over a large one.
    void limitIdle(size_t bytes);

private:
    static constexpr size_t usuallyIdle = size_t(128) << 20;
    struct Block {
        std::shared_ptr<PictureMemory> home;
        void* bytes = nullptr;
        size_t size = 0;
    };
    static int give(AVCodecContext* codec, AVFrame* frame, int flags);
    static void takeBack(void* opaque, uint8_t* bytes);
    bool fill(AVCodecContext& codec, AVFrame& frame);
    void* take(size_t size);
    void free(void* block, size_t size);
    void freeSpent();

    std::atomic<size_t> bytes_ = 0;
    std::mutex mutex_;
    std::map<size_t, std::vector<void*>> idle_; ///< by size
    size_t idleBytes_ = 0, mostIdle_ = usuallyIdle;
    std::vector<std::pair<void*, size_t>> spent_; ///< to be let go
};

} // namespace daylark
