// Every system call of an append to a TIFF fails in turn.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "tests/e2e/support/picture.h"
#include "tests/faults/support/save_check.h"
#include "tests/support/paths.h"

using testing::Contains;
using testing::IsEmpty;

namespace
{

constexpr const char* kDiskError = "5";    // EIO
constexpr const char* kDiskFull = "28";    // ENOSPC
constexpr const char* kNotAllowed = "13";  // EACCES
constexpr const char* kDeleteSources = "[frmMain]\nbDeleteOriginalFileAfterProcessing=TRUE\n";

// A picture of noise, so that a page takes several writes.
std::string NoiseBmp(unsigned seed)
{
    return sBmpOf(objPicture(200, 150, [&](int, int) {
        Rgb pixel{};
        for (int& level : pixel) {
            seed = seed * 1664525 + 1013904223;
            level = static_cast<int>(seed >> 24);
        }
        return pixel;
    }));
}

std::vector<std::string> AppendArguments(const ScratchFolder& folder, const std::string& source,
                                         const std::string& pages = "*")
{
    return {"/S", folder.sPath(source),
            "/T", folder.sPath("work/all.tif"),
            "/1", pages,
            "/2", "1",
            "/3", "TRUE",
            "/L", folder.sPath("work/report.txt")};
}

/// The file of some pages, as Varnel appends them.
std::string TiffOf(const std::vector<std::string>& pictures)
{
    const ScratchFolder folder;
    for (const std::string& picture : pictures) {
        folder.sWrite("work/page.bmp", picture);
        objVarnel(folder, AppendArguments(folder, "work/page.bmp"));
    }
    return folder.sRead("work/all.tif");
}

/// Appends the source, of the given content, to a TIFF of two pages.
Scenario AppendOf(const std::string& source_name, const std::string& source, const std::string& new_content,
                  const std::vector<std::string>& partial_contents = {})
{
    const std::string old_content = TiffOf({NoiseBmp(1), NoiseBmp(2)});
    EXPECT_NE(old_content, "");
    EXPECT_GT(new_content.size(), old_content.size());
    Scenario scenario;
    scenario.prepare = [=](const ScratchFolder& folder) {
        folder.sWrite(source_name, source);
        folder.sWrite("work/all.tif", old_content);
        folder.sWrite("settings/VL_SearchHistory.INI", kDeleteSources);
    };
    scenario.command = [=](const ScratchFolder& folder) {
        return VarnelCommand(AppendArguments(folder, source_name));
    };
    ExpectedSave expected{source_name, source, "work/all.tif", old_content, new_content};
    expected.partial_contents = partial_contents;
    scenario.findings = [=](const ScratchFolder& folder, const FaultedRun& run) {
        return CheckSave(folder, expected, run);
    };
    return scenario;
}

void ExpectNoFindings(const Scenario& scenario, const std::vector<Fault>& faults)
{
    std::vector<std::string> kinds;
    FailOneCall(scenario, {"any", kDiskError}, 0, &kinds);
    for (const char* kind : {"create", "write", "close", "sync", "mode", "rename", "read", "remove"})
        EXPECT_THAT(kinds, Contains(kind));
    for (const Fault& fault : faults) {
        const Sweep sweep = FailEachCall(scenario, fault);
        EXPECT_THAT(sweep.findings, IsEmpty());
        EXPECT_GE(sweep.hits, 1u) << fault.call << " " << fault.action;
    }
}

std::size_t PagesIn(const std::string& file)
{
    const Outcome pages = objRun({ImageMagick("identify"), "-format", "%p\n", file});
    EXPECT_EQ(pages.sErrors, "");
    return static_cast<std::size_t>(std::count(pages.sOutput.begin(), pages.sOutput.end(), '\n'));
}

}  // namespace

TEST(AppendFaults, LeaveOldOrNewTiffWhenPictureIsAdded)
{
    const std::string added = NoiseBmp(3);

    ExpectNoFindings(AppendOf("work/in.bmp", added, TiffOf({NoiseBmp(1), NoiseBmp(2), added})),
                     {{"any", kDiskError}, {"any", "kill"}, {"write", "short"}, {"write", kDiskFull, true}});
}

TEST(AppendFaults, LeaveOldOrNewTiffWhenPagesAreAdded)
{
    const std::string old1 = NoiseBmp(1), old2 = NoiseBmp(2), new1 = NoiseBmp(3), new2 = NoiseBmp(4);

    ExpectNoFindings(AppendOf("work/in.tif", TiffOf({new1, new2}), TiffOf({old1, old2, new1, new2}),
                              {TiffOf({old1, old2, new1}), TiffOf({old1, old2, new2})}),
                     {{"read", kDiskError},
                      {"write", kDiskFull},
                      {"create", kNotAllowed},
                      {"create", kNotAllowed, true},
                      {"sync", kDiskError},
                      {"close", kDiskError},
                      {"rename", kDiskError}});
}

TEST(Append, LeavesFilesAloneThatLookLikeOldTemporaries)
{
    const ScratchFolder folder;
    folder.sWrite("work/in.bmp", NoiseBmp(2));
    folder.sWrite("work/all.tif", TiffOf({NoiseBmp(1)}));
    const std::string other = folder.sWrite("work/all.tif.TIF", "the user's own");

    objVarnel(folder, AppendArguments(folder, "work/in.bmp"));

    EXPECT_EQ(PagesIn(folder.sPath("work/all.tif")), 2u);
    EXPECT_EQ(folder.sRead("work/all.tif.TIF"), "the user's own");
}

TEST(Append, AddsThePagesOfEightProcesses)
{
    constexpr std::size_t kProcesses = 8;
    const ScratchFolder folder;
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kProcesses; ++i) {
        const std::string name = "work/" + std::to_string(i) + ".bmp";
        folder.sWrite(name, NoiseBmp(static_cast<unsigned>(i)));
        threads.emplace_back([&folder, name] { objVarnel(folder, AppendArguments(folder, name)); });
    }
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(PagesIn(folder.sPath("work/all.tif")), kProcesses);
    const std::string report = folder.sRead("work/report.txt");
    std::size_t successes = 0;
    for (std::size_t at = 0; (at = report.find("Conversion Successful", at)) != std::string::npos; ++at)
        ++successes;
    EXPECT_EQ(successes, kProcesses);
}

TEST(CutTiff, GivesItsPagesReportsTheMissingOneAndKeepsTheSource)
{
    const std::string whole =
        TiffOf({NoiseBmp(1), NoiseBmp(2), NoiseBmp(3), NoiseBmp(4), NoiseBmp(5), NoiseBmp(6)});
    for (const std::size_t tenths : {3u, 5u, 8u, 9u}) {
        const ScratchFolder folder;
        folder.sWrite("work/in.tif", whole.substr(0, whole.size() * tenths / 10));
        folder.sWrite(".varnel-home/VL_SearchHistory.INI", kDeleteSources);

        objVarnel(folder, {"/S", folder.sPath("work/in.tif"), "/T", folder.sPath("work/p.bmp"), "/1", "*",
                           "/L", folder.sPath("work/report.txt")});

        EXPECT_TRUE(folder.bHas("work/in.tif"));
        EXPECT_TRUE(folder.bHas("work/p-1.bmp"));
        EXPECT_THAT(folder.sRead("work/report.txt"), testing::HasSubstr("Unable to load frame"));
        EXPECT_THAT(folder.sRead("work/report.txt"),
                    testing::Not(testing::HasSubstr("Conversion Successful")));
    }
}
