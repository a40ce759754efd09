// Drops previews that are no longer wanted.
#include "src/platform/qt/preview_worker.h"

#include <QCoreApplication>
#include <utility>

#include "src/platform/image_transform.h"

PreviewWorker::PreviewWorker(ImageTransform& operations)
    : operations_(operations), thread_([this] { Loop(); })
{
}

PreviewWorker::~PreviewWorker()
{
    ++state_->newest;
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        next_.reset();
    }
    wanted_.notify_one();
    thread_.join();
}

void PreviewWorker::Run(MakePreview make, ShowImage show)
{
    ++state_->newest;
    {
        const std::lock_guard lock(mutex_);
        next_ = Job{std::move(make), std::move(show), state_->newest};
    }
    wanted_.notify_one();
}

void PreviewWorker::Loop()
{
    std::unique_lock lock(mutex_);
    while (true) {
        wanted_.wait(lock, [this] { return ending_ || next_; });
        if (ending_)
            return;
        Job job = std::move(*next_);
        next_.reset();
        lock.unlock();
        std::shared_ptr<const ImageBuffer> image;
        try {
            image = job.make(operations_);
        } catch (...) {
            image = nullptr;  // out of memory: no preview
        }
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [state = state_, number = job.number, show = std::move(job.show), image = std::move(image)] {
                if (state->newest == number)
                    show(image);
            },
            Qt::QueuedConnection);
        lock.lock();
    }
}
