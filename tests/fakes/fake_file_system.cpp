// An in-memory file system.
#include "tests/fakes/fake_file_system.h"

#include <algorithm>

#include "src/base/path_text.h"
#include "src/base/raised_error.h"
#include "src/base/text.h"

namespace
{

class MemoryReader : public TextReader
{
public:
    explicit MemoryReader(std::string sText) : m_sText(std::move(sText)) {}
    bool ReadLine(std::string& sLine) override
    {
        if (m_nAt >= m_sText.size())
            return false;
        const std::size_t nEnd = std::min(m_sText.find('\n', m_nAt), m_sText.size());
        sLine = m_sText.substr(m_nAt, nEnd - m_nAt);
        if (!sLine.empty() && sLine.back() == '\r')
            sLine.pop_back();
        m_nAt = nEnd + 1;
        return true;
    }

private:
    std::string m_sText;
    std::size_t m_nAt = 0;
};

class MemoryWriter : public TextWriter
{
public:
    MemoryWriter(FakeFileSystem& objFiles, std::string sPath)
        : m_objFiles(objFiles), m_sPath(std::move(sPath))
    {
    }
    void WriteLine(const std::string& sLine) override { m_sText += sLine + "\r\n"; }
    void Commit() override { m_objFiles.AddFile(m_sPath, m_sText); }

private:
    FakeFileSystem& m_objFiles;
    std::string m_sPath;
    std::string m_sText;
};

}  // namespace

std::string FakeFileSystem::sKey(const std::string& sPath)
{
    std::string sResult = sReplaceAll(sLower(sPath), "\\", "/");
    while (sResult.size() > 1 && sResult.back() == '/')
        sResult.pop_back();
    return sResult;
}

std::string FakeFileSystem::sResolved(const std::string& sPath) const
{
    std::string sResult = sKey(sPath);
    for (int lHops = 0; lHops < 20; ++lHops) {
        bool bReplaced = false;
        for (const auto& [sLink, objEntry] : m_aEntries) {
            if (!objEntry.sLinkTo.empty() && (sResult == sLink || sResult.starts_with(sLink + "/"))) {
                sResult = objEntry.sLinkTo + sResult.substr(sLink.size());
                bReplaced = true;
                break;
            }
        }
        if (!bReplaced)
            break;
    }
    return sResult;
}

const FakeFileSystem::Entry* FakeFileSystem::pFind(const std::string& sPath) const
{
    const auto itFound = m_aEntries.find(sResolved(sPath));
    return itFound == m_aEntries.end() ? nullptr : &itFound->second;
}

bool FakeFileSystem::bReadOnly(const std::string& sPath) const
{
    const std::string sLooked = sResolved(sPath);
    for (const std::string& sRoot : m_aReadOnly)
        if (sLooked == sRoot || sLooked.starts_with(sRoot + "/"))
            return true;
    return false;
}

void FakeFileSystem::AddFolder(const std::string& sPath)
{
    const std::string sParent = sGetParentFolderName(sPath);
    if (!sParent.empty())
        AddFolder(sParent);
    const std::string sExtension = sGetExtensionName(sPath);
    m_aEntries.try_emplace(
        sResolved(sPath),
        Entry{sGetBaseName(sPath) + (sExtension.empty() ? "" : "." + sExtension), true, "", ""});
}

void FakeFileSystem::AddFile(const std::string& sPath, const std::string& sContent)
{
    AddFolder(sGetParentFolderName(sPath));
    Entry& objEntry = m_aEntries[sResolved(sPath)];
    objEntry.bFolder = false;
    objEntry.sContent = sContent;
    if (objEntry.sName.empty())
        objEntry.sName = sPath.substr(sFolderOfPath(sPath).size());
}

void FakeFileSystem::AddLink(const std::string& sPath, const std::string& sRealFolder)
{
    AddFolder(sPath);
    AddFolder(sRealFolder);
    m_aEntries[sKey(sPath)].sLinkTo = sKey(sRealFolder);
}

void FakeFileSystem::MakeReadOnly(const std::string& sPath)
{
    m_aReadOnly.insert(sResolved(sPath));
}

bool FakeFileSystem::bHas(const std::string& sPath) const
{
    return pFind(sPath) != nullptr;
}

std::string FakeFileSystem::sContent(const std::string& sPath) const
{
    const Entry* pEntry = pFind(sPath);
    return pEntry ? pEntry->sContent : "";
}

std::optional<std::string> FakeFileSystem::sHostPathOfExisting(const std::string& sPath) const
{
    return pFind(sPath) ? std::optional(sKey(sPath)) : std::nullopt;
}

std::optional<std::string> FakeFileSystem::sHostPathToWrite(const std::string& sPath) const
{
    return sPath.empty() ? std::nullopt : std::optional(sKey(sPath));
}

bool FakeFileSystem::FolderExists(const std::string& sPath) const
{
    const Entry* pEntry = pFind(sPath);
    return pEntry && pEntry->bFolder;
}

bool FakeFileSystem::FileExists(const std::string& sPath) const
{
    const Entry* pEntry = pFind(sPath);
    return pEntry && !pEntry->bFolder;
}

bool FakeFileSystem::CreateFolder(const std::string& sPath)
{
    if (sPath.empty() || pFind(sPath) || bReadOnly(sPath) || !FolderExists(sGetParentFolderName(sPath)))
        return false;
    AddFolder(sPath);
    aMadeFolders.push_back(sPath);
    return true;
}

bool FakeFileSystem::ListFolder(const std::string& sFolder, FolderListing& objListing) const
{
    if (!FolderExists(sFolder))
        return false;
    objListing = {};
    const std::string sRoot = sResolved(sFolder);
    const std::string sPrefix = sRoot == "/" ? sRoot : sRoot + "/";
    for (const auto& [sPath, objEntry] : m_aEntries) {
        const bool bBelow = sPath.size() > sPrefix.size() && sPath.starts_with(sPrefix);
        if (!bBelow || sPath.find('/', sPrefix.size()) != std::string::npos)
            continue;
        (objEntry.bFolder ? objListing.aSubfolders : objListing.aFiles).push_back(objEntry.sName);
        if (!objEntry.sLinkTo.empty())
            objListing.aLinks.insert(objEntry.sName);
    }
    return true;
}

std::string FakeFileSystem::sRealPath(const std::string& sPath) const
{
    return pFind(sPath) ? sResolved(sPath) : "";
}

bool FakeFileSystem::CopyFile(const std::string& sSource, const std::string& sTarget)
{
    if (bFailCopies || !FileExists(sSource) || bReadOnly(sTarget) || FolderExists(sTarget))
        return false;
    AddFile(sTarget, sContent(sSource));
    return true;
}

bool FakeFileSystem::DeleteFile(const std::string& sPath)
{
    if (lDeletesToRefuse > 0 || aUndeletable.contains(sPath) || bReadOnly(sPath) || !FileExists(sPath)) {
        lDeletesToRefuse = std::max(lDeletesToRefuse - 1, 0);
        ++lRefusedDeletes;
        return false;
    }
    m_aEntries.erase(sResolved(sPath));
    aDeletedFiles.push_back(sPath);
    return true;
}

bool FakeFileSystem::ClearReadOnly(const std::string& sPath)
{
    return FileExists(sPath);
}

std::unique_ptr<TextReader> FakeFileSystem::OpenForInput(const std::string& sPath) const
{
    if (!FileExists(sPath))
        throw clsRaisedError(kErrFileNotFound, "File not found: " + sPath);
    return std::make_unique<MemoryReader>(sContent(sPath));
}

std::unique_ptr<TextWriter> FakeFileSystem::OpenForOutput(const std::string& sPath)
{
    if (bReadOnly(sPath) || FolderExists(sPath) || !FolderExists(sGetParentFolderName(sPath)))
        throw clsRaisedError(kErrPathFileAccess, "Path/File access error: " + sPath);
    return std::make_unique<MemoryWriter>(*this, sPath);
}

void FakeFileSystem::AppendLine(const std::string& sPath, const std::string& sLine)
{
    if (bReadOnly(sPath) || FolderExists(sPath) || !FolderExists(sGetParentFolderName(sPath)))
        throw clsRaisedError(kErrPathFileAccess, "Path/File access error: " + sPath);
    AddFile(sPath, sContent(sPath) + sLine + "\n");
}

std::optional<std::string> FakeFileSystem::sReadBytes(const std::string& sPath) const
{
    return FileExists(sPath) ? std::optional(sContent(sPath)) : std::nullopt;
}

bool FakeFileSystem::AppendBytes(const std::string& sPath, const std::string& sBytes)
{
    if (bReadOnly(sPath) || !FileExists(sPath))
        return false;
    AddFile(sPath, sContent(sPath) + sBytes);
    return true;
}
