// Loads and saves the settings of the main form and its frame window, key by key.
#include "src/settings/modSettings.h"

#include <cstdint>
#include <string>

#include "src/base/number_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/catalogue/modSpecialProcessCatalogue.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/platform/ini_file.h"
#include "src/platform/locale.h"
#include "src/platform/window_services.h"
#include "src/settings/modMRU.h"
#include "src/translator/modTranslator.h"

const std::string kFirstStartImageConversionOptions =
    "1^0^FALSE^75^'Varnel'^A batch picture tool^1/1/2007^Orbelan, Inc.^Orbelan 2006^^^";

static constexpr std::int32_t kBufferSize = 500;
static constexpr std::int32_t kRecentTexts = 20;

static constexpr WindowPlace kFirstPlaceOfMain = {kWindowNormal, 1000, 1000, 6500, 7200};
static constexpr WindowPlace kFirstPlaceOfImageViewer = {kWindowNormal, 1500, 1500, 12000, 9000};
static constexpr WindowPlace kFirstPlaceOfMDI = {kWindowNormal, 150, 150, 11000, 7000};

// Default column widths in twips; -1 is the "Do" column, whose width depends on the locale.
static constexpr std::int32_t kWidthOfDo = -1;
static constexpr std::int32_t kLogWidths[kLogColumns] = {0, 0,    445, kWidthOfDo, 0,   0,
                                                         0, 3875, 0,   495,        445, 12380};
static constexpr std::int32_t kToDoWidths[kToDoColumns] = {0,   0,    445, kWidthOfDo, 3950, 0,
                                                           500, 3875, 0,   495,        495};

namespace
{
/// Reads and writes the keys of one section.
class Section
{
public:
    Section(Application& app, std::string sName) : m_app(app), m_sName(std::move(sName)) {}

    std::string sRead(const std::string& sKey, const std::string& sDefault) const
    {
        const std::string sValue = m_app.svc.objIniFile.GetPrivateProfileString(m_sName, sKey, sDefault,
                                                                                kBufferSize, m_app.sIniFile);
        return sTrim(std::string_view(sValue).substr(0, sValue.find('\0')));
    }
    std::int32_t lRead(const std::string& sKey, const std::string& sDefault) const
    {
        std::int32_t lValue = 0;
        Apply(sKey, sDefault, [&](const std::string& sValue) { lValue = lNumber(sValue); });
        return lValue;
    }
    /// The standard reading of a Boolean: a word in any case, or a number.
    bool bRead(const std::string& sKey, const std::string& sDefault) const
    {
        bool bValue = false;
        Apply(sKey, sDefault, [&](const std::string& sValue) {
            bValue = bToBoolean(sValue, m_app.svc.objLocale.cDecimalSign());
        });
        return bValue;
    }
    void ReadListIndex(ComboBox& cb, const std::string& sDefault) const
    {
        Apply(cb.sName() + ".ListIndex", sDefault,
              [&](const std::string& sValue) { cb.SetListIndex(lNumber(sValue)); });
    }
    /// True for "TRUE" in any case, False for everything else.
    bool bReadTrue(const std::string& sKey, const std::string& sDefault) const
    {
        return bEqualIgnoringCase(sRead(sKey, sDefault), "TRUE");
    }
    /// The integer that the value starts with; never raises.
    std::int32_t lReadInteger(const std::string& sKey, std::int32_t lDefault) const
    {
        return m_app.svc.objIniFile.GetPrivateProfileInt(m_sName, sKey, lDefault, m_app.sIniFile);
    }
    void Write(const std::string& sKey, const std::string& sValue) const
    {
        m_app.svc.objIniFile.WritePrivateProfileString(m_sName, sKey, sValue, m_app.sIniFile);
    }
    void Write(const std::string& sKey, std::int32_t lValue) const { Write(sKey, std::to_string(lValue)); }

private:
    std::int32_t lNumber(const std::string& sValue) const
    {
        return lToLong(sValue, m_app.svc.objLocale.cDecimalSign());
    }
    /// Hands a value over, and the default after it if that raises.
    void Apply(const std::string& sKey, const std::string& sDefault,
               const std::function<void(const std::string&)>& fnApply) const
    {
        try {
            fnApply(sRead(sKey, sDefault));
        } catch (const clsRaisedError& objError) {
            Refuse(sKey, objError);
            fnApply(sDefault);
        }
    }
    // A window starts with the default; a run without one shouldn't do something else than it was set to.
    void Refuse(const std::string& sKey, const clsRaisedError& objError) const
    {
        const std::string sText = objError.sDescription() + ": [" + m_sName + "] " + sKey;
        if (m_app.bCommandLineMode)
            throw clsRaisedError(objError.lNumber(), sText);
        m_app.svc.objWindows.MsgBox(sText, sTranslate(m_app, "Error"), BoxIcon::Information, BoxButtons::Ok);
    }

    Application& m_app;
    std::string m_sName;
};
}  // namespace

static const char* sUpperCase(bool bValue)
{
    return bValue ? "TRUE" : "FALSE";
}

static const char* sMixedCase(bool bValue)
{
    return bValue ? "True" : "False";
}

static std::string sWidthKey(const Grid& fg, std::int32_t lCol)
{
    return fg.sName() + ".ColWidth(" + std::to_string(lCol) + ")";
}

static void ReadWidths(Application& app, const Section& objSection, Grid& fg, const std::int32_t* aDefaults)
{
    for (std::int32_t lCol = 0; lCol < fg.Cols(); ++lCol) {
        std::int32_t lDefault = aDefaults[lCol];
        if (lDefault == kWidthOfDo)
            lDefault = app.bDoubleByteLocale ? 420 : 336;
        fg.SetColWidth(lCol, objSection.lRead(sWidthKey(fg, lCol), std::to_string(lDefault)));
    }
}

static void SaveWidths(const Section& objSection, const Grid& fg)
{
    for (std::int32_t lCol = 0; lCol < fg.Cols(); ++lCol)
        objSection.Write(sWidthKey(fg, lCol), fg.ColWidth(lCol));
}

static void SetUpMRU(Application& app, clsMRU& mru, const std::string& sKeyStem, ComboBox& cb)
{
    Setup(mru, app.svc.objIniFile, kRecentTexts, app.sIniFile, sKeyStem);
    FillComboBoxFromMRU(app, cb, mru);
}

static std::string sListIndexKey(const ComboBox& cb)
{
    return cb.sName() + ".ListIndex";
}

static void SaveListIndex(const Section& objSection, const ComboBox& cb)
{
    objSection.Write(sListIndexKey(cb), cb.ListIndex());
}

static void ReadPlace(const Section& objSection, Form& frm, const WindowPlace& objDefault)
{
    WindowPlace objPlace = frm.Place();
    const std::int32_t lWindowState = objSection.lReadInteger("WindowState", kWindowNormal);
    if (lWindowState != kWindowNormal)
        objPlace.lWindowState = lWindowState;
    objPlace.lLeft = objSection.lReadInteger("Left", objDefault.lLeft);
    objPlace.lTop = objSection.lReadInteger("Top", objDefault.lTop);
    objPlace.lWidth = objSection.lReadInteger("Width", objDefault.lWidth);
    objPlace.lHeight = objSection.lReadInteger("Height", objDefault.lHeight);
    frm.SetPlace(objPlace);
}

// A minimised or maximised window keeps its last normal position in the file.
static void SavePlace(const Section& objSection, const WindowPlace& objPlace)
{
    objSection.Write("WindowState", objPlace.lWindowState);
    if (objPlace.lWindowState != kWindowNormal)
        return;
    objSection.Write("Left", objPlace.lLeft);
    objSection.Write("Top", objPlace.lTop);
    objSection.Write("Width", objPlace.lWidth);
    objSection.Write("Height", objPlace.lHeight);
}

static void ReadSwitches(Application& app, const Section& objSection)
{
    frmMain& frm = app.frmMain;
    frm.bAutoLoadImages = objSection.bReadTrue("bAutoLoadImages", "TRUE");
    frm.bDeleteOriginalFileAfterProcessing =
        objSection.bReadTrue("bDeleteOriginalFileAfterProcessing", "FALSE");
    frm.bTryAutodetectIfFailed = objSection.bReadTrue("bTryAutodetectIfFailed", "TRUE");
    frm.sLogFile = objSection.sRead("sLogFile", "");
    // Read from this section but saved to the notice's own section, so "don't show again" lasts only until
    // the program exits. This is intentional.
    app.frmTypeMatchNotification.bDontShowAgain = objSection.bRead("bDontShowFileMismatchAgain", "False");
    app.frmScheduler.bPersistRunning = Section(app, "frmScheduler").lRead("chkPersistRunning", "0") != 0;
}

static void ReadAction(const Section& objSection, frmMain& frm)
{
    frm.sActionToDo = objSection.sRead("sActionToDO", "C");
    frm.lConversionMethod = bContains(frm.sActionToDo, "C") ? 1 : 4;
}

static void ReadSpecialFields(Application& app, const Section& objSection)
{
    frmMain& frm = app.frmMain;
    {
        const InternalChange objChange(app);
        objSection.ReadListIndex(frm.cbSpecialProcesses, "1");
    }
    objSection.ReadListIndex(frm.cbCommandLineWindowState, "1");
    objSection.ReadListIndex(frm.cbCommandLineThreadPriority, "1");
    frm.txtCommandLineWaitTimeInSeconds.SetText(objSection.sRead("txtCommandLineWaitTimeInSeconds", "-1"));
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue())
        if (const std::string sOwn = sFirstStartDetails(objRow); !sOwn.empty())
            frm.asSP_Details.at(objRow.lSpecialProcess) =
                objSection.sRead(sDetailsKey(objRow), kFirstStartImageConversionOptions + sOwn);
}

void ReadIniFile(Application& app, const std::function<void()>& fnRefreshGUIOptions)
{
    frmMain& frm = app.frmMain;
    const Section objSection(app, "frmMain");
    ReadSwitches(app, objSection);
    ReadWidths(app, objSection, frm.fgLog, kLogWidths);
    ReadWidths(app, objSection, frm.fgToDo, kToDoWidths);
    SetUpMRU(app, frm.mruSourceSpecialized, "mruSourceSpecialized", frm.cbOriginalFileSpecialized);
    SetUpMRU(app, frm.mruTargetSpecialized, "mruTargetSpecialized", frm.cbTargetFileSpecialized);
    SetUpMRU(app, frm.mruSource, "mruSource", frm.cbOriginalFile);
    SetUpMRU(app, frm.mruCommandLine, "mruCommandLine", frm.cbCommandLine);
    SetUpMRU(app, frm.mruCommandLineArguments, "mruCommandLineArguments", frm.cbCommandLineArguments);
    ReadAction(objSection, frm);
    ReadSpecialFields(app, objSection);
    frm.sImageConversionOptions =
        objSection.sRead("sImageConversionOptions", kFirstStartImageConversionOptions);
    if (fnRefreshGUIOptions)
        fnRefreshGUIOptions();

    objSection.ReadListIndex(frm.cbFileTypeTarget, "0");
    app.frmMainMDI.mnuBeginConversionJob.SetEnabled(true);
    frm.keyConvert.SetEnabled(true);
    {
        const InternalChange objChange(app);
        objSection.ReadListIndex(frm.cbFileTypeOriginal, "0");
        frm.cbDoSubfolders.SetValue(objSection.lRead("cbDoSubfolders", "0"));
        frm.cbDoSubfoldersSpecialized.SetValue(objSection.lRead("cbDoSubfoldersSpecialized", "0"));
        objSection.ReadListIndex(frm.cbFileTypeOriginalSpecialized, "0");
        // This list must come last: the target's change handler would take the suggestion made by the fields
        // above for the user's own entry.
        SetUpMRU(app, frm.mruTarget, "mruTarget", frm.cbTargetFile);
    }
    ReadPlace(objSection, frm, kFirstPlaceOfMain);
}

void SaveIniFile(Application& app)
{
    frmMain& frm = app.frmMain;
    IniFile& objIniFile = app.svc.objIniFile;
    const Section objSection(app, "frmMain");
    objSection.Write("bAutoLoadImages", sUpperCase(frm.bAutoLoadImages));
    objSection.Write("bDeleteOriginalFileAfterProcessing",
                     sUpperCase(frm.bDeleteOriginalFileAfterProcessing));
    objSection.Write("bTryAutodetectIfFailed", sUpperCase(frm.bTryAutodetectIfFailed));
    objSection.Write("sLogFile", frm.sLogFile);
    objSection.Write("sImageConversionOptions", frm.sImageConversionOptions);
    SaveWidths(objSection, frm.fgLog);
    SaveWidths(objSection, frm.fgToDo);
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue())
        if (!sFirstStartDetails(objRow).empty())
            objSection.Write(sDetailsKey(objRow), frm.asSP_Details.at(objRow.lSpecialProcess));
    SavePlace(objSection, frm.Place());

    SaveListIndex(objSection, frm.cbSpecialProcesses);
    SaveListIndex(objSection, frm.cbCommandLineWindowState);
    SaveListIndex(objSection, frm.cbCommandLineThreadPriority);
    objSection.Write("txtCommandLineWaitTimeInSeconds",
                     lLeadingNumber(frm.txtCommandLineWaitTimeInSeconds.Text()));
    SaveListIndex(objSection, frm.cbFileTypeTarget);
    SaveListIndex(objSection, frm.cbFileTypeOriginal);
    ShutDown(frm.mruSource, objIniFile);
    ShutDown(frm.mruTarget, objIniFile);
    SaveListIndex(objSection, frm.cbFileTypeOriginalSpecialized);
    for (clsMRU* pMru : {&frm.mruSourceSpecialized, &frm.mruTargetSpecialized, &frm.mruCommandLine,
                         &frm.mruCommandLineArguments})
        ShutDown(*pMru, objIniFile);
    objSection.Write("cbDoSubfolders", frm.cbDoSubfolders.Value());
    objSection.Write("cbDoSubfoldersSpecialized", frm.cbDoSubfoldersSpecialized.Value());
    objSection.Write("lConversionMethod", frm.lConversionMethod);
    objSection.Write("sActionToDO", frm.sActionToDo);
    Section(app, "frmTypeMatchNotification")
        .Write("bDontShowFileMismatchAgain", sMixedCase(app.frmTypeMatchNotification.bDontShowAgain));
}

void ReadIniFile(Application& app, frmMainMDI& frm)
{
    ReadPlace(Section(app, "frmMainMDI"), frm, kFirstPlaceOfMDI);
}

void SaveIniFile(Application& app, const frmMainMDI& frm)
{
    SavePlace(Section(app, "frmMainMDI"), frm.Place());
}

void ReadIniFile(Application& app, frmImageViewer& frm)
{
    ReadPlace(Section(app, "frmImageViewer"), frm, kFirstPlaceOfImageViewer);
}

void SaveIniFile(Application& app, const frmImageViewer& frm)
{
    SavePlace(Section(app, "frmImageViewer"), frm.Place());
}
