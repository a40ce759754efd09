// Works in the background while the window handles its events.
#include "src/platform/qt/background_worker.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <chrono>

static constexpr std::chrono::milliseconds kFrame(10);

BackgroundWorker::BackgroundWorker() : thread_([this] { Loop(); }) {}

BackgroundWorker::~BackgroundWorker()
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wanted_.notify_one();
    thread_.join();
}

void BackgroundWorker::Loop()
{
    std::unique_lock lock(mutex_);
    while (true) {
        wanted_.wait(lock, [this] { return ending_ || !jobs_.empty(); });
        if (jobs_.empty())
            return;
        Job& job = *jobs_.front();
        jobs_.pop_front();
        lock.unlock();
        try {
            (*job.work)();
        } catch (...) {
            job.error = std::current_exception();
        }
        lock.lock();
        job.done = true;
        finished_.notify_all();
        if (QAbstractEventDispatcher* dispatcher =
                QAbstractEventDispatcher::instance(QCoreApplication::instance()->thread()))
            dispatcher->wakeUp();
    }
}

void BackgroundWorker::Run(const std::function<void()>& work, QEventLoop::ProcessEventsFlags events)
{
    Job job;
    job.work = &work;
    std::unique_lock lock(mutex_);
    jobs_.push_back(&job);
    wanted_.notify_one();
    finished_.wait_for(lock, kFrame, [&] { return job.done; });
    while (!job.done) {
        lock.unlock();
        QCoreApplication::processEvents(events | QEventLoop::WaitForMoreEvents);
        lock.lock();
    }
    if (job.error)
        std::rethrow_exception(job.error);
}
