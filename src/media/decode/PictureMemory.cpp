#include "media/decode/PictureMemory.h"

#include <algorithm>
#include <cstdlib>

#include <sys/mman.h>

namespace daylark {
namespace {

constexpr size_t pageSize = 4096, largePage = size_t(2) << 20;
constexpr size_t slack = 64; // decoders' vector code reads and writes a little beyond a plane

size_t roundedUp(size_t value, size_t unit) {
    return (value + unit - 1) / unit * unit;
}

/// Blocks take whole pages, and whole large ones where that adds little.
size_t blockSizeFor(size_t bytes) {
    const size_t size = roundedUp(bytes, pageSize), large = roundedUp(bytes, largePage);
    return large - size <= size / 16 ? large : size;
}

/// Memory that is there already, in large pages as far as they go: page by page the system takes a good part of the time in
/// which a picture is decoded.
void* newBlock(size_t size) {
    constexpr int access = PROT_READ | PROT_WRITE, kind = MAP_PRIVATE | MAP_ANONYMOUS;
#ifdef MADV_POPULATE_WRITE
    if (size >= largePage) {
        void* const mapped = mmap(nullptr, size + largePage, access, kind, -1, 0);
        if (mapped == MAP_FAILED) return nullptr;
        auto* const begin = static_cast<uint8_t*>(mapped);
        const auto address = reinterpret_cast<uintptr_t>(begin);
        uint8_t* const block = begin + (roundedUp(address, largePage) - address);
        if (block > begin) munmap(begin, size_t(block - begin));
        munmap(block + size, largePage - size_t(block - begin));
        madvise(block, size, MADV_HUGEPAGE); // where the system has none, small ones do
        madvise(block, size, MADV_POPULATE_WRITE);
        return block;
    }
#endif
    void* const block = mmap(nullptr, size, access, kind | MAP_POPULATE, -1, 0);
    return block == MAP_FAILED ? nullptr : block;
}

void fillWith(uint8_t* bytes, size_t size, int value, int depth) {
    if (depth <= 8) {
        std::fill_n(bytes, size, uint8_t(value));
        return;
    }
    std::fill_n(reinterpret_cast<uint16_t*>(bytes), size / 2, uint16_t(value << (depth - 8)));
}

/// The one decoder here that leaves what damage took as it finds it, without a word: an older picture must not
/// stand there.
void makeBlack(uint8_t* bytes, const size_t (&sizes)[4], const size_t (&starts)[4],
               const AVPixFmtDescriptor& format) {
    constexpr int black = 16, noColour = 128;
    const bool isRgb = format.flags & AV_PIX_FMT_FLAG_RGB;
    for (size_t plane = 0; plane < 4 && sizes[plane] > 0; ++plane)
        fillWith(bytes + starts[plane], sizes[plane], isRgb ? 0 : plane == 0 ? black : noColour,
                 format.comp[0].depth);
}

} // namespace

PictureMemory::~PictureMemory() {
    for (const auto& [size, blocks] : idle_)
        for (void* block : blocks)
            munmap(block, size);
    for (const auto& [block, size] : spent_)
        munmap(block, size);
}

void PictureMemory::serve(AVCodecContext& codec) {
    if (!codec.codec || !(codec.codec->capabilities & AV_CODEC_CAP_DR1)) return;
    codec.opaque = this;
    codec.get_buffer2 = &PictureMemory::give;
#if LIBAVCODEC_VERSION_MAJOR < 60
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    codec.thread_safe_callbacks = 1;
#pragma GCC diagnostic pop
#endif
}

int PictureMemory::give(AVCodecContext* codec, AVFrame* frame, int flags) {
    if (static_cast<PictureMemory*>(codec->opaque)->fill(*codec, *frame)) return 0;
    return avcodec_default_get_buffer2(codec, frame, flags);
}

/// One block a picture, the planes one after the other. Formats with a palette or of the graphics processor
/// are left to the library.
bool PictureMemory::fill(AVCodecContext& codec, AVFrame& frame) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(AVPixelFormat(frame.format));
    if (!format || (format->flags & (AV_PIX_FMT_FLAG_PAL | AV_PIX_FMT_FLAG_HWACCEL))) return false;
    int width = frame.width, height = frame.height;
    int alignment[AV_NUM_DATA_POINTERS] = {};
    avcodec_align_dimensions2(&codec, &width, &height, alignment);
    // Wider until every plane's lines are aligned: the planes' lines then stay in proportion.
    constexpr int lineUnit = 64;
    int lines[4] = {};
    for (bool aligned = false; !aligned; width += width & -width) {
        if (width <= 0 || av_image_fill_linesizes(lines, AVPixelFormat(frame.format), width) < 0)
            return false;
        aligned =
            std::all_of(std::begin(lines), std::end(lines), [](int line) { return line % lineUnit == 0; });
    }
    const ptrdiff_t lineSizes[] = {lines[0], lines[1], lines[2], lines[3]};
    size_t sizes[4] = {};
    if (av_image_fill_plane_sizes(sizes, AVPixelFormat(frame.format), height, lineSizes) < 0) return false;
    size_t total = 0, starts[4] = {};
    for (int plane = 0; plane < 4 && sizes[plane] > 0; ++plane) {
        starts[plane] = total;
        total += roundedUp(sizes[plane] + slack, lineUnit);
    }
    total = blockSizeFor(total);
    auto block = std::make_unique<Block>(Block{shared_from_this(), take(total), total});
    if (!block->bytes) return false;
    auto* bytes = static_cast<uint8_t*>(block->bytes);
    if (codec.codec_id == AV_CODEC_ID_HEVC) makeBlack(bytes, sizes, starts, *format);
    frame.buf[0] = av_buffer_create(bytes, total, &PictureMemory::takeBack, block.get(), 0);
    if (!frame.buf[0]) {
        free(block->bytes, total);
        return false;
    }
    static_cast<void>(block.release()); // takeBack frees it
    for (int plane = 0; plane < 4 && sizes[plane] > 0; ++plane) {
        frame.data[plane] = bytes + starts[plane];
        frame.linesize[plane] = lines[plane];
    }
    frame.extended_data = frame.data;
    return true;
}

AVBufferRef* PictureMemory::block(size_t bytes) {
    const size_t size = blockSizeFor(std::max<size_t>(bytes + slack, 1));
    auto block = std::make_unique<Block>(Block{shared_from_this(), take(size), size});
    if (!block->bytes) return nullptr;
    AVBufferRef* buffer =
        av_buffer_create(static_cast<uint8_t*>(block->bytes), size, &PictureMemory::takeBack, block.get(), 0);
    if (!buffer) {
        free(block->bytes, size);
        return nullptr;
    }
    static_cast<void>(block.release()); // takeBack frees it
    return buffer;
}

void* PictureMemory::take(size_t size) {
    {
        const std::lock_guard lock(mutex_);
        const auto kept = idle_.find(size);
        if (kept != idle_.end() && !kept->second.empty()) {
            void* block = kept->second.back();
            kept->second.pop_back();
            idleBytes_ -= size;
            return block;
        }
    }
    freeSpent();
    void* block = newBlock(size);
    if (block) bytes_ += size;
    return block;
}

void PictureMemory::free(void* block, size_t size) {
    munmap(block, size);
    bytes_ -= size;
}

void PictureMemory::freeSpent() {
    std::vector<std::pair<void*, size_t>> spent; // freed outside the lock
    {
        const std::lock_guard lock(mutex_);
        spent.swap(spent_);
    }
    for (const auto& [block, size] : spent)
        free(block, size);
}

void PictureMemory::limitIdle(size_t bytes) {
    {
        const std::lock_guard lock(mutex_);
        mostIdle_ = std::min(bytes, usuallyIdle);
        for (auto& [size, blocks] : idle_)
            for (; idleBytes_ > mostIdle_ && !blocks.empty(); blocks.pop_back()) {
                spent_.emplace_back(blocks.back(), size);
                idleBytes_ -= size;
            }
    }
    freeSpent();
}

void PictureMemory::takeBack(void* opaque, uint8_t*) {
    const std::unique_ptr<Block> block(static_cast<Block*>(opaque));
    PictureMemory& home = *block->home;
    const std::lock_guard lock(home.mutex_);
    if (home.idleBytes_ + block->size <= home.mostIdle_ || home.idle_[block->size].empty()) {
        home.idle_[block->size].push_back(block->bytes);
        home.idleBytes_ += block->size;
    } else {
        home.spent_.emplace_back(block->bytes, block->size);
    }
}

} // namespace daylark
