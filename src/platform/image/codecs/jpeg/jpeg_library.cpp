// The error manager for libjpeg.
#include "src/platform/image/codecs/jpeg/jpeg_library.h"

#include <jerror.h>

void FailJpeg(j_common_ptr jpeg)
{
    std::longjmp(reinterpret_cast<JpegErrors*>(jpeg->err)->return_point, 1);
}

// Warnings have the level -1. A marker inside the data of a scan means that the rest of them is missing,
// unless it is a restart marker: behind that one the data go on, and only what lies before it is damaged.
static void HearMessage(j_common_ptr jpeg, int level)
{
    if (level >= 0 || jpeg->err->msg_code != JWRN_HIT_MARKER || !jpeg->is_decompressor)
        return;
    const int marker = reinterpret_cast<j_decompress_ptr>(jpeg)->unread_marker;
    if (marker < JPEG_RST0 || marker > JPEG_RST0 + 7)
        FailJpeg(jpeg);
}

static void PrintNothing(j_common_ptr) {}

jpeg_error_mgr* Install(JpegErrors& errors)
{
    jpeg_error_mgr* manager = jpeg_std_error(&errors.manager);
    manager->error_exit = FailJpeg;
    manager->emit_message = HearMessage;
    manager->output_message = PrintNothing;
    return manager;
}
