// Translates the program's English texts into the user's language.
// Room: translator.
#pragma once

#include <functional>
#include <string>

#include "src/forms/Application.h"

/// Translates sText, which is the lookup key exactly as passed, composed texts included. Never fails. A text
/// missing from the table is added as its own translation and, if the language isn't English, appended to the
/// language file, where translators find what is left to do.
std::string sTranslate(Application& app, const std::string& sText);

/// Lets the user pick a language when the program first starts in a non-English locale. Stores the choice in
/// sLanguage and sLanguageFont, and shows no message.
using SelectLanguage = std::function<void(Application& app)>;

/// Fills app.objTranslator at startup: locale, language, table, font. Needs app.sIniFile. If the language
/// can't be loaded, a message box says so and the language becomes English, in the settings too. Without
/// fnSelectLanguage (a run without windows) the user isn't asked, and a first start writes no settings.
void InitializeTranslator(Application& app, const SelectLanguage& fnSelectLanguage = {});

/// Settings in section "Language"; "" if missing.
std::string sGetLanguageCode(Application& app);
std::string sGetLanguageFont(Application& app);
void SetLanguageCode(Application& app, const std::string& sLanguage);
void SetLanguageFont(Application& app, const std::string& sFont);

/// Path of a language's file, whether or not it exists.
std::string sLanguageFilePath(const Application& app, const std::string& sName);

/// Returns Unreadable for an empty or missing file too.
LanguageFileFormat iDetectLanguageFileFormat(const Application& app, const std::string& sPath);

/// Replaces the table by the contents of sLanguageFile. False if the file can't be read; the table is then
/// empty.
bool bLoadLanguageFile(Application& app);

/// Appends an untranslated text to the language file as a line in the file's own encoding and line ending.
/// Does nothing for blank text or without a language file. Only the first failure in a process shows a
/// message box.
void AddToLanguageFile(Application& app, const std::string& sText);
