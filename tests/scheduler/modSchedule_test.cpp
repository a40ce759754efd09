// The checks before a schedule may start.
#include "src/scheduler/modSchedule.h"

#include <list>

#include "tests/fakes/control_watchers.h"
#include "tests/scheduler/support/schedules.h"

namespace
{

class ScheduleChecks : public Schedules
{
protected:
    ScheduleChecks()
    {
        frm.sEditJobFile = kJobFile;
        for (Control* pControl : frm.Controls())
            m_aWatchers.emplace_back(*pControl, [this, pControl] { aFocused.push_back(pControl->sName()); });
    }
    std::int32_t Validate()
    {
        CollectDataFromFrmScheduler(app);
        return ValidateSchedule(app);
    }

    Texts aFocused;

private:
    std::list<FocusWatcher> m_aWatchers;
};

}  // namespace

TEST_F(ScheduleChecks, FindNothingWrongWithFreshForm)
{
    EXPECT_EQ(Validate(), 0);
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ScheduleChecks, AcceptTimesBeyondTheirClockRange)
{
    SetInterval("26", "90", "0");

    EXPECT_EQ(Validate(), 0);
    EXPECT_EQ(GetTimeBasedInterval(app), 99000);
}

TEST_F(ScheduleChecks, RoundTheIntervalToSecondsHalvesToEven)
{
    SetInterval("0.001", "0", "0");  // 3.6 seconds
    EXPECT_EQ(GetTimeBasedInterval(app), 4);
    SetInterval("0", "0", "2.5");
    EXPECT_EQ(GetTimeBasedInterval(app), 2);
    SetInterval("0", "0", "3.5");
    EXPECT_EQ(GetTimeBasedInterval(app), 4);
}

TEST_F(ScheduleChecks, ReportTheFirstBadTimeOnly)
{
    SetInterval("abc", "-1", "x");
    EXPECT_EQ(Validate(), 1);
    SetInterval("1", "-1", "x");
    EXPECT_EQ(Validate(), 2);
    SetInterval("1", "1", "x");
    EXPECT_EQ(Validate(), 3);
    SetInterval("1", "1", "1");
    EXPECT_EQ(Validate(), 0);
}

TEST_F(ScheduleChecks, RefuseAnIntervalOfNothing)
{
    SetInterval("0", "0.0", "00");

    EXPECT_EQ(Validate(), 4);
}

TEST_F(ScheduleChecks, TellNumbersFromTheirLeadingDigits)
{
    app.locale.sign = ',';
    SetInterval("0,5", "0", "0");
    EXPECT_EQ(Validate(), 5);
    SetInterval("1,5", "0", "0");
    EXPECT_EQ(Validate(), 0);
    EXPECT_EQ(GetTimeBasedInterval(app), 3600);
}

TEST_F(ScheduleChecks, RefuseAnIntervalThatNoTargetCanUse)
{
    SetInterval("0", "0", "0.4");
    EXPECT_EQ(Validate(), 5);
    SetInterval("1000000", "0", "0");
    EXPECT_EQ(Validate(), 5);
    SetInterval("596523", "0", "0");
    EXPECT_EQ(Validate(), 0);
}

TEST_F(ScheduleChecks, TurnBlankTimesIntoZeroEvenIfAnotherIsBad)
{
    SetInterval("abc", "", " ");

    EXPECT_EQ(Validate(), 1);
    EXPECT_EQ(frm.txtMinutes.Text(), "0");
    EXPECT_EQ(frm.txtSeconds.Text(), "0");
    EXPECT_EQ(frm.txtHours.Text(), "abc");
}

TEST_F(ScheduleChecks, LeaveTwoBlanksAsABadTime)
{
    SetInterval("1", "  ", "0");

    EXPECT_EQ(Validate(), 2);
    EXPECT_EQ(frm.txtMinutes.Text(), "  ");
}

// Intentional: a missing job file hides every other fault of a time based schedule.
TEST_F(ScheduleChecks, LetTheJobFileHideABadTime)
{
    SetInterval("abc", "0", "0");
    frm.sEditJobFile.clear();
    EXPECT_EQ(Validate(), 6);

    frm.sEditJobFile = kJobFile;
    frm.cbScheduledJobFile.SetText("/jobs/gone.vjb");
    EXPECT_EQ(Validate(), 7);
}

TEST_F(ScheduleChecks, OfACalendarStopAtTheFirstFault)
{
    SetDaily("abc");
    frm.sEditJobFile.clear();
    frm.cbScheduledJobFile.SetText("");
    EXPECT_EQ(Validate(), 110);
    frm.sEditJobFile = kJobFile;
    EXPECT_EQ(Validate(), 111);
    frm.cbScheduledJobFile.SetText("/jobs/gone.vjb");
    EXPECT_EQ(Validate(), 112);
    frm.cbScheduledJobFile.SetText(kJobFile);
    EXPECT_EQ(Validate(), 108);
}

TEST_F(ScheduleChecks, TestCountsOfDaysAndWeeksForEveryKind)
{
    for (OptionButton* pKind : {&frm.optDaily, &frm.optWeekly, &frm.optMonthly}) {
        pKind->SetValue(true);
        for (const char* sBad : {"abc", "0", "-1", "1x", "32768", "1e9"}) {
            frm.txtNumWeeks.SetText("1");
            frm.txtNumDays.SetText(sBad);
            EXPECT_EQ(Validate(), 108) << sBad;
            frm.txtNumDays.SetText("1");
            frm.txtNumWeeks.SetText(sBad);
            EXPECT_EQ(Validate(), 109) << sBad;
        }
    }
}

TEST_F(ScheduleChecks, TestDayOfMonthAndNumberOfMonthsForEveryKind)
{
    for (const char* sBad : {"abc", "0", "-1", "32", "0.9"}) {
        frm.txtDayOfMonth.SetText(sBad);
        EXPECT_EQ(Validate(), 114) << sBad;
    }
    for (const char* sGood : {"1", "31", "15 or so"}) {
        frm.txtDayOfMonth.SetText(sGood);
        EXPECT_EQ(Validate(), 0) << sGood;
    }
    for (const char* sBad : {"abc", "0", "13", "12.5"}) {
        frm.txtNumMonths.SetText(sBad);
        EXPECT_EQ(Validate(), 115) << sBad;
    }
    frm.txtNumMonths.SetText("12");
    EXPECT_EQ(Validate(), 0);
}

TEST_F(ScheduleChecks, FillBlankCountsWithOne)
{
    for (TextBox* pText : {&frm.txtNumDays, &frm.txtNumWeeks, &frm.txtDayOfMonth, &frm.txtNumMonths})
        pText->SetText("   ");

    EXPECT_EQ(Validate(), 0);
    for (const TextBox* pText : {&frm.txtNumDays, &frm.txtNumWeeks, &frm.txtDayOfMonth, &frm.txtNumMonths})
        EXPECT_EQ(pText->Text(), "1");
}

TEST_F(ScheduleChecks, TakeCountsFromTheTextsAsCollected)
{
    SetDaily("3");
    frm.txtNumWeeks.SetText("2.5");
    frm.txtNumMonths.SetText("3.5");

    EXPECT_EQ(Validate(), 0);
    EXPECT_EQ(frm.iNumDays, 3);
    EXPECT_EQ(frm.iNumWeeks, 2);
    EXPECT_EQ(frm.iNumMonths, 4);
}

TEST_F(ScheduleChecks, AskForADayOfTheWeek)
{
    SetWeekly("1", {});
    EXPECT_EQ(Validate(), 113);
    ASSERT_EQ(aMessages(), Texts{"Please select day(s) of the week to run the job."});

    frm.chkSun.SetValue(1);
    EXPECT_EQ(Validate(), 0);
    EXPECT_EQ(app.windows.boxes.size(), 1U);
}

TEST_F(ScheduleChecks, AskForADayOnlyIfNothingElseIsWrong)
{
    SetWeekly("1", {});
    frm.txtNumDays.SetText("abc");

    EXPECT_EQ(Validate(), 108);
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ScheduleChecks, FindNothingWrongWhileNoKindIsChosen)
{
    frm.optTimeBased.SetValue(false);
    frm.optCalendarBased.SetValue(false);
    frm.sEditJobFile.clear();

    EXPECT_EQ(Validate(), 0);
}

TEST_F(ScheduleChecks, ShowTheMessageOfEachCodeAndMoveTheFocus)
{
    struct Case {
        std::int32_t lCode;
        const char* sMessage;
        const char* sFocused;
        const TextControl* pSelected;
    };
    const Case aCases[] = {
        {1, "Invalid time for hours", "txtHours", &frm.txtHours},
        {2, "Invalid time for minutes", "txtMinutes", &frm.txtMinutes},
        {3, "Invalid time for seconds", "txtSeconds", &frm.txtSeconds},
        {4, "Please enter a time interval", "", nullptr},
        {5, "Please enter a valid time interval.", "", nullptr},
        {6, "Please enter a job file", "cmdSelectScheduledJobFile", &frm.cbScheduledJobFile},
        {7, "Job file does not exist", "cmdSelectScheduledJobFile", &frm.cbScheduledJobFile},
        {108, "Invalid number of days entered.", "txtNumDays", &frm.txtNumDays},
        {109, "Invalid number of weeks entered.", "txtNumWeeks", &frm.txtNumWeeks},
        {110, "Please enter a job file", "cmdSelectScheduledJobFile", &frm.cbScheduledJobFile},
        {111, "Please select a job file", "cmdSelectScheduledJobFile", &frm.cbScheduledJobFile},
        {112, "Job file does not exist", "cmdSelectScheduledJobFile", &frm.cbScheduledJobFile},
        {114, "Date must be between 1 and 31", "txtDayOfMonth", &frm.txtDayOfMonth},
        {115, "Number of months must be between 1 and 12", "txtNumMonths", &frm.txtNumMonths},
    };
    for (const Case& objCase : aCases) {
        app.windows.boxes.clear();
        aFocused.clear();
        if (objCase.pSelected)
            const_cast<TextControl*>(objCase.pSelected)->SelectFromStart(0);

        ShowScheduleError(app, objCase.lCode);

        ASSERT_EQ(aMessages(), Texts{objCase.sMessage});
        EXPECT_EQ(app.windows.boxes[0].title, "Information");
        EXPECT_EQ(app.windows.boxes[0].buttons, BoxButtons::Ok);
        EXPECT_EQ(aFocused, *objCase.sFocused ? Texts{objCase.sFocused} : Texts{}) << objCase.lCode;
        if (objCase.pSelected) {
            EXPECT_EQ(objCase.pSelected->SelLength(), static_cast<int>(objCase.pSelected->Text().size()));
        }
    }
}

TEST_F(ScheduleChecks, TranslateTheirMessages)
{
    app.objTranslator.dictTranslations["Invalid time for hours"] = "Ungültige Stunden";
    app.objTranslator.dictTranslations["Information"] = "Hinweis";

    ShowScheduleError(app, 1);

    EXPECT_EQ(aMessages(), Texts{"Ungültige Stunden"});
    EXPECT_EQ(app.windows.boxes[0].title, "Hinweis");
}

TEST_F(ScheduleChecks, HaveNoMessageForOtherCodes)
{
    for (const std::int32_t lCode : {-1, 0, 8, 107, 113, 116})
        ShowScheduleError(app, lCode);

    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_TRUE(aFocused.empty());
}

TEST_F(ScheduleChecks, ResetABadNumberOfDaysThatIsDisabled)
{
    SetEveryWeekday();
    frm.txtNumDays.SetText("abc");
    ASSERT_FALSE(frm.txtNumDays.Enabled());

    ShowScheduleError(app, 108);

    EXPECT_EQ(frm.txtNumDays.Text(), "1");
    EXPECT_TRUE(aFocused.empty());
}

TEST_F(ScheduleChecks, ResetABadNumberOfWeeksThatIsDisabled)
{
    frm.txtNumWeeks.SetText("abc");
    frm.txtNumWeeks.SetEnabled(false);

    ShowScheduleError(app, 109);

    EXPECT_EQ(frm.txtNumWeeks.Text(), "1");
    EXPECT_TRUE(aFocused.empty());
}

TEST_F(ScheduleChecks, CollectEveryInput)
{
    SetWeekly("2", {&frm.chkMon, &frm.chkSat});
    frm.txtNumDays.SetText("3");
    frm.txtDayOfMonth.SetText("31");
    frm.txtNumMonths.SetText("6");
    frm.optWeekdays.SetValue(true);
    frm.dtUserTargetTime = 0.25;

    CollectDataFromFrmScheduler(app);

    EXPECT_FALSE(frm.bDaily);
    EXPECT_TRUE(frm.bWeekly);
    EXPECT_FALSE(frm.bMonthly);
    EXPECT_FALSE(frm.bEveryNDays);
    EXPECT_TRUE(frm.bEveryWeekday);
    EXPECT_EQ(frm.sNumDays, "3");
    EXPECT_EQ(frm.sNumWeeks, "2");
    EXPECT_EQ(frm.sNumMonths, "6");
    EXPECT_EQ(frm.sDayOfMonth, "31");
    EXPECT_TRUE(frm.bMon && frm.bSat);
    EXPECT_FALSE(frm.bTue || frm.bWed || frm.bThu || frm.bFri || frm.bSun);
    EXPECT_EQ(frm.dtRunTimeOfDay, 0.25);
}

TEST_F(ScheduleChecks, TakeTheCalendarDataFromTheInputs)
{
    SetMonthly("31st", "2.5");
    frm.txtNumWeeks.SetText("1e9");
    frm.sEditJobFile.clear();

    GetCalendarTimerDataFromGUI(app);

    EXPECT_EQ(frm.sEditJobFile, kJobFile);
    EXPECT_TRUE(frm.bMonthly);
    EXPECT_FALSE(frm.bDaily || frm.bWeekly);
    EXPECT_EQ(frm.iDayOfMonth, 31);
    EXPECT_EQ(frm.iNumMonths, 2);
    EXPECT_EQ(frm.iNumWeeks, 32767);
}

TEST_F(ScheduleChecks, TakeTheDailyVariantOnlyOfADailySchedule)
{
    SetEveryWeekday();
    GetCalendarTimerDataFromGUI(app);
    EXPECT_TRUE(frm.bDaily && frm.bEveryWeekday);

    SetWeekly("1", {});
    frm.optNumDays.SetValue(true);
    GetCalendarTimerDataFromGUI(app);
    EXPECT_TRUE(frm.bWeekly && frm.bEveryWeekday);
    EXPECT_FALSE(frm.bDaily);
}
