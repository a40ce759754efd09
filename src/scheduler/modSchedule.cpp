// Collects and checks the scheduler's inputs.
#include "src/scheduler/modSchedule.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "src/base/number_text.h"
#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/platform/locale.h"
#include "src/platform/window_services.h"
#include "src/translator/modTranslator.h"

namespace
{
constexpr double kLargestCount = std::numeric_limits<std::int16_t>::max();
constexpr double kLargestInterval = std::numeric_limits<std::int32_t>::max();
constexpr double kLastDayOfMonth = 31;
constexpr double kMostMonths = 12;
constexpr std::int32_t kWholeText = std::numeric_limits<std::int32_t>::max();
}  // namespace

static std::int16_t iClamped(double dValue)
{
    return static_cast<std::int16_t>(std::clamp(std::nearbyint(dValue), -kLargestCount - 1, kLargestCount));
}

void CollectDataFromFrmScheduler(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.bDaily = frm.optDaily.Value();
    frm.bEveryNDays = frm.optNumDays.Value();
    frm.bEveryWeekday = frm.optWeekdays.Value();
    frm.bWeekly = frm.optWeekly.Value();
    frm.sNumDays = frm.txtNumDays.Text();
    frm.sNumWeeks = frm.txtNumWeeks.Text();
    frm.bMon = frm.chkMon.Value() != 0;
    frm.bTue = frm.chkTue.Value() != 0;
    frm.bWed = frm.chkWed.Value() != 0;
    frm.bThu = frm.chkThu.Value() != 0;
    frm.bFri = frm.chkFri.Value() != 0;
    frm.bSat = frm.chkSat.Value() != 0;
    frm.bSun = frm.chkSun.Value() != 0;
    frm.bMonthly = frm.optMonthly.Value();
    frm.sNumMonths = frm.txtNumMonths.Text();
    frm.sDayOfMonth = frm.txtDayOfMonth.Text();
    frm.dtRunTimeOfDay = frm.dtUserTargetTime;
}

void GetCalendarTimerDataFromGUI(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.sEditJobFile = frm.cbScheduledJobFile.Text();
    if (frm.optDaily.Value()) {
        frm.bEveryNDays = frm.optNumDays.Value();
        frm.bEveryWeekday = frm.optWeekdays.Value();
    }
    if (frm.optDaily.Value() || frm.optWeekly.Value() || frm.optMonthly.Value()) {
        frm.bDaily = frm.optDaily.Value();
        frm.bWeekly = frm.optWeekly.Value();
        frm.bMonthly = frm.optMonthly.Value();
    }
    frm.iNumWeeks = iClamped(dLeadingNumber(frm.txtNumWeeks.Text()));
    frm.iDayOfMonth = iClamped(dLeadingNumber(frm.txtDayOfMonth.Text()));
    frm.iNumMonths = iClamped(dLeadingNumber(frm.txtNumMonths.Text()));
}

std::int32_t ValidateSchedule(Application& app)
{
    if (app.frmScheduler.optTimeBased.Value())
        return ValidateTimeBased(app);
    if (app.frmScheduler.optCalendarBased.Value())
        return ValidateCalendarBased(app);
    return kScheduleSound;
}

static double dIntervalSeconds(const frmScheduler& frm)
{
    return std::nearbyint(dLeadingNumber(frm.txtHours.Text()) * 3600 +
                          dLeadingNumber(frm.txtMinutes.Text()) * 60 + dLeadingNumber(frm.txtSeconds.Text()));
}

std::int32_t GetTimeBasedInterval(const Application& app)
{
    return static_cast<std::int32_t>(
        std::clamp(dIntervalSeconds(app.frmScheduler), -kLargestInterval - 1, kLargestInterval));
}

static std::int32_t lCheckInterval(Application& app)
{
    const frmScheduler& frm = app.frmScheduler;
    const char cSign = app.svc.objLocale.cDecimalSign();
    const auto bBad = [cSign](const TextBox& txt) {
        return !bIsNumeric(txt.Text(), cSign) || dLeadingNumber(txt.Text()) < 0;
    };
    const auto bZero = [cSign](const TextBox& txt) { return dToDouble(txt.Text(), cSign) == 0; };
    if (bBad(frm.txtHours))
        return kBadHours;
    if (bBad(frm.txtMinutes))
        return kBadMinutes;
    if (bBad(frm.txtSeconds))
        return kBadSeconds;
    if (bZero(frm.txtHours) && bZero(frm.txtMinutes) && bZero(frm.txtSeconds))
        return kNoInterval;
    // "0,5" is a number other than 0 whose leading number is 0. An interval that rounds to no second at all
    // couldn't move a target on, so it is no interval either.
    const double dInterval = dIntervalSeconds(frm);
    return dInterval < 1 || dInterval > kLargestInterval ? kBadInterval : kScheduleSound;
}

std::int32_t ValidateTimeBased(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    for (TextBox* pText : {&frm.txtHours, &frm.txtMinutes, &frm.txtSeconds})
        if (pText->Text().empty() || pText->Text() == " ")
            pText->SetText("0");
    const std::int32_t lCode = lCheckInterval(app);
    // The job file is checked last and intentionally hides what is wrong with the interval.
    if (frm.sEditJobFile.empty())
        return kTimeNoJobFile;
    return bFileExists(app, frm.cbScheduledJobFile.Text()) ? lCode : kTimeJobFileMissing;
}

static void TakeCountIfNumeric(const Application& app, const std::string& sText, std::int16_t& iCount)
{
    const char cSign = app.svc.objLocale.cDecimalSign();
    if (bIsNumeric(sText, cSign))
        iCount = iClamped(dToDouble(sText, cSign));
}

static bool bIsCount(const Application& app, const TextBox& txt)
{
    const char cSign = app.svc.objLocale.cDecimalSign();
    return bIsNumeric(txt.Text(), cSign) && dToDouble(txt.Text(), cSign) > 0 &&
           std::nearbyint(dToDouble(txt.Text(), cSign)) <= kLargestCount;
}

static bool bLeadingNumberWithin(const TextBox& txt, double dMost)
{
    const double dValue = dLeadingNumber(txt.Text());
    return dValue >= 1 && dValue <= dMost;
}

std::int32_t ValidateCalendarBased(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    TakeCountIfNumeric(app, frm.sNumDays, frm.iNumDays);
    TakeCountIfNumeric(app, frm.sNumWeeks, frm.iNumWeeks);
    TakeCountIfNumeric(app, frm.sNumMonths, frm.iNumMonths);
    for (TextBox* pText : {&frm.txtNumDays, &frm.txtNumWeeks, &frm.txtDayOfMonth, &frm.txtNumMonths})
        if (sTrim(pText->Text()).empty())
            pText->SetText("1");
    if (frm.sEditJobFile.empty())
        return kCalendarNoJobFile;
    if (frm.cbScheduledJobFile.Text().empty())
        return kCalendarJobFileEmpty;
    if (!bFileExists(app, frm.cbScheduledJobFile.Text()))
        return kCalendarJobFileMissing;
    // All counts are checked, intentionally including those of the calendar kinds that aren't chosen.
    if (!bIsCount(app, frm.txtNumDays))
        return kBadNumDays;
    if (!bIsCount(app, frm.txtNumWeeks))
        return kBadNumWeeks;
    if (!bLeadingNumberWithin(frm.txtDayOfMonth, kLastDayOfMonth))
        return kBadDayOfMonth;
    if (!bLeadingNumberWithin(frm.txtNumMonths, kMostMonths))
        return kBadNumMonths;
    return frm.optWeekly.Value() && !bWeekdaysSelected(app) ? kNoWeekday : kScheduleSound;
}

bool bWeekdaysSelected(Application& app)
{
    const frmScheduler& frm = app.frmScheduler;
    for (const CheckBox* pDay :
         {&frm.chkMon, &frm.chkTue, &frm.chkWed, &frm.chkThu, &frm.chkFri, &frm.chkSat, &frm.chkSun})
        if (pDay->Value() != 0)
            return true;
    ShowScheduleMessage(app, "Please select day(s) of the week to run the job.");
    return false;
}

void ShowScheduleMessage(Application& app, const std::string& sText)
{
    app.svc.objWindows.MsgBox(sTranslate(app, sText), sTranslate(app, "Information"), BoxIcon::Information,
                              BoxButtons::Ok);
}

static void FocusAndSelect(TextBox& txt)
{
    txt.SetFocus();
    txt.SelectFromStart(kWholeText);
}

// A disabled field can't be corrected by the user, so it is reset.
static void FocusOrReset(TextBox& txt)
{
    if (txt.Enabled())
        FocusAndSelect(txt);
    else
        txt.SetText("1");
}

static void FocusJobFile(frmScheduler& frm)
{
    frm.cmdSelectScheduledJobFile.SetFocus();
    frm.cbScheduledJobFile.SelectFromStart(kWholeText);
}

void ShowScheduleError(Application& app, std::int32_t lCode)
{
    frmScheduler& frm = app.frmScheduler;
    switch (lCode) {
        case kBadHours:
            ShowScheduleMessage(app, "Invalid time for hours");
            return FocusAndSelect(frm.txtHours);
        case kBadMinutes:
            ShowScheduleMessage(app, "Invalid time for minutes");
            return FocusAndSelect(frm.txtMinutes);
        case kBadSeconds:
            ShowScheduleMessage(app, "Invalid time for seconds");
            return FocusAndSelect(frm.txtSeconds);
        case kNoInterval:
            return ShowScheduleMessage(app, "Please enter a time interval");
        case kBadInterval:
            return ShowScheduleMessage(app, "Please enter a valid time interval.");
        case kBadNumDays:
            ShowScheduleMessage(app, "Invalid number of days entered.");
            return FocusOrReset(frm.txtNumDays);
        case kBadNumWeeks:
            ShowScheduleMessage(app, "Invalid number of weeks entered.");
            return FocusOrReset(frm.txtNumWeeks);
        case kTimeNoJobFile:
        case kCalendarNoJobFile:
            ShowScheduleMessage(app, "Please enter a job file");
            return FocusJobFile(frm);
        case kCalendarJobFileEmpty:
            ShowScheduleMessage(app, "Please select a job file");
            return FocusJobFile(frm);
        case kTimeJobFileMissing:
        case kCalendarJobFileMissing:
            ShowScheduleMessage(app, "Job file does not exist");
            return FocusJobFile(frm);
        case kBadDayOfMonth:
            ShowScheduleMessage(app, "Date must be between 1 and 31");
            return FocusAndSelect(frm.txtDayOfMonth);
        case kBadNumMonths:
            ShowScheduleMessage(app, "Number of months must be between 1 and 12");
            return FocusAndSelect(frm.txtNumMonths);
        default:
            return;  // kNoWeekday: the check has spoken itself
    }
}
