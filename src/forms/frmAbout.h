// What the program is: name, version, licence, libraries.
// Room: forms.
#pragma once

#include "src/controls/command_button.h"
#include "src/controls/label.h"
#include "src/controls/text_box.h"

struct frmAbout : Form {
    frmAbout() : Form("frmAbout") {}

    Label lblProduct{*this, "lblProduct"};
    Label lblDescription{*this, "lblDescription"};
    Label lblVersion{*this, "lblVersion"};
    TextBox txtLibraries{*this, "txtLibraries"};
    CommandButton cmdOK{*this, "cmdOK"};
};
