// Jobs that mix conversions, special processes, launches and nested jobs, run through the built program.
#include <gtest/gtest.h>

#include "tests/e2e/support/picture.h"
#include "tests/e2e/support/program.h"

namespace
{

namespace fs = std::filesystem;

constexpr std::int32_t kReload = 1;

class SpecialJob : public testing::Test
{
protected:
    std::string sScript(const std::string& sName, const std::string& sText) const
    {
        const std::string sFile = objFolder.sWrite(sName, "#!/bin/sh\n" + sText);
        fs::permissions(sFile, fs::perms::owner_all);
        return sFile;
    }
    std::string sPicture(const std::string& sName) const
    {
        return objFolder.sWrite(sName, sBmpOf(objPicture(4, 3, [](int x, int y) {
                                    return Rgb{x * 60, y * 90, 7};
                                })));
    }
    // Runs a job and returns its report.
    std::string sReportOfJob(const std::string& sLines) const
    {
        const std::string sJob = objFolder.sWrite("job.vjb", sLines + kMarkerLine);
        const Outcome objOutcome = objVarnel(
            objFolder, {"/J", sJob, "/L", objFolder.sPath("r.txt"), "/B", objFolder.sPath("log.vjb")});
        EXPECT_EQ(objOutcome.lStatus, 0);
        EXPECT_EQ(objOutcome.sOutput, "");
        return sWithoutSeconds(objFolder.sRead("r.txt"));
    }
    static std::string sReloadLine(const std::string& sJob, std::int32_t lStart)
    {
        const std::string sStart = std::to_string(lStart);
        return " \t \t1\tS" + std::to_string(kReload) + "\tReload conversion job start at task " + sStart +
               "\t\t\t" + sJob + "\t" + sStart + "\t\t\t\r\n";
    }
    // Rows with neither letter in their action, which pass without doing anything.
    static std::string sIdleLines(int lCount)
    {
        std::string sLines;
        for (int l = 0; l < lCount; ++l)
            sLines += " \t\t\tN\t\t\t\t\t\t\t\t\r\n";
        return sLines;
    }

    const ScratchFolder objFolder;
};

}  // namespace

TEST_F(SpecialJob, RunsLogsAndReportsEveryKindOfTask)
{
    const std::string sA = sPicture("in/a.bmp");
    const std::string sTool = sScript("tool.sh", "echo \"$#:$1:$2:$3\" >> \"$4\"\nexit 3\n");
    const std::string sKilled = sScript("killed.sh", "kill -TERM $$\n");
    const std::string sEndless = sScript("endless.sh", "while [ -d \"$1\" ]; do sleep 0.1; done\n");
    const std::string sText = objFolder.sWrite("text.txt", "no program\n");
    const std::string sSaid = objFolder.sPath("said.txt");
    const std::string sNext = objFolder.sWrite(
        "next.vjb", sTaskLine(sA, 2, objFolder.sPath("skipped.png"), 8) +
                        sSpecialTaskLine(5, sA, 2, objFolder.sPath("flipped.bmp"), "1^") +
                        sSpecialTaskLine(29, objFolder.sPath("none.bmp"), 2, objFolder.sPath("x.bmp"), "1^") +
                        sLaunchTaskLine(sTool, "late \"\" c " + sSaid) + kMarkerLine);

    const std::string sReport = sReportOfJob(
        sTaskLine(sA, 2, objFolder.sPath("a.png"), 8) +
        sSpecialTaskLine(24, objFolder.sPath("in/*.bmp"), 2, objFolder.sPath("inverted/*.bmp"), "") +
        sLaunchTaskLine(sTool, "\"two words\" --x=\"y z\"  c " + sSaid) +
        sLaunchTaskLine(objFolder.sPath("none.sh"), "a") + sLaunchTaskLine(sText, "a") +
        sLaunchTaskLine(objFolder.sPath("in"), "a") + sLaunchTaskLine(sKilled, "") +
        sLaunchTaskLine(sEndless, objFolder.Root().string(), "64^0^0") +
        sSpecialTaskLine(2, sA, 2, objFolder.sPath("big.bmp"), "40000^1^0^0^FALSE^") +
        sSpecialTaskLine(30, sA, 2, objFolder.sPath("gap.bmp"), "") + sReloadLine(sNext, 2) +
        sTaskLine(sA, 2, objFolder.sPath("never.png"), 8));

    const std::string sNotLaunched = "Unable to launch application.";
    EXPECT_EQ(sReport, "Job # 3  Exit Code: 3 - " + sTool + "\nJob # 4  " + sNotLaunched + " - " +
                           objFolder.sPath("none.sh") + "\nJob # 5  " + sNotLaunched + " - " + sText +
                           "\nJob # 6  " + sNotLaunched + " - " + objFolder.sPath("in") +
                           "\nJob # 7  Exit Code: 143 - " + sKilled +
                           "\nJob # 8  Process did not complete in the specified time (Timeout) - " +
                           sEndless + "\nJob # 9  Unable to convert: Overflow - " + sA + "\nJob # 2  File: " +
                           objFolder.sPath("none.bmp") + " does not exist - " + objFolder.sPath("none.bmp") +
                           "\nJob # 3  Exit Code: 3 - " + sTool + "\nTime to complete job: #\n");
    EXPECT_EQ(objFolder.sRead("said.txt"), "4:two words:--x=y z:c\n4:late::c\n");
    EXPECT_EQ(objFolder.aFiles(),
              (std::vector<std::string>{"a.png", "endless.sh", "flipped.bmp", "in/a.bmp", "inverted/a.bmp",
                                        "job.vjb", "killed.sh", "log.vjb", "next.vjb", "r.txt", "said.txt",
                                        "text.txt", "tool.sh"}));
    // Launch rows show the type of the previous task. From ten rows on, the log's empty row is saved as well.
    const auto sLogged = [&](const char* sRow, const std::string& sDone) { return sRow + sDone + "\t\r\n"; };
    EXPECT_EQ(
        objFolder.sRead("log.vjb"),
        sLogged("\t1\t3\tS100\t", sTool + "\t2\t\t\"two words\" --x=\"y z\"  c " + sSaid) +
            sLogged("\t2\t4\tS100\t", objFolder.sPath("none.sh") + "\t2\tbmp\ta") +
            sLogged("\t3\t5\tS100\t", sText + "\t2\tbmp\ta") +
            sLogged("\t4\t6\tS100\t", objFolder.sPath("in") + "\t2\tbmp\ta") +
            sLogged("\t5\t7\tS100\t", sKilled + "\t2\t\t") +
            sLogged("\t6\t8\tS100\t", sEndless + "\t2\tbmp\t" + objFolder.Root().string()) +
            sLogged("\t7\t9\tS2\t", sA + "\t2\tbmp\t" + objFolder.sPath("big.bmp")) +
            sLogged("\t8\t2\tS29\t", objFolder.sPath("none.bmp") + "\t2\tbmp\t" + objFolder.sPath("x.bmp")) +
            sLogged("\t9\t3\tS100\t", sTool + "\t2\t\tlate \"\" c " + sSaid) + "\t10\t\t\t\t\t\t\t\r\n");
}

TEST_F(SpecialJob, RunsMoreThanThirtyThousandTasksInSlices)
{
    const std::string sA = sPicture("a.bmp");
    const auto sInvertTo = [&](const std::string& sName) {
        return sSpecialTaskLine(24, sA, 2, objFolder.sPath(sName + ".bmp"), "");
    };
    const std::string sGone = objFolder.sPath("gone.bmp");

    // Every slice holds 29999 tasks.
    const std::string sReport =
        sReportOfJob(sInvertTo("1") + sIdleLines(29997) + sInvertTo("29999") + sInvertTo("30000") +
                     sTaskLine(sGone, 2, objFolder.sPath("x.png"), 8) + sIdleLines(29997) +
                     sInvertTo("59999") + sInvertTo("60000") + sLaunchTaskLine("/bin/true", ""));

    EXPECT_EQ(sReport, "Job # 2  File: " + sGone + " does not exist - " + sGone +
                           "\nJob # 3  Exit Code: 0 - /bin/true\nTime to complete job: #\n");
    EXPECT_EQ(objFolder.aFiles(),
              (std::vector<std::string>{"1.bmp", "29999.bmp", "30000.bmp", "59999.bmp", "60000.bmp", "a.bmp",
                                        "job.vjb", "log.vjb", "r.txt"}));
}

TEST_F(SpecialJob, SucceedsIfNoTaskHasAnythingToDo)
{
    EXPECT_EQ(sReportOfJob(sIdleLines(3)), "Conversion Successful\nTime to complete job: #\n");
    EXPECT_FALSE(objFolder.bHas("log.vjb"));
}

TEST_F(SpecialJob, FailsReloadsOfItselfAndOfMissingFiles)
{
    const std::string sReport = sReportOfJob(sReloadLine(objFolder.sPath("none.vjb"), 1) +
                                             sReloadLine(objFolder.sPath("job.vjb"), 1));

    const std::string sFailed =
        "Unable to load the rest of the job. - Reload conversion job start at task 1\n";
    EXPECT_EQ(sReport, "Job # 1  " + sFailed + "Job # 1  " + sFailed + "Job # 2  " + sFailed +
                           "Time to complete job: #\n");
}

TEST_F(SpecialJob, LaunchesAProgramFromTheCommandLine)
{
    const std::string sTool = sScript("tool.sh", "echo \"$1,$2\" > \"$1\"\nexit 5\n");

    // A launch ignores the types, but the command line requires them.
    const Outcome objOutcome =
        objVarnel(objFolder, {"/P100", "/F1", "/C1", "/S", sTool, "/T", objFolder.sPath("said.txt") + " x",
                              "/1", "32", "/2", "1", "/3", "-1", "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_EQ(objFolder.sRead("said.txt"), objFolder.sPath("said.txt") + ",x\n");
    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("r.txt")), "Conversion Successful\nTime to complete job: #\n");
}

TEST_F(SpecialJob, ReportsAFailedLaunchFromTheCommandLine)
{
    const std::string sNone = objFolder.sPath("none.sh");

    objVarnel(objFolder, {"/P100", "/F1", "/C1", "/S", sNone, "/T", objFolder.sPath("x"), "/L",
                          objFolder.sPath("r.txt")});
    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("r.txt")),
              "Job # 1  Unable to launch application. - " + sNone + "\nTime to complete job: #\n");

    fs::remove(objFolder.Root() / "r.txt");
    objVarnel(objFolder,
              {"/P100", "/F1", "/C1", "/S", objFolder.sPath("*.sh"), "/L", objFolder.sPath("r.txt")});
    EXPECT_EQ(
        objFolder.sRead("r.txt"),
        "Invalid original file format/type for the Special Process specified.\nMissing required or invalid "
        "command line argument(s)\n");
}

TEST_F(SpecialJob, LogsEveryFileIfTheSettingsNameAReport)
{
    const std::string sA = sPicture("in/a.bmp");
    const std::string sB = sPicture("in/b.bmp");
    const std::string sRows = objFolder.sPath("rows.txt");
    objFolder.sWrite(".varnel-home/VL_SearchHistory.INI", "[frmMain]\nsLogFile=" + sRows + "\n");

    const std::string sReport =
        sReportOfJob(sSpecialTaskLine(24, objFolder.sPath("in/*.bmp"), 2, objFolder.sPath("out/*.bmp"), "") +
                     sLaunchTaskLine("/bin/false", "-"));

    const std::string sPrefix = "*^0^FALSE^85^^^^^^^^";
    EXPECT_EQ(
        objFolder.sRead("rows.txt"),
        "\t" + sPrefix + "\t1\tS24\t" + sA + "\t2\tbmp\t" + objFolder.sPath("out/a.bmp") +
            "\t2\tbmp\t\t\n\t" + sPrefix + "\t1\tS24\t" + sB + "\t2\tbmp\t" + objFolder.sPath("out/b.bmp") +
            "\t2\tbmp\t\t\n\t32^1^-1\t2\tS100\t/bin/false\t2\tbmp\t-\t2\tbmp\t\tSuccessfully Processed.\n");
    EXPECT_EQ(sReport, "Job # 1   - " + sA + "\nJob # 1   - " + sB +
                           "\nJob # 2  Successfully Processed. - /bin/false" +
                           "\nJob # 2  Exit Code: 1 - /bin/false\nTime to complete job: #\n");
}

TEST_F(SpecialJob, DeletesOnlyImageSourcesOnRequest)
{
    const std::string sA = sPicture("a.bmp");
    const std::string sB = sPicture("b.bmp");
    const std::string sC = sPicture("c.bmp");
    const std::string sTool = sScript("tool.sh", "exit 0\n");
    objFolder.sWrite(".varnel-home/VL_SearchHistory.INI",
                     "[frmMain]\nbDeleteOriginalFileAfterProcessing=True\n");

    sReportOfJob(sSpecialTaskLine(24, sA, 2, objFolder.sPath("out.bmp"), "") +
                 sSpecialTaskLine(24, sB, 2, objFolder.sPath("B.BMP"), "") +
                 sSpecialTaskLine(16, sC, 2, objFolder.sPath("over.bmp"), "256^0^0^") +
                 sLaunchTaskLine(sTool, ""));

    EXPECT_FALSE(objFolder.bHas("a.bmp"));
    EXPECT_TRUE(objFolder.bHas("out.bmp"));
    EXPECT_TRUE(objFolder.bHas("b.bmp"));
    EXPECT_TRUE(objFolder.bHas("c.bmp"));
    EXPECT_TRUE(objFolder.bHas("tool.sh"));
}
