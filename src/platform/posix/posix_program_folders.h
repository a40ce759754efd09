// Where the settings and the program's own files lie on this host.
// Room: platform/posix.
#pragma once

#include <string>

#include "src/platform/program_folders.h"

/// Answers are found at the first question and stay the same for the life of the object.
class PosixProgramFolders : public ProgramFolders
{
public:
    /// The path of the running program by default, and the folder for settings that the machine's users
    /// share.
    explicit PosixProgramFolders(std::string executable = RunningProgram(),
                                 std::string shared_settings = "/var/lib/varnel")
        : executable_(std::move(executable)), shared_settings_(std::move(shared_settings))
    {
    }

    /// VARNEL_SETTINGS_DIR; else the shared folder, if it exists and may be written to; else varnel in the
    /// user's folder for configurations.
    std::string sSettingsFolder() const override;

    /// VARNEL_HOME; else the program's folder, if it holds Languages; else varnel in the user's folder for
    /// data, which is filled from <prefix>/share/varnel when it isn't there. Where that can't be done,
    /// <prefix>/share/varnel.
    std::string sOwnFolder() const override;

    static std::string RunningProgram();

private:
    std::string executable_;
    std::string shared_settings_;
    mutable std::string settings_;
    mutable std::string own_;
};
