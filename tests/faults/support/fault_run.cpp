// Preloads the library that fails system calls.
#include "tests/faults/support/fault_run.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "tests/support/paths.h"

namespace fs = std::filesystem;

// A run makes far fewer calls of a kind than this.
static constexpr std::size_t kMostCalls = 2000;

static std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::optional<std::vector<std::string>> FailOneCall(const Scenario& scenario, const Fault& fault,
                                                    std::size_t number, std::vector<std::string>* kinds)
{
    const ScratchFolder folder;
    fs::create_directories(folder.Root() / "work");
    scenario.prepare(folder);
    const std::map<std::string, std::string> variables = {{"LD_PRELOAD", FAULTS_LIBRARY},
                                                          {"FAULT_ROOT", folder.sPath(scenario.root)},
                                                          {"FAULT_LOG", folder.sPath("calls")},
                                                          {"FAULT_CALL", fault.call},
                                                          {"FAULT_NUMBER", std::to_string(number)},
                                                          {"FAULT_ACTION", fault.action},
                                                          {"FAULT_STAYS", fault.stays ? "1" : "0"},
                                                          {"VARNEL_SETTINGS_DIR", folder.sPath("settings")},
                                                          {"VARNEL_HOME", folder.sPath("settings")},
                                                          {"XDG_RUNTIME_DIR", folder.sPath("runtime")},
                                                          {"XDG_DATA_HOME", folder.sPath("data")},
                                                          {"LC_ALL", "C"},
                                                          {"DISPLAY", ""},
                                                          {"WAYLAND_DISPLAY", ""}};
    fs::create_directories(folder.Root() / "runtime");
    fs::permissions(folder.Root() / "runtime", fs::perms::owner_all);

    const Outcome outcome = objRun(scenario.command(folder), variables);

    std::vector<std::string> calls = Lines(folder.sRead("calls"));
    const bool hit = std::find(calls.begin(), calls.end(), "fault") != calls.end();
    if (number > 0 && !hit)
        return std::nullopt;
    const bool killed = hit && fault.action == "kill";
    std::vector<std::string> findings = scenario.findings(folder, {outcome, killed});
    if (outcome.lStatus != 0 && !killed)
        findings.push_back("the program ended with status " + std::to_string(outcome.lStatus));
    if (kinds)
        *kinds = std::move(calls);
    return findings;
}

Sweep FailEachCall(const Scenario& scenario, const Fault& fault)
{
    Sweep sweep;
    std::vector<std::string> kinds;
    for (const std::string& finding :
         FailOneCall(scenario, fault, 0, &kinds).value_or(std::vector<std::string>()))
        sweep.findings.push_back("no fault: " + finding);
    sweep.calls =
        static_cast<std::size_t>(fault.call == "any" ? static_cast<std::ptrdiff_t>(kinds.size())
                                                     : std::count(kinds.begin(), kinds.end(), fault.call));
    for (std::size_t number = 1; number <= kMostCalls; ++number) {
        const auto findings = FailOneCall(scenario, fault, number);
        if (!findings)
            break;
        ++sweep.hits;
        for (const std::string& finding : *findings)
            sweep.findings.push_back(fault.call + " " + std::to_string(number) + " (" + fault.action +
                                     "): " + finding);
    }
    return sweep;
}

std::vector<std::string> VarnelCommand(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), ProgramPath());
    return arguments;
}

std::string CarelessWriter()
{
    return CARELESS_WRITER;
}
