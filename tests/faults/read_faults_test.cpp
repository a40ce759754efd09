// Every read of a source fails in turn: nothing may be taken for the whole picture then.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/e2e/support/picture.h"
#include "tests/faults/support/save_check.h"
#include "tests/support/paths.h"

using testing::IsEmpty;

namespace
{

class ReadFaults : public testing::TestWithParam<const char*>
{
};

// A source of this format, made from noise.
std::string Source(const std::string& extension)
{
    const ScratchFolder folder;
    unsigned seed = 1;
    folder.sWrite("a.bmp", sBmpOf(objPicture(200, 150, [&](int, int) {
                      Rgb pixel{};
                      for (int& level : pixel) {
                          seed = seed * 1664525 + 1013904223;
                          level = static_cast<int>(seed >> 24);
                      }
                      return pixel;
                  })));
    if (extension == "bmp")
        return folder.sRead("a.bmp");
    objVarnel(folder, {"/S", folder.sPath("a.bmp"), "/T", folder.sPath("b." + extension)});
    return folder.sRead("b." + extension);
}

}  // namespace

TEST_P(ReadFaults, GiveWholePictureOrNone)
{
    const std::string extension = GetParam();
    const std::string source_name = "work/in." + extension;
    const std::string source = Source(extension);
    ASSERT_NE(source, "");
    const auto arguments = [&](const ScratchFolder& folder) -> std::vector<std::string> {
        return {"/S", folder.sPath(source_name),       "/T", folder.sPath("work/out.ras"),
                "/L", folder.sPath("work/report.txt"), "/1", "1"};
    };
    const ScratchFolder first;
    first.sWrite(source_name, source);
    objVarnel(first, arguments(first));
    ExpectedSave expected{source_name, source, "work/out.ras", std::nullopt, first.sRead("work/out.ras")};
    ASSERT_NE(expected.new_content, "");
    Scenario scenario;
    scenario.prepare = [&](const ScratchFolder& folder) {
        folder.sWrite(source_name, source);
        folder.sWrite("settings/VL_SearchHistory.INI",
                      "[frmMain]\nbDeleteOriginalFileAfterProcessing=TRUE\n");
    };
    scenario.command = [&](const ScratchFolder& folder) { return VarnelCommand(arguments(folder)); };
    scenario.findings = [&](const ScratchFolder& folder, const FaultedRun& run) {
        return CheckSave(folder, expected, run);
    };

    const Sweep sweep = FailEachCall(scenario, {"read", "5"});

    EXPECT_THAT(sweep.findings, IsEmpty());
    EXPECT_GE(sweep.hits, 2u);
}

INSTANTIATE_TEST_SUITE_P(Formats, ReadFaults,
                         testing::Values("jpg", "bmp", "tif", "gif", "emf", "j2k", "pcx", "png", "ras", "tga",
                                         "wmf"),
                         [](const auto& format) { return std::string(format.param); });
