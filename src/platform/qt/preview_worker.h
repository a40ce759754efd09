// Makes previews in the background; only the newest one wanted is shown.
// Room: platform/qt.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "src/forms/editing_hooks.h"

/// Uses a separate set of operations, because a run may be using the program's.
class PreviewWorker
{
public:
    explicit PreviewWorker(ImageTransform& operations);
    /// Waits for the preview in work; it isn't shown.
    ~PreviewWorker();
    PreviewWorker(const PreviewWorker&) = delete;
    PreviewWorker& operator=(const PreviewWorker&) = delete;

    /// Replaces whatever preview was wanted before. fnShow is called on the window's thread.
    void Run(MakePreview make, ShowImage show);

private:
    struct Job {
        MakePreview make;
        ShowImage show;
        std::uint64_t number = 0;
    };
    /// Outlives the worker in results that are on their way.
    struct State {
        std::uint64_t newest = 0;  ///< the window's thread only
    };
    void Loop();

    ImageTransform& operations_;
    std::shared_ptr<State> state_ = std::make_shared<State>();
    std::mutex mutex_;
    std::condition_variable wanted_;
    std::optional<Job> next_;
    bool ending_ = false;
    std::thread thread_;
};
