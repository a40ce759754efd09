// Which routine each event of the parameter panel and of the launch fields runs.
// Room: panel.
#pragma once

#include <cstdint>

struct Application;

/// Sets the handlers, all through the dispatcher, and the hook of the preview. Call it once, when the
/// settings have been read.
void ConnectPanel(Application& app);

/// An entry of cbSpecialProcesses was selected: its panel is shown. The last entry isn't a process; it offers
/// to send a mail with a request for one.
void cbSpecialProcesses_Click(Application& app);
