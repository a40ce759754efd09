// Previews are made elsewhere, and only the newest one wanted is shown.
#include "src/platform/qt/preview_worker.h"

#include <gtest/gtest.h>

#include <QTest>
#include <semaphore>
#include <thread>
#include <vector>

#include "src/platform/image_buffer.h"
#include "tests/fakes/recording_image_transform.h"

namespace
{

std::shared_ptr<const ImageBuffer> Picture(std::int32_t width)
{
    auto picture = std::make_shared<ImageBuffer>();
    picture->width = width;
    return picture;
}

struct PreviewWorkers : testing::Test {
    RecordingImageTransform operations;
    std::vector<std::int32_t> shown;  ///< widths of the pictures shown; 0 for none

    ShowImage Show()
    {
        return [this](const std::shared_ptr<const ImageBuffer>& image) {
            shown.push_back(image ? image->width : 0);
        };
    }
    void WaitForOne()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !shown.empty(); }, 5000));
        QTest::qWait(10);
    }
};

}  // namespace

TEST_F(PreviewWorkers, MakeAPreviewOnAnotherThreadAndShowItOnThisOne)
{
    PreviewWorker worker(operations);
    std::thread::id made;
    std::thread::id shown_on;
    worker.Run(
        [&](ImageTransform& given) {
            EXPECT_EQ(&given, &operations);
            made = std::this_thread::get_id();
            return Picture(1);
        },
        [&](const std::shared_ptr<const ImageBuffer>&) {
            shown_on = std::this_thread::get_id();
            shown.push_back(1);
        });
    WaitForOne();

    EXPECT_NE(made, std::this_thread::get_id());
    EXPECT_EQ(shown_on, std::this_thread::get_id());
}

TEST_F(PreviewWorkers, DropAllButTheNewest)
{
    PreviewWorker worker(operations);
    std::binary_semaphore begun(0);
    std::binary_semaphore go_on(0);
    int made = 0;
    worker.Run(
        [&](ImageTransform&) {
            begun.release();
            go_on.acquire();
            return Picture(1);
        },
        Show());
    begun.acquire();
    for (const std::int32_t width : {2, 3, 4})
        worker.Run(
            [&made, width](ImageTransform&) {
                ++made;
                return Picture(width);
            },
            Show());
    go_on.release();
    WaitForOne();

    EXPECT_EQ(made, 1);
    EXPECT_EQ(shown, std::vector<std::int32_t>{4});
}

TEST_F(PreviewWorkers, ShowNothingForAPreviewThatFails)
{
    PreviewWorker worker(operations);
    worker.Run([](ImageTransform&) -> std::shared_ptr<const ImageBuffer> { throw std::bad_alloc(); }, Show());
    WaitForOne();

    EXPECT_EQ(shown, std::vector<std::int32_t>{0});
}
