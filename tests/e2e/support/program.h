// Runs the built program and others in a temporary folder.
// Room: tests/e2e/support.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// A temporary folder, deleted with the object.
class ScratchFolder
{
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::filesystem::path Root() const { return m_objRoot; }
    /// The absolute path of a name in the folder.
    std::string sPath(const std::string& sName) const { return (m_objRoot / sName).string(); }
    /// Writes a file, creating its folders; returns its path.
    std::string sWrite(const std::string& sName, const std::string& sContent) const;
    /// Copies a bundled sample into the folder; returns its path.
    std::string sCopySample(const std::string& sSample, const std::string& sName) const;
    std::string sRead(const std::string& sName) const;  ///< "" if the file doesn't exist
    bool bHas(const std::string& sName) const;
    /// Relative paths of all files, sorted, without the program's settings.
    std::vector<std::string> aFiles() const;

private:
    std::filesystem::path m_objRoot;
};

struct Outcome {
    int lStatus = -1;                 ///< exit status; 128 + n if killed by signal n
    std::int64_t lPeakKilobytes = 0;  ///< peak memory of the program, but at least that of the test itself
    std::string sOutput;
    std::string sErrors;
};

/// Runs a program without standard input, with additional environment variables.
Outcome objRun(const std::vector<std::string>& aCommand,
               const std::map<std::string, std::string>& aVariables = {});

/// Runs Varnel without a display, with its settings and program folder below the temporary folder.
Outcome objVarnel(const ScratchFolder& objFolder, const std::vector<std::string>& aArguments,
                  std::map<std::string, std::string> aVariables = {});

/// Formats a job file line.
std::string sTaskLine(const std::string& sOriginal, std::int32_t lOriginalType, const std::string& sTarget,
                      std::int32_t lTargetType, const std::string& sDetails = "*^0^FALSE^85^^^^^^^^",
                      const std::string& sPass = "");
/// Formats a job file line for a special process or a launch. sOwnDetails is appended to the details of a
/// conversion; sDetails of a launch is complete.
std::string sSpecialTaskLine(std::int32_t lProcess, const std::string& sOriginal, std::int32_t lType,
                             const std::string& sTarget, const std::string& sOwnDetails);
std::string sLaunchTaskLine(const std::string& sProgram, const std::string& sArguments,
                            const std::string& sDetails = "32^1^-1");
extern const char* const kMarkerLine;

/// Replaces the varying number of seconds in a report with "#".
std::string sWithoutSeconds(const std::string& sReport);

/// Decodes a file with another program to a binary PPM; "" if it can't.
std::string sReferenceDecode(const std::string& sFile);
