#include "PackRun.h"

using NU3D::CRef;
using NU3D::VALPROP_VALUE;

namespace
{

CRef table()
{
    return {NU3D::VALTYPE_TABLE, VALPROP_VALUE};
}

template <class T>
CRef value(const T& content)
{
    return CRef(content, VALPROP_VALUE);
}

} // namespace

void PackRun::pack(const PackKeys& keys, bool selectedOnly)
{
    const CRef params = table();
    if (selectedOnly)
        params->Add("#ProcessIslandSelection bool", value(true));
    params->Add("#Translate bool", value(keys.translate));
    params->Add("#Rotate.Min double 0.0", value(keys.rotateMin));
    params->Add("#Rotate.Max double 360.0", value(keys.rotateMax));
    params->Add("#Rotate.Step double 0.0", value(keys.rotateStep));
    params->Add("#Rotate.Mode int 2", value(keys.rotationMode));
    params->Add("#Scaling.Mode int 0", value(keys.islandScaling));
    params->Add("#LayoutScalingMode int 0", value(keys.layoutScaling));
    params->Add("#Resolution int", value(keys.resolution));
    params->Add("#MaxMutations int 1", value(keys.mutations));
    params->Add("#SpacingSize double 0", value(keys.spacing));
    params->Add("#MarginSize double 0", value(keys.margin));
    params->Add("#Box box2d 0.0 1.0 0.0 1.0", value(NU3D::CBox2D(keys.box.low.x, keys.box.high.x,
                                                                 keys.box.low.y, keys.box.high.y)));
    params->Add("#MultiTile.SizeU int", value(keys.tilesU));
    params->Add("#MultiTile.SizeV int", value(keys.tilesV));
    params->Add("#TileAssignMode string \"Specified\"", value(keys.tileAssignMode));
    answer_ = session_.api().Do("Pack", params);
}

void PackRun::packSelected(const PackKeys& keys, const std::vector<int>& islands)
{
    const CRef selection = table();
    selection->Add("#PrimType string \"Edge\"", value(std::string("Island")));
    selection->Add("#Select bool", value(true));
    selection->Add("#List bool", value(true));
    selection->Add("#IDs ints", value(islands));
    session_.api().Do("Select", selection);
    pack(keys, true);
}
