// A list of entries, one of which may be selected.
// Room: controls/lists.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "src/controls/control.h"
#include "src/controls/lists/item_list.h"

class ListBoxObserver : public ControlObserver
{
public:
    virtual void ItemsChanged() {}      ///< entries came or went; ListIndex may have changed too
    virtual void ListIndexChanged() {}  ///< another entry is selected, or none
};

/// Fill it under a RedrawLock.
class ListBox : public Control
{
public:
    using Observer = ListBoxObserver;
    using Control::Control;
    ControlKind eKind() const override { return ControlKind::ListBox; }

    std::int32_t ListCount() const { return m_objItems.Count(); }
    const std::string& List(std::int32_t lIndex) const { return m_objItems.At(lIndex).sText; }
    std::int32_t ItemData(std::int32_t lIndex) const { return m_objItems.At(lIndex).lItemData; }
    std::int32_t ListIndex() const { return m_lListIndex; }  ///< -1 while no entry is selected
    std::string Text() const;                                ///< the selected entry's, or ""
    void Clear();
    void AddItem(const std::string& sText, std::int32_t lItemData = 0);
    /// Selects an entry, or none with -1, and raises OnClick if it is another one. Raises clsRaisedError
    /// (kErrInvalidProcedureCall) when there is no such entry.
    void SetListIndex(std::int32_t lIndex);

    void UserChooses(std::int32_t lIndex);  ///< raises OnClick also for the entry that is selected

    std::function<void()> OnClick;  ///< belongs to the logic

private:
    void TellHeldBack() override;

    ItemList m_objItems;
    std::int32_t m_lListIndex = -1;
    bool m_bItemsHeld = false;
    bool m_bListIndexHeld = false;
};
