// Fills the combo boxes of processes and launch options.
#include "src/catalogue/modSpecialProcessLists.h"

#include <span>
#include <string>

#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/translator/modTranslator.h"

namespace
{

struct Choice {
    const char* sText;
    std::int32_t lItemData;
};

// These numbers are stored in job files, so they mean the same on every host.
constexpr Choice kWindowStates[] = {{"Hidden", 0}, {"Normal", 1}, {"Maximized", 3}, {"Minimized", 6}};
constexpr Choice kPriorities[] = {
    {"Idle", 64}, {"Normal", 32}, {"High Priority", 128}, {"Realtime Priority", 256}};

}  // namespace

static void FillIn(Application& app, ComboBox& cb, std::span<const Choice> aChoices)
{
    const InternalChange objChange(app);
    const RedrawLock objLock(cb);
    cb.Clear();
    for (const Choice& objChoice : aChoices)
        cb.AddItem(sTranslate(app, objChoice.sText), objChoice.lItemData);
    cb.SetListIndex(0);
}

void FillInSpecialProcessesComboBox(Application& app)
{
    const InternalChange objChange(app);
    ComboBox& cb = app.frmMain.cbSpecialProcesses;
    const RedrawLock objLock(cb);
    cb.Clear();
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue())
        if (objRow.sLabel)
            cb.AddItem("[" + std::to_string(objRow.lSpecialProcess) + "] " + sTranslate(app, objRow.sLabel),
                       objRow.lSpecialProcess);
    cb.AddItem(sTranslate(app, "I NEED SOMETHING NOT LISTED!!!!!!!"), -1);
    cb.SetListIndex(0);
}

void FillInCommandLineWindowStateComboBox(Application& app)
{
    FillIn(app, app.frmMain.cbCommandLineWindowState, kWindowStates);
}

void FillInCommandLineThreadPriorityComboBox(Application& app)
{
    FillIn(app, app.frmMain.cbCommandLineThreadPriority, kPriorities);
}
