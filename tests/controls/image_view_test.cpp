// Image views: which picture, how large, which part of it.
#include "src/controls/image_view.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>

#include "src/platform/image_buffer.h"
#include "tests/fakes/recording_views.h"

namespace
{

std::shared_ptr<const ImageBuffer> pPicture(std::int32_t lWidth, std::int32_t lHeight)
{
    auto pImage = std::make_shared<ImageBuffer>();
    pImage->width = lWidth;
    pImage->height = lHeight;
    return pImage;
}

struct ViewForm : Form {
    ViewForm() : Form("frmView") { ImageView1.UserResizes(200, 100); }
    ImageView ImageView1{*this, "ImageView1"};
};

}  // namespace

TEST(ImageView, IsBlankWhenNew)
{
    ViewForm frm;
    EXPECT_EQ(frm.ImageView1.pImage(), nullptr);
    EXPECT_EQ(frm.ImageView1.ImageWidth(), 0);
    frm.ImageView1.FitToWindow();
    EXPECT_EQ(frm.ImageView1.Zoom(), 1);
}

TEST(ImageView, SharesItsPictureAndShowsItsMiddle)
{
    ViewForm frm;
    RecordingView<ImageView> objView(frm.ImageView1);
    const auto pImage = pPicture(40, 30);

    frm.ImageView1.SetImage(pImage, 3);

    EXPECT_EQ(frm.ImageView1.pImage(), pImage);
    EXPECT_EQ(frm.ImageView1.Page(), 3);
    EXPECT_EQ(frm.ImageView1.OffsetX(), 20);
    EXPECT_EQ(frm.ImageView1.OffsetY(), 15);
    EXPECT_EQ(objView.sTold, "image ");

    frm.ImageView1.SetImage(nullptr);
    frm.ImageView1.SetImage(nullptr);
    EXPECT_EQ(frm.ImageView1.Page(), 0);
    EXPECT_EQ(objView.sTold, "image image ");
    EXPECT_EQ(pImage.use_count(), 1);
}

TEST(ImageView, FitsAPictureByItsLongerSide)
{
    ViewForm frm;
    frm.ImageView1.SetImage(pPicture(400, 100));
    frm.ImageView1.FitToWindow();
    EXPECT_EQ(frm.ImageView1.Zoom(), 0.5);
    EXPECT_EQ(frm.ImageView1.ShownWidth(), 200);
    EXPECT_EQ(frm.ImageView1.ShownHeight(), 50);

    frm.ImageView1.SetImage(pPicture(20, 50));
    frm.ImageView1.FitToWindow();
    EXPECT_EQ(frm.ImageView1.Zoom(), 2);
}

TEST(ImageView, IsDrawnOnceUnderALock)
{
    ViewForm frm;
    RecordingView<ImageView> objView(frm.ImageView1);
    {
        const RedrawLock objLock(frm.ImageView1);
        frm.ImageView1.SetImage(pPicture(400, 100));
        frm.ImageView1.SetImage(pPicture(400, 200));
        frm.ImageView1.SetZoom(3);
        frm.ImageView1.FitToWindow();
    }
    EXPECT_EQ(objView.sTold, "image zoom ");
}

TEST(ImageView, KeepsZoomAndOffsetsWithinTheirLimits)
{
    ViewForm frm;
    frm.ImageView1.SetImage(pPicture(40, 30));
    frm.ImageView1.SetZoom(0);
    EXPECT_EQ(frm.ImageView1.Zoom(), 0.01);
    frm.ImageView1.SetZoom(99);
    EXPECT_EQ(frm.ImageView1.Zoom(), 10);
    frm.ImageView1.SetZoom(std::nan(""));
    EXPECT_EQ(frm.ImageView1.Zoom(), 10);

    frm.ImageView1.SetOffset(-5, 99);
    EXPECT_EQ(frm.ImageView1.OffsetX(), 0);
    EXPECT_EQ(frm.ImageView1.OffsetY(), 30);
    frm.ImageView1.SetOffset(std::nan(""), 5);
    EXPECT_EQ(frm.ImageView1.OffsetX(), 0);
    EXPECT_EQ(frm.ImageView1.OffsetY(), 5);
}

TEST(ImageView, TellsTheLogicOnlyOfAPersonsZoomAndScroll)
{
    ViewForm frm;
    frm.ImageView1.SetImage(pPicture(40, 30));
    std::string sRaised;
    frm.ImageView1.OnZoom = [&] { sRaised += "zoom "; };
    frm.ImageView1.OnScroll = [&] { sRaised += "scroll "; };
    frm.ImageView1.OnResize = [&] { sRaised += "resize "; };

    frm.ImageView1.SetZoom(2);
    frm.ImageView1.SetOffset(1, 1);
    EXPECT_EQ(sRaised, "");
    frm.ImageView1.UserZooms(2);
    frm.ImageView1.UserZooms(3);
    frm.ImageView1.UserScrolls(2, 2);
    frm.ImageView1.UserResizes(10, 10);
    frm.ImageView1.UserResizes(10, 10);
    frm.ImageView1.SetEnabled(false);
    frm.ImageView1.UserZooms(4);
    frm.ImageView1.UserScrolls(3, 3);

    EXPECT_EQ(sRaised, "zoom scroll resize ");
    EXPECT_EQ(frm.ImageView1.Zoom(), 3);
}
