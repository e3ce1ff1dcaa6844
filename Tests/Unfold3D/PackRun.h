#pragma once

#include "Patchwork.h"
#include "SolverSession.h"

#include "Unfold3D/base/Box2.h"

#include <string>
#include <vector>

/// The keys of a Pack, with values that suit most tests.
struct PackKeys
{
    bool translate = true;
    double rotateMin = 0.0;
    double rotateMax = 360.0;
    double rotateStep = 90.0;
    int rotationMode = 0;
    int islandScaling = 0;
    int layoutScaling = 2;
    int resolution = 128;
    int mutations = 1;
    double seconds = 0.0;
    double spacing = 0.0;
    double margin = 0.0;
    unfold3d::Box2 box{{0.0, 0.0}, {1.0, 1.0}};
    int tilesU = 1;
    int tilesV = 1;
    std::string tileAssignMode = "Distribute";
};

/// A solver run that packs a layout.
class PackRun : public SolverSession
{
public:
    explicit PackRun(const patchwork::Layout& layout) : SolverSession(layout.mesh, layout.uvs) {}

    void pack(const PackKeys& keys, bool selectedOnly = false);
    void packSelected(const PackKeys& keys, const std::vector<int>& islands);
};

/// The result of a pack that must succeed and hold what every layout must: within the box by the
/// margin, gaps as asked, nothing mirrored or bent. The gaps and the margin are measured once the
/// UVs are rounded as the application stores them.
std::vector<unfold3d::Vec2> packSoundly(const patchwork::Layout& layout, const PackKeys& keys);
