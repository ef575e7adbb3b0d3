#include "media/index/SecondFields.h"
#include "support/FieldPictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace daylark {
namespace {

/// Packets of one field each, the upper one first, of two frames.
class SecondFieldsTest : public ::testing::Test {
protected:
    void SetUp() override {
        format.reset(avformat_alloc_context());
        stream = avformat_new_stream(format.get(), nullptr);
        stream->codecpar->codec_type = AVMEDIA_TYPE_VIDEO;
        stream->codecpar->codec_id = AV_CODEC_ID_H264;
        const std::vector<uint8_t> grey(size_t(side) * side, 128);
        const FieldPictureEncoder::Planes planes{{grey.data(), grey.data(), grey.data()}, {side, side, side}};
        FieldPictureEncoder encoder({side, side}, 1);
        const QByteArray delimiter = QByteArray::fromHex("0000000109f0");
        for (const int frame : {0, 1}) {
            const QByteArray both = encoder.encode({frame, frame == 0, true}, planes);
            const qsizetype second = both.indexOf(delimiter, delimiter.size());
            ASSERT_GT(second, 0);
            fields.push_back(both.left(second));
            fields.push_back(both.mid(second));
        }
    }
    [[nodiscard]] static bool isSecond(SecondFields& pairs, const QByteArray& field, int64_t time = AV_NOPTS_VALUE) {
        const av::PacketPtr packet(av_packet_alloc());
        if (av_new_packet(packet.get(), int(field.size())) < 0) return false;
        std::copy(field.begin(), field.end(), packet->data);
        packet->pts = time;
        return pairs.isSecond(*packet);
    }

    static constexpr int side = 64;
    av::FormatPtr format;
    AVStream* stream = nullptr;
    std::vector<QByteArray> fields; ///< upper and lower, of the first frame and of the next
};

TEST_F(SecondFieldsTest, OnlyTheOtherFieldOfTheSameTimeCompletesAPicture) {
    SecondFields pairs(*stream);
    EXPECT_FALSE(isSecond(pairs, fields[0], 0));
    EXPECT_TRUE(isSecond(pairs, fields[1]));
    EXPECT_FALSE(isSecond(pairs, fields[2], 40));
    EXPECT_TRUE(isSecond(pairs, fields[3], 40)) << "both may have the same time";
    EXPECT_FALSE(isSecond(pairs, fields[0], 80));
    EXPECT_FALSE(isSecond(pairs, fields[1], 120)) << "a time of its own: a picture of its own";
}

TEST_F(SecondFieldsTest, AFieldOfTheSameParityBeginsAnotherPicture) {
    SecondFields pairs(*stream);
    EXPECT_FALSE(isSecond(pairs, fields[0], 0));
    EXPECT_FALSE(isSecond(pairs, fields[2])) << "its lower field was lost on the way";
    EXPECT_TRUE(isSecond(pairs, fields[3])) << "which completes the second upper one";
    EXPECT_FALSE(isSecond(pairs, fields[3])) << "whole already";
    EXPECT_FALSE(isSecond(pairs, fields[1])) << "two lower ones";
    EXPECT_TRUE(isSecond(pairs, fields[2])) << "the lower one may come first";
}

} // namespace
} // namespace daylark
