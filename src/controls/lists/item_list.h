// The entries of a list: texts, each with a number (its item data).
// Room: controls/lists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct ListItem {
    std::string sText;
    std::int32_t lItemData = 0;
};

class ItemList
{
public:
    std::int32_t Count() const { return static_cast<std::int32_t>(m_aItems.size()); }
    bool bHas(std::int32_t lIndex) const { return lIndex >= 0 && lIndex < Count(); }
    const ListItem& At(std::int32_t lIndex) const { return m_aItems.at(static_cast<std::size_t>(lIndex)); }
    void Add(const std::string& sText, std::int32_t lItemData) { m_aItems.push_back({sText, lItemData}); }
    void Clear() { m_aItems.clear(); }
    /// The first entry with this text, or -1.
    std::int32_t lFind(const std::string& sText) const
    {
        for (std::int32_t l = 0; l < Count(); ++l)
            if (At(l).sText == sText)
                return l;
        return -1;
    }

private:
    std::vector<ListItem> m_aItems;
};
