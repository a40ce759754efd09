// Counts what this process reads and writes, for tests of how often something is done rather than how fast.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>

/// Bytes that the process has asked files for and given to them so far, from wherever they came and went.
struct IoCount {
    std::uint64_t read = 0;
    std::uint64_t written = 0;
};

inline IoCount IoSoFar()
{
    std::ifstream file("/proc/self/io");
    IoCount count;
    std::string name;
    file >> name >> count.read >> name >> count.written;
    return count;
}
