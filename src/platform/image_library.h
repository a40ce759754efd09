// The image library as the logic sees it: load, save, pages, size.
// Room: platform. Real one: platform/image. In-memory one: tests/fakes.
#pragma once

#include <cstdint>
#include <string>

#include "src/platform/image_buffer.h"

/// The texts that a save writes into the file where its format has a place for them. An empty text writes
/// nothing.
struct ImageInfoTexts {
    std::string sTitle;           ///< operation 1000
    std::string sDescription;     ///< operation 1001
    std::string sDateTime;        ///< operation 1002
    std::string sAuthor;          ///< operation 1003
    std::string sCopyright;       ///< operation 1004
    std::string sEquipmentType;   ///< operation 1005
    std::string sEquipmentModel;  ///< operation 1006
};

/// Loads and saves pictures. Paths are UTF-8 in the style in which the user gave them; "\" and "/" separate
/// alike. Nothing here throws or shows a message: False is the whole report of a failure, and the caller
/// turns it into lErr and sErr. A load goes by the file's content, whatever its name says; what comes is the
/// picture as a person sees it: turned upright, 8 bits a channel, colours through their profile.
///
/// A save is whole or not at all: after False an older file of that name is as it was, and no part of a new
/// one is there.
class ImageFile
{
public:
    virtual ~ImageFile() = default;

    /// The picture of a file without naming a page: the first one, but of an icon or cursor the largest, and
    /// among equally large ones the deepest. A missing, oversized or foreign file, or one without usable
    /// pixels, is an ordinary False and leaves aImage untouched.
    [[nodiscard]] virtual bool LoadImage(const std::string& sFile, ImageBuffer& aImage) = 0;

    /// Page lFrameIndex, counted from 0 in the order of the file; below 0 or beyond the last is False. Asking
    /// for the pages of one file in order costs no more than reading the file once.
    [[nodiscard]] virtual bool LoadFrame(const std::string& sFile, std::int32_t lFrameIndex,
                                         ImageBuffer& aImage) = 0;

    /// Allows the loads that follow to reduce pictures while decoding them, which takes a fraction of the
    /// time, to any size that is at least this in both directions; a side of 0 or less is not considered.
    /// The size is that of the upright picture. 0, 0 at first and to end it. An implementation may ignore it.
    /// ImageUtility still gives the full size of a reduced picture, and Resize takes it into account; nothing
    /// else may be done with such a picture.
    virtual void SetSmallestSize(std::int32_t /*lWidth*/, std::int32_t /*lHeight*/) {}

    /// The count of pages; 1 for a format without pages, 0 for a file that can't be read.
    [[nodiscard]] virtual std::int32_t GetFrameCount(const std::string& sFile) = 0;

    /// Saves aImage as the type whose name the operation bears. The buffer is not changed.
    [[nodiscard]] virtual bool SaveBMP(const ImageBuffer& aImage, const std::string& sFile) = 0;
    [[nodiscard]] virtual bool SaveGIF(const ImageBuffer& aImage, const std::string& sFile) = 0;
    [[nodiscard]] virtual bool SaveJPEG(const ImageBuffer& aImage, const std::string& sFile) = 0;
    [[nodiscard]] virtual bool SavePNG(const ImageBuffer& aImage, const std::string& sFile) = 0;
    [[nodiscard]] virtual bool SaveTIFF(const ImageBuffer& aImage, const std::string& sFile) = 0;
    [[nodiscard]] virtual bool SaveWMF(const ImageBuffer& aImage, const std::string& sFile) = 0;
    [[nodiscard]] virtual bool SaveEMF(const ImageBuffer& aImage, const std::string& sFile) = 0;
    [[nodiscard]] virtual bool SavePCX(const ImageBuffer& aImage, const std::string& sFile) = 0;
    [[nodiscard]] virtual bool SaveTGA(const ImageBuffer& aImage, const std::string& sFile) = 0;
    [[nodiscard]] virtual bool SaveRAS(const ImageBuffer& aImage, const std::string& sFile) = 0;
    [[nodiscard]] virtual bool SaveJ2K(const ImageBuffer& aImage, const std::string& sFile) = 0;

    /// Adds a page to the file begun by SaveTIFF while MultiFrameSave was True. Such a file takes its name
    /// only when it is finished: bFinish adds the page, if any (lWidth 0: none), and puts the file into
    /// place, unless a page before could not be written. False when no file is open, the page could not be
    /// written, or the file could not be put into place; an older file is then as it was.
    [[nodiscard]] virtual bool AppendFrame(const ImageBuffer& aImage, bool bFinish) = 0;

    virtual void SetJPEGQuality(std::int32_t lQuality) = 0;  ///< clamped to 1..100 when used; 75 at first
    virtual void SetTIFFCompression(
        std::int32_t lCompression) = 0;  ///< 0 none, 1 LZW, 2 RLE, 3 G3, 4 G4; 0 at first
    virtual void SetMultiFrameSave(bool bMultiFrameSave) = 0;  ///< False discards an unfinished file
    virtual void SetInfo(const ImageInfoTexts& objTexts) = 0;
};

/// Questions about a buffer.
class ImageUtility
{
public:
    virtual ~ImageUtility() = default;
    [[nodiscard]] virtual std::int32_t GetWidth(const ImageBuffer& aImage) const = 0;
    [[nodiscard]] virtual std::int32_t GetHeight(const ImageBuffer& aImage) const = 0;
};
