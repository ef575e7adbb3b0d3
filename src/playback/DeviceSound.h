#pragma once

#include "playback/SoundOutput.h"

namespace daylark {

/// The sound output of the machine: its default device at the time when a movie with sound is first opened or
/// a run finds the last one gone. Without a device, and once a device vanishes in a run, it is silent and no
/// clock. Two threads of its own: one decodes ahead, one feeds the device (opening which may take long). The
/// destructor waits for both.
class DeviceSound : public SoundOutput {
public:
    DeviceSound();
    ~DeviceSound() override;

    void setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures) override;
    void play(double seconds) override;
    void stop() override;
    void setVolume(float volume) override;
    [[nodiscard]] std::optional<double> position() const override;

private:
    class Feeder;
    std::unique_ptr<Feeder> feeder_;
};

} // namespace daylark
