// Leaves conversions alone.
#include "src/specialprocess/modApplySpecialProcess.h"

#include "src/base/clsConversionOptions.h"
#include "src/base/text.h"

bool bApplySpecialProcess(Application&, clsConversionOptions& objOptions, ImageBuffer&)
{
    return bContains(objOptions.sActionToDo, "C");
}
