// Compares a folder with what a save may leave in it.
#include "tests/faults/support/save_check.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

std::optional<std::string> ContentOf(const ScratchFolder& folder, const std::string& name)
{
    return folder.bHas(name) ? std::optional(folder.sRead(name)) : std::nullopt;
}

static bool IsTrashFile(const std::string& name)
{
    return name.find("Trash") != std::string::npos;
}

bool IsInTrash(const ScratchFolder& folder, const std::string& content)
{
    for (const std::string& name : folder.aFiles())
        if (IsTrashFile(name) && name.find("/files/") != std::string::npos && folder.sRead(name) == content)
            return true;
    return false;
}

static bool Says(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

std::vector<std::string> CheckSave(const ScratchFolder& folder, const ExpectedSave& expected,
                                   const FaultedRun& run)
{
    std::vector<std::string> findings;
    const std::optional<std::string> target = ContentOf(folder, expected.target);
    const bool is_new = target == expected.new_content;
    const std::string said = folder.sRead(expected.report) + run.outcome.sErrors;
    const bool success = Says(said, "Conversion Successful");
    const auto& partial = expected.partial_contents;
    const bool is_partial = target && std::find(partial.begin(), partial.end(), *target) != partial.end();
    if (!is_new && !is_partial && target != expected.old_content)
        findings.push_back("the target is neither the old nor the new file");
    if (success && !is_new)
        findings.push_back("a success is reported, but the target isn't new");
    const std::optional<std::string> source = ContentOf(folder, expected.source);
    if (source && *source != expected.source_content)
        findings.push_back("the source has changed");
    if (!source && !is_new && !IsInTrash(folder, expected.source_content))
        findings.push_back("the source is lost");
    if (said.empty() && !run.killed)
        findings.push_back("nothing is reported");
    for (const std::string& name : folder.aFiles()) {
        const bool known = name == expected.source || name == expected.target || name == expected.report ||
                           IsTrashFile(name) || !name.starts_with("work/");
        const bool temporary = fs::path(name).filename().string().starts_with(".varnel-");
        if (!known && !(temporary && run.killed))
            findings.push_back("left over: " + name);
    }
    return findings;
}
