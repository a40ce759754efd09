// A value that isn't a control's, such as the state of a run, with observers.
// Room: controls.
#pragma once

#include <memory>
#include <utility>

#include "src/controls/observers.h"

class ValueObserver
{
public:
    virtual void ValueChanged() = 0;

protected:
    virtual ~ValueObserver() = default;
};

/// Reads and is assigned like a plain T. Observers are notified after each assignment of a different value.
template <typename T>
class Observed
{
public:
    using Observer = ValueObserver;
    explicit Observed(T tValue) : m_tValue(std::move(tValue)) {}
    Observed(const Observed&) = delete;
    Observed& operator=(const Observed&) = delete;

    Observed& operator=(const T& tValue)
    {
        if (m_tValue == tValue)
            return *this;
        m_tValue = tValue;
        m_objObservers.Tell(&ValueObserver::ValueChanged);
        return *this;
    }
    operator const T&() const { return m_tValue; }

    /// For Observation.
    [[nodiscard]] std::shared_ptr<void> Watch(ValueObserver& objObserver)
    {
        return m_objObservers.Add(objObserver);
    }

private:
    T m_tValue;
    Observers<ValueObserver> m_objObservers;
};
