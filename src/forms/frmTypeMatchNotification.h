// The warning that a source's extension doesn't match its type.
// Room: forms.
#pragma once

#include "src/controls/check_box.h"
#include "src/controls/command_button.h"
#include "src/controls/label.h"

struct frmTypeMatchNotification : Form {
    frmTypeMatchNotification() : Form("frmTypeMatchNotification") {}

    Label lblNotification{*this, "lblNotification"};
    CheckBox chkDontShowAgain{*this, "chkDontShowAgain"};
    CommandButton cmdContinue{*this, "cmdContinue"};
    CommandButton cmdCancel{*this, "cmdCancel"};

    bool bDontShowAgain = false;  ///< the user doesn't want to see it again
    bool bContinue = false;       ///< it was left by cmdContinue
};
