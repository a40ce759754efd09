// The schedule as entered: copies the form's inputs to its fields and checks them.
// Room: scheduler.
#pragma once

#include <cstdint>
#include <string>

struct Application;

// What ValidateSchedule may find. Codes from 100 up belong to calendar schedules.
constexpr std::int32_t kScheduleSound = 0;
constexpr std::int32_t kBadHours = 1;
constexpr std::int32_t kBadMinutes = 2;
constexpr std::int32_t kBadSeconds = 3;
constexpr std::int32_t kNoInterval = 4;
constexpr std::int32_t kBadInterval = 5;
constexpr std::int32_t kTimeNoJobFile = 6;
constexpr std::int32_t kTimeJobFileMissing = 7;
constexpr std::int32_t kBadNumDays = 108;
constexpr std::int32_t kBadNumWeeks = 109;
constexpr std::int32_t kCalendarNoJobFile = 110;
constexpr std::int32_t kCalendarJobFileEmpty = 111;
constexpr std::int32_t kCalendarJobFileMissing = 112;
constexpr std::int32_t kNoWeekday = 113;
constexpr std::int32_t kBadDayOfMonth = 114;
constexpr std::int32_t kBadNumMonths = 115;

/// Copies the texts, options and days to the form's fields.
void CollectDataFromFrmScheduler(Application& app);

/// Takes the job file, the calendar kind and the counts of weeks, months and the day of the month. Counts are
/// rounded, ties to even, and clamped to 16 bits.
void GetCalendarTimerDataFromGUI(Application& app);

/// Checks the chosen kind of schedule; kScheduleSound or the first thing found. Fills in blank fields, and
/// shows no message but that of bWeekdaysSelected.
std::int32_t ValidateSchedule(Application& app);
std::int32_t ValidateTimeBased(Application& app);
std::int32_t ValidateCalendarBased(Application& app);

/// The interval entered, in seconds, ties rounded to even.
std::int32_t GetTimeBasedInterval(const Application& app);

/// True if any day is ticked; shows a message if none is.
bool bWeekdaysSelected(Application& app);

/// Shows the message for a code and moves the focus to the field at fault. Ignores other codes.
void ShowScheduleError(Application& app, std::int32_t lCode);

/// A message of the scheduler: translated, with an OK button.
void ShowScheduleMessage(Application& app, const std::string& sText);
