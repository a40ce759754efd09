// The program's general options.
// Room: forms.
#pragma once

#include "src/controls/check_box.h"
#include "src/controls/command_button.h"
#include "src/controls/label.h"
#include "src/controls/text_box.h"

struct frmOptions : Form {
    frmOptions() : Form("frmOptions") {}

    Frame fraGeneralOptions{*this, "fraGeneralOptions"};
    CheckBox cbAutoLoadImages{fraGeneralOptions, "cbAutoLoadImages"};
    CheckBox cbTryAutodetectIfFailed{fraGeneralOptions, "cbTryAutodetectIfFailed"};
    CheckBox cbDeleteAfterProcessing{fraGeneralOptions, "cbDeleteAfterProcessing"};
    Label lblDeleteWarning{fraGeneralOptions, "lblDeleteWarning"};

    Frame fraLogFile{*this, "fraLogFile"};
    Label lblLogFile{fraLogFile, "lblLogFile"};
    TextBox txtLogFile{fraLogFile, "txtLogFile"};
    CommandButton cmdSelectScheduledJobFile{fraLogFile, "cmdSelectScheduledJobFile"};

    CommandButton cmdApply{*this, "cmdApply"};
    CommandButton cmdCancel{*this, "cmdCancel"};
    CommandButton cmdHelpRegularExpression{*this, "cmdHelpRegularExpression"};
};
