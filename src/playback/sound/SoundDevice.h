#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

namespace daylark {

/// One sound device, fed with pairs of samples (left, right, -1 to 1) at 48 kHz. Made, called and destroyed
/// on the thread of whoever feeds it. Once lost it stays lost.
class SoundDevice {
public:
    static constexpr int samplesASecond = 48000;

    virtual ~SoundDevice() = default;
    [[nodiscard]] virtual bool start() = 0;                   ///< anew, from nothing; false: it cannot
    virtual void stop() = 0;                                  ///< what it still holds is not heard any more
    [[nodiscard]] virtual qint64 room() = 0;                  ///< pairs that it takes now
    virtual void write(const float* pairs, qint64 count) = 0; ///< no more than `room`
    [[nodiscard]] virtual double played() const = 0; ///< seconds since `start`, in whatever steps it speaks
    [[nodiscard]] virtual bool isLost() const = 0;
    [[nodiscard]] virtual bool isPreferred() const = 0; ///< still the one that the person wants to hear from
};

/// None where there is no device.
using SoundDeviceMaker = std::function<std::unique_ptr<SoundDevice>()>;

/// The machine's default device at this moment: the sound server's, which outlives its outputs, where there
/// is one; else what Qt finds.
[[nodiscard]] std::unique_ptr<SoundDevice> makeDefaultSoundDevice();

} // namespace daylark
