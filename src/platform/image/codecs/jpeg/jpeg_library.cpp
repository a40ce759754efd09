// The error manager for libjpeg.
#include "src/platform/image/codecs/jpeg/jpeg_library.h"

#include <jerror.h>

void FailJpeg(j_common_ptr jpeg)
{
    std::longjmp(reinterpret_cast<JpegErrors*>(jpeg->err)->return_point, 1);
}

// Notes whether a truncated picture may have no data at all. Otherwise nothing needs doing: libjpeg leaves
// the missing blocks grey and goes on. Warnings have level -1; a restart marker only ends its interval.
static void OnMessage(j_common_ptr common, int level)
{
    if (level >= 0 || common->err->msg_code != JWRN_HIT_MARKER || !common->is_decompressor)
        return;
    const auto& jpeg = *reinterpret_cast<j_decompress_ptr>(common);
    const bool restart = jpeg.unread_marker >= JPEG_RST0 && jpeg.unread_marker <= JPEG_RST0 + 7;
    if (!restart && jpeg.input_scan_number <= 1 && jpeg.input_iMCU_row == 0)
        reinterpret_cast<JpegErrors*>(common->err)->ends_in_first_rows = true;
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
