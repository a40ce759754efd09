// Helpers for filling and reading table rows.
// Room: tests/job/support.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "src/job/modTaskTables.h"
#include "tests/fakes/test_application.h"

inline clsConversionOptions objConversion(const std::string& sSource = "/p/a.bmp")
{
    clsConversionOptions objOptions;
    objOptions.sActionToDo = "C";
    objOptions.sOriginalFile = sSource;
    objOptions.lOriginalFileType = 2;
    objOptions.sTargetFile = "/out/a.jpg";
    objOptions.lTargetFileType = 1;
    objOptions.sExtraParams = "*^0^FALSE^75^";
    return objOptions;
}

/// Fills the table with nTasks conversions.
inline void FillTable(TestApplication& app, int nTasks)
{
    for (int i = 1; i <= nTasks; ++i)
        AddTaskRow(app, objConversion("/p/" + std::to_string(i) + ".bmp"));
}

inline std::vector<std::string> aRow(const Grid& fg, std::int32_t lRow)
{
    std::vector<std::string> aCells;
    for (std::int32_t l = 0; l < fg.Cols(); ++l)
        aCells.push_back(fg.TextMatrix(lRow, l));
    return aCells;
}

inline void ExpectMarkerAtEnd(const Grid& fg)
{
    const std::vector<std::string> aMarker{"", "", "*", "", "", "", "", "", "", "", ""};
    EXPECT_EQ(aRow(fg, fg.Rows() - 1), aMarker);
}
