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
    void Set(const std::string& section, const std::string& key, const std::string& value)
    {
        values_[{sLower(section), sLower(key)}] = value;
    }
    /// The stored value, or "(none)".
    std::string Stored(const std::string& section, const std::string& key) const
    {
        const auto found = values_.find({sLower(section), sLower(key)});
        return found == values_.end() ? "(none)" : found->second;
    }
    std::vector<std::string> written;  ///< all writes as "section/key=value", in order
    bool fail_writes = false;

    std::string GetPrivateProfileString(const std::string& section, const std::string& key,
                                        const std::string& fallback, std::int32_t buffer_size,
                                        const std::string&) const override
    {
        const auto found = values_.find({sLower(section), sLower(key)});
        const std::string& value = found == values_.end() ? fallback : found->second;
        return sFirstLetters(value, buffer_size - 1);
    }
    std::int32_t GetPrivateProfileInt(const std::string& section, const std::string& key,
                                      std::int32_t fallback, const std::string&) const override
    {
        const auto found = values_.find({sLower(section), sLower(key)});
        return found == values_.end() ? fallback : lLeadingNumber(found->second);
    }
    bool WritePrivateProfileString(const std::string& section, const std::string& key,
                                   const std::string& value, const std::string&) override
    {
        if (fail_writes)
            return false;
        Set(section, key, value);
        written.push_back(section + "/" + key + "=" + value);
        return true;
    }

private:
    std::map<std::pair<std::string, std::string>, std::string> values_;
};

/// The time only changes when a test or Sleep advances it.
class FakeClock : public Clock
{
public:
    std::int64_t tick = 1'000'000;
    double time = 40000;              ///< 6 July 2009
    std::int64_t ticks_per_call = 0;  ///< milliseconds that pass at each GetTickCount
    mutable std::int64_t passed = 0;
    std::vector<std::int32_t> sleeps;

    std::int64_t GetTickCount() const override
    {
        passed += ticks_per_call;
        return tick + passed;
    }
    double dNow() const override { return time; }
    void Sleep(std::int32_t milliseconds) override
    {
        sleeps.push_back(milliseconds);
        tick += milliseconds;
    }
};

class FakeLocale : public Locale
{
public:
    std::int32_t lcid = 1033;
    char sign = '.';
    std::int32_t GetUserDefaultLCID() const override { return lcid; }
    char cDecimalSign() const override { return sign; }
};

class FakeNamedMutex : public NamedMutex
{
public:
    std::vector<std::string> calls;  ///< all calls as "Acquire NAME" or "Release NAME", in order
    int held = 0;
    void Acquire(const std::string& name) override
    {
        calls.push_back("Acquire " + name);
        ++held;
    }
    void Release(const std::string& name) override
    {
        calls.push_back("Release " + name);
        --held;
    }
};

class FakeProgramFolders : public ProgramFolders
{
public:
    std::string settings = "/settings";
    std::string own = "/program";
    std::string home = "/home/me";
    std::string sSettingsFolder() const override { return settings; }
    std::string sOwnFolder() const override { return own; }
    std::string sHomeFolder() const override { return home; }
};
