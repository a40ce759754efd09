// Checks every #include in src/ against the table of floors in docs/ARCHITECTURE.md.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/paths.h"

namespace fs = std::filesystem;

namespace
{

const fs::path kRoot = SourceFolder();
constexpr std::size_t kMostFilesInAFolder = 30;

/// A row of the table. Rooms of the same building are ordered by floor. "logic" is the building of the
/// program's own rules; the others implement the platform.
struct Room {
    std::string building;
    int floor = 0;
    std::string folder;  ///< below src/
    std::set<std::string> may_use;
};

struct Include {
    std::string from;
    std::string to;
    bool quoted = false;
};

std::string Trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> Quoted(const std::string& cell)
{
    std::vector<std::string> result;
    const std::regex quoted("`([^`]+)`");
    for (std::sregex_iterator it(cell.begin(), cell.end(), quoted), end; it != end; ++it)
        result.push_back((*it)[1]);
    return result;
}

/// Reads the table between the two "floors" markers: building and floor, folder, what else it may use.
std::vector<Room> ReadRooms()
{
    std::vector<Room> rooms;
    std::ifstream page(kRoot / "docs/ARCHITECTURE.md");
    bool in_table = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("<!-- floors"))
            in_table = true;
        if (line.starts_with("<!-- end of floors"))
            break;
        if (!in_table || !line.starts_with("| ") || line.starts_with("| Floor"))
            continue;
        std::vector<std::string> cells;
        std::stringstream columns(line.substr(1));
        for (std::string cell; std::getline(columns, cell, '|');)
            cells.push_back(Trimmed(cell));
        const std::size_t blank = cells.at(0).find(' ');
        Room room{cells.at(0).substr(0, blank),
                  std::stoi(cells.at(0).substr(blank + 1)),
                  Quoted(cells.at(1)).at(0),
                  {}};
        for (const std::string& used : Quoted(cells.at(2)))
            room.may_use.insert(used);
        rooms.push_back(room);
    }
    return rooms;
}

const Room* RoomOfFolder(const std::vector<Room>& rooms, const std::string& folder)
{
    const auto found =
        std::find_if(rooms.begin(), rooms.end(), [&](const Room& room) { return room.folder == folder; });
    return found == rooms.end() ? nullptr : &*found;
}

/// "src/job/modJobFiles.h" gives "job".
std::string FolderOf(const std::string& file)
{
    const std::string folder = fs::path(file).parent_path().string();
    return folder.starts_with("src/") ? folder.substr(4) : folder;
}

std::vector<std::string> SourceFiles()
{
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(kRoot / "src"))
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
            files.push_back(fs::relative(entry.path(), kRoot).string());
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<Include> ReadIncludes()
{
    std::vector<Include> result;
    const std::regex include("^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]");
    for (const std::string& name : SourceFiles()) {
        std::ifstream file(kRoot / name);
        std::smatch match;
        for (std::string line; std::getline(file, line);)
            if (std::regex_search(line, match, include))
                result.push_back({name, match[2], match[1] == "\""});
    }
    return result;
}

bool MayInclude(const Room& from, const Room& to)
{
    return from.folder == to.folder || from.may_use.contains(to.folder) ||
           (from.building == to.building && to.floor < from.floor);
}

/// All cycles in a graph, one per line.
std::string Cycles(const std::map<std::string, std::set<std::string>>& edges)
{
    enum class State { New, OnPath, Done };
    std::map<std::string, State> states;
    std::string cycles;
    const std::function<void(const std::string&)> visit = [&](const std::string& name) {
        states[name] = State::OnPath;
        const auto found = edges.find(name);
        for (const std::string& next : found == edges.end() ? std::set<std::string>() : found->second) {
            if (states[next] == State::OnPath)
                cycles += name + " -> " + next + "\n";
            else if (states[next] == State::New)
                visit(next);
        }
        states[name] = State::Done;
    };
    for (const auto& edge : edges)
        if (states[edge.first] == State::New)
            visit(edge.first);
    return cycles;
}

}  // namespace

TEST(FloorsTable, ListsEveryFolderWithSources)
{
    const std::vector<Room> rooms = ReadRooms();
    ASSERT_GT(rooms.size(), 40u);

    std::set<std::string> folders;
    for (const std::string& file : SourceFiles())
        folders.insert(FolderOf(file));

    for (const std::string& folder : folders)
        EXPECT_NE(RoomOfFolder(rooms, folder), nullptr) << folder << " is missing from the table";
    for (const Room& room : rooms)
        EXPECT_TRUE(folders.contains(room.folder)) << room.folder << " holds no sources";
}

TEST(FloorsTable, AllowsEveryIncludeBetweenFolders)
{
    const std::vector<Room> rooms = ReadRooms();

    for (const Include& include : ReadIncludes()) {
        const Room* from = RoomOfFolder(rooms, FolderOf(include.from));
        const Room* to = include.quoted ? RoomOfFolder(rooms, FolderOf(include.to)) : nullptr;
        if (!from || !to)
            continue;
        EXPECT_TRUE(MayInclude(*from, *to)) << include.from << " includes " << include.to;
    }
}

TEST(Codecs, NeverIncludeEachOther)
{
    const std::string codecs = "platform/image/codecs/";
    const auto codec_of = [&](const std::string& folder) {
        return folder.starts_with(codecs)
                   ? folder.substr(codecs.size(), folder.find('/', codecs.size()) - codecs.size())
                   : std::string();
    };

    std::size_t checked = 0;
    for (const Include& include : ReadIncludes()) {
        const std::string from = codec_of(FolderOf(include.from));
        const std::string to = include.quoted ? codec_of(FolderOf(include.to)) : "";
        if (from.empty() || to.empty())
            continue;
        EXPECT_EQ(from, to) << include.from << " includes " << include.to;
        ++checked;
    }
    EXPECT_GT(checked, 50u);
}

TEST(Folders, HaveNoIncludeCycles)
{
    std::map<std::string, std::set<std::string>> edges;
    for (const Include& include : ReadIncludes())
        if (include.quoted && FolderOf(include.from) != FolderOf(include.to))
            edges[FolderOf(include.from)].insert(FolderOf(include.to));

    EXPECT_GT(edges.size(), 40u);
    EXPECT_EQ(Cycles(edges), "");
}

TEST(SourceFiles, HaveNoIncludeCycles)
{
    std::map<std::string, std::set<std::string>> edges;
    for (const Include& include : ReadIncludes())
        if (include.quoted)
            edges[include.from].insert(include.to);

    EXPECT_GT(edges.size(), 100u);
    EXPECT_EQ(Cycles(edges), "");
}

TEST(Folders, HoldAtMostThirtyFiles)
{
    std::map<std::string, std::size_t> counts;
    for (const std::string& file : SourceFiles())
        ++counts[FolderOf(file)];

    for (const auto& [folder, count] : counts)
        EXPECT_LE(count, kMostFilesInAFolder) << folder;
}

TEST(QuotedIncludes, StartAtSrcAndExist)
{
    for (const Include& include : ReadIncludes()) {
        if (!include.quoted)
            continue;
        EXPECT_TRUE(include.to.starts_with("src/")) << include.from << " includes " << include.to;
        EXPECT_TRUE(fs::exists(kRoot / include.to)) << include.from << " includes " << include.to;
    }
}

TEST(Logic, IncludesOnlyStandardLibraryHeaders)
{
    const std::vector<Room> rooms = ReadRooms();
    const std::regex standard("^c?[a-z_0-9]+$");

    for (const Include& include : ReadIncludes()) {
        const Room* from = RoomOfFolder(rooms, FolderOf(include.from));
        if (!from || from->building != "logic" || include.quoted)
            continue;
        EXPECT_TRUE(std::regex_match(include.to, standard))
            << include.from << " includes <" << include.to << ">";
    }
}

TEST(Headers, NameTheirRoomAfterTheirFolder)
{
    for (const std::string& name : SourceFiles()) {
        if (!name.ends_with(".h"))
            continue;
        std::ifstream file(kRoot / name);
        std::string head;
        for (std::string line; std::getline(file, line) && line.starts_with("//");)
            head += line + "\n";
        EXPECT_NE(head.find("Room: " + FolderOf(name) + "."), std::string::npos) << name;
    }
}
