// Simulated programs that exit when the test says so.
// Room: tests/fakes.
#pragma once

#include <functional>
#include <vector>

#include "src/platform/processes.h"

class FakeProcessLauncher : public ProcessLauncher
{
public:
    std::vector<ProcessStart> aStarts;  ///< all programs launched, in order
    std::vector<std::int32_t> aWaits;   ///< timeout in milliseconds of each poll, in order
    bool bCanStart = true;
    int lLooksUntilEnd = 1;  ///< a program exits at this poll; 0: never
    std::int32_t lExitCode = 0;
    std::function<void()> OnLook;  ///< called during each poll
    int lCollections = 0;          ///< number of CollectEnded calls

    std::unique_ptr<ChildProcess> pStart(const ProcessStart& objStart) override
    {
        aStarts.push_back(objStart);
        return bCanStart ? std::make_unique<Child>(*this) : nullptr;
    }
    void CollectEnded() override { ++lCollections; }

private:
    class Child : public ChildProcess
    {
    public:
        explicit Child(FakeProcessLauncher& objLauncher) : m_objLauncher(objLauncher) {}
        bool bWaitForEnd(std::int32_t lMilliseconds) override
        {
            m_objLauncher.aWaits.push_back(lMilliseconds);
            if (m_objLauncher.OnLook)
                m_objLauncher.OnLook();
            const int lLooks = static_cast<int>(m_objLauncher.aWaits.size());
            return m_objLauncher.lLooksUntilEnd != 0 && lLooks >= m_objLauncher.lLooksUntilEnd;
        }
        std::int32_t lExitCode() const override { return m_objLauncher.lExitCode; }

    private:
        FakeProcessLauncher& m_objLauncher;
    };
};
