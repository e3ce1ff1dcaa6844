#include "Unfold3D/packing/BestLayout.h"

#include "Unfold3D/packing/PosedPieces.h"
#include "Unfold3D/packing/Settle.h"

#include <algorithm>

namespace unfold3d
{

void BestLayout::offer(const Layout& layout, const char* method)
{
    if (exists() && layout.scale <= scale())
        return;
    if (!isSound(pieces_, sheet_, layout, control_))
        return;
    best_ = {layout, method};
    time_.enforce(control_);
}

void BestLayout::offerSettled(const Layout& layout, const char* method)
{
    offer(settle(pieces_, sheet_, layout, std::max(layout.scale, maxScale_), control_), method);
}

} // namespace unfold3d
