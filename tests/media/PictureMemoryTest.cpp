#include "media/decode/PictureMemory.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace daylark {
namespace {

/// What a decoder finds in the memory of its next picture, the one before having been this bright.
std::vector<int> foundAfter(AVCodecID id, AVPixelFormat format) {
    const auto memory = std::make_shared<PictureMemory>();
    const AVCodec* decoder = avcodec_find_decoder(id);
    const av::CodecPtr codec(avcodec_alloc_context3(decoder));
    codec->width = codec->coded_width = 100;
    codec->height = codec->coded_height = 50;
    codec->pix_fmt = format;
    memory->serve(*codec);
    const auto taken = [&] {
        av::FramePtr frame(av_frame_alloc());
        frame->width = 100;
        frame->height = 50;
        frame->format = format;
        EXPECT_EQ(codec->get_buffer2(codec.get(), frame.get(), 0), 0);
        return frame;
    };
    const uint8_t* before = nullptr;
    {
        const av::FramePtr frame = taken();
        before = frame->data[0];
        for (int plane = 0; plane < 3; ++plane)
            std::fill_n(frame->data[plane], frame->linesize[plane] * 20, uint8_t(200));
    }
    const av::FramePtr next = taken();
    EXPECT_EQ(next->data[0], before) << "the same block";
    std::vector<int> found;
    const bool deep = av_pix_fmt_desc_get(format)->comp[0].depth > 8;
    for (int plane = 0; plane < 3; ++plane)
        for (const int at : {0, 7 * next->linesize[plane] + 20}) {
            const uint8_t* sample = next->data[plane] + at;
            found.push_back(deep ? sample[0] | sample[1] << 8 : sample[0]);
        }
    return found;
}

TEST(PictureMemoryTest, WhatADecoderLeavesUnfilledWithoutAWordShowsNoOlderPicture) {
    EXPECT_EQ(foundAfter(AV_CODEC_ID_HEVC, AV_PIX_FMT_YUV420P), std::vector<int>({16, 16, 128, 128, 128, 128}));
    EXPECT_EQ(foundAfter(AV_CODEC_ID_HEVC, AV_PIX_FMT_YUV422P10),
              std::vector<int>({64, 64, 512, 512, 512, 512}));
}

} // namespace
} // namespace daylark
