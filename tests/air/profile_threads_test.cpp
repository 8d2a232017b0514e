#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "halvane/air/element_writer.h"
#include "halvane/air/finding.h"
#include "halvane/air/profile.h"

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// A frame with an element of each kind.
Bytes allElements() {
    Bytes frame;
    for (const auto& sample : halvane::testing::kElementSamples) {
        appendElement(frame, sample.id, bytesOf(sample.hex));
    }
    return frame;
}

// Copies of a profile share its neighbours, and all profiles the tables of the library.
TEST(AirProfile, IsDerivedAndCopiedInSeveralThreads) {
    const Bytes frame = allElements();
    const BssProfile profile = profileOf(frame);
    ASSERT_FALSE(profile.neighbors.empty());
    std::vector<std::thread> threads;
    std::vector<int> alike(4);
    for (int& count : alike) {
        threads.emplace_back([&profile, &frame, &count] {
            for (int i = 0; i < 20; ++i) {
                const BssProfile own = profileOf(frame);
                const BssProfile copy = profile;
                const bool isAlike =
                    own.findings == copy.findings && own.neighbors.size() == copy.neighbors.size();
                if (isAlike) ++count;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(alike, std::vector<int>(4, 20));
}

}  // namespace
