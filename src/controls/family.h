// Controls of one name and kind, told apart by an index: ImageViewMain(0), ImageViewMain(1), ...
// Room: controls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

#include "src/controls/frame.h"

/// Its members enter the form one after the other, as "name(index)". Indexes count from 0.
template <typename TControl>
class Family
{
public:
    /// TParent is a form or a frame; further arguments are handed to each member.
    template <typename TParent, typename... TArguments>
    Family(TParent& objParent, const std::string& sName, std::int32_t lCount, TArguments&&... aArguments)
    {
        for (std::int32_t l = 0; l < lCount; ++l)
            m_aMembers.emplace_back(objParent, sName + "(" + std::to_string(l) + ")", aArguments...);
    }
    /// One member in each frame of a family.
    Family(Family<Frame>& objFrames, const std::string& sName)
    {
        for (std::int32_t l = 0; l < objFrames.Count(); ++l)
            m_aMembers.emplace_back(objFrames(l), sName + "(" + std::to_string(l) + ")");
    }

    std::int32_t Count() const { return static_cast<std::int32_t>(m_aMembers.size()); }
    /// Throws std::out_of_range where there is no such member.
    TControl& operator()(std::int32_t lIndex) { return m_aMembers.at(static_cast<std::size_t>(lIndex)); }
    const TControl& operator()(std::int32_t lIndex) const
    {
        return m_aMembers.at(static_cast<std::size_t>(lIndex));
    }
    auto begin() { return m_aMembers.begin(); }
    auto end() { return m_aMembers.end(); }

private:
    std::deque<TControl> m_aMembers;  ///< controls don't move
};
