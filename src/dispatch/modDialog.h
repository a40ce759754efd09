// What all dialogs have in common: how a person leaves them, and help.
// Room: dispatch.
#pragma once

#include <cstdint>

class CommandButton;
class Form;
struct Application;

/// Escape and the window's own button act as cmdLeave; F1 opens the help at a topic. The program itself can
/// always unload the form.
void ConnectDialog(Application& app, Form& frm, CommandButton& cmdLeave, std::int32_t lHelpTopic);
