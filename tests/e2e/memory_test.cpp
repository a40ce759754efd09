// Peak memory of the built program.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "tests/e2e/support/program.h"

// The sanitizer's own memory would be counted too.
#ifdef __SANITIZE_ADDRESS__
static constexpr bool bSanitized = true;
#else
static constexpr bool bSanitized = false;
#endif

static constexpr int kWidth = 4000;
static constexpr int kHeight = 3000;

// Writes a 12-megapixel image row by row: a child's peak starts at its parent's, so the test must not hold it
// all.
static void WritePicture(const std::string& sFile)
{
    std::ofstream objFile(sFile, std::ios::binary);
    objFile << "P6\n" << kWidth << " " << kHeight << "\n255\n";
    std::string sRow(kWidth * 3, '\0');
    for (int y = 0; y < kHeight; ++y) {
        for (int i = 0; i < kWidth * 3; ++i)
            sRow[static_cast<std::size_t>(i)] = static_cast<char>(i / 16 + y / 7 + i * y % 5);
        objFile << sRow;
    }
}

TEST(Memory, StaysBelowTwoImagesPlusThirtyTwoMegabytes)
{
    if (bSanitized)
        GTEST_SKIP();
    constexpr std::int64_t kMost = (2 * std::int64_t{kWidth} * kHeight * 3 + 32'000'000) / 1024;
    const ScratchFolder objFolder;
    WritePicture(objFolder.sPath("a.ppm"));
    for (const std::string sOptions : {"", "-progressive ", "-sample 1x1 ", "-progressive -sample 1x1 "}) {
        const std::string sSource = objFolder.sPath("a.jpg");
        ASSERT_EQ(
            objRun({"sh", "-c", "cjpeg " + sOptions + objFolder.sPath("a.ppm") + " >" + sSource}).lStatus, 0);
        for (const char* sTarget : {"o.png", "o.bmp", "o.tif", "o.jpg"}) {
            const Outcome objOutcome = objVarnel(objFolder, {"/S", sSource, "/T", objFolder.sPath(sTarget)});
            EXPECT_TRUE(objFolder.bHas(sTarget));
            EXPECT_LT(objOutcome.lPeakKilobytes, kMost) << sOptions << sTarget;
            EXPECT_GT(objOutcome.lPeakKilobytes, kWidth * kHeight * 3 / 1024) << sOptions << sTarget;
        }
    }
}
