#include "UVUtils/model/kyUVUtils.h"

#include "OpenSGExt/kyGeoUtils.h"
#include "OpenSGExt/kyShellUtils.h"
#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/DealIds.h"
#include "UVUtils/model/NodeName.h"

#include "Utils/kyLog.h"

#include <span>
#include <string>

namespace
{

void postSelectionChanged()
{
    kyOpenSGUtils::call("VESelectionChanged", 0);
    kyOpenSGUtils::call("UVSelectionModeChanged", 0);
}

bool isValidPlainGeometry(const osg::GeometryPtr& geometry, const osg::NodePtr& node, bool verbose)
{
    const unsigned int error = kyGeoUtils::checkGeometryCore(geometry, true);
    if (error != 0 && verbose)
        kyLog::error("UV Editor: Error on geometry '%s': %s", nameForMessages(node),
                     kyGeoUtils::getGeometryErrorString(error).c_str());
    return error == 0;
}

/// What the surfaces of a shell are worth, hidden ones included.
struct SurfaceTally
{
    int valid = 0;
    int invalid = 0;
    unsigned int errors = 0; ///< of all invalid surfaces
};

SurfaceTally tallySurfaces(const osg::Node& shell)
{
    SurfaceTally tally;
    for (unsigned int i = 0; i < shell.getNChildren(); ++i) {
        const auto surface = osg::dcast<osg::Geometry>(shell.getChild(i)->getCore());
        if (!surface)
            continue;
        const unsigned int error = kyGeoUtils::checkGeometryCore(surface, true);
        ++(error == 0 ? tally.valid : tally.invalid);
        tally.errors |= error;
    }
    return tally;
}

bool isValidShell(const osg::NodePtr& node, bool verbose)
{
    if (!node)
        return false;
    const SurfaceTally tally = tallySurfaces(*node);
    if (verbose && tally.valid == 0)
        kyLog::error("UV Editor: Shell '%s' has no valid surfaces.", nameForMessages(node));
    else if (verbose && tally.invalid > 0)
        kyLog::warning("UV Editor: Skipping %i surface(s) of shell '%s': %s", tally.invalid,
                       nameForMessages(node),
                       kyGeoUtils::getGeometryErrorString(tally.errors).c_str());
    return tally.valid > 0;
}

} // namespace

kyUVUtils& kyUVUtils::instance()
{
    // Leaked on purpose: static tables of the library may still ask while they die, after main.
    static auto* theOne = new kyUVUtils;
    return *theOne;
}

kyUVUtils::ESelectMode kyUVUtils::getSelectMode()
{
    return instance().selectMode_;
}

void kyUVUtils::setSelectMode(ESelectMode mode)
{
    instance().selectMode_ = mode;
    postSelectionChanged();
}

kyUVTypes::UVSet kyUVUtils::getSelectUVSet()
{
    return instance().selectUVSet_;
}

void kyUVUtils::setSelectUVSet(kyUVTypes::UVSet uvSet)
{
    instance().selectUVSet_ = uvSet;
    postSelectionChanged();
}

bool kyUVUtils::getFillShading()
{
    return instance().fillShading_;
}

void kyUVUtils::setFillShading(bool fill)
{
    instance().fillShading_ = fill;
}

bool kyUVUtils::getUseCompactMesh()
{
    return instance().useCompactMesh_;
}

void kyUVUtils::setUseCompactMesh(bool use)
{
    instance().useCompactMesh_ = use;
    postSelectionChanged();
}

bool kyUVUtils::isValidGeometry(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                bool verbose)
{
    if (!geometry)
        return false;
    return kyShellUtils::isShell(geometry) ? isValidShell(node, verbose)
                                           : isValidPlainGeometry(geometry, node, verbose);
}

bool kyUVUtils::useCMesh(const osg::GeometryPtr& geometry)
{
    return geometry && (getUseCompactMesh() || kyShellUtils::isShell(geometry));
}

void kyUVUtils::callFuncOnActiveBaseGeometry(const osg::NodePtr& node, const unsigned int* ids,
                                             unsigned int count, bool keepOrder,
                                             const SurfaceFunction& function)
{
    if (count == 0)
        return;
    dealIds(activeSurfaces(node), std::span(ids, count), keepOrder,
            [&](const ActiveSurface& surface, const std::vector<unsigned int>& localIds) {
                function(surface.node, surface.geometry, localIds, surface.firstId);
            });
}
