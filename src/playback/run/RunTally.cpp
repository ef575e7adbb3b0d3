#include "playback/run/RunTally.h"

#include <algorithm>

namespace daylark {

namespace {

constexpr qint64 tallySecond = 1'000'000'000;

} // namespace

void RunTally::begin(qint64 now) {
    *this = {};
    began_ = now;
}

void RunTally::show(qint64 now) {
    ++shown_;
    moments_.push_back(now);
    while (now - moments_.front() > tallySecond)
        moments_.pop_front();
}

double RunTally::rate(qint64 now) const {
    const auto recent = std::count_if(moments_.begin(), moments_.end(),
                                      [now](qint64 moment) { return now - moment < tallySecond; });
    const qint64 window = std::clamp<qint64>(now - began_, 1, tallySecond);
    // Too short a time says nothing yet.
    return window < tallySecond / 10 ? 0 : double(recent) * double(tallySecond) / double(window);
}

} // namespace daylark
