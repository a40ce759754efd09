// Access to one settings file by section and key.
// Room: platform. Real one: platform/posix. In-memory one: tests/fakes.
#pragma once

#include <cstdint>
#include <string>

/// sIniFile is a path as the user gave it. Sections and keys are compared without regard to case, the first
/// match wins. A missing or unreadable file, section or key gives the default. Nothing throws.
class IniFile
{
public:
    virtual ~IniFile() = default;

    /// The value trimmed, one pair of equal quotes around it taken off, cut to lBufferSize - 1 bytes (never
    /// inside a UTF-8 character). An empty value is a value.
    [[nodiscard]] virtual std::string GetPrivateProfileString(const std::string& sSection,
                                                              const std::string& sKey,
                                                              const std::string& sDefault,
                                                              std::int32_t lBufferSize,
                                                              const std::string& sIniFile) const = 0;

    /// The number that the value begins with, 0 if it begins with none; the default for a missing key.
    [[nodiscard]] virtual std::int32_t GetPrivateProfileInt(const std::string& sSection,
                                                            const std::string& sKey, std::int32_t lDefault,
                                                            const std::string& sIniFile) const = 0;

    /// Writes one key, making file, folder and section where missing, and keeps every other line. The file is
    /// replaced atomically under a lock. False when it could not be written; the file is then as it was.
    virtual bool WritePrivateProfileString(const std::string& sSection, const std::string& sKey,
                                           const std::string& sValue, const std::string& sIniFile) = 0;
};
