// Scales samples of any precision and subsampling to bytes.
#include "src/platform/image/codecs/j2k/j2k_samples.h"

#include <algorithm>

static constexpr OPJ_UINT32 kTableBits = 16;

static std::uint32_t CeilDiv(std::uint32_t value, std::uint32_t by)
{
    return value / by + (value % by != 0 ? 1 : 0);
}

PixelGrid PixelGridOf(const opj_image_t& image, std::uint32_t step_x, std::uint32_t step_y)
{
    PixelGrid grid{step_x, step_y, CeilDiv(image.x0, step_x), CeilDiv(image.y0, step_y), 0, 0};
    grid.width = CeilDiv(image.x1, step_x) - grid.first_x;
    grid.height = CeilDiv(image.y1, step_y) - grid.first_y;
    return grid;
}

// The sample at or before a pixel, along one axis.
static std::uint32_t SampleAt(std::uint32_t pixel, std::uint32_t first, std::uint32_t step,
                              std::uint32_t sample_step, std::uint32_t first_sample, std::uint32_t samples)
{
    const std::uint64_t sample = (std::uint64_t{first} + pixel) * step / sample_step;
    const std::uint64_t from_first = sample - std::min<std::uint64_t>(sample, first_sample);
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(from_first, samples - 1));
}

SampleRows::SampleRows(const opj_image_comp_t& component, const PixelGrid& grid)
    : component_(&component),
      grid_(grid),
      max_((std::uint64_t{1} << component.prec) - 1),
      offset_(component.sgnd ? std::int64_t{1} << (component.prec - 1) : 0)
{
    columns_.resize(grid.width);
    for (std::uint32_t x = 0; x < grid.width; ++x) {
        columns_[x] = SampleAt(x, grid.first_x, grid.step_x, component.dx, component.x0, component.w);
        direct_ = direct_ && columns_[x] == x;
    }
    direct_ = direct_ && component.prec == 8 && !component.sgnd;
    if (!direct_ && component.prec <= kTableBits)
        for (std::uint64_t value = 0; value <= max_; ++value)
            scaled_.push_back(Scaled(value));
}

std::uint8_t SampleRows::Scaled(std::uint64_t value) const
{
    return static_cast<std::uint8_t>((value * 255 + max_ / 2) / max_);
}

std::uint8_t SampleRows::ByteAt(std::int64_t sample) const
{
    const auto max = static_cast<std::int64_t>(max_);
    const auto value = static_cast<std::uint64_t>(std::clamp<std::int64_t>(sample + offset_, 0, max));
    return scaled_.empty() ? Scaled(value) : scaled_[value];
}

void SampleRows::Read(std::uint32_t y, std::uint8_t* out, std::size_t stride) const
{
    const std::uint32_t row_index =
        SampleAt(y, grid_.first_y, grid_.step_y, component_->dy, component_->y0, component_->h);
    const OPJ_INT32* row = component_->data + std::size_t{row_index} * component_->w;
    if (direct_)
        for (std::uint32_t x = 0; x < grid_.width; ++x)
            out[x * stride] = static_cast<std::uint8_t>(std::clamp(row[x], 0, 255));
    else
        for (std::uint32_t x = 0; x < grid_.width; ++x)
            out[x * stride] = ByteAt(row[columns_[x]]);
}
