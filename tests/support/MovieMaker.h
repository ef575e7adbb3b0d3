#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

#include <functional>
#include <map>
#include <optional>
#include <vector>

class QPainter;

namespace daylark {

/// One encoded sample on its way into the container, for movies that are to be broken in a known place.
struct EncodedSample {
    int place = 0;  ///< in file order, from 0
    int number = 0; ///< of the frame; 0: a picture that is only referred to
    bool key = false;
    QByteArray data;  ///< may be changed
    bool keep = true; ///< false: never gets into the file
};

/// A movie to make. The container follows from the file name's extension. Frame numbers count from 1, as in
/// the viewer.
struct MovieSpec {
    QString path;
    QString encoder =
        QStringLiteral("libx264"); ///< FFmpeg's name: "prores_ks", "mjpeg", "mpeg2video", "libvpx-vp9", ...;
                                   ///< "field pictures": H.264 with each field coded for itself
    QSize size{320, 180};
    int rateNum = 24, rateDen = 1; ///< frames a second
    int frames = 48;
    int groupSize = 12;
    int bFrames = 2;
    QString pixelFormat = QStringLiteral("yuv420p");
    std::map<QString, QString> encoderOptions; ///< private options, e.g. {"preset", "ultrafast"}
    std::map<QString, QString> muxerOptions;
    bool sound = false; ///< a quiet tone with a beep at every second, 48 kHz stereo
    QString timecode;   ///< "01:00:00:00": a timecode track where the container has one
    std::vector<qint64>
        ticks; ///< own presentation times in 1/rateNum seconds (variable rate, late start); empty: even
    int pixelAspectNum = 1, pixelAspectDen = 1;
    bool barCode = true;
    int rotation = 0; ///< 0, 90, 180 or 270: degrees clockwise that a player has to turn the coded picture
    bool mirrored = false; ///< and then to exchange left and right
    bool interlaced = false; ///< coded as fields, the upper one first; the picture doesn't move between them
    std::function<void(EncodedSample& sample)>
        onSample; ///< sees every sample of the picture; none: all as encoded
    /// Paints a frame's picture before the bar code; none: a moving pattern.
    std::function<void(QPainter& painter, int number)> paint;
};

/// Encodes it for real. Errors: an encoder that isn't there, a file that can't be written.
[[nodiscard]] Result<void> makeMovie(const MovieSpec& spec);

/// The picture of a frame as it goes into the encoder: turned against `rotation`, with alpha where the pixel
/// format has some.
[[nodiscard]] QImage paintFrame(const MovieSpec& spec, int number);

/// The frame number drawn as a bar code into the topmost eighth of a picture of any size; none when there is
/// no valid one.
[[nodiscard]] std::optional<int> readBarCode(const QImage& picture);

} // namespace daylark
