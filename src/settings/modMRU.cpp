// Loads, updates and saves the MRU lists and fills their combo boxes.
#include "src/settings/modMRU.h"

#include <algorithm>

#include "src/base/text.h"
#include "src/forms/Application.h"
#include "src/forms/scope_guards.h"
#include "src/platform/ini_file.h"

static constexpr std::int32_t kEntriesKept = 20;
static constexpr std::int32_t kBufferSize = 500;
// Default for a missing key. An entry with this text would be lost on reading.
static const std::string kMissing = "+-!#";

static std::string sKey(const clsMRU& mru, std::int32_t lNumber)
{
    return mru.sKeyStem + std::to_string(lNumber);
}

void Setup(clsMRU& mru, const IniFile& objIniFile, std::int32_t lMaxCount, const std::string& sIniFile,
           const std::string& sKeyStem)
{
    mru = {{}, lMaxCount, sKeyStem, sIniFile};
    ReadIniFileIntoCollection(mru, objIniFile);
}

void ShutDown(clsMRU& mru, IniFile& objIniFile)
{
    WriteCollectionToIniFile(mru, objIniFile);
    mru.colMRU.clear();
}

void AddUniqueItemToCollection(clsMRU& mru, const std::string& sText)
{
    if (sText.empty())
        return;
    std::erase_if(mru.colMRU, [&](const std::string& sEntry) { return bEqualIgnoringCase(sEntry, sText); });
    mru.colMRU.push_back(sText);
}

void WriteCollectionToIniFile(const clsMRU& mru, IniFile& objIniFile)
{
    std::int32_t lNumber = kEntriesKept;
    for (auto itEntry = mru.colMRU.rbegin(); itEntry != mru.colMRU.rend() && lNumber >= 1;
         ++itEntry, --lNumber)
        objIniFile.WritePrivateProfileString(mru.sKeyStem, sKey(mru, lNumber), *itEntry, mru.sIniFile);
}

void ReadIniFileIntoCollection(clsMRU& mru, const IniFile& objIniFile)
{
    mru.colMRU.clear();
    for (std::int32_t lNumber = 1; lNumber <= kEntriesKept; ++lNumber) {
        const std::string sEntry = objIniFile.GetPrivateProfileString(mru.sKeyStem, sKey(mru, lNumber),
                                                                      kMissing, kBufferSize, mru.sIniFile);
        if (sEntry != kMissing)
            AddUniqueItemToCollection(mru, sEntry);
    }
}

std::int32_t Count(const clsMRU& mru)
{
    return static_cast<std::int32_t>(mru.colMRU.size());
}

void FillComboBoxFromMRU(Application& app, ComboBox& cb, const clsMRU& mru)
{
    const InternalChange objChange(app);
    const RedrawLock objLock(cb);
    cb.Clear();
    for (auto itEntry = mru.colMRU.rbegin(); itEntry != mru.colMRU.rend(); ++itEntry)
        cb.AddItem(*itEntry);
    if (Count(mru) > 0)
        cb.SetListIndex(0);
}

static void UpdateMRU(Application& app, ComboBox& cb, clsMRU& mru)
{
    AddUniqueItemToCollection(mru, cb.Text());
    FillComboBoxFromMRU(app, cb, mru);
}

void UpdateMRUs(Application& app)
{
    frmMain& frm = app.frmMain;
    if (frm.sActionToDo == "C") {
        UpdateMRU(app, frm.cbOriginalFile, frm.mruSource);
        UpdateMRU(app, frm.cbTargetFile, frm.mruTarget);
    } else if (frm.sActionToDo == "S") {
        UpdateMRU(app, frm.cbOriginalFileSpecialized, frm.mruSourceSpecialized);
        UpdateMRU(app, frm.cbTargetFileSpecialized, frm.mruTargetSpecialized);
        UpdateMRU(app, frm.cbCommandLine, frm.mruCommandLine);
        UpdateMRU(app, frm.cbCommandLineArguments, frm.mruCommandLineArguments);
    }
}
