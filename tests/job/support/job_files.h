// Job file contents, and a fixture that loads them.
// Room: tests/job/support.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "src/job/modJobFiles.h"
#include "src/job/modTaskTables.h"
#include "tests/fakes/test_application.h"

inline const std::string kMarkerLine = "\t\t*\t\t\t\t\t\t\t\t\t\r\n";

inline std::string sTaskLine(int nNumber, const std::string& sMark = "")
{
    return "RG M\t1^0^FALSE^\t" + std::to_string(nNumber) + "\tC\tC:\\in\\" + std::to_string(nNumber) +
           ".bmp\t2\tbmp\tC:\\out\\a.jpg\t1\tjpg\t" + sMark + "\t\r\n";
}

inline std::string sJobOf(int nTasks)
{
    std::string sText;
    for (int i = 1; i <= nTasks; ++i)
        sText += sTaskLine(i);
    return sText + kMarkerLine;
}

/// An application with a folder "/jobs" for job files.
struct JobFiles : testing::Test {
    TestApplication app;
    Grid& fgToDo = app.frmMain.fgToDo;

    JobFiles()
    {
        app.files.AddFolder("/jobs");
        SetUpToDoGrid(app);
        SetUpLogGrid(app);
    }
    void Load(const std::string& sContent, std::int32_t lStart = 1)
    {
        app.files.AddFile("/jobs/a.vjb", sContent);
        LoadJobFile(app, "/jobs/a.vjb", lStart, fgToDo);
    }
    std::int32_t lTasks() const { return fgToDo.Rows() - 2; }
    void ExpectMarkerAtEnd() const { EXPECT_EQ(sTabbedRow(fgToDo, fgToDo.Rows() - 1) + "\r\n", kMarkerLine); }
};
