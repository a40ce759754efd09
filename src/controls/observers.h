// The observers of a form or a control, and the handle that keeps one registered.
// Room: controls.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

/// Observers in the order in which they came. While they are told, any of them may come, go, or be destroyed.
/// What one of them throws is dropped.
/// TObserver is the base of all observers that the list takes.
template <typename TObserver>
class Observers
{
public:
    /// Enters an observer, and takes it out when the returned handle goes, which may be after the list did.
    [[nodiscard]] std::shared_ptr<void> Add(TObserver& objObserver)
    {
        if (!m_pList)
            m_pList = std::make_shared<List>();
        m_pList->aEntries.push_back(&objObserver);
        return {&objObserver, [pList = m_pList](TObserver* pGone) { pList->Remove(pGone); }};
    }
    bool bEmpty() const { return !m_pList || m_pList->aEntries.empty(); }
    /// True while an observer is being told.
    bool bTelling() const { return m_pList && m_pList->nTelling > 0; }

    /// Tells the observers that know this aspect. One that comes meanwhile has seen the new state and isn't
    /// told.
    template <typename TKnows, typename... TParameters, typename... TArguments>
    void Tell(void (TKnows::*pAspect)(TParameters...), const TArguments&... aArguments) const
    {
        if (!bEmpty())
            TellUpTo(m_pList->aEntries.size(), pAspect, aArguments...);
    }
    /// Tells of what is about to happen; one that comes meanwhile is told too, since it will hear of the end.
    template <typename TKnows, typename... TParameters, typename... TArguments>
    void TellBefore(void (TKnows::*pAspect)(TParameters...), const TArguments&... aArguments) const
    {
        if (!bEmpty())
            TellUpTo(static_cast<std::size_t>(-1), pAspect, aArguments...);
    }

private:
    struct List {
        std::vector<TObserver*> aEntries;  ///< null where one went while others were told
        int nTelling = 0;

        void Remove(TObserver* pGone)
        {
            for (TObserver*& pEntry : aEntries)
                if (pEntry == pGone) {
                    pEntry = nullptr;
                    break;
                }
            if (nTelling == 0)
                std::erase(aEntries, nullptr);
        }
    };

    template <typename TKnows, typename... TParameters, typename... TArguments>
    void TellUpTo(std::size_t nLimit, void (TKnows::*pAspect)(TParameters...),
                  const TArguments&... aArguments) const
    {
        const std::shared_ptr<List> pList = m_pList;
        struct Telling {
            List& objList;
            explicit Telling(List& objTold) : objList(objTold) { ++objList.nTelling; }
            ~Telling()
            {
                if (--objList.nTelling == 0)
                    std::erase(objList.aEntries, nullptr);
            }
        } const objTelling(*pList);
        for (std::size_t n = 0; n < std::min(nLimit, pList->aEntries.size()); ++n)
            try {
                if (TKnows* pKnows = pAs<TKnows>(pList->aEntries[n]))
                    (pKnows->*pAspect)(aArguments...);
            } catch (...) {
                // Out of memory in a view: it shows an old state, and the program goes on.
            }
    }

    template <typename TKnows>
    static TKnows* pAs(TObserver* pObserver)
    {
        if constexpr (std::is_same_v<TKnows, TObserver>)
            return pObserver;
        else
            return dynamic_cast<TKnows*>(pObserver);
    }

    std::shared_ptr<List> m_pList;  ///< made for the first observer: a form without a view needs none
};

/// Keeps an observer on a form or control for as long as it lives. A view declares it as its last member, so
/// that it goes first. A plain ControlObserver may watch any control.
class Observation
{
public:
    Observation() = default;
    template <typename TWatched>
    Observation(TWatched& objWatched, typename TWatched::Observer& objObserver)
        : m_pEntry(objWatched.Watch(objObserver))
    {
    }
    Observation(Observation&&) = default;
    Observation& operator=(Observation&&) = default;

private:
    std::shared_ptr<void> m_pEntry;
};
