// A picture in falling sizes, so that drawing it small costs no more than what is drawn.
// Room: platform/qt/picture.
#pragma once

#include <QImage>
#include <memory>
#include <vector>

#include "src/platform/image_buffer.h"

/// Level 0 refers to the picture's own pixels, each further one has half the width and height of the one
/// before (rounded up), down to 512 pixels. Pixels of a level are the mean of four, premultiplied by alpha.
class PictureLevels
{
public:
    /// Level 0 alone; takes no time.
    explicit PictureLevels(std::shared_ptr<const ImageBuffer> picture);
    /// All levels. Takes about as long as reading the pixels twice.
    static std::shared_ptr<const PictureLevels> Make(std::shared_ptr<const ImageBuffer> picture);

    bool HasAlpha() const { return picture_->channels == 4; }
    /// The smallest level that has at least as many pixels as are drawn at this zoom.
    std::size_t LevelFor(double zoom) const;
    std::size_t Count() const { return levels_.size(); }
    const QImage& Level(std::size_t n) const { return levels_[n]; }

private:
    std::shared_ptr<const ImageBuffer> picture_;
    std::vector<QImage> levels_;
};
