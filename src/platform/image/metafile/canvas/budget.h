// The work that a metafile may cost.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cstdint>

/// A few bytes can ask for a whole page to be painted, and a file can say so a million times. So work is
/// counted, in units of about one painted pixel, before it is done; a file that wants more than it was
/// granted is refused.
class Budget
{
public:
    explicit Budget(std::uint64_t units) : left_(units) {}

    /// Takes units off. False, from then on, when there weren't enough.
    bool Spend(std::uint64_t units)
    {
        spent_ = spent_ || units > left_;
        left_ = spent_ ? 0 : left_ - units;
        return !spent_;
    }
    bool Spent() const { return spent_; }

private:
    std::uint64_t left_;
    bool spent_ = false;
};
