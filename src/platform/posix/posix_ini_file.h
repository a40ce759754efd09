// The settings file on the host's disk.
// Room: platform/posix.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>

#include "src/platform/ini_file.h"

/// sIniFile is a host path. What was read is kept until the file changes, so that reading a hundred keys
/// costs one reading. A write locks the file's folder, reads the file afresh and replaces it, so that of two
/// processes neither loses what the other wrote.
class PosixIniFile : public IniFile
{
public:
    std::string GetPrivateProfileString(const std::string& sSection, const std::string& sKey,
                                        const std::string& sDefault, std::int32_t lBufferSize,
                                        const std::string& sIniFile) const override;
    std::int32_t GetPrivateProfileInt(const std::string& sSection, const std::string& sKey,
                                      std::int32_t lDefault, const std::string& sIniFile) const override;
    bool WritePrivateProfileString(const std::string& sSection, const std::string& sKey,
                                   const std::string& sValue, const std::string& sIniFile) override;

private:
    /// Nothing for a file that can't be read; an empty text for one that isn't there.
    std::optional<std::string> sRead(const std::string& sIniFile) const;
    /// The text of the file, read again if it has changed; "" if it can't be read.
    const std::string& sText(const std::string& sIniFile) const;

    mutable std::string m_sKeptFile;  ///< the path whose text is kept
    mutable struct stat m_objKept {
    };
    mutable std::string m_sKeptText;
};
