#include "Unfold3D/packing/SheetPool.h"

#include <utility>

namespace unfold3d
{

void SheetPool::setBlank(BitSheet blank)
{
    blank_ = std::make_unique<const BitSheet>(std::move(blank));
}

SheetPool::Borrowed SheetPool::borrow()
{
    std::unique_ptr<BitSheet> sheet = takeUsed();
    if (sheet)
        *sheet = *blank_;
    else
        sheet = std::make_unique<BitSheet>(*blank_);
    return {sheet.release(), GiveBack{this}};
}

std::unique_ptr<BitSheet> SheetPool::takeUsed()
{
    const std::scoped_lock lock(mutex_);
    if (used_.empty())
        return nullptr;
    std::unique_ptr<BitSheet> sheet = std::move(used_.back());
    used_.pop_back();
    return sheet;
}

void SheetPool::giveBack(BitSheet* sheet)
{
    std::unique_ptr<BitSheet> owned(sheet);
    const std::scoped_lock lock(mutex_);
    used_.push_back(std::move(owned));
}

} // namespace unfold3d
