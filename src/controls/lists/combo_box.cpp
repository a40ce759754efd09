// Keeps a combo box's entries, selection and text together.
#include "src/controls/lists/combo_box.h"

#include "src/base/raised_error.h"

void ComboBox::Clear()
{
    if (ListCount() == 0 && m_lListIndex < 0 && Text().empty())
        return;
    m_objItems.Clear();
    m_lListIndex = -1;
    const bool bNewText = StoreText("");
    TellOrHold(m_bItemsHeld, &ComboBoxObserver::ItemsChanged);
    if (bNewText)
        TellText();
}

void ComboBox::AddItem(const std::string& sText, std::int32_t lItemData)
{
    m_objItems.Add(sText, lItemData);
    TellOrHold(m_bItemsHeld, &ComboBoxObserver::ItemsChanged);
}

void ComboBox::Select(std::int32_t lIndex)
{
    m_lListIndex = lIndex;
    const bool bNewText = StoreText(lIndex < 0 ? std::string() : List(lIndex));
    TellOrHold(m_bListIndexHeld, &ComboBoxObserver::ListIndexChanged);
    if (bNewText)
        TellText();
    Raise(OnClick);
}

void ComboBox::SetListIndex(std::int32_t lIndex)
{
    if (lIndex != -1 && !m_objItems.bHas(lIndex))
        throw clsRaisedError(kErrInvalidProcedureCall, "Invalid property value");
    Select(lIndex);
}

void ComboBox::SetText(const std::string& sText)
{
    if (m_eStyle == ComboStyle::ListOnly) {
        if (const std::int32_t lIndex = m_objItems.lFind(sText); lIndex >= 0 && sText != Text())
            Select(lIndex);
        return;
    }
    const bool bDeselected = m_lListIndex >= 0;
    m_lListIndex = -1;
    const bool bNewText = StoreText(sText);
    if (bDeselected)
        TellOrHold(m_bListIndexHeld, &ComboBoxObserver::ListIndexChanged);
    if (!bNewText)
        return;
    TellText();
    Raise(OnChange);
}

void ComboBox::UserTypes(const std::string& sText)
{
    if (!bAccepts(&TextObserver::TextChanged))
        return;
    if (m_eStyle == ComboStyle::ListOnly)
        Tell(&TextObserver::TextChanged);
    else
        SetText(sText);
}

void ComboBox::UserChooses(std::int32_t lIndex)
{
    if (bAccepts(&ComboBoxObserver::ListIndexChanged) && m_objItems.bHas(lIndex))
        Select(lIndex);
}

void ComboBox::TellHeldBack()
{
    TellIfHeld(m_bItemsHeld, &ComboBoxObserver::ItemsChanged);
    TellIfHeld(m_bListIndexHeld, &ComboBoxObserver::ListIndexChanged);
    TextControl::TellHeldBack();
}
