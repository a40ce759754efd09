// The choice of language and font.
// Room: forms.
#pragma once

#include <string>

#include "src/controls/command_button.h"
#include "src/controls/label.h"
#include "src/controls/lists/list_box.h"

struct frmLanguage : Form {
    frmLanguage() : Form("frmLanguage") {}

    Label lblLanguage{*this, "lblLanguage"};
    ListBox List1{*this, "List1"};
    CommandButton cmdEditLanguageFile{*this, "cmdEditLanguageFile"};
    CommandButton cmdHelpLanguage{*this, "cmdHelpLanguage"};
    CommandButton cmdSelectFont{*this, "cmdSelectFont"};
    CommandButton cmdDone{*this, "cmdDone"};
    CommandButton cmdCancel{*this, "cmdCancel"};

    std::string sSelectedLanguage;  ///< empty after Cancel
    std::string sSelectedFont;      ///< empty unless one was picked
};
