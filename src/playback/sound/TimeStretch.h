#pragma once

#include <QtGlobal>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace soundtouch {
class SoundTouch;
}

namespace daylark {

/// Lets a movie's sound be heard slower or faster at its own pitch, and tells which moment of the movie each
/// pair of samples that it gives belongs to. At speed 1 the samples pass unchanged. The speed may change at
/// any time without a break: the stretched stretch begins with the very samples that would have come next,
/// and the natural one is blended in where it fits best. Stretched sound is laid together from pieces of some
/// 30 ms, so a sound in it stands within half a piece of its exact moment. One thread at a time.
class TimeStretch {
public:
    /// Writes the next pairs of the movie (left, right).
    using Source = std::function<void(float* pairs, qint64 count)>;

    TimeStretch(int samplesASecond, Source source);
    ~TimeStretch();
    TimeStretch(const TimeStretch&) = delete;
    TimeStretch& operator=(const TimeStretch&) = delete;

    void begin(qint64 position, double speed); ///< the source stands at this sample of the movie
    void setSpeed(double speed);               ///< 0.02 to 2
    void give(float* pairs, qint64 count);
    [[nodiscard]] double position() const; ///< the movie's sample that the next pair given belongs to

private:
    struct Span {
        qint64 pairs = 0;
        double speed = 1;
    };
    void startStretching();
    void returnToPlain();
    [[nodiscard]] qint64 bestEntry(qint64 around, const std::vector<float>& tail);
    void takeStretched(float* pairs, qint64 count);
    void takePlain(float* pairs, qint64 count);
    void need(qint64 until);
    void forgetBefore(qint64 position);
    [[nodiscard]] const float* inputAt(qint64 position) const {
        return input_.data() + (position - inputStart_) * 2;
    }
    [[nodiscard]] double centring() const;

    const int samplesASecond_;
    const Source source_;
    const std::unique_ptr<soundtouch::SoundTouch> stretcher_;
    std::vector<float> input_; ///< what was drawn from the source, from inputStart_ on
    qint64 inputStart_ = 0;
    double speed_ = 1;
    qint64 plain_ = 0;        ///< where reading stands at speed 1
    qint64 fed_ = 0;          ///< up to where the stretcher was fed
    double stretched_ = 0;    ///< where the next stretched pair stands
    std::deque<Span> older_;  ///< pairs that the stretcher made at earlier speeds
    std::vector<float> tail_; ///< stretched pairs that speed 1 is blended in over
    qint64 tailGiven_ = 0;
};

} // namespace daylark
