#include "UVUtils/projection/StoredSettings.h"
#include "UVUtils/projection/kyUVPlanarProjection.h"
#include "UVUtils/projection/kyUVProjectionSettingsReader.h"
#include "UVUtils/projection/kyUVProjectionSettingsWriter.h"

namespace
{

constexpr SettingsKeys::Vec3Keys Center{"TMProjectionCenterX", "TMProjectionCenterY",
                                        "TMProjectionCenterZ"};
constexpr SettingsKeys::Vec3Keys Rotation{"TMProjectionRotatePhi", "TMProjectionRotateTheta",
                                          "TMProjectionRotateRho"};
/// A plane has no depth: z comes from old files only.
constexpr SettingsKeys::Vec3Keys Scale{"TMProjectionScaleX", "TMProjectionScaleY",
                                       "TMProjectionScaleZ"};

} // namespace

bool kyUVPlanarProjection::hasSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet)
{
    return areStored(node, uvSet, {Rotation.x, Center.x, Scale.x});
}

kyUVPlanarProjectionSettings kyUVPlanarProjection::readSettings(const osg::NodePtr& node,
                                                                kyUVTypes::UVSet uvSet)
{
    const kyUVProjectionSettingsReader reader(node, uvSet);
    kyUVPlanarProjectionSettings settings;
    settings.setKeepAspectRatio(reader.readBool(SettingsKeys::KeepAspectRatio, true));
    settings.setAspectRatio(reader.readDouble(SettingsKeys::AspectRatio, 1.0));
    const osg::Vec2f size = readTextureSize(reader, osg::Vec2f(500.0F, 500.0F));
    settings.setTextureWidth(size.x());
    settings.setTextureHeight(size.y());
    settings.setTextureScale(readTextureScale(reader, osg::Vec2f(1.0F, 1.0F)));
    settings.setTextureOffset(readTextureOffset(reader, osg::Vec2f(0.0F, 0.0F)));
    settings.setProjectionCenter(readVector(reader, Center, osg::Vec3f(0.0F, 0.0F, 0.0F)));
    settings.setProjectionRotation(readVector(reader, Rotation, osg::Vec3f(0.0F, 0.0F, 0.0F)));
    settings.setProjectionScale(readVector(reader, Scale, osg::Vec3f(1.0F, 1.0F, 1.0F)));
    return settings;
}

void kyUVPlanarProjection::writeSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                         const kyUVPlanarProjectionSettings& settings)
{
    kyUVProjectionSettingsWriter writer(node, uvSet);
    writer.writeInt(SettingsKeys::Method, kyUVTypes::Planar);
    writeAspectRatio(writer, settings);
    writeVector(writer, SettingsKeys::TextureSize,
                osg::Vec2f(settings.getTextureWidth(), settings.getTextureHeight()));
    writeVector(writer, SettingsKeys::TextureScale, settings.getTextureScale());
    writeVector(writer, SettingsKeys::TextureOffset, settings.getTextureOffset());
    writeVector(writer, Center, settings.getProjectionCenter());
    writeVector(writer, Rotation, settings.getProjectionRotation());
    const osg::Vec3f scale = settings.getProjectionScale();
    writeVector(writer, {Scale.x, Scale.y}, osg::Vec2f(scale.x(), scale.y()));
}
