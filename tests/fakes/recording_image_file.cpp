// An in-memory image library.
#include "tests/fakes/recording_image_file.h"

#include "tests/fakes/fake_file_system.h"

void RecordingImageFile::AddImage(const std::string& sFile, const std::vector<std::uint8_t>& aPages)
{
    m_objFiles.AddFile(sFile, std::string(aPages.begin(), aPages.end()));
}

std::vector<std::uint8_t> RecordingImageFile::aPagesOf(const std::string& sFile) const
{
    const std::string sBytes = m_objFiles.sContent(sFile);
    return {sBytes.begin(), sBytes.end()};
}

bool RecordingImageFile::LoadImage(const std::string& sFile, ImageBuffer& aImage)
{
    aCalls.push_back("LoadImage " + sFile);
    const std::vector<std::uint8_t> aPages = aPagesOf(sFile);
    if (aBroken.contains(sFile) || !m_objFiles.FileExists(sFile) || aPages.empty())
        return false;
    aImage.width = aImage.height = aImage.channels = 1;
    aImage.bytes.assign(1, aPages[0]);
    return true;
}

bool RecordingImageFile::LoadFrame(const std::string& sFile, std::int32_t lFrameIndex, ImageBuffer& aImage)
{
    aCalls.push_back("LoadFrame " + sFile + " " + std::to_string(lFrameIndex));
    const std::vector<std::uint8_t> aPages = aPagesOf(sFile);
    if (aBroken.contains(sFile) || !m_objFiles.FileExists(sFile) || lFrameIndex == lBrokenPage ||
        lFrameIndex < 0 || lFrameIndex >= static_cast<std::int32_t>(aPages.size()))
        return false;
    aImage.width = aImage.height = aImage.channels = 1;
    aImage.bytes.assign(1, aPages[static_cast<std::size_t>(lFrameIndex)]);
    return true;
}

std::int32_t RecordingImageFile::GetFrameCount(const std::string& sFile)
{
    aCalls.push_back("GetFrameCount " + sFile);
    return aBroken.contains(sFile) ? 0 : static_cast<std::int32_t>(aPagesOf(sFile).size());
}

bool RecordingImageFile::bSave(const std::string& sOperation, const ImageBuffer& aImage,
                               const std::string& sFile)
{
    aCalls.push_back(sOperation + " " + sFile);
    if (aUnwritable.contains(sFile) || m_objFiles.FolderExists(sFile) || aImage.width < 1)
        return false;
    AddImage(sFile, {aImage.bytes[0]});
    m_sOpenFile = m_bMultiFrameSave && sOperation == "SaveTIFF" ? sFile : "";
    return true;
}

bool RecordingImageFile::AppendFrame(const ImageBuffer& aImage, bool bFinish)
{
    aCalls.push_back(std::string("AppendFrame ") + (bFinish ? "True" : "False"));
    const bool bOpen = !m_sOpenFile.empty();
    if (bOpen && aImage.width > 0) {
        std::vector<std::uint8_t> aPages = aPagesOf(m_sOpenFile);
        aPages.push_back(aImage.bytes[0]);
        AddImage(m_sOpenFile, aPages);
    }
    if (bFinish)
        m_sOpenFile.clear();
    return bOpen;
}

void RecordingImageFile::SetJPEGQuality(std::int32_t lQuality)
{
    aCalls.push_back("JPEGQuality " + std::to_string(lQuality));
}

void RecordingImageFile::SetTIFFCompression(std::int32_t lCompression)
{
    aCalls.push_back("TIFFCompression " + std::to_string(lCompression));
}

void RecordingImageFile::SetMultiFrameSave(bool bMultiFrameSave)
{
    aCalls.push_back(std::string("MultiFrameSave ") + (bMultiFrameSave ? "True" : "False"));
    m_bMultiFrameSave = bMultiFrameSave;
    if (!bMultiFrameSave)
        m_sOpenFile.clear();
}

void RecordingImageFile::SetInfo(const ImageInfoTexts& objInfo)
{
    objTexts = objInfo;
}
