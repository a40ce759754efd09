// Where the settings and the program's own files are on this host.
// Room: platform/posix.
#pragma once

#include <string>

#include "src/platform/program_folders.h"

/// Each folder is determined on first use and doesn't change afterwards.
class PosixProgramFolders : public ProgramFolders
{
public:
    /// Defaults: the path of the running program, and the folder for settings shared by the machine's users.
    explicit PosixProgramFolders(std::string executable = RunningProgram(),
                                 std::string shared_settings = "/var/lib/varnel")
        : executable_(std::move(executable)), shared_settings_(std::move(shared_settings))
    {
    }

    /// VARNEL_SETTINGS_DIR; else the shared folder if it exists and is writable; else varnel in the user's
    /// configuration folder.
    std::string sSettingsFolder() const override;

    /// VARNEL_HOME; else the program's folder if it contains Languages; else varnel in the user's data
    /// folder, into which files of <prefix>/share/varnel are copied that it doesn't have. If that fails,
    /// <prefix>/share/varnel.
    std::string sOwnFolder() const override;

    /// HOME.
    std::string sHomeFolder() const override;

    static std::string RunningProgram();

private:
    std::string executable_;
    std::string shared_settings_;
    mutable std::string settings_;
    mutable std::string own_;
};
