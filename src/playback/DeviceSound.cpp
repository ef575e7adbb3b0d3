#include "playback/DeviceSound.h"

#include "playback/SoundReadAhead.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QByteArray>
#include <QIODevice>
#include <QMediaDevices>
#include <QObject>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <vector>

namespace daylark {

namespace {

using SoundTime = std::chrono::steady_clock;

constexpr int soundRate = 48000;      // samples a second
constexpr double deviceBuffer = 0.06; // seconds; how soon a new volume is heard
constexpr double startPatience = 0.3; // seconds that a picture waits for its sound to begin
constexpr double stallPatience = 1.5; // seconds without progress that make a device a lost one
constexpr double deviceStep = 0.03;   // seconds; devices tell their progress in steps up to this long
constexpr int lookEveryMilliseconds = 10;

double secondsSince(SoundTime::time_point time) {
    return std::chrono::duration<double>(SoundTime::now() - time).count();
}

/// A device that ran dry goes on by itself; any other error is its end.
bool isLost(const QAudioSink& sink) {
    const bool ended = sink.error() != QAudio::NoError && sink.error() != QAudio::UnderrunError;
    return ended || sink.state() == QAudio::StoppedState;
}

} // namespace

/// Lives on the thread that feeds the device; what the interface thread calls is told apart below.
class DeviceSound::Feeder : public QObject {
public:
    Feeder();
    ~Feeder() override;

    // Interface thread
    void setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures);
    void play(double seconds);
    void stop();
    std::optional<double> position() const;
    std::atomic<float> volume_ = 0.5f;

private:
    void post() { QMetaObject::invokeMethod(this, &Feeder::look, Qt::QueuedConnection); }
    void look();
    void findDevice();
    void begin();
    void halt();
    void turn();
    void feed();
    void follow();
    void giveUp();

    mutable std::mutex mutex_; // guards down to the blank line
    quint64 run_ = 0;
    bool wanted_ = false;         ///< the run is to be heard
    bool failed_ = false;         ///< and cannot be
    double runStart_ = 0;         ///< seconds of the movie
    SoundTime::time_point asked_; ///< when the run was asked for
    std::optional<double> heard_; ///< seconds of the movie heard at heardAt_
    SoundTime::time_point heardAt_;

    quint64 sinkRun_ = 0; // this thread's own, as is what follows
    double sinkStart_ = 0;
    bool sounding_ = false;
    double lastProcessed_ = -1;
    SoundTime::time_point progressAt_;
    std::unique_ptr<QAudioSink> sink_;
    QIODevice* device_ = nullptr; ///< sink_'s, while sounding_
    std::unique_ptr<QTimer> timer_;
    std::vector<float> pairs_;
    QByteArray waiting_; ///< for room in the device
    float gain_ = 0;

    QThread thread_;
    SoundReadAhead readAhead_; // last: its thread ends before what it speaks to
};

DeviceSound::Feeder::Feeder()
    : readAhead_(soundRate, [this] { post(); }) {
    moveToThread(&thread_);
    thread_.setObjectName(QStringLiteral("sound"));
    thread_.start();
}

DeviceSound::Feeder::~Feeder() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            halt();
            sink_.reset();
            timer_.reset();
        },
        Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
}

void DeviceSound::Feeder::setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures) {
    stop();
    readAhead_.setMovie(path, std::move(pictures));
}

void DeviceSound::Feeder::play(double seconds) {
    quint64 run = 0;
    {
        const std::lock_guard lock(mutex_);
        run = ++run_;
        wanted_ = true;
        failed_ = false;
        runStart_ = seconds;
        asked_ = SoundTime::now();
        heard_.reset();
    }
    readAhead_.start(run, std::llround(seconds * soundRate));
    post();
}

void DeviceSound::Feeder::stop() {
    {
        const std::lock_guard lock(mutex_);
        if (!wanted_) return;
        ++run_;
        wanted_ = false;
        heard_.reset();
    }
    readAhead_.stop();
    post();
}

std::optional<double> DeviceSound::Feeder::position() const {
    const bool hasSound = readAhead_.state() != SoundReadAhead::State::none;
    const std::lock_guard lock(mutex_);
    if (!wanted_ || failed_ || !hasSound) return std::nullopt;
    if (heard_) return std::max(runStart_, *heard_ + std::min(secondsSince(heardAt_), deviceStep));
    if (secondsSince(asked_) < startPatience) return runStart_;
    return std::nullopt;
}

/// Brings the device to what is wanted now.
void DeviceSound::Feeder::look() {
    const SoundReadAhead::State state = readAhead_.state();
    const bool hasSound = state == SoundReadAhead::State::filling || state == SoundReadAhead::State::ready;
    quint64 run = 0;
    bool wanted = false;
    {
        const std::lock_guard lock(mutex_);
        run = run_;
        wanted = wanted_ && !failed_;
    }
    if (run != sinkRun_) {
        halt();
        sinkRun_ = run;
    }
    if (hasSound && !sink_) findDevice();
    if (!wanted || sounding_) return;
    if (hasSound && !sink_) return giveUp();
    if (state == SoundReadAhead::State::ready) begin();
}

void DeviceSound::Feeder::findDevice() {
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull()) return;
    QAudioFormat format;
    format.setSampleRate(soundRate);
    format.setChannelCount(2);
    format.setSampleFormat(QAudioFormat::Float);
    if (!device.isFormatSupported(format)) format.setSampleFormat(QAudioFormat::Int16);
    if (!device.isFormatSupported(format)) return;
    sink_ = std::make_unique<QAudioSink>(device, format);
    sink_->setBufferSize(format.bytesForDuration(qint64(deviceBuffer * 1e6)));
}

void DeviceSound::Feeder::begin() {
    double late = 0;
    {
        const std::lock_guard lock(mutex_);
        if (run_ != sinkRun_) return; // a newer one is on its way here
        late = std::max(0.0, secondsSince(asked_) - startPatience);
        runStart_ += late; // the picture did not wait that long
        sinkStart_ = runStart_;
    }
    std::vector<float> missed(size_t(late * soundRate) * 2);
    readAhead_.take(sinkRun_, missed.data(), qint64(missed.size() / 2));
    device_ = sink_->start();
    if (!device_ || isLost(*sink_)) return giveUp();
    waiting_.clear();
    gain_ = volume_;
    feed();
    sounding_ = true;
    lastProcessed_ = -1;
    progressAt_ = SoundTime::now();
    if (!timer_) {
        timer_ = std::make_unique<QTimer>();
        timer_->setTimerType(Qt::PreciseTimer);
        connect(timer_.get(), &QTimer::timeout, this, &Feeder::turn);
    }
    timer_->start(lookEveryMilliseconds);
}

void DeviceSound::Feeder::halt() {
    if (timer_) timer_->stop();
    if (std::exchange(sounding_, false)) sink_->reset();
}

/// The run stays silent; the next one looks for a device anew.
void DeviceSound::Feeder::giveUp() {
    if (timer_) timer_->stop();
    sounding_ = false;
    sink_.reset();
    const std::lock_guard lock(mutex_);
    if (run_ != sinkRun_) return;
    failed_ = true;
    heard_.reset();
}

void DeviceSound::Feeder::turn() {
    feed();
    follow();
}

/// Fills what room the device has. Written here rather than drawn by the device, which takes whole periods
/// only and never begins where its buffer is not a multiple of them.
void DeviceSound::Feeder::feed() {
    const bool isFloat = sink_->format().sampleFormat() == QAudioFormat::Float;
    if (waiting_.isEmpty()) {
        const qint64 count = sink_->bytesFree() / sink_->format().bytesPerFrame();
        if (count <= 0) return;
        pairs_.resize(size_t(count) * 2);
        readAhead_.take(sinkRun_, pairs_.data(), count);
        const float volume = volume_;
        for (float& value : pairs_) {
            gain_ += (volume - gain_) * 0.002f; // a volume that jumps clicks
            value = std::clamp(value * gain_, -1.0f, 1.0f);
        }
        if (isFloat) {
            waiting_.append(reinterpret_cast<const char*>(pairs_.data()),
                            qsizetype(pairs_.size() * sizeof(float)));
        } else {
            for (const float value : pairs_) {
                const auto sample = qint16(std::lround(value * 32767.0f));
                waiting_.append(reinterpret_cast<const char*>(&sample), sizeof sample);
            }
        }
    }
    const qint64 written = device_->write(waiting_);
    if (written > 0) waiting_.remove(0, qsizetype(written));
}

/// Compares the device's word on how far it is with the time gone by, and follows it softly: devices speak in
/// steps.
void DeviceSound::Feeder::follow() {
    const SoundTime::time_point now = SoundTime::now();
    const double processed = double(sink_->processedUSecs()) / 1e6;
    if (isLost(*sink_)) return giveUp();
    if (processed > lastProcessed_) {
        lastProcessed_ = processed;
        progressAt_ = now;
    } else if (secondsSince(progressAt_) > stallPatience) {
        return giveUp();
    }
    if (processed <= 0) return;
    const std::lock_guard lock(mutex_);
    if (run_ != sinkRun_) return;
    const double said = sinkStart_ + processed;
    constexpr double jump = 0.06, share = 0.05;
    double assumed = heard_ ? *heard_ + std::chrono::duration<double>(now - heardAt_).count() : said;
    assumed = std::min(assumed, said + deviceStep); // a device that has not begun yet, or stutters
    const double error = said - assumed;
    heard_ = error > jump ? said : assumed + share * error;
    heardAt_ = now;
}

DeviceSound::DeviceSound()
    : feeder_(std::make_unique<Feeder>()) {}

DeviceSound::~DeviceSound() = default;

void DeviceSound::setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures) {
    feeder_->setMovie(path, std::move(pictures));
}
void DeviceSound::play(double seconds) {
    feeder_->play(seconds);
}
void DeviceSound::stop() {
    feeder_->stop();
}
void DeviceSound::setVolume(float volume) {
    feeder_->volume_ = std::clamp(volume, 0.0f, 1.0f);
}
std::optional<double> DeviceSound::position() const {
    return feeder_->position();
}

} // namespace daylark
