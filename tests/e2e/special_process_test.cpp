// Every special process run through the built program: from the command line and in jobs, on every format.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>

#include "src/base/text.h"
#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "tests/e2e/support/picture.h"
#include "tests/e2e/support/program.h"
#include "tests/support/paths.h"

namespace
{

// Numbers of processes, as job files have them.
enum : std::int32_t {
    kRotate = 3,
    kAutocrop = 4,
    kFlip = 5,
    kShift = 6,
    kBrightness = 15,
    kColorize = 16,
    kGamma = 20,
    kInvert = 24,
    kPosterize = 26,
    kRed = 27,
    kThreshold = 29,
    kReserved = 56,
};

struct Process {
    std::int32_t lNumber;
    const char* sOwnDetails;  ///< joined by "^"
    int lWidth = 24;          ///< size of the result for a 24x16 image
    int lHeight = 16;
};

constexpr Process kProcesses[] = {{2, "12^8^2^0^FALSE", 12, 8},
                                  {3, "90^0", 16, 24},
                                  {4, ""},
                                  {5, "1"},
                                  {6, "3^2^255"},
                                  {7, "FALSE^30"},
                                  {8, "FALSE^20", 30, 16},
                                  {9, "90"},
                                  {10, "2"},
                                  {11, ""},
                                  {12, ""},
                                  {13, "120^0.2^0.5"},
                                  {14, "-60"},
                                  {15, "40"},
                                  {16, "255^128^0"},
                                  {17, "0.75"},
                                  {18, ""},
                                  {19, "1"},
                                  {20, "0.5"},
                                  {21, "60"},
                                  {22, "120"},
                                  {23, ""},
                                  {24, ""},
                                  {25, "-0.5"},
                                  {26, "3"},
                                  {27, "60"},
                                  {28, "-1"},
                                  {29, "100"},
                                  {31, "TRUE^35"},
                                  {32, "10^3"},
                                  {33, "TRUE^100^0"},
                                  {34, "45^10^2"},
                                  {35, "TRUE^100^0"},
                                  {36, "5"},
                                  {37, "1^4"},
                                  {38, "TRUE^6"},
                                  {39, "30^10"},
                                  {40, "50"},
                                  {41, "30^4^2"},
                                  {42, "30^5^3"},
                                  {43, "TRUE^100^20"},
                                  {44, "50"},
                                  {45, "1"},
                                  {46, "0"},
                                  {47, "3"},
                                  {48, "1"},
                                  {49, "1"},
                                  {50, "0"},
                                  {51, "1"},
                                  {52, "0"},
                                  {53, "2"},
                                  {54, "1"},
                                  {55, "0.5"},
                                  {56, "7"},
                                  {58, "5"},
                                  {59, "5"},
                                  {60, "TRUE^TRUE"}};
constexpr int kWidth = 24;
constexpr int kHeight = 16;

struct Format {
    std::int32_t lType;
    std::string sExtension;
    bool bReferenceReads = true;
};

const std::vector<Format> kWritable = {{1, "jpg"},        {2, "bmp"},  {3, "tif"},        {4, "gif"},
                                       {5, "emf", false}, {6, "j2k"},  {7, "pcx"},        {8, "png"},
                                       {9, "ras"},        {10, "tga"}, {11, "wmf", false}};

// Many colours, but neither black nor white, so that every process has something to change.
Picture objColours()
{
    return objPicture(kWidth, kHeight, [](int x, int y) {
        return Rgb{30 + x * 8, 40 + y * 11, 30 + (x * 37 + y * 53) % 180};
    });
}

// The switches for a process's own fields, starting at /a.
std::vector<std::string> aSwitches(const Process& objProcess)
{
    std::vector<std::string> aResult;
    char cLetter = 'a';
    for (const std::string& sField : aSplit(objProcess.sOwnDetails, '^'))
        aResult.push_back("/" + std::string(1, cLetter++) + sField);
    return aResult;
}

// Image sizes by file name, as another program reads them.
std::map<std::string, std::string> aReferenceSizes(const std::vector<std::string>& aFiles)
{
    std::vector<std::string> aCommand = {ImageMagick("identify"), "-format", "%f %wx%h\n"};
    aCommand.insert(aCommand.end(), aFiles.begin(), aFiles.end());
    std::istringstream objLines(objRun(aCommand).sOutput);
    std::map<std::string, std::string> aResult;
    for (std::string sName, sSize; objLines >> sName >> sSize;)
        aResult[sName] = sSize;
    return aResult;
}

std::string sSize(const Process& objProcess)
{
    return std::to_string(objProcess.lWidth) + "x" + std::to_string(objProcess.lHeight);
}

/// Applies one process to an image; both sides are lossless.
class OneProcess : public testing::Test
{
protected:
    Picture objMade(const Picture& objSource, std::int32_t lProcess, const std::string& sOwnDetails)
    {
        objFolder.sWrite("s.bmp", sBmpOf(objSource));
        std::vector<std::string> aArguments = {"/P" + std::to_string(lProcess), "/S",
                                               objFolder.sPath("s.bmp"), "/T", objFolder.sPath("t.bmp")};
        for (const std::string& sSwitch : aSwitches({lProcess, sOwnDetails.c_str()}))
            aArguments.push_back(sSwitch);
        EXPECT_EQ(objVarnel(objFolder, aArguments).lStatus, 0);
        return objReferenceDecode(objFolder.sPath("t.bmp"));
    }

    const ScratchFolder objFolder;
};

}  // namespace

TEST(SpecialProcesses, WorkOnEveryWritableFormat)
{
    const ScratchFolder objFolder;
    const std::string sSource = objFolder.sWrite("s.bmp", sBmpOf(objColours()));
    std::string sJob;
    for (const Format& objFormat : kWritable)
        sJob += sTaskLine(sSource, 2, objFolder.sPath("in/s." + objFormat.sExtension), objFormat.lType);
    for (const Format& objFormat : kWritable) {
        for (const Process& objProcess : kProcesses)
            sJob += sSpecialTaskLine(
                objProcess.lNumber, objFolder.sPath("in/s." + objFormat.sExtension), objFormat.lType,
                objFolder.sPath("out/" + std::to_string(objProcess.lNumber) + "." + objFormat.sExtension),
                std::string(objProcess.sOwnDetails) + "^");
        if (!objFormat.bReferenceReads)
            sJob += sTaskLine(objFolder.sPath("out/*." + objFormat.sExtension), objFormat.lType,
                              objFolder.sPath("out/*." + objFormat.sExtension + ".png"), 8);
    }
    objFolder.sWrite("job.vjb", sJob + kMarkerLine);

    objVarnel(objFolder, {"/J", objFolder.sPath("job.vjb"), "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("r.txt")), "Conversion Successful\nTime to complete job: #\n");
    std::vector<std::string> aFiles;
    const auto sResultName = [](const Process& objProcess, const Format& objFormat) {
        return std::to_string(objProcess.lNumber) + "." + objFormat.sExtension +
               (objFormat.bReferenceReads ? "" : ".png");
    };
    for (const Format& objFormat : kWritable)
        for (const Process& objProcess : kProcesses)
            aFiles.push_back(objFolder.sPath("out/" + sResultName(objProcess, objFormat)));
    const std::map<std::string, std::string> aSizes = aReferenceSizes(aFiles);
    EXPECT_EQ(aSizes.size(), std::size(kProcesses) * kWritable.size());
    for (const Format& objFormat : kWritable)
        for (const Process& objProcess : kProcesses) {
            const std::string sName = sResultName(objProcess, objFormat);
            EXPECT_EQ(aSizes.contains(sName) ? aSizes.at(sName) : "not read", sSize(objProcess)) << sName;
        }
}

TEST(SpecialProcesses, GiveTheSameResultsOnCommandLineAndInJobs)
{
    const ScratchFolder objFolder;
    const Picture objSource = objColours();
    const std::string sSource = objFolder.sWrite("s.bmp", sBmpOf(objSource));
    std::string sJob;
    for (const Process& objProcess : kProcesses) {
        const std::string sNumber = std::to_string(objProcess.lNumber);
        sJob += sSpecialTaskLine(objProcess.lNumber, sSource, 2, objFolder.sPath("job/" + sNumber + ".bmp"),
                                 std::string(objProcess.sOwnDetails) + "^");
        std::vector<std::string> aArguments = {"/P" + sNumber, "/S", sSource, "/T",
                                               objFolder.sPath("line/" + sNumber + ".bmp")};
        for (const std::string& sSwitch : aSwitches(objProcess))
            aArguments.push_back(sSwitch);
        objVarnel(objFolder, aArguments);
    }
    objFolder.sWrite("job.vjb", sJob + kMarkerLine);
    objVarnel(objFolder, {"/J", objFolder.sPath("job.vjb")});

    const auto sPixels = [](const std::string& sBmp) {
        return sBmp.substr(std::min<std::size_t>(54, sBmp.size()));
    };
    for (const Process& objProcess : kProcesses) {
        const std::string sName = std::to_string(objProcess.lNumber) + ".bmp";
        const std::string sMade = objFolder.sRead("line/" + sName);
        EXPECT_FALSE(sMade.empty()) << sName;
        EXPECT_TRUE(sMade == objFolder.sRead("job/" + sName)) << sName;
        // Two change nothing: there is no border to crop, and the reserved filter has no effect.
        const bool bChanges = objProcess.lNumber != kAutocrop && objProcess.lNumber != kReserved;
        EXPECT_EQ(sPixels(sMade) != sPixels(sBmpOf(objSource)), bChanges) << sName;
    }
}

TEST(SpecialProcesses, AreAllCoveredByTheseTests)
{
    std::vector<std::int32_t> aListed, aOfCatalogue;
    for (const Process& objProcess : kProcesses)
        aListed.push_back(objProcess.lNumber);
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue())
        if (objRow.lSpecialProcess != SP_LAUNCH)
            aOfCatalogue.push_back(objRow.lSpecialProcess);
    EXPECT_EQ(aListed, aOfCatalogue);
}

TEST_F(OneProcess, FlipsInBothDirections)
{
    const Picture objSource = objColours();
    EXPECT_EQ(objMade(objSource, kFlip, "0"),
              objPicture(kWidth, kHeight, [&](int x, int y) { return objSource.At(kWidth - 1 - x, y); }));
    EXPECT_EQ(objMade(objSource, kFlip, "1"),
              objPicture(kWidth, kHeight, [&](int x, int y) { return objSource.At(x, kHeight - 1 - y); }));
}

TEST_F(OneProcess, RotatesClockwise)
{
    const Picture objSource = objColours();
    EXPECT_EQ(objMade(objSource, kRotate, "90"),
              objPicture(kHeight, kWidth, [&](int x, int y) { return objSource.At(y, kHeight - 1 - x); }));
    EXPECT_EQ(objMade(objSource, kRotate, "-90"),
              objPicture(kHeight, kWidth, [&](int x, int y) { return objSource.At(kWidth - 1 - y, x); }));
    EXPECT_EQ(objMade(objSource, kRotate, "540"), objPicture(kWidth, kHeight, [&](int x, int y) {
                  return objSource.At(kWidth - 1 - x, kHeight - 1 - y);
              }));
}

TEST_F(OneProcess, ShiftsAndFillsWithTheGivenColour)
{
    const Picture objSource = objColours();
    // Red is the low byte of a colour.
    EXPECT_EQ(objMade(objSource, kShift, "3^-2^4660"), objPicture(kWidth, kHeight, [&](int x, int y) {
                  return x >= 3 && y < kHeight - 2 ? objSource.At(x - 3, y + 2) : Rgb{0x34, 0x12, 0};
              }));
}

TEST_F(OneProcess, CropsABorderOfASingleColour)
{
    const Picture objSource = objColours();
    const Picture objFramed = objPicture(kWidth + 7, kHeight + 5, [&](int x, int y) {
        const bool bInside = x >= 3 && x < 3 + kWidth && y >= 4 && y < 4 + kHeight;
        return bInside ? objSource.At(x - 3, y - 4) : Rgb{250, 250, 250};
    });
    EXPECT_EQ(objMade(objFramed, kAutocrop, ""), objSource);
}

TEST_F(OneProcess, ResizesAndKeepsTheAspectRatioIfOneSizeIsZero)
{
    const Picture objSource = objColours();
    EXPECT_EQ(objMade(objSource, SP_TRANSFORM_RESIZE, "48^32^0"),
              objPicture(48, 32, [&](int x, int y) { return objSource.At(x / 2, y / 2); }));
    EXPECT_EQ(objMade(objSource, SP_TRANSFORM_RESIZE, "0^8^1").lWidth, 12);
    EXPECT_EQ(objMade(objSource, SP_TRANSFORM_RESIZE, "48^0^2").lHeight, 32);
    EXPECT_EQ(objMade(objSource, SP_TRANSFORM_RESIZE, "7^9^2^0^TRUE").lHeight, 9);
    EXPECT_EQ(objMade(objSource, SP_TRANSFORM_RESIZE, "0^0^2"), objSource);
}

TEST_F(OneProcess, ChangesColoursByTheDocumentedFormulas)
{
    const Picture objSource = objColours();
    const auto objExpected = [&](const std::function<Rgb(Rgb)>& fnColour) {
        return objPicture(kWidth, kHeight, [&](int x, int y) { return fnColour(objSource.At(x, y)); });
    };
    EXPECT_EQ(objMade(objSource, kInvert, ""), objExpected([](Rgb a) {
                  return Rgb{255 - a[0], 255 - a[1], 255 - a[2]};
              }));
    EXPECT_EQ(objMade(objSource, kBrightness, "-300"), objExpected([](Rgb) { return Rgb{0, 0, 0}; }));
    EXPECT_EQ(objMade(objSource, kRed, "100"), objExpected([](Rgb a) {
                  return Rgb{std::min(255, a[0] + 100), a[1], a[2]};
              }));
    EXPECT_EQ(objMade(objSource, kColorize, "255^0^255"), objExpected([](Rgb a) {
                  return Rgb{a[0], 0, a[2]};
              }));
    EXPECT_EQ(objMade(objSource, kPosterize, "2"), objExpected([](Rgb a) {
                  for (int& lChannel : a)
                      lChannel = lChannel < 128 ? 0 : 255;
                  return a;
              }));
    EXPECT_EQ(objMade(objSource, kThreshold, "100"), objExpected([](Rgb a) {
                  const double dIntensity = 0.299 * a[0] + 0.587 * a[1] + 0.114 * a[2];
                  return dIntensity >= 100.5 ? Rgb{255, 255, 255} : Rgb{0, 0, 0};
              }));
    EXPECT_EQ(objMade(objSource, kReserved, "9"), objSource);
    EXPECT_EQ(objMade(objSource, 57, "9"), objSource) << "a number without an operation is load and save";
}

TEST_F(OneProcess, UsesZerosForMalformedDetails)
{
    const Picture objSource = objColours();
    EXPECT_EQ(objMade(objSource, kRotate, "round^about"), objSource);
    EXPECT_EQ(objMade(objSource, kRotate, "nan(1)"), objSource);
    EXPECT_EQ(objMade(objSource, kGamma, "1e400").At(0, 0), (Rgb{255, 255, 255}));
}

TEST(SpecialProcesses, SurviveExtremeNumbersOnASinglePixel)
{
    const ScratchFolder objFolder;
    const std::string sSource = objFolder.sWrite("s.bmp", sBmpOf(objPicture(1, 1, [](int, int) {
                                                     return Rgb{10, 20, 30};
                                                 })));
    std::string sJob;
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue())
        for (const char* sValue :
             {"-2147483648", "2147483647", "32767", "1e300", "-1e300", "256", "-1", "x"}) {
            std::string sOwn;
            for (std::size_t i = 0; i < objRow.aParameters.size(); ++i)
                sOwn += std::string(sValue) + "^";
            if (objRow.lSpecialProcess != SP_LAUNCH && objRow.lSpecialProcess != SP_TRANSFORM_RESIZE)
                sJob += sSpecialTaskLine(objRow.lSpecialProcess, sSource, 2, objFolder.sPath("t.bmp"), sOwn);
        }
    sJob += sSpecialTaskLine(kInvert, sSource, 2, objFolder.sPath("last.bmp"), "");
    objFolder.sWrite("job.vjb", sJob + kMarkerLine);

    EXPECT_EQ(
        objVarnel(objFolder, {"/J", objFolder.sPath("job.vjb")}, {{"VARNEL_MAX_MEGAPIXELS", "4"}}).lStatus,
        0);

    EXPECT_EQ(objReferenceDecode(objFolder.sPath("last.bmp")).aPixels, (std::vector<Rgb>{{245, 235, 225}}));
}

TEST(SpecialProcesses, MirrorATreeAndKeepTheType)
{
    const ScratchFolder objFolder;
    for (const char* sName : {"in/a.bmp", "in/sub/b.bmp"})
        objFolder.sWrite(sName, sBmpOf(objColours()));

    objVarnel(objFolder,
              {"/P24", "/R", "/S", objFolder.sPath("in/*.bmp"), "/T", objFolder.sPath("out/*.bmp")});
    EXPECT_EQ(objFolder.aFiles(),
              (std::vector<std::string>{"in/a.bmp", "in/sub/b.bmp", "out/a.bmp", "out/sub/b.bmp"}));

    // The source's type overrides an explicit target type if either type is missing.
    objVarnel(objFolder,
              {"/P24", "/S", objFolder.sPath("in/a.bmp"), "/T", objFolder.sPath("out/c.jpg"), "/C1"});
    EXPECT_EQ(objFolder.sRead("out/c.jpg"), objFolder.sRead("out/a.bmp"));
}

TEST(SpecialProcesses, WorkOnEachPageOfATiff)
{
    const ScratchFolder objFolder;
    const std::string sTif = objFolder.sCopySample("form.tif", "form.tif");

    objVarnel(objFolder, {"/P24", "/S", sTif, "/T", objFolder.sPath("p.tif"), "/1", "3,1"});
    objVarnel(objFolder, {"/P24", "/S", sTif, "/T", objFolder.sPath("all.tif"), "/1", "*", "/3", "TRUE"});

    EXPECT_EQ(objFolder.aFiles(), (std::vector<std::string>{"all.tif", "form.tif", "p-1.tif", "p-3.tif"}));
    const Picture objPage = objReferenceDecode(sTif);
    const Picture objMade = objReferenceDecode(objFolder.sPath("p-1.tif"));
    EXPECT_EQ(objMade, objPicture(objPage.lWidth, objPage.lHeight, [&](int x, int y) {
                  const int lInverse = 255 - objPage.At(x, y)[0];
                  return Rgb{lInverse, lInverse, lInverse};
              }));
    const Outcome objPages =
        objRun({ImageMagick("identify"), "-format", "%p %wx%h;", objFolder.sPath("all.tif")});
    EXPECT_EQ(objPages.sOutput, "0 425x550;1 425x550;2 425x550;");
}

TEST(SpecialProcesses, FailOnlyTheFileThatOverflows)
{
    const ScratchFolder objFolder;
    const std::string sA = objFolder.sWrite("in/a.bmp", sBmpOf(objColours()));
    const std::string sJob = objFolder.sWrite(
        "job.vjb",
        sSpecialTaskLine(SP_TRANSFORM_RESIZE, sA, 2, objFolder.sPath("t.bmp"), "40000^10^0^0^FALSE^") +
            sSpecialTaskLine(kColorize, objFolder.sPath("in/*.bmp"), 2, objFolder.sPath("out/*.bmp"),
                             "256^0^0^") +
            sSpecialTaskLine(kColorize, sA, 2, objFolder.sPath("good.bmp"), "255^0^0^") + kMarkerLine);

    objVarnel(objFolder, {"/J", sJob, "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("r.txt")), "Job # 1  Unable to convert: Overflow - " + sA +
                                                             "\nJob # 2  Unable to convert: Overflow - " +
                                                             sA + "\nTime to complete job: #\n");
    EXPECT_FALSE(objFolder.bHas("t.bmp"));
    EXPECT_FALSE(objFolder.bHas("out/a.bmp"));
    EXPECT_TRUE(objFolder.bHas("good.bmp"));
}

TEST(SpecialProcesses, AreRejectedWithASpecificMessage)
{
    const ScratchFolder objFolder;
    const std::string sA = objFolder.sWrite("a.bmp", sBmpOf(objColours()));
    const auto sReportOf = [&](std::vector<std::string> aArguments) {
        aArguments.insert(aArguments.end(),
                          {"/S", sA, "/T", objFolder.sPath("t.bmp"), "/L", objFolder.sPath("r.txt")});
        objVarnel(objFolder, aArguments);
        const std::string sReport = objFolder.sRead("r.txt");
        std::filesystem::remove(objFolder.Root() / "r.txt");
        return sReport;
    };
    const std::string sEnd = "\nMissing required or invalid command line argument(s)\n";

    for (const char* sProcess : {"/P1", "/P30", "/P61", "/P99", "/Pnone"})
        EXPECT_EQ(sReportOf({sProcess}), "Invalid Special Process Identifier specified" + sEnd) << sProcess;
    EXPECT_EQ(sReportOf({"/P2", "/a-1", "/b5"}), "Invalid Width or Height" + sEnd);
    EXPECT_EQ(sReportOf({"/P2", "/a5", "/b5", "/c3"}), "Unrecognized interpolation method" + sEnd);
    EXPECT_FALSE(objFolder.bHas("t.bmp"));
}

TEST(SpecialProcesses, ReportLogRowsOnlyForSingleFiles)
{
    const ScratchFolder objFolder;
    const std::string sBad = objFolder.sWrite("in/x.bmp", "This is a text.\n");
    const std::string sError = "Unsupported source image file format. Unable to load image.";

    objVarnel(objFolder,
              {"/P24", "/S", sBad, "/T", objFolder.sPath("t.bmp"), "/Z", "/L", objFolder.sPath("one.txt")});
    objVarnel(objFolder, {"/P24", "/S", objFolder.sPath("in/*.bmp"), "/T", objFolder.sPath("out/*.bmp"), "/Z",
                          "/L", objFolder.sPath("many.txt")});

    const std::string sLines = "Job # 1  " + sError + " - " + sBad + "\nTime to complete job: #\n";
    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("one.txt")), "\t^^^^^^^^^^^^^^^^^^^^\t1\tS\t" + sBad +
                                                               "\t2\tbmp\t" + objFolder.sPath("t.bmp") +
                                                               "\t2\tbmp\t\t" + sError + "\n" + sLines);
    // The record for a wildcard's files carries neither the report file nor the flag for log rows.
    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("many.txt")), sLines);
}

TEST(SpecialProcesses, CannotSaveAReadOnlyType)
{
    const ScratchFolder objFolder;
    const std::string sIcon = objFolder.sCopySample("graphics/icon.ico", "icon.ico");

    objVarnel(objFolder,
              {"/P24", "/S", sIcon, "/T", objFolder.sPath("t.ico"), "/L", objFolder.sPath("r.txt")});

    EXPECT_EQ(sWithoutSeconds(objFolder.sRead("r.txt")),
              "Job # 1  Unable to convert - " + sIcon + "\nTime to complete job: #\n");
    EXPECT_FALSE(objFolder.bHas("t.ico"));
}

TEST(SpecialProcesses, KeepTransparencyAlignedWithTheImage)
{
    const ScratchFolder objFolder;
    const std::string sBadge = objFolder.sCopySample("graphics/badge.png", "badge.png");
    const auto sAlphaOf = [](const std::string& sFile) {
        return objRun({ImageMagick("convert"), sFile, "-alpha", "extract", "-depth", "8", "gray:-"}).sOutput;
    };

    objVarnel(objFolder, {"/P24", "/S", sBadge, "/T", objFolder.sPath("inverted.png")});
    objVarnel(objFolder, {"/P9", "/a0", "/S", sBadge, "/T", objFolder.sPath("same.png")});
    objVarnel(objFolder, {"/P6", "/a40", "/b0", "/c0", "/S", sBadge, "/T", objFolder.sPath("shifted.png")});

    const std::string sAlpha = sAlphaOf(sBadge);
    EXPECT_EQ(sAlpha.size(), 64u * 64u);
    EXPECT_TRUE(sAlphaOf(objFolder.sPath("inverted.png")) == sAlpha);
    EXPECT_TRUE(sAlphaOf(objFolder.sPath("same.png")) == sAlpha);
    const std::string sShifted = sAlphaOf(objFolder.sPath("shifted.png"));
    for (std::size_t y = 0; y < 64; ++y) {
        EXPECT_EQ(sShifted.substr(y * 64, 40), std::string(40, '\xFF')) << "the background is opaque";
        EXPECT_TRUE(sShifted.substr(y * 64 + 40, 24) == sAlpha.substr(y * 64, 24));
    }
}

TEST(SpecialProcesses, UseTheDecimalSignOfTheLocale)
{
    const ScratchFolder objFolder;
    const std::string sSource = objFolder.sWrite("s.bmp", sBmpOf(objColours()));
    const auto sMade = [&](const char* sValue, const char* sLocale) {
        objVarnel(objFolder, {"/P54", sValue, "/S", sSource, "/T", objFolder.sPath("t.bmp")},
                  {{"LC_ALL", sLocale}});
        return objFolder.sRead("t.bmp");
    };

    const std::string sHalf = sMade("/a0.5", "C");

    EXPECT_TRUE(sMade("/a0,5", "de_DE.UTF-8") == sHalf);
    EXPECT_TRUE(sMade("/a0.5", "de_DE.UTF-8") == sHalf);
    EXPECT_FALSE(sMade("/a0,5", "C") == sHalf);
}
