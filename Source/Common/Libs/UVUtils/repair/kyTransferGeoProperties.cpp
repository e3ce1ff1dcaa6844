#include "UVUtils/repair/kyTransferGeoProperties.h"

#include "OpenSG/CoreAs.h"
#include "OpenSGExt/kyShellUtils.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/NodeName.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/repair/SeamWalker.h"
#include "UVUtils/repair/TransferTarget.h"
#include "UVUtils/repair/TransferredUVs.h"
#include "Utils/kyLog.h"

#include <iostream>
#include <utility>

namespace
{

/// Is a core that of a node or of one of its children?
bool isCoreIn(const osg::NodePtr& node, const osg::NodeCorePtr& core)
{
    bool isIn = node->getCore() == core;
    for (unsigned int i = 0; !isIn && i < node->getNChildren(); ++i)
        isIn = node->getChild(i) && node->getChild(i)->getCore() == core;
    return isIn;
}

bool hasValues(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet)
{
    const osg::GeoTexCoordsPtr slot = geometry->getTexSlot(static_cast<unsigned int>(uvSet));
    return slot && slot->getSize() > 0;
}

/// A shell is no surface of another one.
bool canBeWritten(const osg::NodePtr& node, const osg::GeometryPtr& geometry)
{
    return !kyShellUtils::isShell(geometry) && kyUVUtils::isValidGeometry(geometry, node, false);
}

} // namespace

kyTransferGeoProperties::SampleMethod kyTransferGeoProperties::s_sampleMethod = ClosestBVH;

/// Tells of all progress that was not told of, on whatever path it ends.
class kyTransferGeoProperties::WholeProgress
{
public:
    explicit WholeProgress(const kyTransferGeoProperties& transfer) : transfer_(transfer) {}
    ~WholeProgress()
    {
        try {
            transfer_.incrementProgressBy(remaining, remaining);
        } catch (...) { // NOLINT(bugprone-empty-catch): who is told has no say in how this ends
        }
    }
    WholeProgress(const WholeProgress&) = delete;
    WholeProgress& operator=(const WholeProgress&) = delete;

    float remaining = 1.0F;

private:
    const kyTransferGeoProperties& transfer_;
};

kyTransferGeoProperties::kyTransferGeoProperties(const osg::NodePtr& /*node*/) {}
kyTransferGeoProperties::~kyTransferGeoProperties() = default;

void kyTransferGeoProperties::setProgressCallback(std::function<void(float)> progress)
{
    progress_ = std::move(progress);
}

void kyTransferGeoProperties::incrementProgressBy(float delta, float& remaining) const
{
    if (progress_)
        progress_(delta);
    remaining -= delta;
}

bool kyTransferGeoProperties::initFromSource(const osg::NodePtr& source, kyUVTypes::UVSet uvSet)
{
    if (!source) {
        kyLog::errorNR("Transfer Geo Properties Init: Source NullFC");
        return false;
    }
    const auto geometry = osg::coreAs<osg::Geometry>(source);
    if (!kyUVUtils::isValidGeometry(geometry, source, false)) {
        kyLog::errorNR("Transfer Geo Properties Init: Source not valid");
        return false;
    }
    forgetSource();
    source_ = source;
    sourceGeometry_ = geometry;
    scope_ = std::make_unique<CompactMeshScope>(geometry, source, uvSet);
    const osg::GeometryPtr workGeometry = scope_->getGeometry();
    if (!workGeometry) {
        kyLog::errorNR("Transfer Geo Properties Init: No working geo");
        return false;
    }
    if (!scope_->hasSlot() || !hasValues(workGeometry, uvSet)) {
        kyLog::error("Transfer Geo Properties (UVs): Source geometry has no UVs.");
        return false;
    }
    walker_ = std::make_unique<SeamWalker>(workGeometry);
    buildStructures(workGeometry);
    return true;
}

/// The scope ends before the next one begins: the end of a scope makes its mesh listen, even if
/// another scope has it.
void kyTransferGeoProperties::forgetSource()
{
    octree_.reset();
    bvh_.reset();
    walker_.reset();
    scope_.reset();
    sourceGeometry_ = osg::NullFC;
    source_ = osg::NullFC;
}

void kyTransferGeoProperties::buildStructures(const osg::GeometryPtr& geometry)
{
    if (sampleMethod_ == AlongNormal || sampleMethod_ == ClosestBVH) {
        bvh_ = std::make_unique<kyMeshPointQuery>();
        bvh_->build(geometry);
        if (bvh_->isValid())
            return;
        kyLog::warning("BVH failed to initialize. Fall back to octree.");
        sampleMethod_ = ClosestOctree;
    }
    if (sampleMethod_ == ClosestOctree) {
        octree_ = std::make_unique<kyTriangleOctree>(geometry);
        octree_->build();
    }
}

bool kyTransferGeoProperties::transferUVs(const osg::NodePtr& target, kyUVTypes::UVSet uvSet)
{
    WholeProgress progress(*this);
    if (!target) {
        std::cout << "target NullFC\n";
        return false;
    }
    const auto geometry = osg::coreAs<osg::Geometry>(target);
    if (!walker_ || !scope_ || !geometry)
        return false;
    if (!kyShellUtils::isShell(geometry)) {
        const bool isDone = doTransferUVs(target, geometry, uvSet);
        incrementProgressBy(1.0F, progress.remaining);
        return isDone;
    }
    const bool isDone = transferToSurfaces(target, uvSet, progress.remaining);
    kyUVUtils::sewAllIslands(geometry, target, uvSet, false, true, nullptr);
    return isDone;
}

bool kyTransferGeoProperties::transferToSurfaces(const osg::NodePtr& shell, kyUVTypes::UVSet uvSet,
                                                 float& remaining) const
{
    bool areAllDone = true;
    const unsigned int count = shell->getNChildren();
    for (unsigned int i = 0; i < count; ++i) {
        const osg::NodePtr child = shell->getChild(i);
        if (child && !doTransferUVs(child, osg::coreAs<osg::Geometry>(child), uvSet)) {
            std::cout << "ERROR transfer UVs for slot " << uvSet << " to surface " << i
                      << " of Shell " << nameForMessages(shell) << '\n';
            areAllDone = false;
        }
        incrementProgressBy(1.0F / static_cast<float>(count), remaining);
    }
    return areAllDone;
}

/// The source's compact mesh doesn't listen now, so it is told of a change of its own surfaces.
void kyTransferGeoProperties::noteChange(const osg::GeometryPtr& written) const
{
    if (scope_->getMesh() && isCoreIn(source_.get(), written))
        scope_->getMesh()->touch();
}

bool kyTransferGeoProperties::doTransferUVs(const osg::NodePtr& node,
                                            const osg::GeometryPtr& geometry,
                                            kyUVTypes::UVSet uvSet) const
{
    const osg::GeometryPtr source = scope_->getGeometry();
    if (!source || source == geometry)
        return false;
    if (!canBeWritten(node, geometry)) {
        std::cout << nameForMessages(node) << ": target not valid\n";
        return false;
    }
    const auto normals = osg::dcast<osg::GeoNormals3f>(geometry->getNormals());
    if (!normals || normals->getSize() == 0) {
        kyLog::error("Transfer Geo Properties (UVs): Target geometry has no vertex normals.");
        return false;
    }
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions());
    const TransferredUVs transferred = [&] {
        const IndexView indices(geometry->getIndices());
        const TransferTarget target(positions->values(), normals->values(), indices.triangles());
        return mergeSamples(target, sampleCorners(target, source, uvSet));
    }();
    splitVertices(geometry, transferred);
    writeUVs(geometry, uvSet, transferred);
    noteChange(geometry);
    return true;
}
