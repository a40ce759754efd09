// The dialog that shows one file at a larger size.
// Room: forms.
#pragma once

#include <cstdint>
#include <memory>

#include "src/controls/command_button.h"
#include "src/controls/image_view.h"
#include "src/controls/label.h"
#include "src/controls/lists/combo_box.h"
#include "src/controls/scroll_bar.h"
#include "src/forms/clsMRU.h"

struct frmImageViewer : Form {
    frmImageViewer() : Form("frmImageViewer") {}

    ComboBox cbFile{*this, "cbFile"};
    CommandButton cmdGetFilePath{*this, "cmdGetFilePath"};
    CommandButton picSelectSourceFile{*this, "picSelectSourceFile"};
    ImageView ImageView1{*this, "ImageView1"};
    Frame framePicNav{*this, "framePicNav"};
    ScrollBar HScrollFrame{framePicNav, "HScrollFrame", 0, 0};
    Label lblFrame{framePicNav, "lblFrame"};
    Label sbStatus{*this, "sbStatus"};
    CommandButton cmdApply{*this, "cmdApply"};
    CommandButton cmdCancel{*this, "cmdCancel"};
    CommandButton CommandSave{*this, "CommandSave"};

    std::int32_t lViewerFrames = -1;                  ///< pages of the file; -1 before one is known
    std::shared_ptr<const ImageBuffer> pViewerImage;  ///< the page on show, or null
    clsMRU* pMRU = nullptr;                           ///< the caller's recent files, while the dialog is open
    bool bFillingFileList = false;                    ///< code is changing cbFile
};
