// Connects menu items and hooks with the dialogs.
#include "src/dialogs/modDialogs.h"

#include "src/dialogs/modConversionOptions.h"
#include "src/forms/Application.h"

void ConnectDialogs(Application& app)
{
    app.objHooks.EditConversionOptions = sEditConversionOptions;
}
