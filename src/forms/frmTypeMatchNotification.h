// The warning that a source's extension doesn't match its type.
// Room: forms.
#pragma once

#include "src/controls/check_box.h"
#include "src/controls/command_button.h"

struct frmTypeMatchNotification : Form {
    frmTypeMatchNotification() : Form("frmTypeMatchNotification") {}

    CheckBox chkDontShowAgain{*this, "chkDontShowAgain"};
    CommandButton cmdContinue{*this, "cmdContinue"};
    CommandButton cmdCancel{*this, "cmdCancel"};

    bool bDontShowAgain = false;
    bool bContinue = false;
};
