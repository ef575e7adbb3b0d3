#pragma once

#include "playback/sound/SoundDevice.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <memory>
#include <mutex>
#include <vector>

namespace daylark::bench {

/// What the devices of one test share with it: all that was ever written, and what happens to them.
struct Desk {
    std::mutex mutex;
    std::vector<float> written; ///< left, of the run under way
    std::atomic<bool> present = true, lost = false;
    std::atomic<int> made = 0, starts = 0, stops = 0;
    std::atomic<double> played = 0; ///< seconds

    std::vector<float> copy() {
        const std::lock_guard lock(mutex);
        return written;
    }
    /// Seconds of the device where beeps begin.
    std::vector<double> beeps() {
        constexpr int rate = SoundDevice::samplesASecond;
        std::vector<double> found;
        const std::vector<float> samples = copy();
        size_t loudAt = 0;
        for (size_t i = 0; i < samples.size(); ++i) {
            if (std::abs(samples[i]) < 0.15f) continue;
            if (found.empty() || i - loudAt > rate / 20) found.push_back(double(i) / rate);
            loudAt = i;
        }
        return found;
    }
    [[nodiscard]] SoundDeviceMaker maker();
};

/// Plays ten milliseconds, if it has them, each time that it is asked how far it is.
class ScriptedDevice : public SoundDevice {
public:
    explicit ScriptedDevice(Desk& desk)
        : desk_(desk) {
        ++desk_.made;
    }
    bool start() override {
        const std::lock_guard lock(desk_.mutex);
        desk_.written.clear();
        desk_.played = 0;
        ++desk_.starts;
        return true;
    }
    void stop() override { ++desk_.stops; }
    qint64 room() override {
        const std::lock_guard lock(desk_.mutex);
        return qint64((desk_.played + 0.08) * SoundDevice::samplesASecond + 0.5) -
               qint64(desk_.written.size());
    }
    void write(const float* pairs, qint64 count) override {
        const std::lock_guard lock(desk_.mutex);
        for (qint64 i = 0; i < count; ++i)
            desk_.written.push_back(pairs[i * 2]);
    }
    double played() const override {
        const std::lock_guard lock(desk_.mutex);
        return desk_.played =
                   std::min(desk_.played + 0.01, double(desk_.written.size()) / SoundDevice::samplesASecond);
    }
    bool isLost() const override { return desk_.lost; }
    bool isPreferred() const override { return true; }

private:
    Desk& desk_;
};

inline SoundDeviceMaker Desk::maker() {
    return [this]() -> std::unique_ptr<SoundDevice> {
        if (!present) return nullptr;
        return std::make_unique<ScriptedDevice>(*this);
    };
}

} // namespace daylark::bench
