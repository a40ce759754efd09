// The scheduler form, reduced to what a run needs.
// Room: forms.
#pragma once

#include "src/controls/controls.h"

struct frmScheduler : Form {
    frmScheduler() : Form("frmScheduler") {}

    bool bPersistRunning = false;  ///< start the timer with the program
    bool bTimerEnabled = false;    ///< the timer is running
};
