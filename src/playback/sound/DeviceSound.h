#pragma once

#include "playback/sound/SoundDevice.h"
#include "playback/sound/SoundOutput.h"

namespace daylark {

/// The sound output of the machine, on the device preferred at the time when a run begins. Without a device,
/// and once a device vanishes in a run, it is silent and no clock; it looks for a device anew every second
/// and comes in again where the picture is by then. Two threads of its own: one decodes ahead, one feeds the
/// device (opening which may take long). The destructor waits for both.
class DeviceSound : public SoundOutput {
public:
    explicit DeviceSound(SoundDeviceMaker makeDevice = makeDefaultSoundDevice);
    ~DeviceSound() override;

    void setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures,
                  const MovieSound& sound) override;
    void play(double seconds, float rate, Start start) override;
    void setRate(float rate) override;
    void stop() override;
    void fade() override;
    void setLap(const SoundLap& lap) override;
    void setVolume(float volume) override;
    [[nodiscard]] std::optional<double> position() const override;

private:
    class Feeder;
    std::unique_ptr<Feeder> feeder_;
};

} // namespace daylark
