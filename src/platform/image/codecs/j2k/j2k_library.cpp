// Connects OpenJPEG to memory and files.
#include "src/platform/image/codecs/j2k/j2k_library.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <thread>

#include "src/platform/files/output_file.h"

static constexpr OPJ_SIZE_T kStreamBuffer = 1 << 20;
static constexpr std::uint64_t kPixelsForThreads = 200'000;

static void IgnoreMessage(const char*, void*) {}

J2kCodec::J2kCodec(opj_codec_t* codec) : codec_(codec)
{
    if (!codec_)
        throw std::bad_alloc();
    opj_set_info_handler(codec_, IgnoreMessage, nullptr);
    opj_set_warning_handler(codec_, IgnoreMessage, nullptr);
    opj_set_error_handler(codec_, IgnoreMessage, nullptr);
}

J2kCodec::~J2kCodec()
{
    opj_destroy_codec(codec_);
}

void J2kCodec::UseThreads(std::uint64_t pixels) const
{
    if (pixels < kPixelsForThreads)
        return;
    const unsigned cores = std::min(std::thread::hardware_concurrency(), 8u);
    if (cores > 1)
        opj_codec_set_threads(codec_, static_cast<int>(cores));
}

J2kStream::J2kStream(Bytes bytes) : bytes_(bytes)
{
    Connect(true);
    opj_stream_set_user_data_length(stream_, bytes_.size());
}

J2kStream::J2kStream(OutputFile& out) : out_(&out), start_(out.Position())
{
    Connect(false);
}

void J2kStream::Connect(bool reads)
{
    stream_ = opj_stream_create(kStreamBuffer, reads ? OPJ_STREAM_READ : OPJ_STREAM_WRITE);
    if (!stream_)
        throw std::bad_alloc();
    opj_stream_set_user_data(stream_, this, nullptr);
    opj_stream_set_read_function(stream_, &J2kStream::Read);
    opj_stream_set_write_function(stream_, &J2kStream::Write);
    opj_stream_set_skip_function(stream_, &J2kStream::Skip);
    opj_stream_set_seek_function(stream_, &J2kStream::Seek);
}

J2kStream::~J2kStream()
{
    opj_stream_destroy(stream_);
}

static constexpr OPJ_SIZE_T kFailed = ~OPJ_SIZE_T{0};

OPJ_SIZE_T J2kStream::Read(void* out, OPJ_SIZE_T count, void* self)
{
    auto& stream = *static_cast<J2kStream*>(self);
    const std::size_t given = std::min<std::size_t>(count, stream.bytes_.size() - stream.position_);
    if (given == 0)
        return kFailed;  // end of stream
    std::memcpy(out, stream.bytes_.data() + stream.position_, given);
    stream.position_ += given;
    return given;
}

OPJ_SIZE_T J2kStream::Write(void* in, OPJ_SIZE_T count, void* self)
{
    auto& stream = *static_cast<J2kStream*>(self);
    if (!stream.out_->Write({static_cast<const std::uint8_t*>(in), count}))
        return kFailed;
    stream.position_ += count;
    return count;
}

OPJ_OFF_T J2kStream::Skip(OPJ_OFF_T count, void* self)
{
    auto& stream = *static_cast<J2kStream*>(self);
    const auto left = static_cast<OPJ_OFF_T>(stream.bytes_.size() - stream.position_);
    if (count < 0)
        return -1;
    if (!stream.out_ && count > left) {
        stream.position_ = stream.bytes_.size();
        return left > 0 ? left : -1;
    }
    return Seek(static_cast<OPJ_OFF_T>(stream.position_) + count, self) ? count : -1;
}

OPJ_BOOL J2kStream::Seek(OPJ_OFF_T position, void* self)
{
    auto& stream = *static_cast<J2kStream*>(self);
    if (position < 0)
        return OPJ_FALSE;
    const auto to = static_cast<std::uint64_t>(position);
    if (stream.out_ ? !stream.out_->Seek(stream.start_ + to) : to > stream.bytes_.size())
        return OPJ_FALSE;
    stream.position_ = to;
    return OPJ_TRUE;
}
