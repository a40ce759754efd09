// The about box.
// Room: dialogs.
#pragma once

struct Application;

void mnuAbout_Click(Application& app);
