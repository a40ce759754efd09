// libjpeg without its habit of ending the process: failures come back to the caller.
// Room: platform/image/codecs/jpeg.
#pragma once

#include <csetjmp>
#include <cstddef>
#include <cstdio>  // jpeglib.h needs FILE

#include <jpeglib.h>

/// libjpeg's error manager; nothing is printed. A failure jumps back into the Try that is running.
struct JpegErrors {
    jpeg_error_mgr manager;  // first, so that libjpeg's pointer to it is a pointer to the whole
    std::jmp_buf return_point;
};

/// Sets the manager up and gives what belongs into a libjpeg object's err.
jpeg_error_mgr* Install(JpegErrors& errors);

/// Ends the step that is running.
[[noreturn]] void FailJpeg(j_common_ptr jpeg);

/// Runs a step of work with libjpeg; False if it failed. What the step makes itself must need no destructor.
template <typename Step>
bool Try(JpegErrors& errors, const Step& do_step)
{
    if (setjmp(errors.return_point) != 0)
        return false;
    do_step();
    return true;
}
