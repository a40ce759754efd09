// Every sample with a picture beside it must decode to that picture; tests/samples/README.md says how to add
// one.
#include <algorithm>
#include <filesystem>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/bmp/bmp.h"
#include "src/platform/image/codecs/ico/ani.h"
#include "src/platform/image/codecs/ico/cur.h"
#include "src/platform/image/codecs/ico/ico.h"
#include "src/platform/image/codecs/pcx/pcx.h"
#include "src/platform/image/codecs/ras/ras.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/codecs/tga/tga.h"
#include "tests/platform/image/support/raster_checks.h"

struct SampleFolder {
    const char* sFolder;
    const Codec& objCodec;
};

// How a failure names the folder.
static void PrintTo(const SampleFolder& objFolder, std::ostream* pStream)
{
    *pStream << objFolder.sFolder;
}

class RasterSamples : public testing::TestWithParam<SampleFolder>
{
protected:
    static std::vector<std::string> aFilesIn(const std::string& sFolder)
    {
        std::vector<std::string> aFound;
        for (const auto& objEntry : std::filesystem::directory_iterator(sSamplePath(sFolder))) {
            if (objEntry.is_regular_file())
                aFound.push_back(objEntry.path().string());
        }
        std::sort(aFound.begin(), aFound.end());
        return aFound;
    }

    // The samples with a picture beside them.
    static std::vector<std::string> aSamples()
    {
        std::vector<std::string> aFound = aFilesIn(GetParam().sFolder);
        std::erase_if(aFound, [](const std::string& sPath) {
            return sPath.ends_with(".pam") || !std::filesystem::exists(sPath + ".pam");
        });
        return aFound;
    }
};

TEST_P(RasterSamples, GiveThePicturesBesideThem)
{
    ASSERT_FALSE(aSamples().empty());
    for (const std::string& sSample : aSamples()) {
        const auto aFile = aFileContent(sSample);
        std::string sPicture = sSample + ".pam";
        for (std::int32_t lFrame = 0; std::filesystem::exists(sPicture); ++lFrame) {
            SCOPED_TRACE(sPicture);
            const auto aExpected = aReadPam(sPicture);
            ASSERT_TRUE(aExpected);

            const auto aImage = aDecoded(GetParam().objCodec, aFile, lFrame);

            ASSERT_TRUE(aImage);
            EXPECT_EQ(aImage->width, aExpected->width);
            EXPECT_EQ(aImage->height, aExpected->height);
            EXPECT_EQ(aImage->channels, aExpected->channels);
            EXPECT_TRUE(aImage->bytes == aExpected->bytes) << "not the same pixels";
            sPicture = sSample + "." + std::to_string(lFrame + 1) + ".pam";
        }
    }
}

TEST_P(RasterSamples, OfTheFolderRefusedAreRefused)
{
    const auto aRefused = aFilesIn(std::string(GetParam().sFolder) + "/refused");
    EXPECT_GE(aRefused.size(), 4u);
    for (const std::string& sPath : aRefused)
        EXPECT_FALSE(aDecoded(GetParam().objCodec, aFileContent(sPath))) << sPath;
}

TEST_P(RasterSamples, AreRecognisedByTheirContentAndNoOtherFormatClaimsThem)
{
    for (const std::string& sSample : aSamples()) {
        const auto aFile = aFileContent(sSample);
        InputFile objFile(aFile);
        const std::string sExtension = std::filesystem::path(sSample).extension().string().substr(1);

        EXPECT_EQ(pCodecOfContent(objFile.Head(), sExtension), &GetParam().objCodec) << sSample;
        for (const Codec* pCodec : aCodecs())
            EXPECT_EQ(pCodec->Sniff(objFile.Head(), sExtension), pCodec == &GetParam().objCodec) << sSample;
    }
}

TEST_P(RasterSamples, ThatAreCutInTheMiddleAreRefused)
{
    for (const std::string& sSample : aSamples()) {
        const auto aFile = aFileContent(sSample);
        for (const std::size_t nSize : {aFile.size() / 2, aFile.size() / 4, std::size_t{20}, std::size_t{1}})
            EXPECT_FALSE(aDecoded(GetParam().objCodec, Bytes(aFile).first(std::min(nSize, aFile.size() - 1))))
                << sSample << " with " << nSize << " bytes";
    }
}

TEST_P(RasterSamples, MayLieInAnyByteAndDoNoHarm)
{
    for (const std::string& sSample : aSamples())
        ExpectAnyByteMayLie(GetParam().objCodec, aFileContent(sSample));
}

TEST_P(RasterSamples, OfOtherFormatsAreRefused)
{
    const std::string sOwn = GetParam().sFolder;
    for (const std::string sFolder : {"bmp", "pcx", "ras", "tga", "ico", "cur", "ani", "jpeg"}) {
        // Icons and cursors are told apart by the registry; what opens the one can open the other.
        const bool bIcons = (sOwn == "ico" || sOwn == "cur") && (sFolder == "ico" || sFolder == "cur");
        for (const std::string& sPath :
             sFolder == sOwn || bIcons ? std::vector<std::string>{} : aFilesIn(sFolder))
            EXPECT_FALSE(aDecoded(GetParam().objCodec, aFileContent(sPath))) << sPath;
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, RasterSamples,
                         testing::Values(SampleFolder{"bmp", kBmpCodec}, SampleFolder{"pcx", kPcxCodec},
                                         SampleFolder{"ras", kRasCodec}, SampleFolder{"tga", kTgaCodec},
                                         SampleFolder{"ico", kIcoCodec}, SampleFolder{"cur", kCurCodec},
                                         SampleFolder{"ani", kAniCodec}),
                         [](const auto& objInfo) { return std::string(objInfo.param.sFolder); });
