// The scheduler's settings.
#include "src/scheduler/modSchedulePersistence.h"

#include "tests/scheduler/support/schedules.h"

namespace
{

class ScheduleSettings : public testing::Test
{
protected:
    void Load() { SetUpScheduler(app, app.sIniFile); }
    std::string sStored(const std::string& sKey) const { return app.ini.Stored("frmScheduler", sKey); }

    TestApplication app;
    frmScheduler& frm = app.frmScheduler;
};

}  // namespace

TEST_F(ScheduleSettings, StartAsDailyCalendarScheduleAtMidnight)
{
    Load();

    EXPECT_FALSE(frm.optTimeBased.Value());
    EXPECT_TRUE(frm.optCalendarBased.Value());
    EXPECT_TRUE(frm.optDaily.Value());
    EXPECT_FALSE(frm.optWeekly.Value());
    EXPECT_FALSE(frm.optMonthly.Value());
    EXPECT_TRUE(frm.optNumDays.Value());
    EXPECT_FALSE(frm.optWeekdays.Value());
    for (const TextBox* pText : {&frm.txtHours, &frm.txtMinutes, &frm.txtSeconds})
        EXPECT_EQ(pText->Text(), "0");
    for (const TextBox* pText : {&frm.txtNumDays, &frm.txtNumWeeks, &frm.txtDayOfMonth, &frm.txtNumMonths})
        EXPECT_EQ(pText->Text(), "1");
    EXPECT_EQ(frm.cbHours.Text() + ":" + frm.cbMinutes.Text() + " " + frm.cbAmPm.Text(), "12:00 AM");
    for (const CheckBox* pCheck : {&frm.chkSun, &frm.chkMon, &frm.chkTue, &frm.chkWed, &frm.chkThu,
                                   &frm.chkFri, &frm.chkSat, &frm.chkPersistRunning})
        EXPECT_EQ(pCheck->Value(), 0);
    EXPECT_TRUE(frm.optImmediately.Value());
    EXPECT_FALSE(frm.optSkip.Value());
    EXPECT_EQ(frm.TabStrip1.SelectedTab(), 1);
    EXPECT_EQ(frm.dtUserTargetTime, dtOf(2000, 1, 1));
    EXPECT_EQ(frm.dtTargetComplete, dtOf(2000, 1, 1));
    EXPECT_EQ(frm.sEditJobFile, "");
    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_TRUE(app.ini.written.empty());
}

TEST_F(ScheduleSettings, AreWrittenInAFixedOrder)
{
    app.files.AddFile("/jobs/a.vjb");
    app.ini.Set("mruScheduleSource", "mruScheduleSource20", "/jobs/a.vjb");
    Load();
    frm.optWeekly.SetValue(true);
    frm.optSkip.SetValue(true);
    frm.chkTue.SetValue(1);
    frm.chkPersistRunning.SetValue(1);
    frm.txtHours.SetText("1,5");
    frm.cbHours.SetText("9");
    frm.cbMinutes.SetText("05");
    frm.cbAmPm.SetText("PM");
    frm.sEditJobFile = "/jobs/a.vjb";
    frm.dtUserTargetTime = dtFromTime({21, 5, 0});
    frm.dtTargetComplete = dtOf(2027, 3, 16, 21, 5);

    SaveIniFileScheduler(app);

    const Texts aExpected{"optTimeBased=False",
                          "optCalendarBased=True",
                          "txtHours=1,5",
                          "txtMinutes=0",
                          "txtSeconds=0",
                          "optImmediately=False",
                          "optSkip=True",
                          "optDaily=False",
                          "optWeekly=True",
                          "optMonthly=False",
                          "cbHours=9",
                          "cbMinutes=05",
                          "cbAmPm=PM",
                          "optNumDays=True",
                          "txtNumDays=1",
                          "optWeekdays=False",
                          "txtNumWeeks=1",
                          "chkSun=0",
                          "chkMon=0",
                          "chkTue=1",
                          "chkWed=0",
                          "chkThu=0",
                          "chkFri=0",
                          "chkSat=0",
                          "txtDayOfMonth=1",
                          "txtNumMonths=1",
                          "cbScheduledJobFile=/jobs/a.vjb",
                          "chkPersistRunning=1",
                          "dtUserTargetTime=9:05:00 PM",
                          "dtTargetComplete=3/16/2027 9:05:00 PM"};
    Texts aWritten;
    for (const std::string& sWrite : app.ini.written) {
        ASSERT_TRUE(sWrite.starts_with("frmScheduler/")) << sWrite;
        aWritten.push_back(sWrite.substr(13));
    }
    EXPECT_EQ(aWritten, aExpected);
}

TEST_F(ScheduleSettings, ComeBackAsTheyWereSaved)
{
    app.files.AddFile("/jobs/a.vjb");
    app.ini.Set("mruScheduleSource", "mruScheduleSource20", "/jobs/a.vjb");
    Load();
    frm.optTimeBased.SetValue(true);
    frm.txtHours.SetText("26");
    frm.txtMinutes.SetText("90");
    frm.optMonthly.SetValue(true);
    frm.txtDayOfMonth.SetText("31");
    frm.txtNumMonths.SetText("6");
    frm.optWeekdays.SetValue(true);
    frm.optSkip.SetValue(true);
    frm.chkSat.SetValue(1);
    frm.cbAmPm.SetText("PM");
    frm.sEditJobFile = "/jobs/a.vjb";
    frm.dtUserTargetTime = dtFromTime({21, 5, 0});
    frmScheduler_Unload(app);

    TestApplication objNext;
    objNext.ini = app.ini;
    SetUpScheduler(objNext, objNext.sIniFile);
    const frmScheduler& frmNext = objNext.frmScheduler;

    EXPECT_TRUE(frmNext.optTimeBased.Value());
    EXPECT_FALSE(frmNext.optCalendarBased.Value());
    EXPECT_EQ(frmNext.txtHours.Text(), "26");
    EXPECT_EQ(frmNext.txtMinutes.Text(), "90");
    EXPECT_TRUE(frmNext.optMonthly.Value());
    EXPECT_FALSE(frmNext.optDaily.Value());
    EXPECT_EQ(frmNext.txtDayOfMonth.Text(), "31");
    EXPECT_EQ(frmNext.txtNumMonths.Text(), "6");
    EXPECT_TRUE(frmNext.optWeekdays.Value());
    EXPECT_TRUE(frmNext.optSkip.Value());
    EXPECT_EQ(frmNext.chkSat.Value(), 1);
    EXPECT_EQ(frmNext.cbAmPm.Text(), "PM");
    EXPECT_EQ(frmNext.dtUserTargetTime, dtFromTime({21, 5, 0}));
    EXPECT_EQ(frmNext.cbScheduledJobFile.Text(), "/jobs/a.vjb");
    EXPECT_EQ(frmNext.sEditJobFile, "") << "until a job file is picked or a schedule begun";
}

TEST_F(ScheduleSettings, TakeEveryFormOfABoolean)
{
    const std::pair<const char*, bool> aForms[] = {{"TRUE", true},   {"True", true},   {"true", true},
                                                   {"1", true},      {"-1", true},     {"FALSE", false},
                                                   {"False", false}, {"false", false}, {"0", false}};
    for (const auto& [sValue, bValue] : aForms) {
        app.ini.Set("frmScheduler", "optSkip", sValue);
        Load();
        EXPECT_EQ(frm.optSkip.Value(), bValue) << sValue;
        frmScheduler_Unload(app);
    }
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ScheduleSettings, LetTheLaterOfTwoChosenOptionsWin)
{
    for (const char* sKey : {"optTimeBased", "optCalendarBased", "optDaily", "optWeekly", "optMonthly"})
        app.ini.Set("frmScheduler", sKey, "True");
    Load();

    EXPECT_TRUE(frm.optCalendarBased.Value());
    EXPECT_FALSE(frm.optTimeBased.Value());
    EXPECT_TRUE(frm.optMonthly.Value());
    EXPECT_FALSE(frm.optDaily.Value() || frm.optWeekly.Value());
    EXPECT_TRUE(frm.fraMonthly.Visible());
    EXPECT_FALSE(frm.fraDaily.Visible() || frm.fraWeekly.Visible());
}

TEST_F(ScheduleSettings, NameTheBadOnesAndUseTheirDefaults)
{
    app.ini.Set("frmScheduler", "optTimeBased", "maybe");
    app.ini.Set("frmScheduler", "cbHours", "25");
    app.ini.Set("frmScheduler", "cbMinutes", "7");
    app.ini.Set("frmScheduler", "cbAmPm", "noon");
    app.ini.Set("frmScheduler", "chkMon", "x");
    app.ini.Set("frmScheduler", "dtTargetComplete", "31/12/2027");
    Load();

    Texts aMessages;
    for (const ScriptedWindows::Box& objBox : app.windows.boxes) {
        EXPECT_EQ(objBox.title, "Error");
        aMessages.push_back(objBox.text);
    }
    EXPECT_EQ(
        aMessages,
        (Texts{"Type mismatch: [frmScheduler] optTimeBased", "Invalid property value: [frmScheduler] cbHours",
               "Invalid property value: [frmScheduler] cbMinutes",
               "Invalid property value: [frmScheduler] cbAmPm", "Type mismatch: [frmScheduler] chkMon",
               "Type mismatch: [frmScheduler] dtTargetComplete"}));
    EXPECT_TRUE(frm.optCalendarBased.Value());
    EXPECT_FALSE(frm.optTimeBased.Value());
    EXPECT_EQ(frm.cbHours.Text() + ":" + frm.cbMinutes.Text() + " " + frm.cbAmPm.Text(), "12:00 AM");
    EXPECT_EQ(frm.chkMon.Value(), 0);
    EXPECT_EQ(frm.dtTargetComplete, dtOf(2000, 1, 1));
}

TEST_F(ScheduleSettings, CutLongValuesLikeAllSettings)
{
    app.ini.Set("frmScheduler", "txtHours", std::string(600, '1'));
    app.ini.Set("frmScheduler", "txtMinutes", std::string("5\0junk", 6));
    Load();

    EXPECT_EQ(frm.txtHours.Text(), std::string(499, '1'));
    EXPECT_EQ(frm.txtMinutes.Text(), "5");
}

// Intentional: the form opens on its first tab, whatever the file says.
TEST_F(ScheduleSettings, IgnoreTheStoredTab)
{
    app.ini.Set("frmScheduler", "intTabSetUp", "2");
    Load();

    EXPECT_EQ(frm.TabStrip1.SelectedTab(), 1);
    EXPECT_TRUE(frm.fraSetup.Visible());
    EXPECT_FALSE(frm.fraOptions.Visible());
}

// Intentional: the job file comes from the recent list.
TEST_F(ScheduleSettings, IgnoreTheStoredJobFile)
{
    app.ini.Set("frmScheduler", "cbScheduledJobFile", "/jobs/stored.vjb");
    Load();

    EXPECT_EQ(frm.cbScheduledJobFile.Text(), "");
}

// Intentional: without a pick or a Begin there is no job file, and a schedule without one isn't saved.
TEST_F(ScheduleSettings, AreNotSavedAfterChangesAlone)
{
    app.files.AddFile("/jobs/a.vjb");
    app.ini.Set("mruScheduleSource", "mruScheduleSource20", "/jobs/a.vjb");
    Load();
    frm.txtNumDays.SetText("3");

    frmScheduler_Unload(app);

    EXPECT_EQ(sStored("txtNumDays"), "(none)");
    EXPECT_EQ(app.ini.written, Texts{"mruScheduleSource/mruScheduleSource20=/jobs/a.vjb"});
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(ScheduleSettings, AreNotSavedWithoutADayOfTheWeek)
{
    app.files.AddFile("/jobs/a.vjb");
    app.ini.Set("mruScheduleSource", "mruScheduleSource20", "/jobs/a.vjb");
    Load();
    frm.optWeekly.SetValue(true);
    frm.sEditJobFile = "/jobs/a.vjb";

    frmScheduler_Unload(app);

    ASSERT_EQ(app.windows.boxes.size(), 1U);
    EXPECT_EQ(app.windows.boxes[0].text, "Please select day(s) of the week to run the job.");
    EXPECT_EQ(sStored("optWeekly"), "(none)");
}

TEST_F(ScheduleSettings, AreNotSavedWhileUnsoundAndSayNothing)
{
    app.files.AddFile("/jobs/a.vjb");
    app.ini.Set("mruScheduleSource", "mruScheduleSource20", "/jobs/a.vjb");
    Load();
    frm.sEditJobFile = "/jobs/a.vjb";
    frm.txtNumDays.SetText("abc");

    frmScheduler_Unload(app);

    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_EQ(sStored("optDaily"), "(none)");
}

TEST_F(ScheduleSettings, AreSavedAfterTheRecentList)
{
    app.files.AddFile("/jobs/a.vjb");
    app.ini.Set("mruScheduleSource", "mruScheduleSource20", "/jobs/a.vjb");
    Load();
    frm.sEditJobFile = "/jobs/a.vjb";

    frmScheduler_Unload(app);

    ASSERT_EQ(app.ini.written.size(), 31U);
    EXPECT_TRUE(app.ini.written[0].starts_with("mruScheduleSource/"));
    EXPECT_EQ(app.ini.written[1], "frmScheduler/optTimeBased=False");
}

TEST_F(ScheduleSettings, SurviveASettingsFileThatCannotBeWritten)
{
    app.files.AddFile("/jobs/a.vjb");
    app.ini.Set("mruScheduleSource", "mruScheduleSource20", "/jobs/a.vjb");
    Load();
    frm.sEditJobFile = "/jobs/a.vjb";
    app.ini.fail_writes = true;

    frmScheduler_Unload(app);

    EXPECT_TRUE(app.windows.boxes.empty());
}
