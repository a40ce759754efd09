// Translates a form: its captions, tool tips and fonts.
// Room: translator.
#pragma once

#include <string>

class Form;
struct Application;

/// A control with this tag keeps its own text: a path that the user typed, a label that is filled later. Its
/// tool tip is translated all the same, and so is a button's caption.
inline const std::string kTranslateFalse = "TranslateFalse";

/// Replaces the form's English texts by their translations and sets the font of each control, in the order of
/// the controls. Call it once at the end of each load: a second call would look up the translations as if
/// they were English texts. Entries of lists, headers of tables and data aren't translated.
void TranslateForm(Application& app, Form& frm);

/// True if the system has a font of exactly this name, in any case, rather than a substitute for it.
bool bFontExists(const Application& app, const std::string& sName);
