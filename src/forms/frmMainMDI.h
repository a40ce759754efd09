// The frame window: the status bar and menus around the main form.
// Room: forms.
#pragma once

#include <cstdint>
#include <memory>

#include "src/controls/action.h"
#include "src/controls/scroll_bar.h"
#include "src/controls/status_bar.h"

// Panels of sbMain, counted from 1.
constexpr std::int32_t kPanelProgress = 2;  ///< what is being loaded or listed
constexpr std::int32_t kPanelTask = 3;      ///< number of the current task
constexpr std::int32_t kPanelPercent = 6;   ///< progress within a wildcard task
constexpr std::int32_t kPanelFile = 8;      ///< file being processed
constexpr std::int32_t kPanelSeconds = 11;  ///< seconds since the start of the run

struct frmMainMDI : Form {
    frmMainMDI() : Form("frmMainMDI")
    {
        for (Action* pItem : {&mnuSaveLogAsConversionJob, &mnuRemoveConversionJob, &mnuUpdateConversionJob,
                              &mnuPause, &mnuRewindConversionJob})
            pItem->SetEnabled(false);
        mnuFile.SetActions({&mnuNewConversionJob, &mnuOpenConversionJob, &mnuSaveConversionJob,
                            &mnuSaveConversionJobAs, &mnuSaveLogAsConversionJob, nullptr, &mnuLanguage,
                            &mnuOptions, nullptr, &mnuExit});
        mnuConversion.SetActions({&mnuAddConversionJob, &mnuRemoveConversionJob, &mnuUpdateConversionJob,
                                  nullptr, &mnuBeginConversionJob, &mnuPause, &mnuRewindConversionJob,
                                  &mnuScheduleConversionJob, nullptr, &mnuConversionOptions});
        mnuHelp.SetActions({&mnuLaunchHelpFile, &mnuHelpOnLine, &cmdHelpCommandLine, nullptr, &mnuAbout,
                            &mnuHelpProductHomePage, &mnuHelpProductUpdates, &mnuOrbelanHomePage,
                            &mnuAdditionalImageConversionTools});
    }

    StatusBar sbMain{*this, "sbMain"};
    ProgressBar pbJob{*this, "pbJob", 0, 1000};  ///< the whole job; hidden while nothing runs
    std::shared_ptr<void> pJobProgress;          ///< keeps pbJob up to date

    Menu mnuFile{*this, "mnuFile"};
    Action mnuNewConversionJob{*this, "mnuNewConversionJob"};
    Action mnuOpenConversionJob{*this, "mnuOpenConversionJob"};
    Action mnuSaveConversionJob{*this, "mnuSaveConversionJob"};
    Action mnuSaveConversionJobAs{*this, "mnuSaveConversionJobAs"};
    Action mnuSaveLogAsConversionJob{*this, "mnuSaveLogAsConversionJob"};
    Action mnuLanguage{*this, "mnuLanguage"};
    Action mnuOptions{*this, "mnuOptions"};
    Action mnuExit{*this, "mnuExit"};

    Menu mnuConversion{*this, "mnuConversion"};
    Action mnuBeginConversionJob{*this, "mnuBeginConversionJob"};
    Action mnuAddConversionJob{*this, "mnuAddConversionJob"};
    Action mnuRemoveConversionJob{*this, "mnuRemoveConversionJob"};
    Action mnuUpdateConversionJob{*this, "mnuUpdateConversionJob"};
    Action mnuPause{*this, "mnuPause"};
    Action mnuRewindConversionJob{*this, "mnuRewindConversionJob"};
    Action mnuScheduleConversionJob{*this, "mnuScheduleConversionJob"};
    Action mnuConversionOptions{*this, "mnuConversionOptions"};

    Menu mnuHelp{*this, "mnuHelp"};
    Action mnuLaunchHelpFile{*this, "mnuLaunchHelpFile"};
    Action mnuHelpOnLine{*this, "mnuHelpOnLine"};
    Action cmdHelpCommandLine{*this, "cmdHelpCommandLine"};
    Action mnuHelpProductHomePage{*this, "mnuHelpProductHomePage"};
    Action mnuHelpProductUpdates{*this, "mnuHelpProductUpdates"};
    Action mnuOrbelanHomePage{*this, "mnuOrbelanHomePage"};
    Action mnuAdditionalImageConversionTools{*this, "mnuAdditionalImageConversionTools"};
    Action mnuAbout{*this, "mnuAbout"};
};
