// Work in the background: in order, with the window alive, and with what it throws.
#include "src/platform/qt/background_worker.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>
#include <atomic>
#include <semaphore>
#include <stdexcept>
#include <vector>

TEST(BackgroundWorker, ReturnsWhenTheWorkIsDone)
{
    BackgroundWorker worker;
    std::thread::id thread;

    worker.Run([&] { thread = std::this_thread::get_id(); }, QEventLoop::AllEvents);

    EXPECT_NE(thread, std::thread::id());
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST(BackgroundWorker, LetsTheWindowHandleEventsMeanwhile)
{
    BackgroundWorker worker;
    std::binary_semaphore event_came(0);
    QTimer::singleShot(0, qApp, [&] { event_came.release(); });

    // Ends only if the event is handled while it waits.
    worker.Run([&] { event_came.acquire(); }, QEventLoop::AllEvents);
}

TEST(BackgroundWorker, ThrowsWhatTheWorkThrows)
{
    BackgroundWorker worker;

    EXPECT_THROW(worker.Run([] { throw std::out_of_range("page"); }, QEventLoop::AllEvents),
                 std::out_of_range);
    bool done = false;
    worker.Run([&] { done = true; }, QEventLoop::AllEvents);
    EXPECT_TRUE(done);
}

TEST(BackgroundWorker, DoesOverlappingWorksOneAfterTheOther)
{
    BackgroundWorker worker;
    std::vector<int> order;
    std::atomic<bool> inner_begun = false;
    QTimer::singleShot(0, qApp, [&] {
        inner_begun = true;
        worker.Run([&] { order.push_back(2); }, QEventLoop::AllEvents);
    });

    worker.Run(
        [&] {
            while (!inner_begun)
                std::this_thread::yield();
            order.push_back(1);
        },
        QEventLoop::AllEvents);

    EXPECT_EQ(order, (std::vector<int>{1, 2}));
}
