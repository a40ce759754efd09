// The main form: task and log tables, the fields of both actions, and the state of a run.
// Room: forms.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>

#include "src/controls/action.h"
#include "src/controls/check_box.h"
#include "src/controls/command_button.h"
#include "src/controls/family.h"
#include "src/controls/grid/grid.h"
#include "src/controls/image_view.h"
#include "src/controls/label.h"
#include "src/controls/lists/combo_box.h"
#include "src/controls/observed.h"
#include "src/controls/option_button.h"
#include "src/controls/scroll_bar.h"
#include "src/controls/tab_strip.h"
#include "src/controls/text_box.h"
#include "src/forms/clsMRU.h"

/// Tasks are rows 1 to Rows() - 2 of fgToDo, between the header and the marker row.
constexpr std::int32_t kToDoColumns = 11;
constexpr std::int32_t kLogColumns = 12;
/// Details strings are stored for process numbers 0 to 100.
constexpr std::int32_t kSpecialProcessSlots = 101;

/// Values of the bars that step numbers go down from here: the middle.
constexpr std::int32_t kFirstStep = 16000;

/// What a preview was made from, its parameters aside.
struct PreviewKey {
    std::int32_t lSpecialProcess = 0;
    std::int32_t lPage = 0;  ///< from 0
    std::string sOriginalFile;

    bool operator==(const PreviewKey&) const = default;
};

struct frmMain : Form {
    frmMain() : Form("frmMain")
    {
        ts.SetTabs({"Tasks", "Log"});
        tsImageViewer.SetTabs({"View Original", "View Target"});
        frameLabelZoom.SetCaption("Zoom");
        for (CommandButton& cmd : cmdReloadImage)
            cmd.SetToolTipText("Reload image for viewing");
        for (Control* pFilledLater : std::initializer_list<Control*>{
                 &lblSpecialProcessDescription, &lblSpecialProcessTextEntryDescription1,
                 &lblSpecialProcessTextEntryDescription2, &cbSpecialProcessBoolean, &lblColorSelected1,
                 &lblColorSelected2, &lblZoomPercentage, &lblFrame(0), &lblFrame(1), &lblFrame(2)})
            pFilledLater->SetTag("TranslateFalse");
        lblColorSelected1.SetCaption(std::string(13, ' '));
        for (ScrollBar* pBar : {&VScrollSpecialProcess1, &VScrollSpecialProcess1b, &VScrollSpecialProcess1c,
                                &VScrollSpecialProcess2})
            pBar->SetValue(kFirstStep);
        for (TextBox* pData :
             {&txtSpecialProcessTextEntry1, &txtSpecialProcessTextEntry1b, &txtSpecialProcessTextEntry1c,
              &txtSpecialProcessTextEntry2, &txtCommandLineWaitTimeInSeconds})
            pData->SetTag("TranslateFalse");
        tbMain.SetActions({&keyNew, &keyOpen, nullptr, &keyAdd, &keyRemove, &keyUpdate, nullptr, &keyRewind,
                           &keyConvert, &keyPause});
        // The commands of an empty job. keyConvert stays enabled until the first UpdateMenuToolbar.
        for (Action* pKey : {&keyRemove, &keyUpdate, &keyRewind, &keyPause, &KeySaveLogAsConversionJob})
            pKey->SetEnabled(false);
        for (CommandButton* pButton : {&cmdRemove, &cmdUpdate, &cmdPause})
            pButton->SetEnabled(false);
    }

    // Tables
    Grid fgToDo{*this, "fgToDo", kToDoColumns};
    Grid fgLog{*this, "fgLog", kLogColumns};
    TabStrip ts{*this, "ts"};

    // Choice of action
    OptionButtonFamily rbActionToDo{*this, "rbActionToDo", 2};  ///< conversion, special process
    Frame frameSpecializedAction{*this, "frameSpecializedAction"};
    Frame frameCF{*this, "frameCF"};
    Frame frameSelectFilesForSpecialProcessing{frameSpecializedAction,
                                               "frameSelectFilesForSpecialProcessing"};
    Frame frameCommandLine{frameSpecializedAction, "frameCommandLine"};
    Frame frameSpecialProcessParameters{frameSpecializedAction, "frameSpecialProcessParameters"};
    TabStrip tsSpecialProcessParameters{frameSpecializedAction, "tsSpecialProcessParameters"};
    Frame frameTargetFile{frameCF, "frameTargetFile"};
    Frame frameTargetFileSpecialized{frameSelectFilesForSpecialProcessing, "frameTargetFileSpecialized"};
    Frame frameImageViewer{*this, "frameImageViewer"};
    TabStrip tsImageViewer{frameImageViewer, "tsImageViewer"};
    Family<ImageView> ImageViewMain{frameImageViewer, "ImageViewMain", 3};  ///< original, target, preview
    Family<CommandButton> picZoomMainPicture{frameImageViewer, "picZoomMainPicture", 2};
    Family<Frame> framePicNav{frameImageViewer, "framePicNav", 3};
    Family<ScrollBar> HScrollFrame{framePicNav, "HScrollFrame"};
    Family<Label> lblFrame{framePicNav, "lblFrame"};
    Family<CommandButton> cmdReloadImage{frameImageViewer, "cmdReloadImage", 3};
    Slider SliderZoom{frameImageViewer, "SliderZoom", 1, 1000};
    Frame frameLabelZoom{frameImageViewer, "frameLabelZoom"};
    Frame frameZoomPercentage{frameImageViewer, "frameZoomPercentage"};
    Label lblZoomPercentage{frameZoomPercentage, "lblZoomPercentage"};
    ScrollBar scrollOffsetX{frameImageViewer, "scrollOffsetX", 0, 500};
    ScrollBar scrollOffsetY{frameImageViewer, "scrollOffsetY", 0, 500};

    // Conversion
    ComboBox cbOriginalFile{frameCF, "cbOriginalFile"};
    ComboBox cbFileTypeOriginal{frameCF, "cbFileTypeOriginal", ComboStyle::ListOnly};
    Label lblFileTypeOriginal{frameCF, "lblFileTypeOriginal"};
    CheckBox cbDoSubfolders{frameCF, "cbDoSubfolders"};
    ComboBox cbTargetFile{frameTargetFile, "cbTargetFile"};
    ComboBox cbFileTypeTarget{frameCF, "cbFileTypeTarget", ComboStyle::ListOnly};
    CheckBox cbSaveToOriginalFolder{frameCF, "cbSaveToOriginalFolder"};
    CommandButton cmdSelectSourceFile{frameCF, "cmdSelectSourceFile"};
    CommandButton cmdSelectSourceFolder{frameCF, "cmdSelectSourceFolder"};
    CommandButton cmdSelectTargetFile{frameTargetFile, "cmdSelectTargetFile"};
    CommandButton cmdSelectTargetFolder{frameTargetFile, "cmdSelectTargetFolder"};
    CommandButton picSelectTargetFile{frameTargetFile, "picSelectTargetFile"};
    CommandButton cmdLaunchOriginal{frameCF, "cmdLaunchOriginal"};
    CommandButton cmdLaunchTarget{frameTargetFile, "cmdLaunchTarget"};
    CommandButton cmdImageConversionAdvancedOptions{frameCF, "cmdImageConversionAdvancedOptions"};

    // Special process
    ComboBox cbSpecialProcesses{frameSpecializedAction, "cbSpecialProcesses", ComboStyle::ListOnly};
    Label lblSpecialProcessDescription{frameSpecializedAction, "lblSpecialProcessDescription"};
    ComboBox cbOriginalFileSpecialized{frameSelectFilesForSpecialProcessing, "cbOriginalFileSpecialized"};
    ComboBox cbFileTypeOriginalSpecialized{frameSelectFilesForSpecialProcessing,
                                           "cbFileTypeOriginalSpecialized", ComboStyle::ListOnly};
    CheckBox cbDoSubfoldersSpecialized{frameSelectFilesForSpecialProcessing, "cbDoSubfoldersSpecialized"};
    ComboBox cbTargetFileSpecialized{frameTargetFileSpecialized, "cbTargetFileSpecialized"};
    CheckBox cbSaveToOriginalFolderSpecialized{frameSelectFilesForSpecialProcessing,
                                               "cbSaveToOriginalFolderSpecialized"};
    CommandButton cmdSelectSourceFileSpecialized{frameSelectFilesForSpecialProcessing,
                                                 "cmdSelectSourceFileSpecialized"};
    CommandButton cmdSelectSourceFolderSpecialized{frameSelectFilesForSpecialProcessing,
                                                   "cmdSelectSourceFolderSpecialized"};
    CommandButton cmdSelectTargetFileSpecialized{frameTargetFileSpecialized,
                                                 "cmdSelectTargetFileSpecialized"};
    CommandButton cmdSelectTargetFolderSpecialized{frameTargetFileSpecialized,
                                                   "cmdSelectTargetFolderSpecialized"};
    CommandButton cmdLaunchOriginalSpecialized{frameSelectFilesForSpecialProcessing,
                                               "cmdLaunchOriginalSpecialized"};
    CommandButton cmdLaunchTargetSpecialized{frameTargetFileSpecialized, "cmdLaunchTargetSpecialized"};

    // Inputs of the parameter panel, shared by all processes
    Label lblSpecialProcessTextEntryDescription1{frameSpecialProcessParameters,
                                                 "lblSpecialProcessTextEntryDescription1"};
    Label lblSpecialProcessTextEntryDescription2{frameSpecialProcessParameters,
                                                 "lblSpecialProcessTextEntryDescription2"};
    ScrollBar VScrollSpecialProcess1{frameSpecialProcessParameters, "VScrollSpecialProcess1"};
    ScrollBar VScrollSpecialProcess1b{frameSpecialProcessParameters, "VScrollSpecialProcess1b"};
    ScrollBar VScrollSpecialProcess1c{frameSpecialProcessParameters, "VScrollSpecialProcess1c"};
    ScrollBar VScrollSpecialProcess2{frameSpecialProcessParameters, "VScrollSpecialProcess2"};
    TextBox txtSpecialProcessTextEntry1{frameSpecialProcessParameters, "txtSpecialProcessTextEntry1"};
    TextBox txtSpecialProcessTextEntry1b{frameSpecialProcessParameters, "txtSpecialProcessTextEntry1b"};
    TextBox txtSpecialProcessTextEntry1c{frameSpecialProcessParameters, "txtSpecialProcessTextEntry1c"};
    TextBox txtSpecialProcessTextEntry2{frameSpecialProcessParameters, "txtSpecialProcessTextEntry2"};
    CheckBox cbSpecialProcessBoolean{frameSpecialProcessParameters, "cbSpecialProcessBoolean"};
    ComboBox cbSpecialProcessListBox{frameSpecialProcessParameters, "cbSpecialProcessListBox",
                                     ComboStyle::ListOnly};
    CommandButton cmdSpecialProcessShowDialog{frameSpecialProcessParameters, "cmdSpecialProcessShowDialog"};
    Label lblColorSelected1{frameSpecialProcessParameters, "lblColorSelected1"};  ///< shows the colour
    Label lblColorSelected2{frameSpecialProcessParameters, "lblColorSelected2"};  ///< the colour as a number

    // Launch
    ComboBox cbCommandLine{frameCommandLine, "cbCommandLine"};
    ComboBox cbCommandLineArguments{frameCommandLine, "cbCommandLineArguments"};
    ComboBox cbCommandLineWindowState{frameCommandLine, "cbCommandLineWindowState", ComboStyle::ListOnly};
    ComboBox cbCommandLineThreadPriority{frameCommandLine, "cbCommandLineThreadPriority",
                                         ComboStyle::ListOnly};
    TextBox txtCommandLineWaitTimeInSeconds{frameCommandLine, "txtCommandLineWaitTimeInSeconds"};
    CommandButton cmdSelectCommandLine{frameCommandLine, "cmdSelectCommandLine"};
    CommandButton cmdLaunchCommandLine{frameCommandLine, "cmdLaunchCommandLine"};

    // Buttons of the form, of the toolbar tbMain and of its drop-down
    CommandButton cmdAdd{*this, "cmdAdd"};
    CommandButton cmdUpdate{*this, "cmdUpdate"};
    CommandButton cmdRemove{*this, "cmdRemove"};
    CommandButton cmdPause{*this, "cmdPause"};
    ToolBar tbMain{*this, "tbMain"};
    Action keyNew{*this, "keyNew"};
    Action keyOpen{*this, "keyOpen"};
    Action keyAdd{*this, "keyAdd"};
    Action keyRemove{*this, "keyRemove"};
    Action keyUpdate{*this, "keyUpdate"};
    Action keyRewind{*this, "keyRewind"};
    Action keyConvert{*this, "keyConvert"};
    Action keyPause{*this, "keyPause"};
    Action KeySave{*this, "KeySave"};
    Action KeySaveAs{*this, "KeySaveAs"};
    Action KeyOpen{*this, "KeyOpen"};
    Action KeySaveLogAsConversionJob{*this, "KeySaveLogAsConversionJob"};

    // State of a run
    Observed<bool> bRunning{false};  ///< a pause clears it; the run ends when it sees that
    Observed<std::int32_t> lRunsInProgress{
        0};                             ///< runs that were begun and haven't ended, one inside the other
    bool bRunStopped = false;           ///< the run is to end without finishing its file
    std::int64_t lJobStartTick = 0;     ///< in milliseconds of the tick counter
    std::int32_t lResumeFileIndex = 0;  ///< position in a wildcard task's file list, from 1; 0 for none
    std::string sCurrentFile;           ///< file being processed
    double dTaskDone = 0;               ///< part of a wildcard task's files that is done, from 0 to 1

    // Last values passed to the image library: a malformed details field keeps them
    std::int32_t lTIFFCompression = 0;
    std::int32_t lJPEGQuality = 75;

    // Viewer; arrays go by view
    std::array<std::int32_t, 3> aFrames{};  ///< pages of the file on show
    std::array<std::int32_t, 3> aImageWidth{};
    std::array<std::int32_t, 3> aImageHeight{};
    std::array<bool, 3> aFitted{true, true, true};  ///< the picture still has the zoom that makes it fit
    std::int32_t lViewWidth = 0;                    ///< the picture last fitted, as it is shown
    std::int32_t lViewHeight = 0;
    std::shared_ptr<const ImageBuffer>
        pOriginalImage;  ///< last page loaded into view 0; previews start from it
    PreviewKey objLastPreview;

    // Editing state
    std::string sActionToDo = "C";       ///< "C" or "S": selects the set of fields in use
    std::int32_t lConversionMethod = 1;  ///< 1 for "C", 4 for "S"
    bool bDirtyConversionItem = false;   ///< the fields differ from their row
    bool bKeepFields = false;     ///< the row that is about to be entered isn't shown: its fields are kept
    std::string sProposedTarget;  ///< the target last proposed while the source was typed
    std::string sProposedTargetSpecialized;
    std::string sImageConversionOptions;
    std::array<std::int32_t, 4> alLastStep{kFirstStep, kFirstStep, kFirstStep, kFirstStep};
    std::string sCurrentJobFile;     ///< "" at start, "*" after New, else the job file's path
    bool bToDoGridWasSetUp = false;  ///< the first setup formats the table differently from later ones

    // Settings
    bool bAutoLoadImages = true;
    bool bDeleteOriginalFileAfterProcessing = false;
    bool bTryAutodetectIfFailed = true;
    std::string sLogFile;                                        ///< report file
    std::array<std::string, kSpecialProcessSlots> asSP_Details;  ///< last details string of each process

    // Most recently used texts of the combo boxes
    clsMRU mruSource;
    clsMRU mruTarget;
    clsMRU mruSourceSpecialized;
    clsMRU mruTargetSpecialized;
    clsMRU mruCommandLine;
    clsMRU mruCommandLineArguments;

    // Lower-case extension to list index, filled together with the three combo boxes
    std::map<std::string, std::int32_t> colExtensionsOriginal;
    std::map<std::string, std::int32_t> colExtensionsTarget;
    std::map<std::string, std::int32_t> colExtensionsSpecialized;
};
