// Lays out the scheduler's form.
#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QRadioButton>

#include "src/platform/qt/forms/dialogs.h"

static QWidget* Holder(const char* name, QLayout* layout)
{
    auto* widget = Named<QWidget>(name);
    layout->setContentsMargins(0, 0, 0, 0);
    widget->setLayout(layout);
    return widget;
}

// A number with its unit behind it.
static QHBoxLayout* Count(const char* field, const char* label)
{
    QLineEdit* edit = NumberField(field, 5);
    return Row({edit, Caption(label, QString(), edit), nullptr});
}

static QWidget* MakeTimeBased()
{
    QVBoxLayout* column = Column();
    column->addLayout(Count("txtHours", "lblHours"));
    column->addLayout(Count("txtMinutes", "lblMinutes"));
    column->addLayout(Count("txtSeconds", "lblSeconds"));
    return Holder("fraTimeBased", column);
}

static QWidget* MakeDaily()
{
    QVBoxLayout* column = Column();
    QLineEdit* days = NumberField("txtNumDays", 5);
    column->addLayout(
        Row({Named<QRadioButton>("optNumDays"), days, Caption("lblNumDays", QString(), days), nullptr}));
    column->addWidget(Named<QRadioButton>("optWeekdays"));
    return Holder("fraDaily", column);
}

static QWidget* MakeWeekly()
{
    QVBoxLayout* column = Column();
    QLineEdit* weeks = NumberField("txtNumWeeks", 5);
    column->addLayout(
        Row({Caption("lblRunEvery", QString(), weeks), weeks, Caption("lblNumWeeks", QString()), nullptr}));
    auto* days = new QGridLayout;
    days->setSpacing(Space(8));
    int n = 0;
    for (const char* day : {"chkMon", "chkTue", "chkWed", "chkThu", "chkFri", "chkSat", "chkSun"}) {
        days->addWidget(Named<QCheckBox>(day), n / 4, n % 4);
        ++n;
    }
    column->addLayout(days);
    return Holder("fraWeekly", column);
}

static QWidget* MakeMonthly()
{
    QVBoxLayout* column = Column();
    QLineEdit* day = NumberField("txtDayOfMonth", 5);
    QLineEdit* months = NumberField("txtNumMonths", 5);
    column->addLayout(
        Row({Caption("lblDayOfMonth", QString(), day), day, Caption("lblOfEvery", QString(), months), months,
             Caption("lblNumMonths", QString()), nullptr}));
    column->addWidget(Note("lblMonthlyNote"));
    return Holder("fraMonthly", column);
}

static QWidget* MakeCalendarBased(const Translate& t)
{
    QVBoxLayout* column = Column();
    QHBoxLayout* kinds = Row({Named<QRadioButton>("optDaily"), Named<QRadioButton>("optWeekly"),
                              Named<QRadioButton>("optMonthly"), nullptr});
    kinds->setSpacing(Space(16));
    column->addLayout(kinds);
    QComboBox* hours = Choice("cbHours");
    QComboBox* minutes = Choice("cbMinutes");
    QComboBox* halves = Choice("cbAmPm");
    minutes->setAccessibleName(t("Minutes"));
    halves->setAccessibleName("AM, PM");
    for (QComboBox* combo : {hours, minutes, halves}) {
        combo->setMinimumContentsLength(3);
        combo->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    column->addLayout(Row({Caption("lblStartTime", QString(), hours), hours, minutes, halves, nullptr}));
    column->addWidget(MakeDaily());
    column->addWidget(MakeWeekly());
    column->addWidget(MakeMonthly());
    return Holder("fraCalendarBased", column);
}

static QWidget* MakeSetup(const Translate& t)
{
    QVBoxLayout* column = Column();
    QComboBox* job = RecentTexts("cbScheduledJobFile");
    column->addWidget(Caption("lblScheduledJobFile", QString(), job));
    column->addLayout(Row({job, Named<QPushButton>("cmdSelectScheduledJobFile"),
                           IconButton("picScheduledJobFile", "file", t("Select a file"))}));
    column->addSpacing(Space(8));
    QHBoxLayout* kinds =
        Row({Named<QRadioButton>("optTimeBased"), Named<QRadioButton>("optCalendarBased"), nullptr});
    kinds->setSpacing(Space(16));
    column->addLayout(kinds);
    column->addSpacing(Space(8));
    column->addWidget(MakeTimeBased());
    column->addWidget(MakeCalendarBased(t));
    column->addStretch(1);
    return Holder("fraSetup", column);
}

static QWidget* MakeOptions()
{
    QVBoxLayout* column = Column();
    column->addWidget(Named<QCheckBox>("chkPersistRunning"));
    column->addSpacing(Space(8));
    QLabel* heading = Caption("lblTimeBased", QString());
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    column->addWidget(heading);
    column->addWidget(Note("lblOverrun"));
    column->addWidget(Named<QRadioButton>("optImmediately"));
    column->addWidget(Named<QRadioButton>("optSkip"));
    column->addStretch(1);
    return Holder("fraOptions", column);
}

std::unique_ptr<QWidget> MakeScheduler(QWidget* parent, const Translate& t)
{
    auto dialog = std::make_unique<QDialog>(parent);
    QVBoxLayout* column = DialogColumn(*dialog);
    column->addWidget(TabRow("TabStrip1", t("Schedule a Job")));
    column->addWidget(MakeSetup(t), 1);
    column->addWidget(MakeOptions(), 1);
    column->addSpacing(Space(8));
    auto* begin = Named<QPushButton>("cmdStartTimer");
    begin->setDefault(true);
    column->addLayout(
        Row({nullptr, begin, Named<QPushButton>("cmdEndTimer"), Named<QPushButton>("cmdDone")}));
    dialog->setMinimumSize(Space(520), Space(400));
    return dialog;
}
