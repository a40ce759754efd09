// Follows a run in the progress bar.
#include "src/shell/modJobProgress.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>

#include "src/forms/Application.h"
#include "src/platform/clock.h"
#include "src/translator/modTranslator.h"

constexpr double kWholeJob = 1000;
// A guess from less of the job than this would jump about.
constexpr double kEnoughToGuess = 0.02;
constexpr std::int64_t kMillisecondsToGuess = 3000;
constexpr std::int64_t kSecondsPerMinute = 60;

namespace
{

/// Notified when runs begin and end, and by the panels that they write to.
class JobProgress : StatusBarObserver, ValueObserver
{
public:
    explicit JobProgress(Application& app)
        : m_app(app),
          m_objPanelWatch(app.frmMainMDI.sbMain, *this),
          m_objRunWatch(app.frmMain.lRunsInProgress, *this)
    {
    }
    JobProgress(const JobProgress&) = delete;
    JobProgress& operator=(const JobProgress&) = delete;

private:
    void PanelChanged(std::int32_t lPanel) override
    {
        if (lPanel == kPanelTask)
            m_app.frmMain.dTaskDone = 0;
        if (lPanel != kPanelProgress)
            ShowJobProgress(m_app);
    }
    void ValueChanged() override { ShowJobProgress(m_app); }

    Application& m_app;
    Observation m_objPanelWatch;
    Observation m_objRunWatch;
};

}  // namespace

// Of the whole job, from 0 to 1.
static double dJobDone(const frmMain& frm)
{
    const std::int32_t lTasks = frm.fgToDo.Rows() - 2;
    if (lTasks < 1)
        return 0;
    return std::clamp((frm.fgToDo.Row() - 1 + frm.dTaskDone) / lTasks, 0.0, 1.0);
}

static std::string sTimeLeft(Application& app, double dDone)
{
    const std::int64_t lMilliseconds = app.svc.objClock.GetTickCount() - app.frmMain.lJobStartTick;
    if (dDone < kEnoughToGuess || lMilliseconds < kMillisecondsToGuess)
        return "";
    const auto lSeconds = static_cast<std::int64_t>(
        std::llround(static_cast<double>(lMilliseconds) * (1 - dDone) / dDone / 1000));
    if (lSeconds < kSecondsPerMinute)
        return sTranslate(app, "Seconds left:") + " " + std::to_string(lSeconds);
    return sTranslate(app, "Minutes left:") + " " +
           std::to_string((lSeconds + kSecondsPerMinute - 1) / kSecondsPerMinute);
}

void ShowJobProgress(Application& app)
{
    ProgressBar& pbJob = app.frmMainMDI.pbJob;
    pbJob.SetVisible(app.frmMain.lRunsInProgress > 0);
    if (!pbJob.Visible())
        return;
    const double dDone = dJobDone(app.frmMain);
    pbJob.SetValue(static_cast<std::int32_t>(dDone * kWholeJob));
    pbJob.SetToolTipText(sTimeLeft(app, dDone));
}

void ConnectJobProgress(Application& app)
{
    app.frmMainMDI.pJobProgress = std::make_shared<JobProgress>(app);
    ShowJobProgress(app);
}
