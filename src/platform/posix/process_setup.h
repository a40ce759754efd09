// What a process sets up before anything else.
// Room: platform/posix.
#pragma once

/// Makes writing to a closed pipe, or beyond the file size limit, a failure of that write instead of the end
/// of the process. Opens standard streams that are closed: their numbers would otherwise go to the next files
/// that are opened, and messages would end up in a picture.
void SetUpProcess();
