#include "halvane/daemon/logging.h"

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

using halvane::gHalvaneLogging;
using halvane::HalvaneLogging;

// Runs in its own process, because any other test may have used the shared instance.
TEST(LoggingDeathTest, IsSharedFromFirstUseOn) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            const bool wasEmpty = gHalvaneLogging.load() == nullptr;
            const bool isShared = &HalvaneLogging::sharedSystem() == gHalvaneLogging.load();
            std::exit(wasEmpty && isShared ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(Logging, MayBeMadeBesideTheSharedInstance) {
    const HalvaneLogging own = HalvaneLogging::init();
    EXPECT_NE(&HalvaneLogging::sharedSystem(), &own);
}

TEST(Logging, IsSharedByAllThreads) {
    std::array<const HalvaneLogging*, 8> seen{};
    std::vector<std::thread> threads;
    for (auto& slot : seen) {
        threads.emplace_back([&slot] { slot = &HalvaneLogging::sharedSystem(); });
    }
    for (auto& thread : threads) thread.join();
    ASSERT_NE(gHalvaneLogging.load(), nullptr);
    for (const auto* shared : seen) EXPECT_EQ(shared, gHalvaneLogging.load());
}

}  // namespace
