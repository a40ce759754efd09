// Every system call of the other writers fails in turn: settings, job files and reports.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <sstream>

#include "tests/e2e/support/picture.h"
#include "tests/faults/support/save_check.h"

using testing::Contains;
using testing::IsEmpty;

namespace
{

constexpr const char* kDiskError = "5";  // EIO
constexpr const char* kDiskFull = "28";  // ENOSPC

using Findings = std::vector<std::string>;

const std::vector<Fault> kFaults = {
    {"any", kDiskError}, {"any", "kill"}, {"write", "short"}, {"write", kDiskFull, true}};

std::string SmallBmp()
{
    return sBmpOf(objPicture(4, 4, [](int x, int y) { return Rgb{x * 60, y * 60, 100}; }));
}

std::vector<std::string> Convert(const ScratchFolder& folder, std::vector<std::string> more = {})
{
    std::vector<std::string> arguments = {"/S", folder.sPath("work/in/*.bmp"), "/T",
                                          folder.sPath("work/out/*.png")};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return VarnelCommand(arguments);
}

/// A text of the run with the scratch folder's name replaced.
std::string WithoutFolder(const ScratchFolder& folder, std::string text)
{
    const std::string root = folder.Root().string();
    for (std::size_t at = 0; (at = text.find(root)) != std::string::npos;)
        text.replace(at, root.size(), "ROOT");
    return text;
}

/// Checks that a text file is one of the two, and that nothing is beside it but these files.
Findings CheckText(const ScratchFolder& folder, const FaultedRun& run, const std::string& name,
                   const std::string& old_text, const std::string& new_text)
{
    Findings findings;
    const std::string text = WithoutFolder(folder, folder.sRead(name));
    if (text != old_text && text != new_text)
        findings.push_back(name + " is neither the old nor the new file: " + text);
    for (const std::string& other : folder.aFiles())
        if (other.find(".varnel-") != std::string::npos && !run.killed)
            findings.push_back("left over: " + other);
    return findings;
}

void ExpectNoFindings(const Scenario& scenario, const std::vector<std::string>& kinds_to_reach)
{
    std::vector<std::string> kinds;
    EXPECT_THAT(FailOneCall(scenario, {"any", kDiskError}, 0, &kinds).value(), IsEmpty());
    for (const std::string& kind : kinds_to_reach)
        EXPECT_THAT(kinds, Contains(kind));
    for (const Fault& fault : kFaults) {
        const Sweep sweep = FailEachCall(scenario, fault);
        EXPECT_THAT(sweep.findings, IsEmpty());
        EXPECT_GE(sweep.hits, 1u) << fault.call << " " << fault.action;
    }
}

}  // namespace

TEST(TextFaults, LeaveOldOrNewSettings)
{
    // A language without a file makes the program write its default.
    const std::string old_text = "[Drives]\nX=/somewhere\n[Language]\nLanguage_Code=Klingon\n";
    const std::string new_text = "[Drives]\nX=/somewhere\n[Language]\nLanguage_Code=English\n";
    Scenario scenario;
    scenario.root = "settings";
    scenario.prepare = [&](const ScratchFolder& folder) {
        folder.sWrite("work/in/a.bmp", SmallBmp());
        folder.sWrite("settings/VL_SearchHistory.INI", old_text);
    };
    scenario.command = [](const ScratchFolder& folder) { return Convert(folder); };
    scenario.findings = [&](const ScratchFolder& folder, const FaultedRun& run) {
        Findings findings = CheckText(folder, run, "settings/VL_SearchHistory.INI", old_text, new_text);
        if (!run.killed && !folder.bHas("work/out/a.png"))
            findings.push_back("the picture isn't converted");
        return findings;
    };

    ExpectNoFindings(scenario, {"create", "write", "close", "sync", "rename", "read"});
}

TEST(TextFaults, LeaveOldOrNewJobFile)
{
    const std::string old_text = "an older job";
    const auto prepare = [&](const ScratchFolder& folder) {
        folder.sWrite("work/in/a.bmp", SmallBmp());
        folder.sWrite("work/out/a.png/a folder", "");  // nothing can be saved there
        folder.sWrite("work/failed.vjb", old_text);
    };
    const auto command = [](const ScratchFolder& folder) {
        return Convert(folder, {"/B", folder.sPath("work/failed.vjb")});
    };
    const ScratchFolder first;
    prepare(first);
    objRun(command(first), {{"VARNEL_SETTINGS_DIR", first.sPath("settings")}, {"LC_ALL", "C"}});
    const std::string new_text = WithoutFolder(first, first.sRead("work/failed.vjb"));
    ASSERT_NE(new_text, old_text);
    Scenario scenario;
    scenario.prepare = prepare;
    scenario.command = command;
    scenario.findings = [&](const ScratchFolder& folder, const FaultedRun& run) {
        // The log's row says why the file failed, which may be the fault.
        Findings findings = CheckText(folder, run, "work/failed.vjb", old_text, new_text);
        if (folder.sRead("work/in/a.bmp") != SmallBmp())
            findings.push_back("the source is lost");
        return findings;
    };

    ExpectNoFindings(scenario, {"create", "write", "close", "sync", "rename"});
}

TEST(TextFaults, LeaveWholeLinesInReport)
{
    const std::string old_text = "an older line\n";
    Scenario scenario;
    scenario.prepare = [&](const ScratchFolder& folder) {
        folder.sWrite("work/in/a.bmp", SmallBmp());
        folder.sWrite("reports/r.txt", old_text);
    };
    scenario.root = "reports";
    scenario.command = [](const ScratchFolder& folder) {
        return Convert(folder, {"/L", folder.sPath("reports/r.txt")});
    };
    scenario.findings = [&](const ScratchFolder& folder, const FaultedRun& run) {
        Findings findings;
        const std::string report = folder.sRead("reports/r.txt");
        const std::regex whole("an older line\n(Conversion Successful\n)?(Time to complete job: [0-9.]+\n)?");
        if (!std::regex_match(report, whole))
            findings.push_back("a line isn't whole: " + report);
        if (!run.killed && (report + run.outcome.sErrors).find("Conversion Successful") == std::string::npos)
            findings.push_back("the outcome is told nowhere");
        if (!folder.bHas("work/out/a.png"))
            findings.push_back("the picture isn't converted");
        return findings;
    };

    ExpectNoFindings(scenario, {"create", "write"});
}
