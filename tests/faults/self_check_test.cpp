// The checks of this folder must be able to fail: a program that saves carelessly is found out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/faults/support/save_check.h"

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

const std::string kOld = "an older file";
const std::string kNew(200, 'n');

Scenario CarelessSave()
{
    Scenario scenario;
    scenario.prepare = [](const ScratchFolder& folder) {
        folder.sWrite("work/in", kNew);
        folder.sWrite("work/out", kOld);
    };
    scenario.command = [](const ScratchFolder& folder) -> std::vector<std::string> {
        return {CarelessWriter(), folder.sPath("work/in"), folder.sPath("work/out"),
                folder.sPath("work/report.txt")};
    };
    scenario.findings = [](const ScratchFolder& folder, const FaultedRun& run) {
        return CheckSave(folder, {"work/in", kNew, "work/out", kOld, kNew}, run);
    };
    return scenario;
}

}  // namespace

TEST(SelfCheck, FindsNothingInARunWithoutFaults)
{
    EXPECT_THAT(FailOneCall(CarelessSave(), {"any", "5"}, 0).value(), IsEmpty());
}

TEST(SelfCheck, FindsLossesOfAProgramThatIgnoresFailedWrites)
{
    const Sweep sweep = FailEachCall(CarelessSave(), {"write", "28"});

    EXPECT_EQ(sweep.calls, 5u);
    EXPECT_EQ(sweep.hits, 5u);
    EXPECT_THAT(sweep.findings, Contains(HasSubstr("neither the old nor the new")));
    EXPECT_THAT(sweep.findings, Contains(HasSubstr("a success is reported")));
    EXPECT_THAT(sweep.findings, Contains(HasSubstr("the source is lost")));
}

TEST(SelfCheck, FindsHalfAFileOfAProgramKilledWhileWritingInPlace)
{
    const Sweep sweep = FailEachCall(CarelessSave(), {"any", "kill"});

    EXPECT_THAT(sweep.findings, Contains(HasSubstr("neither the old nor the new")));
}

TEST(SelfCheck, FindsHalfAFileAfterAShortWrite)
{
    const Sweep sweep = FailEachCall(CarelessSave(), {"write", "short"});

    EXPECT_THAT(sweep.findings, Contains(HasSubstr("neither the old nor the new")));
}

TEST(SelfCheck, FindsAnUnreadSourceThatIsDeleted)
{
    const Sweep sweep = FailEachCall(CarelessSave(), {"read", "5"});

    EXPECT_THAT(sweep.findings, Contains(HasSubstr("the source is lost")));
}
