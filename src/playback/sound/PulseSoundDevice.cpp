#include "playback/sound/PulseSoundDevice.h"

#ifdef DAYLARK_PULSE

#include <pulse/pulseaudio.h>

#include <QCoreApplication>

#include <algorithm>
#include <chrono>

namespace daylark {

namespace {

using PulseTime = std::chrono::steady_clock;

constexpr auto answerLimit = std::chrono::milliseconds(1500);
constexpr double pulseBuffer = 0.1;       // seconds; how soon a new volume is heard
constexpr double timingInterval = 0.05;   // seconds between the server's words on how far it is ...
constexpr double longestReckoning = 0.15; // ... and how long one of them is gone by
constexpr pa_sample_spec pulseFormat{PA_SAMPLE_FLOAT32NE, SoundDevice::samplesASecond, 2};
constexpr size_t bytesAPair = 2 * sizeof(float);

struct LoopDeleter {
    void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
};
struct ContextDeleter {
    void operator()(pa_context* context) const {
        pa_context_disconnect(context);
        pa_context_unref(context);
    }
};
struct OperationDeleter {
    void operator()(pa_operation* operation) const { pa_operation_unref(operation); }
};
struct StreamDeleter {
    void operator()(pa_stream* stream) const {
        pa_stream_disconnect(stream);
        pa_stream_unref(stream);
    }
};

/// The library's work is done within the calls that come every few milliseconds while there is sound; nothing
/// of it runs on another thread.
class PulseSoundDevice final : public SoundDevice {
public:
    PulseSoundDevice()
        : loop_(pa_mainloop_new())
        , context_(pa_context_new(pa_mainloop_get_api(loop_.get()),
                                  qUtf8Printable(QCoreApplication::applicationName()))) {}
    ~PulseSoundDevice() override { stop(); }

    /// 0, or the library's number of what went wrong.
    [[nodiscard]] int connect() {
        if (pa_context_connect(context_.get(), nullptr, PA_CONTEXT_NOFLAGS, nullptr) < 0) return error();
        const auto limit = PulseTime::now() + answerLimit;
        for (;;) {
            const pa_context_state_t state = pa_context_get_state(context_.get());
            if (state == PA_CONTEXT_READY) return 0;
            if (!PA_CONTEXT_IS_GOOD(state)) return error();
            const auto left =
                std::chrono::duration_cast<std::chrono::microseconds>(limit - PulseTime::now()).count();
            if (left <= 0) return PA_ERR_TIMEOUT;
            if (pa_mainloop_prepare(loop_.get(), int(left)) < 0 || pa_mainloop_poll(loop_.get()) < 0 ||
                pa_mainloop_dispatch(loop_.get()) < 0)
                return PA_ERR_INTERNAL;
        }
    }

    bool start() override {
        stop();
        if (isLost()) return false;
        stream_.reset(pa_stream_new(context_.get(), "sound of the movie", &pulseFormat, nullptr));
        if (!stream_) return false;
        pa_buffer_attr sizes;
        sizes.maxlength = sizes.prebuf = sizes.minreq = sizes.fragsize = uint32_t(-1);
        sizes.tlength = uint32_t(pulseBuffer * samplesASecond) * uint32_t(bytesAPair);
        const auto flags = pa_stream_flags_t(PA_STREAM_ADJUST_LATENCY | PA_STREAM_AUTO_TIMING_UPDATE);
        const int code = pa_stream_connect_playback(stream_.get(), nullptr, &sizes, flags, nullptr, nullptr);
        work();
        return code == 0;
    }
    void stop() override {
        if (!stream_) return;
        timing_.reset();
        stream_.reset();
        hasPlayed_ = false;
        work();
    }
    qint64 room() override {
        work();
        if (!isStreaming()) return 0;
        const size_t bytes = pa_stream_writable_size(stream_.get());
        return bytes == size_t(-1) ? 0 : qint64(bytes / bytesAPair);
    }
    void write(const float* pairs, qint64 count) override {
        if (!isStreaming()) return;
        pa_stream_write(stream_.get(), pairs, size_t(count) * bytesAPair, nullptr, 0, PA_SEEK_RELATIVE);
        work();
    }
    double played() const override {
        work();
        if (!isStreaming()) return 0;
        askForTiming();
        // Reckoned here: the library's own interpolation runs on while the server still plays what it had
        // before, and then stands until the truth has caught up.
        const pa_timing_info* timing = pa_stream_get_timing_info(stream_.get());
        if (!timing || timing->read_index_corrupt) return 0;
        double heard = double(timing->read_index) / double(bytesAPair * samplesASecond) -
                       double(timing->sink_usec) / 1e6;
        if (timing->playing) {
            timeval now = {};
            pa_gettimeofday(&now);
            const bool later = pa_timeval_cmp(&now, &timing->timestamp) > 0;
            const double since = later ? double(pa_timeval_diff(&now, &timing->timestamp)) / 1e6 : 0;
            heard += std::min(since, longestReckoning);
        }
        hasPlayed_ |= heard > 0;
        return std::max(0.0, heard);
    }
    bool isLost() const override {
        work();
        if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(context_.get()))) return true;
        if (!stream_) return false;
        const bool isHeld = isStreaming() && hasPlayed_ && pa_stream_is_suspended(stream_.get()) > 0;
        return isHeld || !PA_STREAM_IS_GOOD(pa_stream_get_state(stream_.get()));
    }
    bool isPreferred() const override { return true; } // the server sees to it

private:
    void work() const {
        while (pa_mainloop_iterate(loop_.get(), 0, nullptr) > 0) {
        }
    }
    void askForTiming() const {
        const bool isAsked = timing_ && pa_operation_get_state(timing_.get()) == PA_OPERATION_RUNNING;
        const PulseTime::time_point now = PulseTime::now();
        if (isAsked || std::chrono::duration<double>(now - askedAt_).count() < timingInterval) return;
        timing_.reset(pa_stream_update_timing_info(stream_.get(), nullptr, nullptr));
        askedAt_ = now;
    }
    [[nodiscard]] bool isStreaming() const {
        return stream_ && pa_stream_get_state(stream_.get()) == PA_STREAM_READY;
    }
    [[nodiscard]] int error() const {
        const int code = pa_context_errno(context_.get());
        return code != 0 ? code : PA_ERR_UNKNOWN;
    }

    const std::unique_ptr<pa_mainloop, LoopDeleter> loop_; // in the order of their making
    const std::unique_ptr<pa_context, ContextDeleter> context_;
    std::unique_ptr<pa_stream, StreamDeleter> stream_;               ///< of the run under way
    mutable std::unique_ptr<pa_operation, OperationDeleter> timing_; ///< the question under way
    mutable PulseTime::time_point askedAt_;
    mutable bool hasPlayed_ = false; ///< an output that slept has woken for it
};

} // namespace

PulseServer connectToPulseServer() {
    auto device = std::make_unique<PulseSoundDevice>();
    const int code = device->connect();
    if (code == 0) return {true, std::move(device)};
    return {code != PA_ERR_CONNECTIONREFUSED && code != PA_ERR_INVALIDSERVER, nullptr};
}

} // namespace daylark

#endif
