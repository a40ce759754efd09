// Job files run through the built program.
#include <gtest/gtest.h>

#include "tests/e2e/support/program.h"

TEST(JobFile, RunsEveryTaskAndReportsSuccess)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    const std::string sTif = objFolder.sCopySample("form.tif", "form.tif");
    const std::string sJob =
        objFolder.sWrite("job.vjb", sTaskLine(sBmp, 2, objFolder.sPath("a.png"), 8) +
                                        sTaskLine(sTif, 3, objFolder.sPath("p.gif"), 4) + kMarkerLine);

    objVarnel(objFolder, {"/J", sJob, "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(objFolder.aFiles(), (std::vector<std::string>{"a.bmp", "a.png", "form.tif", "job.vjb",
                                                            "p-1.gif", "p-2.gif", "p-3.gif", "r.txt"}));
    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("r.txt")), "Conversion Successful\nTime to complete job: #\n");
}

TEST(JobFile, CarriesOnAfterAFailureAndSavesTheLogAsAJob)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    const std::string sJob = objFolder.sWrite(
        "job.vjb", sTaskLine(objFolder.sPath("gone.bmp"), 2, objFolder.sPath("gone.png"), 8) +
                       sTaskLine(sBmp, 2, objFolder.sPath("a.png"), 8) + kMarkerLine);

    objVarnel(objFolder, {"/J", sJob, "/L", objFolder.sPath("r.txt"), "/B", objFolder.sPath("failed.vjb")});

    EXPECT_TRUE(objFolder.bHas("a.png"));
    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("r.txt")),
              "Job # 1  File: " + objFolder.sPath("gone.bmp") + " does not exist - " +
                  objFolder.sPath("gone.bmp") + "\nTime to complete job: #\n");
    EXPECT_EQ(objFolder.sRead("failed.vjb"), "R M\t1\t1\tC\t" + objFolder.sPath("gone.bmp") + "\t2\tbmp\t" +
                                                 objFolder.sPath("gone.png") + "\t\r\n");
}

TEST(JobFile, ResumesAtTheFirstUnmarkedRow)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    const std::string sDone = sTaskLine(sBmp, 2, objFolder.sPath("done.png"), 8, "*^0^FALSE^85^^^^^^^^", "+");
    const std::string sJob =
        objFolder.sWrite("job.vjb", sDone + sTaskLine(sBmp, 2, objFolder.sPath("new.png"), 8) + kMarkerLine);

    objVarnel(objFolder, {"/J", sJob});

    EXPECT_FALSE(objFolder.bHas("done.png"));
    EXPECT_TRUE(objFolder.bHas("new.png"));
}

TEST(JobFile, SurvivesRandomBytes)
{
    std::string sGarbage;
    for (int l = 0; l < 20000; ++l)
        sGarbage += static_cast<char>((l * 7919 + l / 3) % 256);
    const ScratchFolder objFolder;
    const std::string sJob = objFolder.sWrite("job.vjb", sGarbage);

    const Outcome objOutcome = objVarnel(objFolder, {"/J", sJob, "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_NE(objFolder.sRead("r.txt"), "");
}

TEST(JobFile, StopsWithAReportAtAMalformedNumber)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");
    const std::string sJob = objFolder.sWrite("job.vjb", "R M\t*^0^\t1\tC\t" + sBmp + "\ttwo\tbmp\t" +
                                                             objFolder.sPath("a.png") + "\t8\tpng\t\t\r\n");

    const Outcome objOutcome = objVarnel(objFolder, {"/J", sJob, "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_EQ(objFolder.sRead("r.txt"), "Type mismatch\n");
}
