// Makes libjpeg return errors instead of ending the process.
// Room: platform/image/codecs/jpeg.
#pragma once

#include <csetjmp>
#include <cstddef>
#include <cstdio>  // jpeglib.h needs FILE

#include <jpeglib.h>

/// libjpeg's error manager. Prints nothing; an error longjmps back to the innermost Try().
struct JpegErrors {
    jpeg_error_mgr manager;  // first, so that libjpeg's pointer to it also points to the whole struct
    std::jmp_buf return_point;
    bool ends_in_first_rows;  ///< the first scan's data stops within its first row of blocks
};

/// Sets up the manager and returns the pointer for a libjpeg object's err field.
jpeg_error_mgr* Install(JpegErrors& errors);

/// Aborts the current step.
[[noreturn]] void FailJpeg(j_common_ptr jpeg);

/// Runs a step that uses libjpeg; false if it failed. An error skips destructors, so the step must not create
/// objects that need them.
template <typename Step>
bool Try(JpegErrors& errors, const Step& do_step)
{
    if (setjmp(errors.return_point) != 0)
        return false;
    do_step();
    return true;
}
