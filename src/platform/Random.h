#pragma once

#include <vector>

// The one source of random numbers, so tests can feed the draws they need.
namespace platform {

// Uniform in [0, 1). A fed value is returned before any generated one.
double Rnd();
// Seeds the generator from the clock.
void Randomize();

void FeedRandom(const std::vector<double>& values);
void ClearRandomFeed();
std::size_t FedRandomLeft();

} // namespace platform
