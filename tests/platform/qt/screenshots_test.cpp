// Draws the windows in light and dark. With VARNEL_SCREENSHOTS set to a folder, also saves them there.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QRadioButton>
#include <algorithm>
#include <cmath>

#include "src/platform/qt/appearance.h"
#include "src/platform/qt/picture/picture_widget.h"
#include "tests/platform/qt/support/main_window_test_support.h"

namespace
{

/// A landscape: sky, sun, hills.
std::shared_ptr<ImageBuffer> Landscape()
{
    auto picture = std::make_shared<ImageBuffer>();
    picture->width = 1240;
    picture->height = 776;
    picture->channels = 3;
    picture->bytes.resize(static_cast<std::size_t>(picture->width) * picture->height * 3);
    const auto put = [&](int x, int y, double red, double green, double blue) {
        std::uint8_t* pixel =
            &picture->bytes[(static_cast<std::size_t>(y) * picture->width + static_cast<std::size_t>(x)) * 3];
        pixel[0] = static_cast<std::uint8_t>(blue);
        pixel[1] = static_cast<std::uint8_t>(green);
        pixel[2] = static_cast<std::uint8_t>(red);
    };
    for (int y = 0; y < picture->height; ++y)
        for (int x = 0; x < picture->width; ++x) {
            const double down = 1.0 * y / picture->height;
            const double sun = std::exp(-std::hypot(x - 870, y - 240) / 60);
            put(x, y, 90 + 110 * down + 165 * sun * (1 - down), 140 + 70 * down + 90 * sun, 215 - 10 * sun);
            for (int hill = 0; hill < 3; ++hill) {
                const double ridge = 430 + 90 * hill +
                                     (60 - 10 * hill) * std::sin(x / (150.0 - 25 * hill) + hill * 2.1) +
                                     20 * std::sin(x / 41.0 + hill);
                if (y > ridge)
                    put(x, y, 95 - 28 * hill, 125 - 22 * hill, 130 - 40 * hill);
            }
        }
    return picture;
}

void AddTask(Grid& grid, std::int32_t row, const std::string& cells, CellPicture picture)
{
    grid.AddItem(cells, row);
    if (picture == CellPicture::None)
        return;
    CellFormat format;
    format.ePicture = picture;
    grid.SetTextMatrix(row, 10, picture == CellPicture::imagePass ? "+" : "-");
    grid.SetFormat(row, 10, format);
}

void FillTasks(frmMain& form)
{
    Grid& grid = form.fgToDo;
    AddTask(grid, 1, "M\t\t1\tC\t/home/me/scans/*.tif\t3\ttif\t/home/me/web/*.png\t8\tpng",
            CellPicture::imagePass);
    AddTask(grid, 2, "\t\t2\tS36\t/home/me/web/*.png\t8\tpng\t/home/me/web/soft/*.png\t8\tpng",
            CellPicture::imagePass);
    AddTask(grid, 3, "M\t\t3\tC\t/home/me/photos/2026/*.jpg\t1\tjpg\t/home/me/archive/*.j2k\t14\tj2k",
            CellPicture::imageFail);
    AddTask(grid, 4, "\t\t4\tS2\t/home/me/photos/2026/*.jpg\t1\tjpg\t/home/me/thumbs/*.jpg\t1\tjpg",
            CellPicture::None);
    AddTask(grid, 5, "\t\t5\tS100\t/usr/bin/rsync\t0\t\t-a /home/me/web server:/www\t0\t", CellPicture::None);
    grid.SetRow(2);
    grid.SelectRow();
}

struct Screenshots : testing::Test {
    ShownApplication shown;

    /// Draws a window in both palettes and returns how bright each is on average.
    std::pair<double, double> Draw(QWidget& window, const QString& name)
    {
        const double light = DrawIn(false, window, name + "-light");
        const double dark = DrawIn(true, window, name + "-dark");
        QApplication::setPalette(PlainPalette(false));
        return {light, dark};
    }

private:
    static double DrawIn(bool dark, QWidget& window, const QString& name)
    {
        QApplication::setPalette(PlainPalette(dark));
        QCoreApplication::processEvents();
        const QImage image = window.grab().toImage();
        if (const QString folder = qEnvironmentVariable("VARNEL_SCREENSHOTS"); !folder.isEmpty()) {
            EXPECT_TRUE(image.save(QDir(folder).filePath(name + ".png")));
        }
        const QImage pixel = image.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        return qGray(pixel.pixel(0, 0));
    }
};

void ExpectLightAndDark(const std::pair<double, double>& brightness)
{
    EXPECT_GT(brightness.first, 170);
    EXPECT_LT(brightness.second, 90);
}

}  // namespace

TEST_F(Screenshots, ShowTheMainWindowInLightAndDark)
{
    frmMain& form = shown.app.frmMain;
    shown.Window().resize(1280, 800);
    ExpectLightAndDark(Draw(shown.Window(), "start"));

    FillTasks(form);
    form.cbOriginalFile.SetText("/home/me/scans/*.tif");
    form.cbTargetFile.SetText("/home/me/web/*.png");
    auto& picture = *dynamic_cast<PictureWidget*>(&shown.Get<QWidget>("ImageViewMain(0)"));
    picture.SetPicture(Landscape());
    picture.SetOffset({620, 388});
    picture.SetZoom(0.5);
    StatusBar& status = shown.app.frmMainMDI.sbMain;
    status.SetPanel(kPanelFile, "/home/me/scans/p-0412.tif");
    status.SetPanel(kPanelTask, "3");
    status.SetPanel(kPanelPercent, "58%");
    status.SetPanel(kPanelSeconds, "134.2");
    shown.Get<QProgressBar>("pbJob").setVisible(true);
    shown.Get<QProgressBar>("pbJob").setValue(580);
    const auto [light, dark] = Draw(shown.Window(), "main");
    EXPECT_GT(light - dark, 60);
}

TEST_F(Screenshots, ShowTheDialogsInLightAndDark)
{
    TestApplication& app = shown.app;
    app.frmScheduler.optCalendarBased.SetValue(true);
    app.frmScheduler.optWeekly.SetValue(true);
    const std::vector<std::pair<Form*, QString>> dialogs{{&app.frmOptions, "options"},
                                                         {&app.frmConversionOptions, "conversion-options"},
                                                         {&app.frmScheduler, "scheduler"},
                                                         {&app.frmTypeMatchNotification, "type-mismatch"}};
    for (const auto& [form, name] : dialogs) {
        form->SetVisible(true);
        ExpectLightAndDark(Draw(shown.mirror->Window(*form)->Widget(), name));
        form->SetVisible(false);
    }
}
