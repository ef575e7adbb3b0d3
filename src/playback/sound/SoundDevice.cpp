#include "playback/sound/SoundDevice.h"

#ifdef DAYLARK_PULSE
#include "playback/sound/PulseSoundDevice.h"
#endif

#include <QAudioDevice>
#include <QAudioSink>
#include <QByteArray>
#include <QIODevice>
#include <QMediaDevices>

#include <algorithm>
#include <cmath>
#include <utility>

namespace daylark {

namespace {

constexpr double deviceBuffer = 0.1; // seconds; how soon a new volume is heard

class QtSoundDevice final : public SoundDevice {
public:
    QtSoundDevice(const QAudioDevice& device, const QAudioFormat& format)
        : device_(device)
        , sink_(device, format) {
        sink_.setBufferSize(format.bytesForDuration(qint64(deviceBuffer * 1e6)));
    }

    bool start() override {
        waiting_.clear();
        stream_ = sink_.start();
        return stream_ && !isLost();
    }
    void stop() override {
        if (std::exchange(stream_, nullptr)) sink_.reset();
    }
    qint64 room() override {
        flush();
        return waiting_.isEmpty() ? std::max<qint64>(0, sink_.bytesFree() / sink_.format().bytesPerFrame())
                                  : 0;
    }
    void write(const float* pairs, qint64 count) override {
        if (sink_.format().sampleFormat() == QAudioFormat::Float) {
            waiting_.append(reinterpret_cast<const char*>(pairs), qsizetype(count * 2 * sizeof(float)));
        } else {
            for (qint64 i = 0; i < count * 2; ++i) {
                const auto sample = qint16(std::lround(pairs[i] * 32767.0f));
                waiting_.append(reinterpret_cast<const char*>(&sample), sizeof sample);
            }
        }
        flush();
    }
    double played() const override { return double(sink_.processedUSecs()) / 1e6; }
    /// A device that ran dry goes on by itself; any other error is its end.
    bool isLost() const override {
        if (!stream_) return false;
        const bool ended = sink_.error() != QAudio::NoError && sink_.error() != QAudio::UnderrunError;
        return ended || sink_.state() == QAudio::StoppedState;
    }
    bool isPreferred() const override { return QMediaDevices::defaultAudioOutput() == device_; }

private:
    void flush() {
        if (waiting_.isEmpty() || !stream_) return;
        const qint64 written = stream_->write(waiting_);
        if (written > 0) waiting_.remove(0, qsizetype(written));
    }

    const QAudioDevice device_;
    QAudioSink sink_;
    QIODevice* stream_ = nullptr; ///< sink_'s, once started
    QByteArray waiting_;          ///< for room in the device
};

} // namespace

std::unique_ptr<SoundDevice> makeDefaultSoundDevice() {
#ifdef DAYLARK_PULSE
    if (PulseServer server = connectToPulseServer(); server.isThere) return std::move(server.device);
#endif
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull()) return nullptr;
    QAudioFormat format;
    format.setSampleRate(SoundDevice::samplesASecond);
    format.setChannelCount(2);
    format.setSampleFormat(QAudioFormat::Float);
    if (!device.isFormatSupported(format)) format.setSampleFormat(QAudioFormat::Int16);
    if (!device.isFormatSupported(format)) return nullptr;
    return std::make_unique<QtSoundDevice>(device, format);
}

} // namespace daylark
