// Tests of sharing work between cores.
#include "src/platform/image/base/parallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

TEST(RunParts, DoesEachPartOnceAndReturnsWhenAllAreDone)
{
    for (const std::size_t nParts : {0u, 1u, 2u, 3u, 1000u}) {
        std::vector<std::atomic<int>> aDone(nParts);

        RunParts(nParts, [&](std::size_t nPart) { ++aDone[nPart]; });

        for (const std::atomic<int>& nDone : aDone)
            EXPECT_EQ(nDone, 1);
    }
}

TEST(RunParts, ThrowsWhatAPartThrewAfterTheOthersAreDone)
{
    std::atomic<int> nDone = 0;

    EXPECT_THROW(RunParts(20,
                          [&](std::size_t nPart) {
                              if (nPart % 5 == 0)
                                  throw std::runtime_error("part");
                              ++nDone;
                          }),
                 std::runtime_error);

    EXPECT_EQ(nDone, 16);
}

TEST(NumberOfCores, IsOneAtLeast)
{
    EXPECT_GE(nCores(), 1u);
}
