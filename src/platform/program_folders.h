// Where the program's own files are on this host.
// Room: platform. Real one: platform/posix. In-memory one: tests/fakes.
#pragma once

#include <string>

class ProgramFolders
{
public:
    virtual ~ProgramFolders() = default;
    /// The folder of the settings file, without a separator at its end; it need not exist yet.
    [[nodiscard]] virtual std::string sSettingsFolder() const = 0;
    /// The program's own folder (relative paths of the command line, Languages, help), without a separator at
    /// its end.
    [[nodiscard]] virtual std::string sOwnFolder() const = 0;
    /// The user's home, to which a leading "~/" of a path refers; "" if there is none.
    [[nodiscard]] virtual std::string sHomeFolder() const = 0;
};
