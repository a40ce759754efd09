// Runs parts of an operation on threads that live as long as the operation.
#include "src/platform/image/base/parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

std::size_t nCores()
{
    static const std::size_t nFound = std::max(1u, std::thread::hardware_concurrency());
    return nFound;
}

void RunParts(std::size_t nParts, const std::function<void(std::size_t)>& fnPart)
{
    std::atomic<std::size_t> nNext = 0;
    std::exception_ptr pThrown;
    std::mutex objLock;
    const auto Work = [&] {
        for (std::size_t i = nNext++; i < nParts; i = nNext++) {
            try {
                fnPart(i);
            } catch (...) {
                const std::lock_guard objGuard(objLock);
                if (!pThrown)
                    pThrown = std::current_exception();
            }
        }
    };
    {
        std::vector<std::jthread> aThreads;
        try {
            for (std::size_t i = 1; i < std::min(nCores(), nParts); ++i)
                aThreads.emplace_back(Work);
        } catch (const std::system_error&) {
            // The threads that there are share all parts.
        } catch (const std::bad_alloc&) {
        }
        Work();
    }
    if (pThrown)
        std::rethrow_exception(pThrown);
}
