// Counts this process's reads and writes, so that tests can check work instead of time.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>

/// Bytes read and written by this process so far, through any file.
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
