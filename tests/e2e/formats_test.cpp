// Compares every writer and reader with other programs.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/e2e/support/program.h"
#include "tests/support/paths.h"

namespace
{

// Mean difference in levels between two images, decoded by another program; 1000 if they can't be compared.
double dDifference(const std::string& sLeft, const std::string& sRight)
{
    const std::string sA = sReferenceDecode(sLeft);
    const std::string sB = sReferenceDecode(sRight);
    if (sA.empty() || sA.size() != sB.size())
        return 1000;
    double dSum = 0;
    for (std::size_t i = 0; i < sA.size(); ++i)
        dSum += std::abs(static_cast<unsigned char>(sA[i]) - static_cast<unsigned char>(sB[i]));
    return dSum / static_cast<double>(sA.size());
}

}  // namespace

TEST(Formats, AreReadCorrectlyByOtherPrograms)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");

    for (const char* sExtension : {"bmp", "tif", "j2k", "pcx", "png", "ras", "tga"}) {
        const std::string sTarget = objFolder.sPath(std::string("o.") + sExtension);
        objVarnel(objFolder, {"/S", sBmp, "/T", sTarget});
        EXPECT_EQ(dDifference(sTarget, sBmp), 0) << sExtension;
    }
    for (const auto& [sExtension, dMost] : {std::pair{"jpg", 3.0}, std::pair{"gif", 9.0}}) {
        const std::string sTarget = objFolder.sPath(std::string("o.") + sExtension);
        objVarnel(objFolder, {"/S", sBmp, "/T", sTarget, "/4", "90"});
        EXPECT_LT(dDifference(sTarget, sBmp), dMost) << sExtension;
    }
}

TEST(Metafiles, RoundTripWithoutLoss)
{
    const ScratchFolder objFolder;
    const std::string sBmp = objFolder.sCopySample("landscape-small.bmp", "a.bmp");

    for (const char* sExtension : {"emf", "wmf"}) {
        const std::string sMeta = objFolder.sPath(std::string("m.") + sExtension);
        const std::string sBack = objFolder.sPath(std::string("back-") + sExtension + ".bmp");
        objVarnel(objFolder, {"/S", sBmp, "/T", sMeta});
        objVarnel(objFolder, {"/S", sMeta, "/T", sBack});
        EXPECT_EQ(dDifference(sBack, sBmp), 0) << sExtension;
    }
}

TEST(Formats, AreReadCorrectlyFromOtherPrograms)
{
    const ScratchFolder objFolder;
    const std::string sPlain = objFolder.sPath("a.ppm");
    ASSERT_EQ(objRun({ImageMagick("convert"), objFolder.sCopySample("landscape-small.bmp", "a.bmp"), sPlain})
                  .lStatus,
              0);

    for (const std::string sExtension :
         {"bmp", "tif", "jp2", "pcx", "png", "ras", "tga", "gif", "jpg", "ico", "cur"}) {
        const std::string sForeign = objFolder.sPath("f." + sExtension);
        const std::string sOurs = objFolder.sPath("ours-" + sExtension + ".png");
        const std::string sPrefix = sExtension == "ras" ? "sun:" : "";
        // ImageMagick writes and reads Targa upside down.
        const bool bTarga = sExtension == "tga";
        const std::vector<std::string> aMaker = bTarga ? std::vector<std::string>{"gm", "convert"}
                                                       : std::vector<std::string>{ImageMagick("convert")};
        std::vector<std::string> aCommand = aMaker;
        aCommand.insert(aCommand.end(), {sPlain, sPrefix + sForeign});
        ASSERT_EQ(objRun(aCommand).lStatus, 0) << sExtension;

        objVarnel(objFolder, {"/S", sForeign, "/F-1", "/T", sOurs});

        EXPECT_LT(dDifference(sOurs, bTarga ? sPlain : sForeign), 0.6) << sExtension;
    }
}

TEST(AnimatedCursor, DecodesLikeTheIconItContains)
{
    const ScratchFolder objFolder;
    const std::string sIcon = objFolder.sCopySample("graphics/icon.ico", "icon.ico");
    const std::string sBytes = objFolder.sRead("icon.ico");
    const auto sNumber = [](std::size_t n) {
        std::string s;
        for (int l = 0; l < 4; ++l, n >>= 8)
            s += static_cast<char>(n & 255);
        return s;
    };
    // RIFF ACON with a header chunk for two frames, and the icon twice.
    const std::string sIconChunk =
        "icon" + sNumber(sBytes.size()) + sBytes + (sBytes.size() % 2 ? std::string(1, 0) : "");
    const std::string sList = "fram" + sIconChunk + sIconChunk;
    const std::string sHeader = "anih" + sNumber(36) + sNumber(36) + sNumber(2) + sNumber(2) +
                                std::string(16, '\0') + sNumber(6) + sNumber(1);
    const std::string sBody = "ACON" + sHeader + "LIST" + sNumber(sList.size()) + sList;
    const std::string sAni = objFolder.sWrite("icon.ani", "RIFF" + sNumber(sBody.size()) + sBody);

    objVarnel(objFolder, {"/S", sAni, "/T", objFolder.sPath("ani.png")});
    objVarnel(objFolder, {"/S", sIcon, "/T", objFolder.sPath("ico.png")});

    EXPECT_EQ(dDifference(objFolder.sPath("ani.png"), objFolder.sPath("ico.png")), 0);
}
