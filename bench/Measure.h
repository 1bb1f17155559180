#pragma once

#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>
#include <vector>

/// What the benches measure with.
namespace FendaMaestros::bench {

struct Spent {
    double processor = 0, elapsed = 0;  ///< milliseconds
};

class Watch {
public:
    Spent spent() const {
        const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start_;
        return {static_cast<double>(std::clock() - processor_) * 1000 / CLOCKS_PER_SEC, elapsed.count()};
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::clock_t processor_ = std::clock();
};

inline double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// The median of `rounds` rounds of `each` calls, for one call.
inline Spent measure(int rounds, int each, const std::function<void()>& call) {
    std::vector<double> processor, elapsed;
    for (int round = 0; round < rounds; ++round) {
        const Watch watch;
        for (int i = 0; i < each; ++i) call();
        processor.push_back(watch.spent().processor / each);
        elapsed.push_back(watch.spent().elapsed / each);
    }
    return {median(processor), median(elapsed)};
}

}  // namespace FendaMaestros::bench
