// The text to show for an English text, and the language that it is shown in.
// Room: translator.
#pragma once

#include <functional>
#include <string>

#include "src/forms/Application.h"

/// The text to show for sText, which is the key as it stands, composed texts included. Never fails. A text
/// that the table doesn't hold is entered into it as its own translation and, in a language other than
/// English, appended to the language file, so that translators find there what they still have to do.
std::string sTranslate(Application& app, const std::string& sText);

/// Lets the user choose a language when the program starts for the first time in a foreign locale: leaves the
/// choice in sLanguage and sLanguageFont, and shows no message.
using SelectLanguage = std::function<void(Application& app)>;

/// Fills app.objTranslator at the start of the process: locale, language, table, font. app.sIniFile must be
/// set. A language that can't be had is told in a box, and from then on the language is English, in the
/// settings too. Without fnSelectLanguage, which is a run without windows, nobody is asked and a first start
/// writes nothing.
void InitializeTranslator(Application& app, const SelectLanguage& fnSelectLanguage = {});

/// The settings of section "Language": "" if there are none.
std::string sGetLanguageCode(Application& app);
std::string sGetLanguageFont(Application& app);
void SetLanguageCode(Application& app, const std::string& sLanguage);
void SetLanguageFont(Application& app, const std::string& sFont);

/// Where the file of a language lies, whether or not there is one.
std::string sLanguageFilePath(const Application& app, const std::string& sName);

/// LanguageFileFormat::Unreadable also for a file that is empty or missing.
LanguageFileFormat iDetectLanguageFileFormat(const Application& app, const std::string& sPath);

/// Reads sLanguageFile into the table, which is emptied first. False when the file can't be read.
bool bLoadLanguageFile(Application& app);

/// Appends a text without translation to the language file, on a line of its own, in the file's encoding and
/// line end. Nothing happens for blanks or without a language file. The first failure of a process is shown
/// in a box.
void AddToLanguageFile(Application& app, const std::string& sText);
