#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Matrix.h"
#include "OpenSG/Node.h"
#include "OpenSGExt/ValuePair.h"
#include "UVUtils/model/kyUVTypes.h"

#include <cstdint>
#include <vector>

class kyUVCylindricalProjectionSupportGeometry;
class kyUVPlanarProjectionSupportGeometry;
class kyUVProjectionSettingsReader;
class kyUVTriPlanarProjectionSupportGeometry;

/// What all texture projections stand on: the support geometry that shows them, the nodes that they
/// work on, the measures of these, and the reading of what was stored on a node.
///
/// The projections write new UVs from the places of vertices in the world; the parameters of the
/// last projection stay on the node. All is static and belongs to the thread that owns the scene
/// graph.
class kyUVTextureProjection
{
public:
    kyUVTextureProjection() = delete;

    /// Hands over the trees in which the projections keep their live transforms. Called before the
    /// first projection; a later call replaces them. The objects stay the caller's. Without its own
    /// one, which may be null, the planar and the cylindrical projection log a warning and leave
    /// the nodes alone; the triplanar projection does its work all the same.
    static void init(kyUVPlanarProjectionSupportGeometry* planar,
                     kyUVTriPlanarProjectionSupportGeometry* triPlanar,
                     kyUVCylindricalProjectionSupportGeometry* cylindrical);
    static kyUVPlanarProjectionSupportGeometry* getPlanarSupportGeometry();
    static kyUVTriPlanarProjectionSupportGeometry* getTriPlanarSupportGeometry();
    static kyUVCylindricalProjectionSupportGeometry* getCylindricalSupportGeometry();

    /// The nodes that a selection stands for: a node with a plain geometry stands for itself, one
    /// with a shell for all that is below it, tested no further, so that surfaces are projected
    /// when only their shell was named. Null nodes and nodes without a geometry core stand for
    /// nothing. Each node comes once; they are in the order of their addresses, on which nothing
    /// may depend.
    static std::vector<osg::NodePtr> resolveNodes(const std::vector<osg::NodePtr>& nodes);

    /// The box of the resolved nodes in world coordinates; all zero without a position. Mind the
    /// order: the centre is first. Positions that aren't finite don't count. Linear in positions.
    static void calculateBoundingBox(const std::vector<osg::NodePtr>& nodes, osg::Vec3f& center,
                                     osg::Pnt3f& min, osg::Pnt3f& max);

    /// The box of the resolved nodes in the space of a projection, of which `matrix` leads to the
    /// world; a singular one counts as the identity. Leaves both points alone when no node is left,
    /// and when the nodes have no position. Positions that aren't finite there don't count. Linear
    /// in positions.
    static void calculateProjectionSize(const std::vector<osg::NodePtr>& nodes,
                                        const osg::Matrix& matrix, osg::Pnt3f& min,
                                        osg::Pnt3f& max);

protected:
    /// What an old key said about the fit of the image. Nothing acts on it.
    enum LegacyFitScaleBehavior : std::int32_t
    {
        NoLegacyFit = -1,
        LegacyFit1 = 1,
        LegacyFit2 = 2
    };

    /// The extent of the resolved nodes as a projection sees them, for positions within 1e30.
    /// Those that aren't finite don't count.
    ///
    /// matrix  leads from the space of the projection to the world; a singular one counts as
    ///         the identity
    /// size    width and height in that space; negative (-2e30) without positions, which users take
    ///         for none
    /// center  the centre of the box in the world; 0 without positions
    ///
    /// Linear in positions.
    static void calculateProjectionBoundingBox(const std::vector<osg::NodePtr>& nodes,
                                               const osg::Matrix& matrix, osg::Vec2f& size,
                                               osg::Pnt3f& center);

    /// Puts a property into a slot, with the index mapping and the notices that belong to it. Does
    /// nothing for a null geometry; null empties the slot.
    static void applyUVChanges(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                               const osg::GeoTexCoordsPtr& texCoords);

    // Reading of single keys. Where these differ from the operations of the reader, callers depend
    // on it.

    /// The projection that a node has stored for a slot, NoProjection if it has none.
    static kyUVTypes::UVProjectionMode readMethod(const osg::NodePtr& node, kyUVTypes::UVSet uvSet);
    static kyUVTypes::UVProjectionMode readMethod(const kyUVProjectionSettingsReader& reader,
                                                  kyUVTypes::UVProjectionMode defaultMethod);
    /// From the bare key, whatever the slot; NoLegacyFit for a null pair, a missing key, text that
    /// is no number and any other number.
    static LegacyFitScaleBehavior readLegacyScaleBehavior(const osg::ValuePairPtr& pair);
    /// True only for the exact text "true".
    static bool readKeepAspectRatio(const kyUVProjectionSettingsReader& reader, bool defaultKeep);
    /// Throws like kyUVProjectionSettingsReader::readDouble.
    static double readAspectRatio(const kyUVProjectionSettingsReader& reader, double defaultRatio);
    /// What was stored is kept away from 0, and replaced by 1 where it isn't finite; the default's
    /// components are taken as they are.
    static osg::Vec2f readTextureScale(const kyUVProjectionSettingsReader& reader,
                                       const osg::Vec2f& defaultScale);
    static osg::Vec2f readTextureOffset(const kyUVProjectionSettingsReader& reader,
                                        const osg::Vec2f& defaultOffset);
    static osg::Vec2f readTextureSize(const kyUVProjectionSettingsReader& reader,
                                      const osg::Vec2f& defaultSize);

    static kyUVPlanarProjectionSupportGeometry* s_planarProjectionSupportGeometry;
    static kyUVTriPlanarProjectionSupportGeometry* s_triPlanarProjectionSupportGeometry;
    static kyUVCylindricalProjectionSupportGeometry* s_cylindricalProjectionSupportGeometry;
};
