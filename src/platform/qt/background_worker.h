// A thread for work that would stall the window.
// Room: platform/qt.
#pragma once

#include <QEventLoop>
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

/// Does works one after the other, in order.
class BackgroundWorker
{
public:
    BackgroundWorker();
    /// Waits for what is in work.
    ~BackgroundWorker();
    BackgroundWorker(const BackgroundWorker&) = delete;
    BackgroundWorker& operator=(const BackgroundWorker&) = delete;

    /// Handles events until the work is done, unless that takes less than a frame. Throws what the work
    /// throws. Call it on the window's thread.
    void Run(const std::function<void()>& work, QEventLoop::ProcessEventsFlags events);

private:
    struct Job {
        const std::function<void()>* work = nullptr;
        std::exception_ptr error;
        bool done = false;
    };
    void Loop();

    std::mutex mutex_;
    std::condition_variable wanted_;
    std::condition_variable finished_;
    std::deque<Job*> jobs_;
    bool ending_ = false;
    std::thread thread_;
};
