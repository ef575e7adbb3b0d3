#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace daylark::bench {

/// Milliseconds a call: the median of seven tenths of a second's worth of calls, at least five.
inline double medianMilliseconds(const std::function<void()>& work) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> times;
    work();
    const auto end = Clock::now() + std::chrono::milliseconds(700);
    while (Clock::now() < end || times.size() < 5) {
        const auto start = Clock::now();
        work();
        times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    std::nth_element(times.begin(), times.begin() + std::ptrdiff_t(times.size() / 2), times.end());
    return times[times.size() / 2];
}

} // namespace daylark::bench
