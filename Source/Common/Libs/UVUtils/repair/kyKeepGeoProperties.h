#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"

#include <cstddef>
#include <map>
#include <set>
#include <vector>

/// Carries the UVs of shells and surfaces over a change of their geometry:
///
///     kyKeepGeoProperties kept(kyKeepGeoProperties::KeepUVs);
///     kept.addNodes(nodes);
///     ... the nodes get other triangles ...
///     kept.transfer();
///
/// What was there is kept as deep clones, from which kyTransferGeoProperties takes the UVs of slots
/// 0 and 1. All surfaces of a shell have one clone, that of the shell, and so have all nodes that
/// share a core. Surfaces are geometries of class osg::SurfaceBase; other geometries outside of
/// shells are left alone.
///
/// Clones and nodes are held until the object and its copies are gone. All calls come from the
/// thread that owns the scene graph.
class kyKeepGeoProperties
{
public:
    /// Bits of the flags. Others have no meaning.
    enum Flag : unsigned int
    {
        KeepUVs = 1
    };

    /// flags  what to keep; with 0 nothing happens at all
    explicit kyKeepGeoProperties(unsigned int flags);
    /// The copy shares the clones.
    kyKeepGeoProperties(const kyKeepGeoProperties& other);
    kyKeepGeoProperties& operator=(const kyKeepGeoProperties& other);
    ~kyKeepGeoProperties();

    /// Keeps what the shells and surfaces at and below some nodes have now. Those without UVs in
    /// slot 0 are passed over, whatever slot 1 holds; of a shell, one surface with UVs is enough.
    /// Null nodes and what is below a node without a core are passed over too, and so are nodes
    /// that share a core of which the scene graph (kyNodeUtils::setScenegraphRoot) has no node.
    ///
    /// What was kept is not kept again. A shell whose surfaces come one by one is a target as a
    /// whole as soon as all have come, and as soon as it comes itself.
    ///
    /// Linear in the nodes, and in all that is below those that are cloned, vertices included; a
    /// shell or surface whose core n nodes share looks at these n each time that it comes.
    void addNodes(const std::vector<osg::NodePtr>& nodes);

    /// Gives all nodes that were added the UVs that were kept. Nodes whose geometry can't be worked
    /// on now stay as they are, a slot that wasn't there stays as it is, with a line in the log.
    ///
    /// Shows a progress on kyProgress, of 100 for each target; each slot of a target adds 100, so
    /// the display is full halfway. A second call does the same again. Costs one initFromSource and
    /// one transferUVs (kyTransferGeoProperties) for each slot of each target.
    void transfer();

private:
    using NodeRef = osg::RefPtr<osg::Node>;

    /// By age, so that the order of the work is the same on every run.
    struct OlderFirst
    {
        using is_transparent = void;
        bool operator()(const osg::FieldContainerPtr& a, const osg::FieldContainerPtr& b) const
        {
            return a->getId() < b->getId();
        }
    };

    struct GeoData
    {
        NodeRef clone; ///< of the reference node as it was
        bool cloneIsShell = false;
        bool targetIsShell = false; ///< a shell was added, not only surfaces of it
        std::set<NodeRef, OlderFirst> targets;
    };

    void traverse(const osg::NodePtr& node);
    void storeGeoData(const osg::NodePtr& node);
    static GeoData makeGeoData(const osg::NodePtr& reference, const osg::NodePtr& node);
    static void addTarget(GeoData& data, const osg::NodePtr& reference, const osg::NodePtr& node);
    [[nodiscard]] static osg::NodePtr getGeoDataRef(const osg::NodePtr& node);
    [[nodiscard]] bool hasGeoProperties(const osg::NodePtr& node) const;
    [[nodiscard]] bool hasGeoProperties(const osg::GeometryPtr& geometry) const;
    [[nodiscard]] std::size_t getTargetCount() const;
    void transferTo(const GeoData& data) const;

    unsigned int flags_;
    std::map<NodeRef, GeoData, OlderFirst> geoData_; ///< under the reference nodes
};
