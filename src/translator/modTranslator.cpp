// Chooses the language at startup and looks up translations.
#include "src/translator/modTranslator.h"

#include <cstdint>

#include "src/base/path_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"
#include "src/platform/file_system.h"
#include "src/platform/ini_file.h"
#include "src/platform/locale.h"
#include "src/platform/program_folders.h"
#include "src/platform/window_services.h"
#include "src/translator/modLanguageFile.h"

static constexpr std::int32_t kSettingBufferSize = 128;
static constexpr auto kErrNoLanguageFile = static_cast<std::int32_t>(0x80040078);
static constexpr auto kErrUnreadableLanguageFile = static_cast<std::int32_t>(0x80040079);
static constexpr auto kErrUnusableLanguageFile = static_cast<std::int32_t>(0x8004007A);

static bool bIsEnglish(const TranslatorState& objTranslator)
{
    return objTranslator.sLanguage == "English";
}

std::string sTranslate(Application& app, const std::string& sText)
{
    TranslatorState& objTranslator = app.objTranslator;
    if (sTrim(sText).empty())
        return sText;
    const auto itFound = objTranslator.dictTranslations.find(sText);
    if (itFound != objTranslator.dictTranslations.end())
        return itFound->second;
    // Enter it into the table first: if appending fails, the message box translates its own texts.
    objTranslator.dictTranslations.emplace(sText, sText);
    // Without a language, which is what a cancelled choice leaves, no file is meant.
    if (!bIsEnglish(objTranslator) && !objTranslator.sLanguage.empty())
        AddToLanguageFile(app, sText);
    return sText;
}

std::string sGetLanguageCode(Application& app)
{
    return app.svc.objIniFile.GetPrivateProfileString("Language", "Language_Code", "", kSettingBufferSize,
                                                      app.sIniFile);
}

std::string sGetLanguageFont(Application& app)
{
    return app.svc.objIniFile.GetPrivateProfileString("Language", "Language_Font", "", kSettingBufferSize,
                                                      app.sIniFile);
}

void SetLanguageCode(Application& app, const std::string& sLanguage)
{
    app.svc.objIniFile.WritePrivateProfileString("Language", "Language_Code", sLanguage, app.sIniFile);
}

void SetLanguageFont(Application& app, const std::string& sFont)
{
    app.svc.objIniFile.WritePrivateProfileString("Language", "Language_Font", sFont, app.sIniFile);
}

std::string sLanguageFilePath(const Application& app, const std::string& sName)
{
    const std::string sFolder = sWithSeparator(app.svc.objProgramFolders.sOwnFolder()) + "Languages";
    return sWithSeparator(sFolder) + sName + "-" + app.objTranslator.sProductStem + ".txt";
}

LanguageFileFormat iDetectLanguageFileFormat(const Application& app, const std::string& sPath)
{
    const std::optional<std::string> sBytes = app.svc.objFileSystem.sReadBytes(sPath);
    return sBytes ? iFormatOfLanguageFile(*sBytes) : LanguageFileFormat::Unreadable;
}

bool bLoadLanguageFile(Application& app)
{
    TranslatorState& objTranslator = app.objTranslator;
    objTranslator.dictTranslations.clear();
    const std::optional<std::string> sBytes = app.svc.objFileSystem.sReadBytes(objTranslator.sLanguageFile);
    if (!sBytes)
        return false;
    objTranslator.eLanguageFileEncoding = eEncodingOfLanguageFile(*sBytes, objTranslator.iLanguageFileFormat);
    const std::string sText = sDecodeLanguageFile(*sBytes, objTranslator.eLanguageFileEncoding);
    objTranslator.sLanguageFileLineEnd = sLineEndOf(sText);
    objTranslator.bLanguageFileEndsALine = sText.empty() || sText.ends_with('\n');
    ReadLanguageTable(sText, objTranslator.dictTranslations);
    return true;
}

void AddToLanguageFile(Application& app, const std::string& sText)
{
    TranslatorState& objTranslator = app.objTranslator;
    if (sTrim(sText).empty() || objTranslator.sLanguageFile.empty())
        return;
    const std::string& sLineEnd = objTranslator.sLanguageFileLineEnd;
    const std::string sLine =
        (objTranslator.bLanguageFileEndsALine ? "" : sLineEnd) + "\"" + sText + "\"" + sLineEnd;
    if (app.svc.objFileSystem.AppendBytes(
            objTranslator.sLanguageFile,
            sEncodeForLanguageFile(sLine, objTranslator.eLanguageFileEncoding))) {
        objTranslator.bLanguageFileEndsALine = true;
        return;
    }
    if (objTranslator.bAppendFailureShown)
        return;
    objTranslator.bAppendFailureShown = true;
    app.svc.objWindows.MsgBox(sTranslate(app, "Unable to add to Language file"), sTranslate(app, "Error"),
                              BoxIcon::Warning, BoxButtons::Ok);
}

static bool bIsDoubleByteLocale(std::int32_t lLCID)
{
    return lLCID == 1041 || lLCID == 1042 || lLCID == 4100 || lLCID == 1028 || lLCID == 3076 ||
           lLCID == 2052 || lLCID == 5124;
}

static void ChooseLanguage(Application& app, const SelectLanguage& fnSelectLanguage)
{
    TranslatorState& objTranslator = app.objTranslator;
    objTranslator.sLanguage = sGetLanguageCode(app);
    if (!objTranslator.sLanguage.empty())
        return;
    objTranslator.sLanguage = "English";
    if (!fnSelectLanguage)
        return;
    if (objTranslator.lUserLCID != 1033 && objTranslator.lUserLCID != 2057)
        fnSelectLanguage(app);
    SetLanguageCode(app, objTranslator.sLanguage);
}

[[noreturn]] static void RaiseLanguageFailure(const Application& app, std::int32_t lNumber,
                                              const std::string& sText)
{
    throw clsRaisedError(lNumber, sText + ": \n" + app.objTranslator.sLanguageFile);
}

// The code becomes part of a file name, so it mustn't lead to another folder.
static bool bIsPlainName(const std::string& sLanguage)
{
    return !bContains(sLanguage, "/") && !bContains(sLanguage, "\\") && !bContains(sLanguage, ":") &&
           !sLanguage.starts_with('.') && sPrintable(sLanguage) == sLanguage;
}

static void LoadLanguage(Application& app)
{
    TranslatorState& objTranslator = app.objTranslator;
    if (!bIsPlainName(objTranslator.sLanguage)) {
        objTranslator.sLanguageFile = objTranslator.sLanguage;
        RaiseLanguageFailure(app, kErrNoLanguageFile, "Unable to locate Language file");
    }
    objTranslator.sLanguageFile = sLanguageFilePath(app, objTranslator.sLanguage);
    if (!app.svc.objFileSystem.FileExists(objTranslator.sLanguageFile))
        RaiseLanguageFailure(app, kErrNoLanguageFile, "Unable to locate Language file");
    objTranslator.iLanguageFileFormat = iDetectLanguageFileFormat(app, objTranslator.sLanguageFile);
    if (objTranslator.iLanguageFileFormat == LanguageFileFormat::Unreadable)
        RaiseLanguageFailure(app, kErrUnreadableLanguageFile, "Unable to read Language file");
    if (!bLoadLanguageFile(app))
        RaiseLanguageFailure(app, kErrUnusableLanguageFile, "Unable to process Language file");
}

void InitializeTranslator(Application& app, const SelectLanguage& fnSelectLanguage)
{
    TranslatorState& objTranslator = app.objTranslator;
    try {
        objTranslator.sProductStem = "Varnel";
        objTranslator.lUserLCID = app.svc.objLocale.GetUserDefaultLCID();
        app.bDoubleByteLocale = bIsDoubleByteLocale(objTranslator.lUserLCID);
        ChooseLanguage(app, fnSelectLanguage);
        if (!bIsEnglish(objTranslator))
            LoadLanguage(app);
        objTranslator.sLanguageFont = sGetLanguageFont(app);
    } catch (const std::exception& objError) {
        app.svc.objWindows.MsgBox(std::string(objError.what()) + "\nDefaulting to English", "Error",
                                  BoxIcon::Warning, BoxButtons::Ok);
        objTranslator.sLanguage = "English";
        // Forget the file and whatever part of it was read.
        objTranslator.sLanguageFile.clear();
        objTranslator.dictTranslations.clear();
        SetLanguageCode(app, objTranslator.sLanguage);
    }
}
