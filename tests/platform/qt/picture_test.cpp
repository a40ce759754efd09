// The picture widget: levels, zoom, panning, alpha, and its view.
#include <gtest/gtest.h>

#include <algorithm>

#include <QWheelEvent>

#include "src/platform/qt/picture/image_view_view.h"
#include "tests/platform/qt/support/bound_form.h"

namespace
{

std::shared_ptr<ImageBuffer> Picture(int width, int height, int channels, std::uint8_t value)
{
    auto picture = std::make_shared<ImageBuffer>();
    picture->width = width;
    picture->height = height;
    picture->channels = channels;
    picture->bytes.assign(static_cast<std::size_t>(width) * height * channels, value);
    return picture;
}

struct ViewForm : TestForm {
    ImageView view{*this, "view"};
};

struct PictureViews : testing::Test {
    ViewForm form;
    BoundForm bound{form};
    PictureWidget& widget = bound.Add(new PictureWidget, "view");

    void Bind()
    {
        bound.Window().resize(424, 324);
        bound.Bind();
    }
    QColor Drawn(QPoint at) { return widget.grab().toImage().pixelColor(at); }
    QPoint Middle() { return widget.rect().center(); }
};

}  // namespace

TEST(PictureLevels, HalveUntilThePictureIsSmall)
{
    const auto levels = PictureLevels::Make(Picture(2001, 1001, 3, 100));

    ASSERT_EQ(levels->Count(), 3u);
    EXPECT_EQ(levels->Level(1).size(), QSize(1001, 501));
    EXPECT_EQ(levels->Level(2).size(), QSize(501, 251));
    EXPECT_EQ(levels->Level(2).pixelColor(500, 250), QColor(100, 100, 100));
}

TEST(PictureLevels, TakeTheMeanOfFourPixels)
{
    auto picture = Picture(1024, 2, 1, 0);
    picture->bytes[0] = 200;
    picture->bytes[1025] = 100;

    const auto levels = PictureLevels::Make(picture);

    EXPECT_EQ(levels->Level(1).pixelColor(0, 0).red(), 75);
    EXPECT_EQ(levels->Level(1).pixelColor(1, 0).red(), 0);
}

TEST(PictureLevels, WeighColoursByTheirAlpha)
{
    auto picture = Picture(1024, 2, 4, 0);
    const std::uint8_t red[4] = {0, 0, 255, 255};
    std::copy(red, red + 4, picture->bytes.begin());

    const auto levels = PictureLevels::Make(picture);

    EXPECT_EQ(levels->Level(1).pixelColor(0, 0).alpha(), 64);
    EXPECT_EQ(levels->Level(1).pixelColor(0, 0).red(), 255);
}

TEST(PictureLevels, HaveAsManyPixelsAsAreDrawn)
{
    const auto levels = PictureLevels::Make(Picture(4096, 16, 1, 0));

    EXPECT_EQ(levels->LevelFor(10), 0u);
    EXPECT_EQ(levels->LevelFor(0.51), 0u);
    EXPECT_EQ(levels->LevelFor(0.5), 1u);
    EXPECT_EQ(levels->LevelFor(0.2), 2u);
    EXPECT_EQ(levels->LevelFor(0.01), levels->Count() - 1);
}

TEST_F(PictureViews, DrawThePictureInTheMiddle)
{
    Bind();
    form.view.SetImage(Picture(100, 100, 3, 50));

    EXPECT_EQ(Drawn(Middle()), QColor(50, 50, 50));
    EXPECT_EQ(Drawn({2, 2}), widget.palette().color(QPalette::Base));
}

TEST_F(PictureViews, TellTheControlHowLargeTheViewIs)
{
    Bind();
    EXPECT_EQ(form.view.ViewWidth(), widget.width());

    form.view.SetImage(Picture(4000, 1000, 1, 50));
    form.view.FitToWindow();

    EXPECT_NEAR(widget.property("zoom").toDouble(), widget.width() / 4000.0, 1e-9);
    EXPECT_EQ(Drawn({1, Middle().y()}), QColor(50, 50, 50));
}

TEST_F(PictureViews, KeepThePointUnderThePointerWhileZooming)
{
    Bind();
    form.view.SetImage(Picture(1000, 1000, 1, 50));
    form.view.FitToWindow();
    const QPointF at(Middle() + QPoint(60, -20));
    const auto under = [&] {
        const QPointF away = at - QPointF(widget.width() / 2.0, widget.height() / 2.0);
        return QPointF(form.view.OffsetX(), form.view.OffsetY()) + away / form.view.Zoom();
    };
    const QPointF before = under();
    const double zoom = form.view.Zoom();

    QWheelEvent wheel(at, widget.mapToGlobal(at), {}, {0, 240}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &wheel);

    EXPECT_NEAR(form.view.Zoom(), zoom * 1.25 * 1.25, 1e-9);
    EXPECT_NEAR(under().x(), before.x(), 1e-6);
    EXPECT_NEAR(under().y(), before.y(), 1e-6);
}

TEST_F(PictureViews, PanByDragging)
{
    Bind();
    form.view.SetImage(Picture(1000, 1000, 1, 50));
    form.view.SetZoom(2);

    QTest::mousePress(&widget, Qt::LeftButton, {}, Middle());
    QTest::mouseMove(&widget, Middle() + QPoint(40, 20));
    QMouseEvent move(QEvent::MouseMove, Middle() + QPoint(40, 20),
                     widget.mapToGlobal(Middle() + QPoint(40, 20)), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &move);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, Middle() + QPoint(40, 20));

    EXPECT_NEAR(form.view.OffsetX(), 480, 1e-9);
    EXPECT_NEAR(form.view.OffsetY(), 490, 1e-9);
}

TEST_F(PictureViews, ShowChecksBehindTransparentPixels)
{
    Bind();
    form.view.SetImage(Picture(100, 100, 4, 0));
    const QImage drawn = widget.grab().toImage();

    EXPECT_NE(drawn.pixelColor(Middle()), drawn.pixelColor(Middle() + QPoint(8, 0)));
}

TEST_F(PictureViews, MakeTheLevelsOfALargePictureInTheBackground)
{
    Bind();
    auto picture = Picture(4000, 2000, 1, 0);
    for (std::size_t n = 0; n < picture->bytes.size(); n += 2)
        picture->bytes[n] = 200;  // fine stripes: grey once they are drawn small and smoothly
    form.view.SetImage(picture);
    form.view.FitToWindow();

    EXPECT_TRUE(QTest::qWaitFor([&] { return Drawn(Middle()) == QColor(100, 100, 100); }, 10000));
}

TEST_F(PictureViews, DropThePictureThatIsNoLongerShown)
{
    Bind();
    std::weak_ptr<const ImageBuffer> old;
    {
        auto picture = Picture(4000, 2000, 1, 0);
        old = picture;
        form.view.SetImage(std::move(picture));
    }
    form.view.SetImage(nullptr);

    EXPECT_TRUE(QTest::qWaitFor([&] { return old.expired(); }, 10000));
    EXPECT_EQ(Drawn(Middle()), widget.palette().color(QPalette::Base));
    EXPECT_EQ(widget.accessibleDescription(), "");
}

TEST_F(PictureViews, DescribeFileAndSize)
{
    Bind();
    form.view.SetTag("/IN/A.PNG");
    form.view.SetImage(Picture(40, 30, 1, 0));

    EXPECT_EQ(widget.accessibleDescription(), QString::fromUtf8("/IN/A.PNG, 40 × 30"));
}
