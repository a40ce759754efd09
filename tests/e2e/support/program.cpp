// Runs programs and captures their output.
#include "tests/e2e/support/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <regex>

#include "tests/support/paths.h"

namespace fs = std::filesystem;

const char* const kMarkerLine = "\t\t*\t\t\t\t\t\t\t\t\t\r\n";

ScratchFolder::ScratchFolder()
{
    std::string sPattern = (fs::temp_directory_path() / "varnel-e2e-XXXXXX").string();
    m_objRoot = mkdtemp(sPattern.data());
}

ScratchFolder::~ScratchFolder()
{
    std::error_code objIgnored;
    fs::remove_all(m_objRoot, objIgnored);
}

std::string ScratchFolder::sWrite(const std::string& sName, const std::string& sContent) const
{
    fs::create_directories((m_objRoot / sName).parent_path());
    std::ofstream(m_objRoot / sName, std::ios::binary) << sContent;
    return sPath(sName);
}

std::string ScratchFolder::sCopySample(const std::string& sSample, const std::string& sName) const
{
    fs::create_directories((m_objRoot / sName).parent_path());
    fs::copy_file(fs::path(SourceFolder()) / "share/samples" / sSample, m_objRoot / sName);
    return sPath(sName);
}

std::string ScratchFolder::sRead(const std::string& sName) const
{
    std::ifstream objFile(m_objRoot / sName, std::ios::binary);
    return {std::istreambuf_iterator<char>(objFile), {}};
}

bool ScratchFolder::bHas(const std::string& sName) const
{
    return fs::exists(m_objRoot / sName);
}

std::vector<std::string> ScratchFolder::aFiles() const
{
    std::vector<std::string> aResult;
    for (const auto& objEntry : fs::recursive_directory_iterator(m_objRoot)) {
        const std::string sRelative = fs::relative(objEntry.path(), m_objRoot).string();
        if (!objEntry.is_directory() && !sRelative.starts_with(".varnel-home"))
            aResult.push_back(sRelative);
    }
    std::sort(aResult.begin(), aResult.end());
    return aResult;
}

static std::string sReadAndRemove(const std::string& sFile)
{
    std::ifstream objFile(sFile, std::ios::binary);
    std::string sText{std::istreambuf_iterator<char>(objFile), {}};
    fs::remove(sFile);
    return sText;
}

// The environment with these variables added or replaced.
static std::vector<std::string> aEnvironmentWith(const std::map<std::string, std::string>& aVariables)
{
    std::vector<std::string> aResult;
    for (char** p = environ; *p; ++p) {
        const std::string sEntry = *p;
        if (!aVariables.contains(sEntry.substr(0, sEntry.find('='))))
            aResult.push_back(sEntry);
    }
    for (const auto& [sName, sValue] : aVariables)
        aResult.push_back(sName + "=" + sValue);
    return aResult;
}

static std::vector<char*> aPointers(std::vector<std::string>& aTexts)
{
    std::vector<char*> aResult;
    for (std::string& sText : aTexts)
        aResult.push_back(sText.data());
    aResult.push_back(nullptr);
    return aResult;
}

Outcome objRun(const std::vector<std::string>& aCommand, const std::map<std::string, std::string>& aVariables)
{
    std::string sOut = (fs::temp_directory_path() / "varnel-out-XXXXXX").string();
    std::string sErr = (fs::temp_directory_path() / "varnel-err-XXXXXX").string();
    close(mkstemp(sOut.data()));
    close(mkstemp(sErr.data()));
    std::vector<std::string> aWords = aCommand;
    std::vector<std::string> aEnvironment = aEnvironmentWith(aVariables);
    posix_spawn_file_actions_t objActions;
    posix_spawn_file_actions_init(&objActions);
    posix_spawn_file_actions_addopen(&objActions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&objActions, STDOUT_FILENO, sOut.c_str(), O_WRONLY | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&objActions, STDERR_FILENO, sErr.c_str(), O_WRONLY | O_TRUNC, 0600);
    pid_t nChild = 0;
    Outcome objOutcome;
    if (posix_spawnp(&nChild, aCommand[0].c_str(), &objActions, nullptr, aPointers(aWords).data(),
                     aPointers(aEnvironment).data()) == 0) {
        int nStatus = 0;
        rusage objUsage{};
        wait4(nChild, &nStatus, 0, &objUsage);
        objOutcome.lPeakKilobytes = objUsage.ru_maxrss;
        objOutcome.lStatus = WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : 128 + WTERMSIG(nStatus);
    }
    posix_spawn_file_actions_destroy(&objActions);
    objOutcome.sOutput = sReadAndRemove(sOut);
    objOutcome.sErrors = sReadAndRemove(sErr);
    return objOutcome;
}

Outcome objVarnel(const ScratchFolder& objFolder, const std::vector<std::string>& aArguments,
                  std::map<std::string, std::string> aVariables)
{
    std::vector<std::string> aCommand = {ProgramPath()};
    aCommand.insert(aCommand.end(), aArguments.begin(), aArguments.end());
    aVariables.try_emplace("VARNEL_SETTINGS_DIR", objFolder.sPath(".varnel-home"));
    aVariables.try_emplace("VARNEL_HOME", objFolder.sPath(".varnel-home"));
    aVariables.try_emplace("XDG_DATA_HOME", objFolder.sPath(".varnel-home"));  // with the trash
    aVariables.try_emplace("LC_ALL", "C");
    aVariables["DISPLAY"] = "";
    aVariables["WAYLAND_DISPLAY"] = "";
    return objRun(aCommand, aVariables);
}

std::string sTaskLine(const std::string& sOriginal, std::int32_t lOriginalType, const std::string& sTarget,
                      std::int32_t lTargetType, const std::string& sDetails, const std::string& sPass)
{
    const auto sExtension = [](const std::string& sFile) { return sFile.substr(sFile.rfind('.') + 1); };
    return "R M\t" + sDetails + "\t1\tC\t" + sOriginal + "\t" + std::to_string(lOriginalType) + "\t" +
           sExtension(sOriginal) + "\t" + sTarget + "\t" + std::to_string(lTargetType) + "\t" +
           sExtension(sTarget) + "\t" + sPass + "\t\r\n";
}

std::string sSpecialTaskLine(std::int32_t lProcess, const std::string& sOriginal, std::int32_t lType,
                             const std::string& sTarget, const std::string& sOwnDetails)
{
    const std::string sType = std::to_string(lType);
    return "\t*^0^FALSE^85^^^^^^^^" + sOwnDetails + "\t1\tS" + std::to_string(lProcess) + "\t" + sOriginal +
           "\t" + sType + "\t\t" + sTarget + "\t" + sType + "\t\t\t\r\n";
}

std::string sLaunchTaskLine(const std::string& sProgram, const std::string& sArguments,
                            const std::string& sDetails)
{
    return "\t" + sDetails + "\t1\tS100\t" + sProgram + "\t\t\t" + sArguments + "\t\t\t\t\r\n";
}

std::string sWithoutSeconds(const std::string& sReport)
{
    return std::regex_replace(sReport, std::regex("(Time to complete job: )[0-9]+\\.[0-9]"), "$1#");
}

std::string sReferenceDecode(const std::string& sFile)
{
    const Outcome objOutcome = objRun({ImageMagick("convert"), sFile + "[0]", "-background", "white",
                                       "-alpha", "remove", "-depth", "8", "-colorspace", "sRGB", "ppm:-"});
    return objOutcome.lStatus == 0 ? objOutcome.sOutput : "";
}
