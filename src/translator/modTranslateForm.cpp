// Walks over a form's controls.
#include "src/translator/modTranslateForm.h"

#include <cstdint>

#include "src/base/text.h"
#include "src/controls/status_bar.h"
#include "src/controls/tab_strip.h"
#include "src/controls/text_box.h"
#include "src/forms/Application.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

constexpr std::int32_t kLocaleJapanese = 1041;
constexpr const char* kJapaneseFont = "MS UI Gothic";
constexpr const char* kSeparator = "-";

static void TranslateCaption(Application& app, Control& objControl)
{
    objControl.SetCaption(sTranslate(app, objControl.Caption()));
}

static void TranslateCaptionUnlessTagged(Application& app, Control& objControl)
{
    if (objControl.Tag() != kTranslateFalse)
        TranslateCaption(app, objControl);
}

static void TranslateToolTip(Application& app, Control& objControl)
{
    objControl.SetToolTipText(sTranslate(app, objControl.ToolTipText()));
}

static void TranslateTabs(Application& app, TabStrip& objTabs)
{
    for (std::int32_t lTab = 1; lTab <= objTabs.TabCount(); ++lTab) {
        objTabs.SetTabCaption(lTab, sTranslate(app, objTabs.TabCaption(lTab)));
        objTabs.SetTabToolTipText(lTab, sTranslate(app, objTabs.TabToolTipText(lTab)));
    }
}

static void TranslatePanels(Application& app, StatusBar& objBar)
{
    for (std::int32_t lPanel = 1; lPanel <= objBar.PanelCount(); ++lPanel) {
        objBar.SetPanel(lPanel, sTranslate(app, objBar.Panel(lPanel)));
        objBar.SetPanelToolTipText(lPanel, sTranslate(app, objBar.PanelToolTipText(lPanel)));
    }
}

static void TranslateControl(Application& app, Control& objControl)
{
    switch (objControl.eKind()) {
        case ControlKind::TabStrip:
            TranslateTabs(app, static_cast<TabStrip&>(objControl));
            TranslateToolTip(app, objControl);
            break;
        case ControlKind::StatusBar:
            TranslatePanels(app, static_cast<StatusBar&>(objControl));
            TranslateToolTip(app, objControl);
            break;
        case ControlKind::TextBox:
            if (auto& txt = static_cast<TextBox&>(objControl); txt.Tag() != kTranslateFalse)
                txt.SetText(sTranslate(app, txt.Text()));
            TranslateToolTip(app, objControl);
            break;
        case ControlKind::Action:
        case ControlKind::Menu:
            if (objControl.Caption() != kSeparator)
                TranslateCaption(app, objControl);
            TranslateToolTip(app, objControl);
            break;
        case ControlKind::CommandButton:
            TranslateToolTip(app, objControl);
            TranslateCaption(app, objControl);
            break;
        case ControlKind::Label:
        case ControlKind::CheckBox:
        case ControlKind::Frame:
        case ControlKind::OptionButton:
            TranslateCaptionUnlessTagged(app, objControl);
            TranslateToolTip(app, objControl);
            break;
        case ControlKind::ComboBox:
        case ControlKind::ListBox:
        case ControlKind::Slider:
        case ControlKind::Grid:
            TranslateToolTip(app, objControl);
            break;
        case ControlKind::ImageView:
        case ControlKind::ProgressBar:
        case ControlKind::ScrollBar:
        case ControlKind::Timer:
        case ControlKind::ToolBar:
            break;
    }
}

// A Japanese user gets a Japanese font without choosing one.
static std::string sFontOfControls(const Application& app)
{
    const TranslatorState& objTranslator = app.objTranslator;
    if (!objTranslator.sLanguageFont.empty())
        return objTranslator.sLanguageFont;
    const bool bJapanese = objTranslator.sLanguage != "English" && objTranslator.lUserLCID == kLocaleJapanese;
    return bJapanese && bFontExists(app, kJapaneseFont) ? kJapaneseFont : "";
}

void TranslateForm(Application& app, Form& frm)
{
    frm.SetCaption(sTranslate(app, frm.Caption()));
    const std::string sFont = sFontOfControls(app);
    for (Control* pControl : frm.Controls()) {
        TranslateControl(app, *pControl);
        if (!sFont.empty())
            pControl->SetFontName(sFont);
    }
}

bool bFontExists(const Application& app, const std::string& sName)
{
    return bEqualIgnoringCase(app.svc.objWindows.sMatchingFont(sName), sName);
}
