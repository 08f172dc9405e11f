#include "platform/Clock.h"
#include "platform/Random.h"

#include <gtest/gtest.h>

namespace {

TEST(Seams, TheClockCanBeSetAndRandomNumbersFed) {
    platform::SetNow(QDateTime(QDate(2026, 3, 1), QTime(23, 59, 59, 900)));
    EXPECT_EQ(platform::Now().time(), QTime(23, 59, 59));
    EXPECT_NEAR(platform::SecondsSinceMidnight(), 86399.9, 1e-6);
    platform::AdvanceClock(200);
    EXPECT_EQ(platform::Today(), QDate(2026, 3, 2));
    platform::UseSystemClock();
    EXPECT_FALSE(platform::ClockIsSet());

    // Fed random numbers come first, then generated ones stay in range.
    platform::FeedRandom({0.25, 0.999});
    EXPECT_EQ(platform::Rnd(), 0.25);
    EXPECT_EQ(platform::Rnd(), 0.999);
    EXPECT_EQ(platform::FedRandomLeft(), 0u);
    platform::Randomize();
    for (int i = 0; i < 1000; ++i) {
        const double r = platform::Rnd();
        ASSERT_GE(r, 0.0);
        ASSERT_LT(r, 1.0);
    }
}

} // namespace
