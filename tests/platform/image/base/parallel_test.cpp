// Tests of distributing work over cores.
#include "src/platform/image/base/parallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

TEST(RunParts, RunsEachPartOnceBeforeReturning)
{
    for (const std::size_t parts : {0u, 1u, 2u, 3u, 1000u}) {
        std::vector<std::atomic<int>> done(parts);

        RunParts(parts, [&](std::size_t part) { ++done[part]; });

        for (const std::atomic<int>& count : done)
            EXPECT_EQ(count, 1);
    }
}

TEST(RunParts, RethrowsExceptionAfterOtherPartsEnd)
{
    std::atomic<int> count = 0;

    EXPECT_THROW(RunParts(20,
                          [&](std::size_t part) {
                              if (part % 5 == 0)
                                  throw std::runtime_error("part");
                              ++count;
                          }),
                 std::runtime_error);

    EXPECT_EQ(count, 16);
}

TEST(NumberOfCores, IsAtLeastOne)
{
    EXPECT_GE(CoreCount(), 1u);
}
