#pragma once

#include "media/sequence/RunReader.h"
#include "picture/PictureRenderer.h"
#include "support/BarCode.h"
#include "support/PictureMaker.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace daylark::test {

using namespace Qt::StringLiterals;

/// Runs of EXR pictures with their numbers in bar codes, and their readers.
class RunFixture : public ::testing::Test {
protected:
    QString pathOf(int number) const { return folder.filePath(u"sh010.%1.exr"_s.arg(number, 4, 10, QLatin1Char('0'))); }
    void make(std::initializer_list<int> numbers) {
        for (const int number : numbers)
            writePicture(barCodePicture(pathOf(number), number));
    }
    RunAddress address(qint64 first, qint64 last, MissingPicture missing = MissingPicture::held) const {
        RunAddress address;
        address.folder = folder.path();
        address.movie.run = {u"sh010."_s, u".exr"_s, 4, false, first, last, 1};
        address.view.missing = missing;
        return address;
    }
    static std::unique_ptr<FrameReader> opened(const RunAddress& address) {
        auto reader = FrameReader::open(address.text());
        EXPECT_TRUE(reader) << reader.error().text.toStdString();
        return reader ? std::move(*reader) : nullptr;
    }
    static std::optional<int> number(FrameReader& reader, qint64 n) {
        const Result<VideoFrame> frame = reader.read(n);
        EXPECT_TRUE(frame) << n << " " << frame.error().text.toStdString();
        return frame ? readBarCode(renderFrame(*frame)) : std::nullopt;
    }
    QTemporaryDir folder;
};

} // namespace daylark::test
