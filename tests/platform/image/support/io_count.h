// Counts what this process reads and writes, for tests of how often something is done rather than how fast.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>

/// Bytes that the process has asked files for and given to them so far, from wherever they came and went.
struct IoCount {
    std::uint64_t nRead = 0;
    std::uint64_t nWritten = 0;
};

inline IoCount objIoSoFar()
{
    std::ifstream objFile("/proc/self/io");
    IoCount objCount;
    std::string sName;
    objFile >> sName >> objCount.nRead >> sName >> objCount.nWritten;
    return objCount;
}
