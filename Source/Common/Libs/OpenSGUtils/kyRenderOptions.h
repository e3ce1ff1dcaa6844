#pragma once

/// What the application shows.
class kyRenderOptions
{
public:
    static kyRenderOptions* getInstance();

    kyRenderOptions(const kyRenderOptions&) = delete;
    kyRenderOptions& operator=(const kyRenderOptions&) = delete;

    /// The sides of shells that are shown: 1 for side A, 2 for side B; both at the start.
    unsigned int getShowABSideMask() const { return showABSideMask_; }
    void setShowABSideMask(unsigned int mask) { showABSideMask_ = mask; }

private:
    kyRenderOptions() = default;

    unsigned int showABSideMask_ = 3;
};
