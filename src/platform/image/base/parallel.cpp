// Runs the parts of an operation on threads that live as long as the operation.
#include "src/platform/image/base/parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

std::size_t CoreCount()
{
    static const std::size_t kFound = std::max(1u, std::thread::hardware_concurrency());
    return kFound;
}

void RunParts(std::size_t parts, const std::function<void(std::size_t)>& part)
{
    std::atomic<std::size_t> next = 0;
    std::exception_ptr thrown;
    std::mutex lock;
    const auto work = [&] {
        for (std::size_t i = next++; i < parts; i = next++) {
            try {
                part(i);
            } catch (...) {
                const std::lock_guard guard(lock);
                if (!thrown)
                    thrown = std::current_exception();
            }
        }
    };
    {
        std::vector<std::jthread> threads;
        try {
            for (std::size_t i = 1; i < std::min(CoreCount(), parts); ++i)
                threads.emplace_back(work);
        } catch (const std::system_error&) {
            // The threads started so far share the work.
        } catch (const std::bad_alloc&) {
        }
        work();
    }
    if (thrown)
        std::rethrow_exception(thrown);
}
