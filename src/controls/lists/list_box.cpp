// Keeps a list box's entries and its selection.
#include "src/controls/lists/list_box.h"

#include "src/base/raised_error.h"

std::string ListBox::Text() const
{
    return m_lListIndex < 0 ? std::string() : List(m_lListIndex);
}

void ListBox::Clear()
{
    if (ListCount() == 0)
        return;
    m_objItems.Clear();
    m_lListIndex = -1;
    TellOrHold(m_bItemsHeld, &ListBoxObserver::ItemsChanged);
}

void ListBox::AddItem(const std::string& sText, std::int32_t lItemData)
{
    m_objItems.Add(sText, lItemData);
    TellOrHold(m_bItemsHeld, &ListBoxObserver::ItemsChanged);
}

void ListBox::SetListIndex(std::int32_t lIndex)
{
    if (lIndex != -1 && !m_objItems.bHas(lIndex))
        throw clsRaisedError(kErrInvalidProcedureCall, "Invalid property value");
    if (lIndex == m_lListIndex)
        return;
    m_lListIndex = lIndex;
    TellOrHold(m_bListIndexHeld, &ListBoxObserver::ListIndexChanged);
    Raise(OnClick);
}

void ListBox::UserChooses(std::int32_t lIndex)
{
    if (!bAccepts(&ListBoxObserver::ListIndexChanged) || !m_objItems.bHas(lIndex))
        return;
    if (lIndex == m_lListIndex)
        Raise(OnClick);
    else
        SetListIndex(lIndex);
}

void ListBox::TellHeldBack()
{
    TellIfHeld(m_bItemsHeld, &ListBoxObserver::ItemsChanged);
    TellIfHeld(m_bListIndexHeld, &ListBoxObserver::ListIndexChanged);
}
