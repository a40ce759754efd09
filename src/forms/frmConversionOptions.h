// The options of a conversion: pages and compression of a TIFF, quality of a JPEG, texts written into files.
// Room: forms.
#pragma once

#include <string>

#include "src/controls/check_box.h"
#include "src/controls/command_button.h"
#include "src/controls/label.h"
#include "src/controls/option_button.h"
#include "src/controls/scroll_bar.h"
#include "src/controls/tab_strip.h"
#include "src/controls/text_box.h"

struct frmConversionOptions : Form {
    frmConversionOptions() : Form("frmConversionOptions") {}

    TabStrip SSTab1{*this, "SSTab1"};

    // TIFF
    Frame fraTiff{*this, "fraTiff"};
    Frame fraFromTiff{fraTiff, "fraFromTiff"};
    Label lblTiffPagesToDo{fraFromTiff, "lblTiffPagesToDo"};
    TextBox txtTiffPagesToDo{fraFromTiff, "txtTiffPagesToDo"};
    Frame fraToTiff{fraTiff, "fraToTiff"};
    CheckBox cbTiffAppendTo{fraToTiff, "cbTiffAppendTo"};
    Label lblCompressionMethod{fraToTiff, "lblCompressionMethod"};
    OptionButtonFamily rbTiffCompressionMethod{fraToTiff, "rbTiffCompressionMethod", 5};

    // JPEG
    Frame fraJpeg{*this, "fraJpeg"};
    Frame fraJpegQuality{fraJpeg, "fraJpegQuality"};
    Label lblQuality{fraJpegQuality, "lblQuality"};
    ScrollBar HScrollValue{fraJpegQuality, "HScrollValue", 0, 100};
    Label LabelValue{fraJpegQuality, "LabelValue"};

    // Tags
    Frame fraTags{*this, "fraTags"};
    Label lblTitle{fraTags, "lblTitle"};
    TextBox txtTitle{fraTags, "txtTitle"};
    Label lblDescription{fraTags, "lblDescription"};
    TextBox txtDescription{fraTags, "txtDescription"};
    Label lblDate{fraTags, "lblDate"};
    TextBox txtDate{fraTags, "txtDate"};
    Label lblAuthor{fraTags, "lblAuthor"};
    TextBox txtAuthor{fraTags, "txtAuthor"};
    Label lblCopyright{fraTags, "lblCopyright"};
    TextBox txtCopyright{fraTags, "txtCopyright"};
    Label lblEquipmentModel{fraTags, "lblEquipmentModel"};
    TextBox txtEquipmentModel{fraTags, "txtEquipmentModel"};
    Label lblEquipmentType{fraTags, "lblEquipmentType"};
    TextBox txtEquipmentType{fraTags, "txtEquipmentType"};

    CommandButton cmdDone{*this, "cmdDone"};
    CommandButton cmdCancel{*this, "cmdCancel"};

    std::string sOptions;  ///< the options before and after, joined by "^"
};
