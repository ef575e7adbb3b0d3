#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include <memory>

namespace daylark {

/// How a stored picture is to be shown: first turned, then, where it is mirrored, left and right exchanged.
struct Orientation {
    int rotation = 0; ///< clockwise: 0, 90, 180, 270
    bool mirrored = false;
    [[nodiscard]] bool isTurned() const { return rotation % 180 != 0; } ///< width and height change places
    /// The shown axes that run against the stored ones.
    [[nodiscard]] bool flipsX() const { return mirrored != (rotation == 90 || rotation == 180); }
    [[nodiscard]] bool flipsY() const { return rotation == 180 || rotation == 270; }
};

/// One decoded picture, as the decoder gave it (planes, 8 to 16 bit, half, float), behind an opaque handle. Never changes
/// once made; copies share it. Any thread.
class VideoFrame {
public:
    class Data; ///< the decoder's frame; known inside media/ only

    VideoFrame() = default; ///< null
    explicit VideoFrame(std::shared_ptr<const Data> data)
        : data_(std::move(data)) {}

    [[nodiscard]] bool isNull() const { return !data_; }
    [[nodiscard]] QSize size() const; ///< coded picture in pixels, before pixel aspect and rotation
    [[nodiscard]] QSize
    displaySize() const; ///< as it is to be shown: pixel aspect and rotation applied (pixels)
    [[nodiscard]] qsizetype byteCount() const; ///< what it holds of memory
    [[nodiscard]] int bitDepth() const;        ///< of one component
    [[nodiscard]] bool isSceneLinear() const;  ///< proportional to light: a view brings it to a display
    [[nodiscard]] QString colourSpace() const; ///< by the name that the file itself gives; null: it says nothing
    [[nodiscard]] Orientation orientation() const; ///< as it is to be shown
    [[nodiscard]] const Data* data() const { return data_.get(); }

private:
    std::shared_ptr<const Data> data_;
};

} // namespace daylark
