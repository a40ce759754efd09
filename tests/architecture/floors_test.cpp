// Checks every #include in src/ against the table in docs/ARCHITECTURE.md.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{

const fs::path kRoot = VARNEL_SOURCE_DIR;
constexpr int kBeside = 1000;

struct Room {
    int lFloor = 0;
    std::string sName;
    std::vector<std::string> aPatterns;
    std::set<std::string> aMayUse;
};

std::vector<std::string> aQuoted(const std::string& sCell)
{
    std::vector<std::string> aResult;
    const std::regex objQuoted("`([^`]+)`");
    for (std::sregex_iterator it(sCell.begin(), sCell.end(), objQuoted), itEnd; it != itEnd; ++it)
        aResult.push_back((*it)[1]);
    return aResult;
}

std::vector<Room> aRoomsOfPage()
{
    std::vector<Room> aRooms;
    std::ifstream objPage(kRoot / "docs/ARCHITECTURE.md");
    bool bInTable = false;
    for (std::string sLine; std::getline(objPage, sLine);) {
        if (sLine.starts_with("<!-- floors"))
            bInTable = true;
        if (sLine.starts_with("<!-- end of floors"))
            break;
        if (!bInTable || !sLine.starts_with("| ") || sLine.starts_with("| Floor"))
            continue;
        std::vector<std::string> aCells;
        std::stringstream objLine(sLine.substr(1));
        for (std::string sCell; std::getline(objLine, sCell, '|');)
            aCells.push_back(sCell);
        Room objRoom;
        objRoom.lFloor = aCells.at(0).find("beside") != std::string::npos ? kBeside : std::stoi(aCells.at(0));
        objRoom.sName = aQuoted(aCells.at(1)).at(0);
        objRoom.aPatterns = aQuoted(aCells.at(2));
        for (const std::string& sUsed : aQuoted(aCells.at(3)))
            objRoom.aMayUse.insert(sUsed);
        aRooms.push_back(objRoom);
    }
    return aRooms;
}

// The room of a file: the one with the longest matching pattern, so a module's own pattern beats its
// folder's. "src/platform/*" matches only files directly in that folder; rooms "beside" include their
// subfolders.
const Room* pRoomOf(const std::vector<Room>& aRooms, const std::string& sFile)
{
    const Room* pBest = nullptr;
    std::size_t nBest = 0;
    for (const Room& objRoom : aRooms) {
        for (std::string sPattern : objRoom.aPatterns) {
            sPattern.pop_back();  // the "*"
            const bool bDeeper = objRoom.lFloor != kBeside && sFile.size() > sPattern.size() &&
                                 sFile.find('/', sPattern.size()) != std::string::npos;
            if (sFile.starts_with(sPattern) && !bDeeper && sPattern.size() > nBest) {
                pBest = &objRoom;
                nBest = sPattern.size();
            }
        }
    }
    return pBest;
}

struct Include {
    std::string sFrom;
    std::string sTo;
    bool bQuoted = false;
};

std::vector<std::string> aSourceFiles()
{
    std::vector<std::string> aFiles;
    for (const auto& objEntry : fs::recursive_directory_iterator(kRoot / "src"))
        if (objEntry.path().extension() == ".h" || objEntry.path().extension() == ".cpp")
            aFiles.push_back(fs::relative(objEntry.path(), kRoot).string());
    std::sort(aFiles.begin(), aFiles.end());
    return aFiles;
}

std::vector<Include> aIncludesOf(const std::string& sFile)
{
    std::vector<Include> aResult;
    const std::regex objInclude("^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]");
    std::ifstream objFile(kRoot / sFile);
    std::smatch objMatch;
    for (std::string sLine; std::getline(objFile, sLine);)
        if (std::regex_search(sLine, objMatch, objInclude))
            aResult.push_back({sFile, objMatch[2], objMatch[1] == "\""});
    return aResult;
}

std::vector<Include> aAllIncludes()
{
    std::vector<Include> aResult;
    for (const std::string& sFile : aSourceFiles())
        for (const Include& objInclude : aIncludesOf(sFile))
            aResult.push_back(objInclude);
    return aResult;
}

bool bMayInclude(const Room& objFrom, const Room& objTo)
{
    if (objFrom.sName == objTo.sName || objFrom.aMayUse.contains(objTo.sName))
        return true;
    return objFrom.lFloor != kBeside && objTo.lFloor < objFrom.lFloor;
}

}  // namespace

TEST(SourceFile, AlwaysBelongsToARoom)
{
    const std::vector<Room> aRooms = aRoomsOfPage();
    ASSERT_GT(aRooms.size(), 10u);

    for (const std::string& sFile : aSourceFiles())
        EXPECT_NE(pRoomOf(aRooms, sFile), nullptr) << sFile;
}

TEST(Include, NeverPointsUpwardsOrToUngrantedRooms)
{
    const std::vector<Room> aRooms = aRoomsOfPage();

    for (const Include& objInclude : aAllIncludes()) {
        const Room* pFrom = pRoomOf(aRooms, objInclude.sFrom);
        const Room* pTo = objInclude.bQuoted ? pRoomOf(aRooms, objInclude.sTo) : nullptr;
        if (!pFrom || !pTo)
            continue;
        EXPECT_TRUE(bMayInclude(*pFrom, *pTo)) << objInclude.sFrom << " (" << pFrom->sName << ") includes "
                                               << objInclude.sTo << " (" << pTo->sName << ")";
    }
}

TEST(Room, MayUseOnlyEarlierRoomsOfItsFloor)
{
    const std::vector<Room> aRooms = aRoomsOfPage();

    for (std::size_t i = 0; i < aRooms.size(); ++i)
        for (std::size_t j = i + 1; j < aRooms.size(); ++j)
            EXPECT_FALSE(aRooms[i].lFloor == aRooms[j].lFloor && aRooms[i].aMayUse.contains(aRooms[j].sName))
                << aRooms[i].sName << " may use " << aRooms[j].sName << ", which is listed later";
}

TEST(Include, WithQuotesStartsAtSrcAndExists)
{
    for (const Include& objInclude : aAllIncludes()) {
        if (!objInclude.bQuoted)
            continue;
        EXPECT_TRUE(objInclude.sTo.starts_with("src/")) << objInclude.sFrom << " includes " << objInclude.sTo;
        EXPECT_TRUE(fs::exists(kRoot / objInclude.sTo)) << objInclude.sFrom << " includes " << objInclude.sTo;
    }
}

TEST(Include, OfLogicUsesOnlyTheStandardLibrary)
{
    const std::vector<Room> aRooms = aRoomsOfPage();
    const std::regex objStandard("^c?[a-z_0-9]+$");

    for (const Include& objInclude : aAllIncludes()) {
        const Room* pFrom = pRoomOf(aRooms, objInclude.sFrom);
        if (!pFrom || pFrom->lFloor == kBeside || objInclude.bQuoted)
            continue;
        EXPECT_TRUE(std::regex_match(objInclude.sTo, objStandard))
            << objInclude.sFrom << " includes <" << objInclude.sTo << ">";
    }
}

TEST(Include, NeverFormsACycle)
{
    std::map<std::string, std::vector<std::string>> aEdges;
    for (const Include& objInclude : aAllIncludes())
        if (objInclude.bQuoted)
            aEdges[objInclude.sFrom].push_back(objInclude.sTo);

    std::map<std::string, int> aState;  // 0 unvisited, 1 on the current path, 2 done
    std::vector<std::string> aWay;
    std::string sRing;
    const std::function<void(const std::string&)> Visit = [&](const std::string& sFile) {
        aState[sFile] = 1;
        aWay.push_back(sFile);
        for (const std::string& sNext : aEdges[sFile]) {
            if (aState[sNext] == 1)
                sRing += sFile + " -> " + sNext + "\n";
            else if (aState[sNext] == 0)
                Visit(sNext);
        }
        aWay.pop_back();
        aState[sFile] = 2;
    };
    for (const std::string& sFile : aSourceFiles())
        if (aState[sFile] == 0)
            Visit(sFile);

    EXPECT_EQ(sRing, "");
}
