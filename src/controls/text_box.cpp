// Keeps a text and its selection.
#include "src/controls/text_box.h"

#include <algorithm>

#include "src/base/text.h"

void TextControl::SelectFromStart(std::int32_t lLength)
{
    m_lSelStart = 0;
    m_lSelLength = std::clamp(lLength, 0, lLetters(m_sText));
    Tell(&TextObserver::TextSelected);
}

bool TextControl::StoreText(const std::string& sText)
{
    if (sText == m_sText)
        return false;
    m_sText = sText;
    m_lSelStart = m_lSelLength = 0;
    return true;
}

void TextBox::SetText(const std::string& sText)
{
    if (!StoreText(sText))
        return;
    TellText();
    Raise(OnChange);
}

void TextBox::UserTypes(const std::string& sText)
{
    if (!bAccepts(&TextObserver::TextChanged))
        return;
    if (m_bLocked)
        Tell(&TextObserver::TextChanged);
    else
        SetText(sText);
}
