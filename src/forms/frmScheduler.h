// The scheduler's form, as far as a run asks about it.
// Room: forms.
#pragma once

#include "src/controls/controls.h"

struct frmScheduler : Form {
    frmScheduler() : Form("frmScheduler") {}

    bool bPersistRunning = false;  ///< the timer is to start with the program
    bool bTimerEnabled = false;    ///< the timer is on
};
