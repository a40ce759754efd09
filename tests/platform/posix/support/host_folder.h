// A folder on the disk for one test, and what tests of the host need besides.
#pragma once

#include <functional>
#include <string>

/// Made empty below testing::TempDir(), and removed with all that is in it.
class HostFolder
{
public:
    HostFolder();
    ~HostFolder();
    HostFolder(const HostFolder&) = delete;
    HostFolder& operator=(const HostFolder&) = delete;

    const std::string& sPath() const { return m_sPath; }
    /// The path of a name in the folder; with a content, a file of that name with its folders.
    std::string sFile(const std::string& sName) const { return m_sPath + "/" + sName; }
    std::string sFile(const std::string& sName, const std::string& sContent) const;
    std::string sSubfolder(const std::string& sName) const;
    /// The names in the folder, in order, joined by blanks.
    std::string sListing() const;

private:
    std::string m_sPath;
};

/// All bytes of a file; "(none)" for one that isn't there.
std::string sContentOf(const std::string& sHostPath);

/// Sets a variable of the environment, or unsets it with null, and puts it back at the end of the scope.
class ScopedVariable
{
public:
    ScopedVariable(const char* sName, const char* sValue);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    std::string m_sName;
    bool m_bWasSet;
    std::string m_sOld;
};

/// Runs fnWork in a process of its own, as a user without privileges where the tests run as root, and gives
/// what it answered.
bool bAsOrdinaryUser(const std::function<bool()>& fnWork);

/// Files can't grow beyond so many bytes within the scope: as on a full disk, writing stops short.
class ScopedFileSizeLimit
{
public:
    explicit ScopedFileSizeLimit(unsigned long nBytes);
    ~ScopedFileSizeLimit();
    ScopedFileSizeLimit(const ScopedFileSizeLimit&) = delete;
    ScopedFileSizeLimit& operator=(const ScopedFileSizeLimit&) = delete;

private:
    unsigned long m_nOld;
    void (*m_pOldHandler)(int);
};
