// Connects libtiff to InputFile and to memory.
#include "src/platform/image/codecs/tiff/tiff_handle.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <span>

#include "src/platform/image/base/input_file.h"

// Per-file handlers that drop messages: libtiff's defaults are global and print to standard error.
static int Ignore(TIFF*, void*, const char*, const char*, va_list)
{
    return 1;
}

static int CloseNothing(thandle_t)
{
    return 0;
}

static int MapNothing(thandle_t, void**, toff_t*)
{
    return 0;
}

static void UnmapNothing(thandle_t, void*, toff_t) {}

static TIFF* Open(const char* mode, thandle_t client, TIFFReadWriteProc read, TIFFReadWriteProc write,
                  TIFFSeekProc seek, TIFFSizeProc size, std::uint64_t largest_block)
{
    const std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions*)> options(TIFFOpenOptionsAlloc(),
                                                                               &TIFFOpenOptionsFree);
    if (!options)
        return nullptr;
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), &Ignore, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), &Ignore, nullptr);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), static_cast<tmsize_t>(largest_block));
    return TIFFClientOpenExt("picture", mode, client, read, write, seek, &CloseNothing, size, &MapNothing,
                             &UnmapNothing, options.get());
}

static std::uint64_t SeekPosition(std::uint64_t position, std::uint64_t size, toff_t offset, int whence)
{
    return whence == SEEK_SET ? offset : offset + (whence == SEEK_CUR ? position : size);
}

TiffInput::TiffInput(InputFile& file) : file_(file)
{
    // libtiff holds one encoded strip, so no allocation should exceed the file size by more than its codecs'
    // working memory. "h": don't read a directory yet; "m": no memory mapping; "c": no strip chopping.
    const std::uint64_t largest_block = file.Size() + 256ull * 1024 * 1024;
    tiff_.reset(Open("rhmc", this, &Read, &Write, &Seek, &Size, largest_block));
}

tmsize_t TiffInput::Read(thandle_t self, void* out, tmsize_t count)
{
    auto& tiff_input = *static_cast<TiffInput*>(self);
    const std::size_t got = tiff_input.file_.ReadAt(
        tiff_input.position_,
        {static_cast<std::uint8_t*>(out), static_cast<std::size_t>(std::max<tmsize_t>(count, 0))});
    tiff_input.position_ += got;
    return static_cast<tmsize_t>(got);
}

tmsize_t TiffInput::Write(thandle_t, void*, tmsize_t)
{
    return -1;
}

toff_t TiffInput::Seek(thandle_t self, toff_t offset, int whence)
{
    auto& tiff_input = *static_cast<TiffInput*>(self);
    tiff_input.position_ = SeekPosition(tiff_input.position_, tiff_input.file_.Size(), offset, whence);
    return tiff_input.position_;
}

toff_t TiffInput::Size(thandle_t self)
{
    return static_cast<TiffInput*>(self)->file_.Size();
}

TiffStripEncoder::TiffStripEncoder()
{
    tiff_.reset(Open("wlm", this, &Read, &Write, &Seek, &Size, 0));
}

std::vector<std::uint8_t> TiffStripEncoder::Encode(std::uint32_t strip_index,
                                                   std::vector<std::uint8_t>& strip)
{
    // libtiff appends each strip to its file; what came before has already been delivered.
    written_.clear();
    position_ = 0;
    if (TIFFWriteEncodedStrip(Handle(), strip_index, strip.data(), static_cast<tmsize_t>(strip.size())) < 0 ||
        failed_)
        return {};
    return std::move(written_);
}

tmsize_t TiffStripEncoder::Read(thandle_t, void*, tmsize_t)
{
    return -1;
}

tmsize_t TiffStripEncoder::Write(thandle_t self, void* bytes, tmsize_t count)
{
    auto& tiff_strip_encoder = *static_cast<TiffStripEncoder*>(self);
    try {
        const auto* first = static_cast<const std::uint8_t*>(bytes);
        tiff_strip_encoder.written_.insert(tiff_strip_encoder.written_.end(), first, first + count);
    } catch (const std::bad_alloc&) {
        tiff_strip_encoder.failed_ = true;
        return -1;
    }
    return count;
}

toff_t TiffStripEncoder::Seek(thandle_t self, toff_t offset, int whence)
{
    auto& tiff_strip_encoder = *static_cast<TiffStripEncoder*>(self);
    tiff_strip_encoder.position_ =
        SeekPosition(tiff_strip_encoder.position_, tiff_strip_encoder.written_.size(), offset, whence);
    return tiff_strip_encoder.position_;
}

toff_t TiffStripEncoder::Size(thandle_t self)
{
    return static_cast<TiffStripEncoder*>(self)->written_.size();
}
