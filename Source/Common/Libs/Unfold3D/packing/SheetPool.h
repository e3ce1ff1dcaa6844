#pragma once

#include "Unfold3D/packing/BitSheet.h"

#include <memory>
#include <mutex>
#include <vector>

namespace unfold3d
{

/// Hands out sheets that are free but for some shapes, and takes them back for the next one.
///
/// A sheet with all that it knows takes megabytes. To copy the blank one over a used one takes a
/// fraction of the time of a new one, whose memory the system has to find first.
///
/// Sheets may be borrowed and given back on several threads at a time.
class SheetPool
{
    struct GiveBack
    {
        SheetPool* pool;
        void operator()(BitSheet* sheet) const { pool->giveBack(sheet); }
    };

public:
    /// Goes back to the pool by itself, which has to live longer.
    using Borrowed = std::unique_ptr<BitSheet, GiveBack>;

    /// From now on sheets are like this one. None may be lent out at the time.
    void setBlank(BitSheet blank);

    Borrowed borrow();

private:
    void giveBack(BitSheet* sheet);
    std::unique_ptr<BitSheet> takeUsed();

    std::unique_ptr<const BitSheet> blank_;
    std::mutex mutex_;
    std::vector<std::unique_ptr<BitSheet>> used_;
};

} // namespace unfold3d
