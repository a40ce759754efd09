// Runs the built program, and other programs, on files of a folder of the test's own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// A folder below the test's temporary folder, gone with the object.
class Workplace
{
public:
    Workplace();
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    std::filesystem::path Root() const { return m_objRoot; }
    /// The path of a name in it, as text.
    std::string sPath(const std::string& sName) const { return (m_objRoot / sName).string(); }
    /// Writes a file, making its folders.
    std::string sWrite(const std::string& sName, const std::string& sContent) const;
    /// Copies a shipped sample to a name in it.
    std::string sCopySample(const std::string& sSample, const std::string& sName) const;
    std::string sRead(const std::string& sName) const;  ///< "" for no file
    bool bHas(const std::string& sName) const;
    /// The paths of all files in it, relative, sorted; settings of the program left out.
    std::vector<std::string> aFiles() const;

private:
    std::filesystem::path m_objRoot;
};

struct Outcome {
    int lStatus = -1;                 ///< exit status; 128 + n for an end by signal n
    std::int64_t lPeakKilobytes = 0;  ///< of the program's memory, or of the test's own if that had more
    std::string sOutput;
    std::string sErrors;
};

/// Runs a program without standard input. Variables are added to the environment.
Outcome objRun(const std::vector<std::string>& aCommand,
               const std::map<std::string, std::string>& aVariables = {});

/// Runs Varnel with its settings and its own folder in the workplace, without a display.
Outcome objVarnel(const Workplace& objPlace, const std::vector<std::string>& aArguments,
                  std::map<std::string, std::string> aVariables = {});

/// One line of a job file.
std::string sTaskLine(const std::string& sOriginal, std::int32_t lOriginalType, const std::string& sTarget,
                      std::int32_t lTargetType, const std::string& sDetails = "*^0^FALSE^85^^^^^^^^",
                      const std::string& sPass = "");
/// One line of a job file for a special process of one type of files: the details are those of the
/// conversion that ends it, and then its own fields. That of a launch is the arguments and all its details.
std::string sSpecialTaskLine(std::int32_t lProcess, const std::string& sOriginal, std::int32_t lType,
                             const std::string& sTarget, const std::string& sOwnDetails);
std::string sLaunchTaskLine(const std::string& sProgram, const std::string& sArguments,
                            const std::string& sDetails = "32^1^-1");
extern const char* const kMarkerLine;

/// A report with its seconds, which no test can know, made "#".
std::string sWithoutSeconds(const std::string& sReport);

/// The picture as another program decodes it: "WIDTH HEIGHT" and RGB bytes; "" when it can't.
std::string sDecodedByOthers(const std::string& sFile);
