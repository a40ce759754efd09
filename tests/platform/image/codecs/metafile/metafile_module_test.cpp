// Finding the module that plays metafiles.
#include "src/platform/image/codecs/metafile/metafile_module.h"

#include <cstdlib>

#include "src/platform/image/codecs/metafile/emf.h"
#include "src/platform/image/codecs/metafile/wmf.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

TEST(MetafileModule, IsFoundBesideTheProgram)
{
    EXPECT_NE(objMetafileModule().pPlay, nullptr);
    EXPECT_NE(objMetafileModule().pMeasure, nullptr);
}

TEST(MetafileModule, RefusesARequestOfAnotherBuild)
{
    ImageBuffer aImage = aPattern(2, 2, 3);
    const std::vector<std::uint8_t> aFile = EmfMaker(2, 2).aFile();
    MetafileRequest objRequest;
    objRequest.bEnhanced = true;
    objRequest.aRecords = aFile;
    objRequest.lWidth = objRequest.lHeight = 2;
    objRequest.pPixels = aImage.bytes.data();
    PlayMetafile* pPlay = objMetafileModule().pPlay;
    ASSERT_NE(pPlay, nullptr);

    EXPECT_TRUE(pPlay(&objRequest));
    objRequest.nVersion += 1;
    EXPECT_FALSE(pPlay(&objRequest));
    EXPECT_FALSE(pPlay(nullptr));
}

// In a process of its own, since a module that was found is kept.
static void RefuseWithoutModule()
{
    setenv("VARNEL_MODULE_DIR", "/nowhere", 1);
    const bool bDrawing =
        aDecoded(codecEmf, EmfMaker(2, 2).Record(Emr::Rectangle, {0, 0, 1, 1}).aFile()).has_value() ||
        aDecoded(codecWmf, WmfMaker(2, 2).Record(0x041B, {1, 1, 0, 0}).aFile()).has_value() ||
        aDecoded(codecWmf, WmfMaker().Record(0x041B, {1, 1, 0, 0}).aFile()).has_value();
    const bool bPicture = aDecoded(codecEmf, aEncoded(codecEmf, aPattern(2, 2, 3))).has_value() &&
                          aDecoded(codecWmf, aEncoded(codecWmf, aPattern(2, 2, 3))).has_value();
    std::_Exit(!bDrawing && bPicture ? 0 : 1);
}

TEST(MetafileModule, IsMissedOnlyByFilesThatMustBePlayed)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_EXIT(RefuseWithoutModule(), testing::ExitedWithCode(0), "");
}
