// Unfolding of kyUVUtils: a whole geometry, and the selected islands.

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/RefPtr.h"
#include "UVUtils/model/NodeName.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/solver/SolverFacade.h"
#include "UVUtils/solver/WriteLine.h"
#include "UVUtils/solver/kyScopedTimer.h"
#include "UVUtils/solver/kyUnfold3D.h"
#include "Utils/kyLog.h"

#include <cstdint>
#include <vector>

namespace
{

/// A slot of a geometry and what the index mapping says, as they are when it is made.
class SlotBefore
{
public:
    SlotBefore(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet)
        : geometry_(geometry), uvSet_(uvSet),
          slot_(geometry->getTexSlot(static_cast<unsigned int>(uvSet))),
          mapping_(geometry->getIndexMapping())
    {}
    /// Nothing is told where nothing has changed.
    void putBack() const
    {
        if (geometry_->getTexSlot(static_cast<unsigned int>(uvSet_)) == slot_)
            return;
        kyUVUtils::setTexSlot(geometry_, uvSet_, slot_);
        if (geometry_->getIndexMapping() == mapping_)
            return;
        geometry_->getIndexMapping() = mapping_;
        osg::notifyChanged(geometry_, osg::Geometry::IndexMappingFieldMask);
    }

private:
    osg::GeometryPtr geometry_;
    kyUVTypes::UVSet uvSet_;
    osg::RefPtr<osg::GeoTexCoords> slot_;
    std::vector<std::uint16_t> mapping_;
};

} // namespace

kyUVTypes::ReturnCode kyUVUtils::unfoldGeometryUnfold3D(
    const osg::GeometryPtr& geometry, const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
    const kyUnfold3D::UnfoldSettings& unfoldSettings, const kyUnfold3D::PackSettings& packSettings)
{
    return onWorkGeometry(geometry, node, uvSet, [&](const CompactMeshScope& scope) {
        kyUnfold3D::writeLine("Unfolding node ", nameForMessages(node), ".");
        const HeldEdges held(geometry, node, scope);
        return close(scope, node, "Unfolding UVs",
                     doUnfoldGeometryUnfold3D(scope.getGeometry(), uvSet, unfoldSettings,
                                              packSettings, held.horizontal, held.vertical));
    });
}

kyUVTypes::ReturnCode kyUVUtils::doUnfoldGeometryUnfold3D(
    const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
    const kyUnfold3D::UnfoldSettings& unfoldSettings, const kyUnfold3D::PackSettings& packSettings,
    const std::vector<unsigned int>& horizontal, const std::vector<unsigned int>& vertical)
{
    if (!hasSolverInput(*geometry))
        return kyUVTypes::Failure;
    const SlotBefore before(geometry, uvSet);
    initTexCoordsField(geometry, uvSet);
    if (!uvSlot(geometry, uvSet))
        return kyUVTypes::Failure;

    UVArray uvs;
    kyUVTypes::ReturnCode code = kyUVTypes::Failure;
    {
        const kyScopedTimer timer("Unfold3D");
        code = kyUnfold3D::unfold(geometry, uvSet, uvs, kyUnfold3D::Positions3D, unfoldSettings,
                                  &packSettings, horizontal, vertical);
    }
    if (code == kyUVTypes::Success)
        return unlessAssigned(assignTexCoords(geometry, uvSet, uvs));
    // A run that came to nothing leaves no slot of zeros behind.
    before.putBack();
    return code;
}

kyUVTypes::ReturnCode kyUVUtils::unfoldIslandsUnfold3D(const osg::GeometryPtr& geometry,
                                                       const osg::NodePtr& node,
                                                       kyUVTypes::UVSet uvSet,
                                                       const kyUnfold3D::UnfoldSettings& settings)
{
    return onWorkGeometry(geometry, node, uvSet, [&](const CompactMeshScope& scope) {
        const std::vector<unsigned int> selected =
            selectedVertices(scope, kyUVTypes::IslandVertices);
        if (selected.empty())
            return kyUVTypes::Failure;
        UVArray uvs;
        kyUVTypes::ReturnCode code = kyUVTypes::Failure;
        {
            const kyScopedTimer timer("Unfold3D Islands");
            const HeldEdges held(geometry, node, scope);
            code =
                kyUnfold3D::unfold(scope.getGeometry(), uvSet, uvs, kyUnfold3D::GeometryTexCoords,
                                   settings, nullptr, held.horizontal, held.vertical, selected);
        }
        if (code == kyUVTypes::Failure)
            kyLog::error("Unfold Islands: Failed for node %s.", nameForMessages(node));
        if (code != kyUVTypes::Success)
            return code;
        code = unlessAssigned(assignTexCoords(scope.getGeometry(), uvSet, uvs, selected));
        if (code == kyUVTypes::Failure)
            kyLog::error("Unfold Islands: Assigning UVs to geo failed.");
        scope.commit();
        return code;
    });
}
