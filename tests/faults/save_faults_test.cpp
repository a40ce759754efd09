// Every system call of a save fails in turn, for every format and every kind of file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/e2e/support/picture.h"
#include "tests/faults/support/save_check.h"
#include "tests/support/paths.h"

using testing::Contains;
using testing::IsEmpty;

namespace
{

const std::string kOld = "an older file";
constexpr const char* kDiskError = "5";    // EIO
constexpr const char* kDiskFull = "28";    // ENOSPC
constexpr const char* kNotAllowed = "13";  // EACCES

std::string Source()
{
    return sBmpOf(objPicture(120, 80, [](int x, int y) { return Rgb{x * 2, y * 3, (x * 7 + y * 5) % 256}; }));
}

/// What a save looks like.
struct Case {
    std::string extension;
    bool replaces = false;
    bool deletes = false;
};

void Prepare(const ScratchFolder& folder, const Case& save)
{
    folder.sWrite("work/in.bmp", Source());
    if (save.replaces)
        folder.sWrite("work/out." + save.extension, kOld);
    if (save.deletes)
        folder.sWrite("settings/VL_SearchHistory.INI",
                      "[frmMain]\nbDeleteOriginalFileAfterProcessing=TRUE\n");
}

std::vector<std::string> Command(const ScratchFolder& folder, const Case& save)
{
    return VarnelCommand({"/S", folder.sPath("work/in.bmp"), "/T", folder.sPath("work/out." + save.extension),
                          "/L", folder.sPath("work/report.txt")});
}

Scenario SaveOf(const Case& save)
{
    const ScratchFolder folder;
    Prepare(folder, {save.extension});
    objVarnel(folder, {"/S", folder.sPath("work/in.bmp"), "/T", folder.sPath("work/out." + save.extension)});
    ExpectedSave expected{"work/in.bmp", Source(), "work/out." + save.extension, std::nullopt,
                          folder.sRead("work/out." + save.extension)};
    EXPECT_NE(expected.new_content, "");
    if (save.replaces)
        expected.old_content = kOld;
    Scenario scenario;
    scenario.prepare = [=](const ScratchFolder& to) { Prepare(to, save); };
    scenario.command = [=](const ScratchFolder& in) { return Command(in, save); };
    scenario.findings = [=](const ScratchFolder& in, const FaultedRun& run) {
        return CheckSave(in, expected, run);
    };
    return scenario;
}

std::vector<std::string> KindsOf(const Scenario& scenario)
{
    std::vector<std::string> kinds;
    FailOneCall(scenario, {"any", kDiskError}, 0, &kinds);
    return kinds;
}

class SaveFaults : public testing::TestWithParam<const char*>
{
};

}  // namespace

TEST_P(SaveFaults, LeaveOldOrNewFileAndLoseNoSource)
{
    const Scenario scenario = SaveOf({GetParam(), true, true});

    for (const Fault& fault :
         {Fault{"write", kDiskFull}, Fault{"write", "short"}, Fault{"read", kDiskError}}) {
        const Sweep sweep = FailEachCall(scenario, fault);
        EXPECT_THAT(sweep.findings, IsEmpty());
        EXPECT_GE(sweep.hits, 1u) << fault.call << " " << fault.action;
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, SaveFaults,
                         testing::Values("jpg", "bmp", "tif", "gif", "emf", "j2k", "pcx", "png", "ras", "tga",
                                         "wmf"),
                         [](const auto& format) { return std::string(format.param); });

TEST(SaveFaults, ReachEveryKindOfCall)
{
    const std::vector<std::string> replacing = KindsOf(SaveOf({"png", true, true}));
    const std::vector<std::string> creating = KindsOf(SaveOf({"png", false, false}));

    for (const char* kind : {"create", "open", "read", "write", "close", "sync", "mode", "rename", "remove"})
        EXPECT_THAT(replacing, Contains(kind));
    for (const char* kind : {"create", "write", "close", "sync", "link"})
        EXPECT_THAT(creating, Contains(kind));
}

TEST(SaveFaults, LeaveNoOrNewFileWhereThereWasNone)
{
    for (const bool deletes : {false, true}) {
        const Scenario scenario = SaveOf({"png", false, deletes});
        for (const Fault& fault : {Fault{"any", kDiskError}, Fault{"any", "kill"}, Fault{"any", kNotAllowed},
                                   Fault{"sync", kDiskError, true}}) {
            const Sweep sweep = FailEachCall(scenario, fault);
            EXPECT_THAT(sweep.findings, IsEmpty());
            EXPECT_GE(sweep.hits, 1u) << fault.call << " " << fault.action;
        }
    }
}

TEST(SaveFaults, LeaveOldOrNewFileAtAnyCallOfAReplacement)
{
    const Scenario scenario = SaveOf({"png", true, true});

    for (const Fault& fault : {Fault{"any", kDiskError}, Fault{"any", kNotAllowed}, Fault{"any", "kill"},
                               Fault{"write", kDiskFull, true}, Fault{"create", kNotAllowed, true},
                               Fault{"sync", kDiskError, true}}) {
        const Sweep sweep = FailEachCall(scenario, fault);
        EXPECT_THAT(sweep.findings, IsEmpty());
        EXPECT_GE(sweep.hits, fault.call == "any" ? 10u : 1u) << fault.call << " " << fault.action;
    }
}
