// Captions and tool tips of toolbar and menus, in English.
// Room: shell.
#pragma once

struct Application;

/// Sets them. They are the keys of the translation, so translate the forms afterwards, once.
void SetMainTexts(Application& app);
