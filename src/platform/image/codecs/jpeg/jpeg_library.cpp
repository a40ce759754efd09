// The error manager for libjpeg.
#include "src/platform/image/codecs/jpeg/jpeg_library.h"

#include <jerror.h>

void FailJpeg(j_common_ptr pJpeg)
{
    std::longjmp(reinterpret_cast<JpegErrors*>(pJpeg->err)->objReturn, 1);
}

// Warnings have the level -1. A marker inside the data of a scan means that the rest of them is missing,
// unless it is a restart marker: behind that one the data go on, and only what lies before it is damaged.
static void HearMessage(j_common_ptr pJpeg, int nLevel)
{
    if (nLevel >= 0 || pJpeg->err->msg_code != JWRN_HIT_MARKER || !pJpeg->is_decompressor)
        return;
    const int nMarker = reinterpret_cast<j_decompress_ptr>(pJpeg)->unread_marker;
    if (nMarker < JPEG_RST0 || nMarker > JPEG_RST0 + 7)
        FailJpeg(pJpeg);
}

static void PrintNothing(j_common_ptr) {}

jpeg_error_mgr* pInstalled(JpegErrors& objErrors)
{
    jpeg_error_mgr* pManager = jpeg_std_error(&objErrors.objManager);
    pManager->error_exit = FailJpeg;
    pManager->emit_message = HearMessage;
    pManager->output_message = PrintNothing;
    return pManager;
}
