// Shares the work of one operation between the machine's cores.
// Room: platform/image/base.
#pragma once

#include <cstddef>
#include <functional>

/// Calls part(0) to part(parts - 1) once each, concurrently and in no particular order, and returns when all
/// are done. If parts throw, one exception is rethrown after all have finished. On a single core, or if no
/// thread can be started, the parts run one after the other.
void RunParts(std::size_t parts, const std::function<void(std::size_t)>& part);

/// How many parts run at the same time at most; at least 1.
std::size_t CoreCount();
