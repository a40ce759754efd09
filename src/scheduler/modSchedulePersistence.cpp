// Loads and saves the scheduler's settings, key by key.
#include "src/scheduler/modSchedulePersistence.h"

#include <string>
#include <utility>

#include "src/base/number_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/platform/ini_file.h"
#include "src/platform/locale.h"
#include "src/platform/window_services.h"
#include "src/scheduler/modDateTime.h"
#include "src/scheduler/modSchedule.h"
#include "src/translator/modTranslator.h"

static constexpr std::int32_t kBufferSize = 500;
static const std::string kSection = "frmScheduler";
static const std::string kFirstTime = "1/1/2000 12:00:00 AM";

static std::string sRead(Application& app, const std::string& sKey, const std::string& sDefault)
{
    const std::string sValue =
        app.svc.objIniFile.GetPrivateProfileString(kSection, sKey, sDefault, kBufferSize, app.sIniFile);
    return sTrim(std::string_view(sValue).substr(0, sValue.find('\0')));
}

// Applies a value, or the default if fnApply raises an error for it.
template <typename Apply>
static void ReadAndApply(Application& app, const std::string& sKey, const std::string& sDefault,
                         const Apply& fnApply)
{
    try {
        fnApply(sRead(app, sKey, sDefault));
    } catch (const clsRaisedError& objError) {
        app.svc.objWindows.MsgBox(objError.sDescription() + ": [" + kSection + "] " + sKey,
                                  sTranslate(app, "Error"), BoxIcon::Information, BoxButtons::Ok);
        fnApply(sDefault);
    }
}

static void Read(Application& app, OptionButton& opt, const std::string& sDefault)
{
    ReadAndApply(app, opt.sName(), sDefault, [&](const std::string& sValue) {
        opt.SetValue(bToBoolean(sValue, app.svc.objLocale.cDecimalSign()));
    });
}

static void Read(Application& app, TextBox& txt, const std::string& sDefault)
{
    txt.SetText(sRead(app, txt.sName(), sDefault));
}

static void SelectEntry(ComboBox& cb, const std::string& sText)
{
    for (std::int32_t lIndex = 0; lIndex < cb.ListCount(); ++lIndex)
        if (bEqualIgnoringCase(cb.List(lIndex), sText))
            return cb.SetListIndex(lIndex);
    throw clsRaisedError(kErrInvalidProcedureCall, "Invalid property value");
}

static void Read(Application& app, ComboBox& cb, const std::string& sDefault)
{
    ReadAndApply(app, cb.sName(), sDefault, [&](const std::string& sValue) { SelectEntry(cb, sValue); });
}

static void Read(Application& app, CheckBox& chk, const std::string& sDefault)
{
    ReadAndApply(app, chk.sName(), sDefault, [&](const std::string& sValue) {
        chk.SetValue(lToLong(sValue, app.svc.objLocale.cDecimalSign()) != 0 ? 1 : 0);
    });
}

static void ReadDateTime(Application& app, const std::string& sKey, double& dtField)
{
    ReadAndApply(app, sKey, kFirstTime, [&](const std::string& sValue) { dtField = dtFromText(sValue); });
}

void ReadIniFileScheduler(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    // The order matters: choosing an option clears its group and shows the fields that belong to it.
    Read(app, frm.optTimeBased, "FALSE");
    Read(app, frm.optCalendarBased, "TRUE");
    Read(app, frm.txtHours, "0");
    Read(app, frm.txtMinutes, "0");
    Read(app, frm.txtSeconds, "0");
    Read(app, frm.optDaily, "TRUE");
    Read(app, frm.optWeekly, "FALSE");
    Read(app, frm.optMonthly, "FALSE");
    Read(app, frm.cbHours, "12");
    Read(app, frm.cbMinutes, "00");
    Read(app, frm.cbAmPm, "AM");
    Read(app, frm.optNumDays, "TRUE");
    Read(app, frm.txtNumDays, "1");
    Read(app, frm.optWeekdays, "FALSE");
    Read(app, frm.txtNumWeeks, "1");
    for (CheckBox* pDay :
         {&frm.chkSun, &frm.chkMon, &frm.chkTue, &frm.chkWed, &frm.chkThu, &frm.chkFri, &frm.chkSat})
        Read(app, *pDay, "0");
    Read(app, frm.txtDayOfMonth, "1");
    Read(app, frm.txtNumMonths, "1");
    Read(app, frm.chkPersistRunning, "0");
    Read(app, frm.optImmediately, "TRUE");
    Read(app, frm.optSkip, "FALSE");
    // intTabSetUp is intentionally not applied: the form always opens on its first tab.
    ReadDateTime(app, "dtUserTargetTime", frm.dtUserTargetTime);
    ReadDateTime(app, "dtTargetComplete", frm.dtTargetComplete);
}

void SaveIniFileScheduler(Application& app)
{
    if (ValidateSchedule(app) != kScheduleSound)
        return;
    const frmScheduler& frm = app.frmScheduler;
    const auto Write = [&app](const std::string& sKey, const std::string& sValue) {
        app.svc.objIniFile.WritePrivateProfileString(kSection, sKey, sValue, app.sIniFile);
    };
    const auto WriteOption = [&](const OptionButton& opt) {
        Write(opt.sName(), opt.Value() ? "True" : "False");
    };
    const auto WriteText = [&](const TextControl& txt) { Write(txt.sName(), txt.Text()); };
    const auto WriteCheck = [&](const CheckBox& chk) { Write(chk.sName(), std::to_string(chk.Value())); };
    WriteOption(frm.optTimeBased);
    WriteOption(frm.optCalendarBased);
    WriteText(frm.txtHours);
    WriteText(frm.txtMinutes);
    WriteText(frm.txtSeconds);
    WriteOption(frm.optImmediately);
    WriteOption(frm.optSkip);
    WriteOption(frm.optDaily);
    WriteOption(frm.optWeekly);
    WriteOption(frm.optMonthly);
    WriteText(frm.cbHours);
    WriteText(frm.cbMinutes);
    WriteText(frm.cbAmPm);
    WriteOption(frm.optNumDays);
    WriteText(frm.txtNumDays);
    WriteOption(frm.optWeekdays);
    WriteText(frm.txtNumWeeks);
    for (const CheckBox* pDay :
         {&frm.chkSun, &frm.chkMon, &frm.chkTue, &frm.chkWed, &frm.chkThu, &frm.chkFri, &frm.chkSat})
        WriteCheck(*pDay);
    WriteText(frm.txtDayOfMonth);
    WriteText(frm.txtNumMonths);
    // Never read back: the job file comes from the recent list.
    WriteText(frm.cbScheduledJobFile);
    WriteCheck(frm.chkPersistRunning);
    Write("dtUserTargetTime", sDateTimeText(frm.dtUserTargetTime));
    Write("dtTargetComplete", sDateTimeText(frm.dtTargetComplete));
}
