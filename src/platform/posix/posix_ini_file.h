// The settings file on disk.
// Room: platform/posix.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>

#include "src/platform/ini_file.h"

class FileSaver;

/// ini_file is a host path. The text is cached until the file changes, so reading a hundred keys reads the
/// file once. A write locks the file's folder, rereads the file and replaces it, so concurrent processes
/// don't lose each other's changes.
class PosixIniFile : public IniFile
{
public:
    /// `saver` outlives this object.
    explicit PosixIniFile(FileSaver& saver) : saver_(saver) {}

    std::string GetPrivateProfileString(const std::string& section, const std::string& key,
                                        const std::string& fallback, std::int32_t buffer_size,
                                        const std::string& ini_file) const override;
    std::int32_t GetPrivateProfileInt(const std::string& section, const std::string& key,
                                      std::int32_t fallback, const std::string& ini_file) const override;
    bool WritePrivateProfileString(const std::string& section, const std::string& key,
                                   const std::string& value, const std::string& ini_file) override;

private:
    /// Nothing if the file can't be read; an empty text if it doesn't exist.
    std::optional<std::string> ReadText(const std::string& ini_file) const;
    /// The file's text, reread if it has changed; "" if it can't be read.
    const std::string& Text(const std::string& ini_file) const;

    FileSaver& saver_;
    mutable std::string kept_file_;  ///< the path whose text is cached
    mutable struct stat kept_ {
    };
    mutable std::string kept_text_;
};
