// The dispatcher's state: which events are being handled.
// Room: forms.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

struct DispatchState {
    std::vector<std::size_t>
        aPumpsAtEntry;              ///< per act in progress: how many pumps were at work when it began
    std::function<void()> fnClose;  ///< the close that waits until nothing is in progress
};
