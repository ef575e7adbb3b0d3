#include "media/facts/FrameRate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace daylark {
namespace {

constexpr AVRational usualRates[] = {{24000, 1001},  {24, 1},       {25, 1},  {30000, 1001}, {30, 1},
                                     {48000, 1001},  {48, 1},       {50, 1},  {60000, 1001}, {60, 1},
                                     {120000, 1001}, {120, 1},      {100, 1}, {12, 1},       {15, 1},
                                     {12000, 1001},  {15000, 1001}, {10, 1},  {72, 1},       {96, 1}};

/// Do all samples stand where this rate puts them, within the rounding of the container's clock?
bool agrees(const SampleIndex& index, AVRational rate) {
    const AVRational base{index.timeBaseNum, index.timeBaseDen};
    const double unitsPerFrame = 1.0 / (av_q2d(rate) * av_q2d(base));
    if (!(unitsPerFrame > 0.5)) return false;
    // Times cut to milliseconds and the like are one unit off at most, those that the library adds up from
    // rounded lengths a thousandth of a frame; a clock as coarse as the frames has no such slack.
    const double slack = unitsPerFrame >= 8 ? std::max(1.001, unitsPerFrame / 1000) : 0.001;
    const double first = double(index.samples.front().pts);
    for (size_t n = 0; n < index.samples.size(); ++n)
        if (std::abs(double(index.samples[n].pts) - first - double(n) * unitsPerFrame) > slack) return false;
    return true;
}

bool usable(AVRational rate) {
    return rate.num > 0 && rate.den > 0 && av_q2d(rate) < 1000 && rate.num <= 1'000'000;
}

AVRational constantRate(const SampleIndex& index, const AVStream& stream) {
    const AVRational claimed[] = {stream.avg_frame_rate, stream.r_frame_rate};
    if (index.samples.size() == 1) {
        for (const AVRational rate : claimed)
            if (usable(rate)) return rate;
        return {0, 1};
    }
    const double seconds = double(index.samples.back().pts - index.samples.front().pts) *
                           av_q2d({index.timeBaseNum, index.timeBaseDen});
    const double mean = seconds > 0 ? double(index.samples.size() - 1) / seconds : 0;
    // In a short movie several agree with rounded times: then the claim decides, if it is of a usual rate.
    // Otherwise a usual rate goes before a claim: claims made from a rounded clock come as 19001/317.
    // Some containers write it with few digits, so that 30000/1001 comes as 989/33.
    const auto means = [](AVRational claim, AVRational rate) { return std::abs(av_q2d(claim) / av_q2d(rate) - 1) < 1e-4; };
    for (const AVRational claim : claimed)
        for (const AVRational rate : usualRates)
            if (usable(claim) && means(claim, rate) && agrees(index, rate)) return rate;
    for (const AVRational rate : usualRates)
        if (std::abs(av_q2d(rate) / mean - 1) < 0.02 && agrees(index, rate)) return rate;
    for (const AVRational rate : claimed)
        if (usable(rate) && agrees(index, rate)) return rate;
    // An even spacing that nobody names.
    const qint64 gap = index.samples[1].pts - index.samples[0].pts;
    if (gap > 0 && gap <= std::numeric_limits<int>::max() / std::max(1, index.timeBaseNum)) {
        AVRational rate{};
        av_reduce(&rate.num, &rate.den, index.timeBaseDen, gap * index.timeBaseNum, 1'000'000);
        if (usable(rate) && agrees(index, rate)) return rate;
    }
    return {0, 1};
}

/// How many samples at most have one time: 1 nearly always.
qint64 longestTie(const SampleIndex& index) {
    qint64 longest = 1, tie = 1;
    for (size_t n = 1; n < index.samples.size(); ++n) {
        tie = index.samples[n].pts == index.samples[n - 1].pts ? tie + 1 : 1;
        longest = std::max(longest, tie);
    }
    return longest;
}

/// A position means one frame: those that have one time, or come to have it by rounding, share out what lies
/// before the next.
void parTies(SampleIndex& index) {
    auto& samples = index.samples;
    for (size_t n = 0; n < samples.size();) {
        size_t next = n + 1;
        while (next < samples.size() && samples[next].ticks <= samples[n].ticks)
            ++next;
        const qint64 begin = samples[n].ticks;
        const qint64 until = next < samples.size() ? samples[next].ticks : index.endTicks;
        const auto shared = qint64(next - n);
        for (qint64 i = 1; i < shared; ++i)
            samples[n + size_t(i)].ticks = std::max(begin + i, begin + (until - begin) * i / shared);
        n = next;
    }
    index.endTicks = std::max(index.endTicks, samples.back().ticks + 1);
}

/// The stream's own clock where its end fits the record's 32 bits, else the finest that does.
void setOwnClock(SampleIndex& index, qint64 end) {
    constexpr qint64 limit = std::numeric_limits<qint32>::max();
    const AVRational base{index.timeBaseNum, index.timeBaseDen};
    qint64 scale = std::min(base.den * longestTie(index), limit);
    while (scale > 1 && av_rescale(end * base.num, scale, base.den) > limit)
        scale /= 2;
    index.timeScale = qint32(scale);
    const qint64 first = index.samples.front().pts;
    for (SampleIndex::Sample& sample : index.samples)
        sample.ticks = av_rescale((sample.pts - first) * base.num, scale, base.den);
    index.endTicks = av_rescale(end * base.num, scale, base.den);
    parTies(index);
}

} // namespace

void setClock(SampleIndex& index, const AVStream& stream, qint64 lastDuration, LastFrame last) {
    if (index.samples.empty()) return;
    const AVRational rate = last == LastFrame::stands ? AVRational{0, 1} : constantRate(index, stream);
    if (rate.num > 0 && index.count() <= std::numeric_limits<qint32>::max() / rate.den) {
        index.timeScale = rate.num;
        index.step = rate.den;
        for (size_t n = 0; n < index.samples.size(); ++n)
            index.samples[n].ticks = qint64(n) * rate.den;
        index.endTicks = index.count() * rate.den;
        return;
    }
    const qint64 span = index.samples.back().pts - index.samples.front().pts;
    if (lastDuration <= 0 && index.count() > 1) lastDuration = span / (index.count() - 1);
    setOwnClock(index, span + std::max<qint64>(lastDuration, 1));
}

} // namespace daylark
