// The frame window: status bar and menus around the main form.
// Room: forms. May use: base, platform.
#pragma once

#include "src/platform/controls.h"

struct frmMainMDI : Form {
    frmMainMDI() : Form("frmMainMDI") {}

    StatusBar sbMain{*this, "sbMain"};
    Action mnuNewConversionJob{*this, "mnuNewConversionJob"};
    Action mnuSaveConversionJob{*this, "mnuSaveConversionJob"};
    Action mnuSaveConversionJobAs{*this, "mnuSaveConversionJobAs"};
    Action mnuSaveLogAsConversionJob{*this, "mnuSaveLogAsConversionJob"};
    Action mnuBeginConversionJob{*this, "mnuBeginConversionJob"};
    Action mnuAddConversionJob{*this, "mnuAddConversionJob"};
    Action mnuRemoveConversionJob{*this, "mnuRemoveConversionJob"};
    Action mnuUpdateConversionJob{*this, "mnuUpdateConversionJob"};
    Action mnuPause{*this, "mnuPause"};
    Action mnuRewindConversionJob{*this, "mnuRewindConversionJob"};

    bool bHourglass = false;  ///< the screen's mouse pointer shows that work goes on
    bool bMinimized = false;
};
