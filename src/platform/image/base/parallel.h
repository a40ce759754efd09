// Shares the work of one operation between the machine's cores.
// Room: platform/image/base.
#pragma once

#include <cstddef>
#include <functional>

/// Calls part(0) to part(parts - 1), each once, several at a time and in no particular order, and
/// returns when all are done. What a part throws is thrown here, once, after the others. Without a second
/// core, or when no thread can be had, the parts run one after the other.
void RunParts(std::size_t parts, const std::function<void(std::size_t)>& part);

/// How many parts run at a time at most; at least 1.
std::size_t CoreCount();
