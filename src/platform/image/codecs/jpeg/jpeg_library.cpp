// The error manager for libjpeg.
#include "src/platform/image/codecs/jpeg/jpeg_library.h"

#include <jerror.h>

void FailJpeg(j_common_ptr jpeg)
{
    std::longjmp(reinterpret_cast<JpegErrors*>(jpeg->err)->return_point, 1);
}

// Warnings have level -1. A marker inside a scan's data means that the rest of the scan is missing, unless it
// is a restart marker: then only the data before it is damaged.
static void OnMessage(j_common_ptr jpeg, int level)
{
    if (level >= 0 || jpeg->err->msg_code != JWRN_HIT_MARKER || !jpeg->is_decompressor)
        return;
    const int marker = reinterpret_cast<j_decompress_ptr>(jpeg)->unread_marker;
    if (marker < JPEG_RST0 || marker > JPEG_RST0 + 7)
        FailJpeg(jpeg);
}

static void IgnoreMessage(j_common_ptr) {}

jpeg_error_mgr* Install(JpegErrors& errors)
{
    jpeg_error_mgr* manager = jpeg_std_error(&errors.manager);
    manager->error_exit = FailJpeg;
    manager->emit_message = OnMessage;
    manager->output_message = IgnoreMessage;
    return manager;
}
