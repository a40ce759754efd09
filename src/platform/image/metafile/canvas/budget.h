// Limits the work that playing a metafile may cost.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cstdint>

/// A record of a few bytes can paint the whole picture, and a file can hold millions of them. So work is
/// charged before it is done, in units of about one painted pixel, and a file that exceeds its budget is
/// refused.
class Budget
{
public:
    explicit Budget(std::uint64_t units) : left_(units) {}

    /// Charges units. False if they exceed what is left, and on every later call.
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
