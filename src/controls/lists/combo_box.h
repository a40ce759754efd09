// A drop-down list of entries beside a text.
// Room: controls/lists.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "src/controls/lists/item_list.h"
#include "src/controls/text_box.h"

/// Whether a person can type a text that is no entry.
enum class ComboStyle { Editable, ListOnly };

class ComboBoxObserver : public TextObserver
{
public:
    virtual void ItemsChanged() {}      ///< entries came or went; ListIndex and Text may have changed too
    virtual void ListIndexChanged() {}  ///< an entry was selected, maybe the same again, or none is now
};

/// Fill it under a RedrawLock.
class ComboBox : public TextControl
{
public:
    using Observer = ComboBoxObserver;
    ComboBox(Form& frm, std::string sName, ComboStyle eStyle = ComboStyle::Editable)
        : TextControl(frm, std::move(sName)), m_eStyle(eStyle)
    {
    }
    ComboBox(Frame& frame, std::string sName, ComboStyle eStyle = ComboStyle::Editable)
        : TextControl(frame, std::move(sName)), m_eStyle(eStyle)
    {
    }
    ControlKind eKind() const override { return ControlKind::ComboBox; }
    ComboStyle eStyle() const { return m_eStyle; }

    std::int32_t ListCount() const { return m_objItems.Count(); }
    const std::string& List(std::int32_t lIndex) const { return m_objItems.At(lIndex).sText; }
    std::int32_t ItemData(std::int32_t lIndex) const { return m_objItems.At(lIndex).lItemData; }
    std::int32_t ListIndex() const { return m_lListIndex; }  ///< -1 while no entry is selected
    void Clear();                                            ///< no entries, no selection, empty text
    void AddItem(const std::string& sText, std::int32_t lItemData = 0);
    /// Selects an entry, makes its text the text, and raises OnClick, also when it was selected already; -1
    /// selects none. Raises clsRaisedError (kErrInvalidProcedureCall) when there is no such entry.
    void SetListIndex(std::int32_t lIndex);
    /// Sets a free text and deselects the entry. A ListOnly box selects the entry with that text instead, if
    /// there is one and it isn't selected.
    void SetText(const std::string& sText);

    void UserTypes(const std::string& sText);  ///< the whole text as it is now
    void UserChooses(std::int32_t lIndex);

    std::function<void()> OnClick;  ///< belongs to the logic: an entry was selected

private:
    void Select(std::int32_t lIndex);
    void TellHeldBack() override;

    ComboStyle m_eStyle;
    ItemList m_objItems;
    std::int32_t m_lListIndex = -1;
    bool m_bItemsHeld = false;
    bool m_bListIndexHeld = false;
};
