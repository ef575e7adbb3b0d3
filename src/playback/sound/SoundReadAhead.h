#pragma once

#include "media/sound/AudioReader.h"
#include "playback/sound/SoundOutput.h"

#include <QString>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace daylark {

/// Decodes a movie's sound, its own or another file's, some way ahead of where it is taken. Positions are
/// samples on the movie's clock, as in `AudioReader`. What is taken goes on evenly whatever happens: a
/// stretch that is not ready when its turn comes is silence, and is left out when it arrives. Any thread
/// speaks to it; no call waits for the file. `changed` comes on its own thread. Owned by the sound output;
/// the destructor ends the read under way and waits.
class SoundReadAhead {
public:
    enum class State {
        none,    ///< no movie, or one without sound
        opening, ///< not known yet
        filling, ///< has sound, too little of it yet to begin
        ready    ///< enough for the beginning of a run
    };
    SoundReadAhead(int rate, std::function<void()> changed);
    ~SoundReadAhead();
    SoundReadAhead(const SoundReadAhead&) = delete;
    SoundReadAhead& operator=(const SoundReadAhead&) = delete;

    void setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures, ///< null pictures: none
                  const MovieSound& sound);
    /// `run` tells one run from the next.
    void start(quint64 run, qint64 position); ///< what is taken next stands here
    void stop();
    /// Positions beyond the lap's end stand for its beginning again, for what is read from now on.
    void setLap(const SoundLap& lap);
    void skipTo(quint64 run, qint64 position); ///< what is taken next in that run stands here
    [[nodiscard]] State state() const;
    /// Gives the next `count` pairs of that run; silence when it is over.
    void take(quint64 run, float* pairs, qint64 count);

private:
    struct Movie {
        QString path;
        std::shared_ptr<const SampleIndex> pictures;
        MovieSound sound;
    };
    void run();
    [[nodiscard]] std::unique_ptr<AudioReader> readerOf(const Movie& movie) const;
    void open(const Movie& movie, std::unique_lock<std::mutex>& lock);
    void readSome(std::unique_lock<std::mutex>& lock);
    [[nodiscard]] bool read(qint64 position, std::vector<float>& pairs, const SoundLap& lap);
    [[nodiscard]] qint64 held() const { return qint64(pairs_.size()) / 2 - taken_; }

    const int rate_;
    const std::function<void()> changed_;
    CancelFlag cancel_ = false;

    mutable std::mutex mutex_; // guards down to the blank line
    std::condition_variable wake_;
    std::optional<Movie> movie_; ///< to be opened
    State known_ = State::none;  ///< none, opening or filling
    bool running_ = false, stopping_ = false;
    SoundLap lap_;
    quint64 taker_ = 0;        ///< the run that may take
    quint64 reading_ = 0;      ///< counts up with every change of what is to be read
    qint64 next_ = 0;          ///< position of the next pair to be taken
    std::vector<float> pairs_; ///< from taken_ on they stand at next_
    qint64 taken_ = 0;

    std::unique_ptr<AudioReader> reader_; // the thread's own
    std::thread thread_;
};

} // namespace daylark
