// The dialog that chooses language and font.
// Room: dialogs.
#pragma once

struct Application;
class ListBox;

/// Shows the dialog and stores what was chosen. True if language or font changed.
///
/// A new language takes effect at the next start. With bShowMessage a box says so, and the running program
/// keeps its language. Otherwise it takes over the choice, empty texts included, and bShowMessage is False
/// afterwards: so after Cancel its language is "", and no text is appended to any language file.
bool bSelectLanguage(Application& app, bool& bShowMessage);

/// Lists English and the languages that have a file, and selects the one in use.
void FillLanguageList(Application& app, ListBox& lst);

void mnuLanguage_Click(Application& app);

/// For the first start in a foreign locale: the running program takes the choice over at once.
void SelectFirstLanguage(Application& app);
