// Simulated programs that exit when the test says so.
// Room: tests/fakes.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "src/platform/processes.h"

class FakeProcessLauncher : public ProcessLauncher
{
public:
    std::vector<ProcessStart> starts;  ///< all programs launched, in order
    std::vector<std::string> opened;   ///< all calls of the desktop as "path PATH" or "address ADDRESS"
    std::vector<std::int32_t> waits;   ///< timeout in milliseconds of each poll, in order
    bool can_start = true;
    bool can_open = true;
    int polls_until_exit = 1;  ///< a program exits at this poll; 0: never
    std::int32_t exit_code = 0;
    std::function<void()> on_poll;  ///< called during each poll
    int collect_calls = 0;          ///< number of CollectEnded calls

    std::unique_ptr<ChildProcess> pStart(const ProcessStart& start) override
    {
        starts.push_back(start);
        return can_start ? std::make_unique<Child>(*this) : nullptr;
    }
    std::unique_ptr<ChildProcess> pOpenPath(const std::string& path) override { return Open("path " + path); }
    std::unique_ptr<ChildProcess> pOpenAddress(const std::string& address) override
    {
        return Open("address " + address);
    }
    void CollectEnded() override { ++collect_calls; }

private:
    class Child : public ChildProcess
    {
    public:
        explicit Child(FakeProcessLauncher& launcher) : launcher_(launcher) {}
        bool bWaitForEnd(std::int32_t milliseconds) override
        {
            launcher_.waits.push_back(milliseconds);
            if (launcher_.on_poll)
                launcher_.on_poll();
            const int polls = static_cast<int>(launcher_.waits.size());
            return launcher_.polls_until_exit != 0 && polls >= launcher_.polls_until_exit;
        }
        std::int32_t lExitCode() const override { return launcher_.exit_code; }

    private:
        FakeProcessLauncher& launcher_;
    };
    std::unique_ptr<ChildProcess> Open(const std::string& what)
    {
        opened.push_back(what);
        return can_open ? std::make_unique<Child>(*this) : nullptr;
    }
};
