// In-memory versions of the small services: settings, clock, locale, mutex, program folders.
// Room: tests/fakes.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "src/base/number_text.h"
#include "src/base/text.h"
#include "src/platform/clock.h"
#include "src/platform/ini_file.h"
#include "src/platform/locale.h"
#include "src/platform/named_mutex.h"
#include "src/platform/program_folders.h"

class FakeIniFile : public IniFile
{
public:
    void Set(const std::string& sSection, const std::string& sKey, const std::string& sValue)
    {
        m_aValues[{sLower(sSection), sLower(sKey)}] = sValue;
    }
    /// The stored value, or "(none)".
    std::string sStored(const std::string& sSection, const std::string& sKey) const
    {
        const auto itFound = m_aValues.find({sLower(sSection), sLower(sKey)});
        return itFound == m_aValues.end() ? "(none)" : itFound->second;
    }
    std::vector<std::string> aWritten;  ///< all writes as "section/key=value", in order
    bool bFailWrites = false;

    std::string GetPrivateProfileString(const std::string& sSection, const std::string& sKey,
                                        const std::string& sDefault, std::int32_t lBufferSize,
                                        const std::string&) const override
    {
        const auto itFound = m_aValues.find({sLower(sSection), sLower(sKey)});
        const std::string& sFound = itFound == m_aValues.end() ? sDefault : itFound->second;
        return sFound.substr(0, static_cast<std::size_t>(lBufferSize - 1));
    }
    std::int32_t GetPrivateProfileInt(const std::string& sSection, const std::string& sKey,
                                      std::int32_t lDefault, const std::string&) const override
    {
        const auto itFound = m_aValues.find({sLower(sSection), sLower(sKey)});
        return itFound == m_aValues.end() ? lDefault : lLeadingNumber(itFound->second);
    }
    bool WritePrivateProfileString(const std::string& sSection, const std::string& sKey,
                                   const std::string& sValue, const std::string&) override
    {
        if (bFailWrites)
            return false;
        Set(sSection, sKey, sValue);
        aWritten.push_back(sSection + "/" + sKey + "=" + sValue);
        return true;
    }

private:
    std::map<std::pair<std::string, std::string>, std::string> m_aValues;
};

/// The time only changes when a test or Sleep advances it.
class FakeClock : public Clock
{
public:
    std::int64_t lTick = 1'000'000;
    double dTime = 40000;                ///< 6 July 2009
    std::int64_t lTicksPerQuestion = 0;  ///< milliseconds that pass at each GetTickCount
    mutable std::int64_t lPassed = 0;
    std::vector<std::int32_t> aSleeps;

    std::int64_t GetTickCount() const override
    {
        lPassed += lTicksPerQuestion;
        return lTick + lPassed;
    }
    double dNow() const override { return dTime; }
    void Sleep(std::int32_t lMilliseconds) override
    {
        aSleeps.push_back(lMilliseconds);
        lTick += lMilliseconds;
    }
};

class FakeLocale : public Locale
{
public:
    std::int32_t lLCID = 1033;
    char cSign = '.';
    std::int32_t GetUserDefaultLCID() const override { return lLCID; }
    char cDecimalSign() const override { return cSign; }
};

class FakeNamedMutex : public NamedMutex
{
public:
    std::vector<std::string> aCalls;  ///< all calls as "Acquire NAME" or "Release NAME", in order
    int lHeld = 0;
    void Acquire(const std::string& sName) override
    {
        aCalls.push_back("Acquire " + sName);
        ++lHeld;
    }
    void Release(const std::string& sName) override
    {
        aCalls.push_back("Release " + sName);
        --lHeld;
    }
};

class FakeProgramFolders : public ProgramFolders
{
public:
    std::string sSettings = "/settings";
    std::string sOwn = "/program";
    std::string sSettingsFolder() const override { return sSettings; }
    std::string sOwnFolder() const override { return sOwn; }
};
