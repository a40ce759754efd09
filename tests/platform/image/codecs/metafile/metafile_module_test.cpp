// Tests of loading the metafile player module.
#include "src/platform/image/codecs/metafile/metafile_module.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "src/platform/image/codecs/metafile/emf.h"
#include "src/platform/image/codecs/metafile/wmf.h"
#include "tests/platform/image/support/image_tools.h"
#include "tests/platform/image/support/metafile_maker.h"

TEST(MetafileModule, IsFoundBesideProgram)
{
    EXPECT_NE(LoadMetafileModule().play, nullptr);
    EXPECT_NE(LoadMetafileModule().measure, nullptr);
}

TEST(MetafileModule, RefusesRequestOfOtherBuild)
{
    ImageBuffer image = Pattern(2, 2, 3);
    const std::vector<std::uint8_t> file = EmfMaker(2, 2).File();
    MetafileRequest request;
    request.enhanced = true;
    request.records = file;
    request.width = request.height = 2;
    request.pixels = image.bytes.data();
    PlayMetafile* play = LoadMetafileModule().play;
    ASSERT_NE(play, nullptr);

    EXPECT_TRUE(play(&request));
    request.version += 1;
    EXPECT_FALSE(play(&request));
    EXPECT_FALSE(play(nullptr));
}

// Runs in a child process, because a loaded module stays loaded.
static void RefuseWithoutModule()
{
    setenv("VARNEL_MODULE_DIR", "/nowhere", 1);
    const bool drawing =
        Decoded(kEmfCodec, EmfMaker(2, 2).Record(Emr::kRectangle, {0, 0, 1, 1}).File()).has_value() ||
        Decoded(kWmfCodec, WmfMaker(2, 2).Record(0x041B, {1, 1, 0, 0}).File()).has_value() ||
        Decoded(kWmfCodec, WmfMaker().Record(0x041B, {1, 1, 0, 0}).File()).has_value();
    const bool is_picture = Decoded(kEmfCodec, Encoded(kEmfCodec, Pattern(2, 2, 3))).has_value() &&
                            Decoded(kWmfCodec, Encoded(kWmfCodec, Pattern(2, 2, 3))).has_value();
    std::_Exit(!drawing && is_picture ? 0 : 1);
}

TEST(MetafileModule, IsNeededOnlyForFilesThatMustBePlayed)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_EXIT(RefuseWithoutModule(), testing::ExitedWithCode(0), "");
}
