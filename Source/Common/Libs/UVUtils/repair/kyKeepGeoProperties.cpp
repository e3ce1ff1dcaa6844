#include "UVUtils/repair/kyKeepGeoProperties.h"

#include "OpenSG/CoreAs.h"
#include "OpenSG/DeepCloneTree.h"
#include "OpenSG/SurfaceBase.h"
#include "OpenSG/Traverse.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/repair/kyTransferGeoProperties.h"
#include "UVUtils/solver/kyScopedTimer.h"
#include "Utils/kyProgress.h"

#include <QCoreApplication>

namespace
{

constexpr const char* sharedWithClones = "Material, AnimAttachment, Transform3D";
constexpr float progressOfTransfer = 100.0F;

/// The progress display runs as long as it lives.
class ShownProgress
{
public:
    explicit ShownProgress(float total)
    {
        const QString text = QCoreApplication::translate("kyProgressInfo", "Transfer UVs...");
        kyProgress::the()->initProgress(text.toUtf8().constData(), total, kyProgress::Visible);
    }
    ~ShownProgress() { kyProgress::the()->terminateProgress(); }
    ShownProgress(const ShownProgress&) = delete;
    ShownProgress& operator=(const ShownProgress&) = delete;
};

} // namespace

kyKeepGeoProperties::kyKeepGeoProperties(unsigned int flags) : flags_(flags) {}
kyKeepGeoProperties::kyKeepGeoProperties(const kyKeepGeoProperties& other) = default;
kyKeepGeoProperties& kyKeepGeoProperties::operator=(const kyKeepGeoProperties& other) = default;
kyKeepGeoProperties::~kyKeepGeoProperties() = default;

void kyKeepGeoProperties::addNodes(const std::vector<osg::NodePtr>& nodes)
{
    if (flags_ == 0)
        return;
    const kyScopedTimer timer("kyKeepGeoProperties::addNodes");
    for (const osg::NodePtr& node : nodes)
        traverse(node);
}

void kyKeepGeoProperties::traverse(const osg::NodePtr& node)
{
    osg::traverse(node, [this](osg::NodePtr& visited) -> unsigned int {
        if (!visited->getCore())
            return osg::TraverseResult::Skip;
        const bool isShell = kyNodeUtils::isShellGeometry(visited);
        if (isShell || osg::coreAs<osg::SurfaceBase>(visited))
            storeGeoData(visited);
        return isShell ? osg::TraverseResult::Skip : osg::TraverseResult::Continue;
    });
}

void kyKeepGeoProperties::storeGeoData(const osg::NodePtr& node)
{
    if (!hasGeoProperties(node))
        return;
    const osg::NodePtr reference = getGeoDataRef(node);
    if (!reference)
        return;
    const auto found = geoData_.find(reference);
    if (found == geoData_.end())
        geoData_.emplace(reference, makeGeoData(reference, node));
    else
        addTarget(found->second, reference, node);
}

kyKeepGeoProperties::GeoData kyKeepGeoProperties::makeGeoData(const osg::NodePtr& reference,
                                                              const osg::NodePtr& node)
{
    GeoData data;
    data.clone = osg::deepCloneTree(reference, sharedWithClones);
    data.cloneIsShell = kyNodeUtils::isShellGeometry(data.clone);
    data.targetIsShell = kyNodeUtils::isShellGeometry(node);
    data.targets.emplace(node);
    return data;
}

void kyKeepGeoProperties::addTarget(GeoData& data, const osg::NodePtr& reference,
                                    const osg::NodePtr& node)
{
    if (!data.cloneIsShell || data.targetIsShell)
        return;
    if (kyNodeUtils::isShellGeometry(node)) {
        data.targetIsShell = true;
        data.targets.clear();
        data.targets.emplace(node);
        return;
    }
    data.targets.emplace(node);
    if (data.targets.size() == data.clone->getNChildren()) { // all its surfaces have come
        data.targets.clear();
        data.targets.emplace(reference);
    }
}

/// The node under which all surfaces of a shell and all instances of a core are filed.
osg::NodePtr kyKeepGeoProperties::getGeoDataRef(const osg::NodePtr& node)
{
    const osg::NodePtr parent = node->getParent();
    const osg::NodePtr reference = kyNodeUtils::isShellGeometry(parent) ? parent : node;
    if (reference->getCore()->getParents().size() < 2)
        return reference;
    std::vector<osg::NodePtr> instances;
    kyNodeUtils::getInstancesInScenegraph(reference, instances);
    return instances.empty() ? osg::NodePtr() : instances.front();
}

bool kyKeepGeoProperties::hasGeoProperties(const osg::NodePtr& node) const
{
    const auto lookForOne = [this](osg::NodePtr& visited) -> unsigned int {
        if (kyNodeUtils::isShellGeometry(visited))
            return osg::TraverseResult::Continue;
        const bool isOne = hasGeoProperties(osg::coreAs<osg::Geometry>(visited));
        return isOne ? osg::TraverseResult::Quit : osg::TraverseResult::Skip;
    };
    return osg::traverse(node, lookForOne) == osg::TraverseResult::Quit;
}

bool kyKeepGeoProperties::hasGeoProperties(const osg::GeometryPtr& geometry) const
{
    const auto uvs = geometry ? geometry->getTexCoords() : osg::GeoTexCoordsPtr();
    return (flags_ & KeepUVs) != 0 && uvs && uvs->getSize() > 0;
}

std::size_t kyKeepGeoProperties::getTargetCount() const
{
    std::size_t count = 0;
    for (const auto& [reference, data] : geoData_)
        count += data.targets.size();
    return count;
}

void kyKeepGeoProperties::transfer()
{
    if (geoData_.empty())
        return;
    const kyScopedTimer timer("kyKeepGeoProperties::transfer");
    const ShownProgress progress(static_cast<float>(getTargetCount()) * progressOfTransfer);
    for (const auto& [reference, data] : geoData_)
        transferTo(data);
}

/// What can't be carried over says so by itself, and the rest goes on.
void kyKeepGeoProperties::transferTo(const GeoData& data) const
{
    kyTransferGeoProperties transfer(data.clone);
    transfer.setProgressCallback(
        [](float delta) { kyProgress::the()->incrementProgressBy(progressOfTransfer * delta); });
    for (const NodeRef& target : data.targets)
        if ((flags_ & KeepUVs) != 0)
            for (const kyUVTypes::UVSet uvSet : {kyUVTypes::UVSet0, kyUVTypes::UVSet1}) {
                transfer.initFromSource(data.clone, uvSet);
                transfer.transferUVs(target, uvSet);
            }
}
