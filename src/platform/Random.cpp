#include "platform/Random.h"

#include <chrono>
#include <deque>
#include <random>

namespace platform {
namespace {
std::mt19937_64& Engine() {
    static std::mt19937_64 engine{0x7e55a};
    return engine;
}
std::deque<double>& Feed() {
    static std::deque<double> feed;
    return feed;
}
} // namespace

double Rnd() {
    if (!Feed().empty()) {
        double v = Feed().front();
        Feed().pop_front();
        return v;
    }
    std::uniform_real_distribution<double> dist(0.0, 1.0);
    return dist(Engine());
}

void Randomize() {
    Engine().seed(
        static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
        static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count()));
}

void FeedRandom(const std::vector<double>& values) {
    Feed().insert(Feed().end(), values.begin(), values.end());
}

void ClearRandomFeed() {
    Feed().clear();
}

std::size_t FedRandomLeft() {
    return Feed().size();
}

} // namespace platform
