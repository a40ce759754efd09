// The splash screen.
// Room: forms.
#pragma once

#include "src/controls/label.h"

struct frmPleaseWait : Form {
    frmPleaseWait() : Form("frmPleaseWait") {}

    Label lblHeader{*this, "lblHeader"};
    Label lblLine1{*this, "lblLine1"};
    Label lblLine2{*this, "lblLine2"};
};
