// The settings file on the host's disk.
// Room: platform/posix.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>

#include "src/platform/ini_file.h"

/// ini_file is a host path. What was read is kept until the file changes, so that reading a hundred keys
/// costs one reading. A write locks the file's folder, reads the file afresh and replaces it, so that of two
/// processes neither loses what the other wrote.
class PosixIniFile : public IniFile
{
public:
    std::string GetPrivateProfileString(const std::string& section, const std::string& key,
                                        const std::string& fallback, std::int32_t buffer_size,
                                        const std::string& ini_file) const override;
    std::int32_t GetPrivateProfileInt(const std::string& section, const std::string& key,
                                      std::int32_t fallback, const std::string& ini_file) const override;
    bool WritePrivateProfileString(const std::string& section, const std::string& key,
                                   const std::string& value, const std::string& ini_file) override;

private:
    /// Nothing for a file that can't be read; an empty text for one that isn't there.
    std::optional<std::string> ReadText(const std::string& ini_file) const;
    /// The text of the file, read again if it has changed; "" if it can't be read.
    const std::string& Text(const std::string& ini_file) const;

    mutable std::string kept_file_;  ///< the path whose text is kept
    mutable struct stat kept_ {
    };
    mutable std::string kept_text_;
};
