// Job files run through the built program.
#include <gtest/gtest.h>

#include "tests/e2e/support/program.h"

TEST(JobFile, RunsEveryTaskAndReportsSuccess)
{
    const Workplace objPlace;
    const std::string sBmp = objPlace.sCopySample("landscape-small.bmp", "a.bmp");
    const std::string sTif = objPlace.sCopySample("form.tif", "form.tif");
    const std::string sJob =
        objPlace.sWrite("job.vjb", sTaskLine(sBmp, 2, objPlace.sPath("a.png"), 8) +
                                       sTaskLine(sTif, 3, objPlace.sPath("p.gif"), 4) + kMarkerLine);

    objVarnel(objPlace, {"/J", sJob, "/L", objPlace.sPath("r.txt")});

    EXPECT_EQ(objPlace.aFiles(), (std::vector<std::string>{"a.bmp", "a.png", "form.tif", "job.vjb", "p-1.gif",
                                                           "p-2.gif", "p-3.gif", "r.txt"}));
    EXPECT_EQ(sWithoutSeconds(objPlace.sRead("r.txt")), "Conversion Successful\nTime to complete job: #\n");
}

TEST(JobFile, CarriesOnAfterAFailureAndSavesTheLogAsAJob)
{
    const Workplace objPlace;
    const std::string sBmp = objPlace.sCopySample("landscape-small.bmp", "a.bmp");
    const std::string sJob =
        objPlace.sWrite("job.vjb", sTaskLine(objPlace.sPath("gone.bmp"), 2, objPlace.sPath("gone.png"), 8) +
                                       sTaskLine(sBmp, 2, objPlace.sPath("a.png"), 8) + kMarkerLine);

    objVarnel(objPlace, {"/J", sJob, "/L", objPlace.sPath("r.txt"), "/B", objPlace.sPath("failed.vjb")});

    EXPECT_TRUE(objPlace.bHas("a.png"));
    EXPECT_EQ(sWithoutSeconds(objPlace.sRead("r.txt")),
              "Job # 1  File: " + objPlace.sPath("gone.bmp") + " does not exist - " +
                  objPlace.sPath("gone.bmp") + "\nTime to complete job: #\n");
    EXPECT_EQ(objPlace.sRead("failed.vjb"), "R M\t1\t1\tC\t" + objPlace.sPath("gone.bmp") + "\t2\tbmp\t" +
                                                objPlace.sPath("gone.png") + "\t\r\n");
}

TEST(JobFile, ResumesAtTheFirstUnmarkedRow)
{
    const Workplace objPlace;
    const std::string sBmp = objPlace.sCopySample("landscape-small.bmp", "a.bmp");
    const std::string sDone = sTaskLine(sBmp, 2, objPlace.sPath("done.png"), 8, "*^0^FALSE^85^^^^^^^^", "+");
    const std::string sJob =
        objPlace.sWrite("job.vjb", sDone + sTaskLine(sBmp, 2, objPlace.sPath("new.png"), 8) + kMarkerLine);

    objVarnel(objPlace, {"/J", sJob});

    EXPECT_FALSE(objPlace.bHas("done.png"));
    EXPECT_TRUE(objPlace.bHas("new.png"));
}

TEST(JobFile, SurvivesRandomBytes)
{
    std::string sRubbish;
    for (int l = 0; l < 20000; ++l)
        sRubbish += static_cast<char>((l * 7919 + l / 3) % 256);
    const Workplace objPlace;
    const std::string sJob = objPlace.sWrite("job.vjb", sRubbish);

    const Outcome objOutcome = objVarnel(objPlace, {"/J", sJob, "/L", objPlace.sPath("r.txt")});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_NE(objPlace.sRead("r.txt"), "");
}

TEST(JobFile, StopsWithAReportAtAMalformedNumber)
{
    const Workplace objPlace;
    const std::string sBmp = objPlace.sCopySample("landscape-small.bmp", "a.bmp");
    const std::string sJob = objPlace.sWrite("job.vjb", "R M\t*^0^\t1\tC\t" + sBmp + "\ttwo\tbmp\t" +
                                                            objPlace.sPath("a.png") + "\t8\tpng\t\t\r\n");

    const Outcome objOutcome = objVarnel(objPlace, {"/J", sJob, "/L", objPlace.sPath("r.txt")});

    EXPECT_EQ(objOutcome.lStatus, 0);
    EXPECT_EQ(objPlace.sRead("r.txt"), "Type mismatch\n");
}
