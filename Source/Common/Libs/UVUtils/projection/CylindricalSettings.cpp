#include "UVUtils/projection/StoredSettings.h"
#include "UVUtils/projection/kyUVCylindricalProjection.h"
#include "UVUtils/projection/kyUVProjectionSettingsReader.h"
#include "UVUtils/projection/kyUVProjectionSettingsWriter.h"

namespace
{

constexpr SettingsKeys::Vec3Keys Center{"TMCylTX", "TMCylTY", "TMCylTZ"};
constexpr SettingsKeys::Vec3Keys Scale{"TMCylSX", "TMCylSY", "TMCylSZ"};
constexpr SettingsKeys::Vec3Keys Rotation{"TMCylRX", "TMCylRY", "TMCylRZ"};
constexpr const char* UAngle = "TMCylUA";
constexpr const char* Rotation2D = "TMCylRZ2D";

} // namespace

bool kyUVCylindricalProjection::hasSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet)
{
    return areStored(node, uvSet, {Center.x, Rotation.x, Scale.x});
}

kyUVCylindricalProjectionSettings kyUVCylindricalProjection::readSettings(const osg::NodePtr& node,
                                                                          kyUVTypes::UVSet uvSet)
{
    const kyUVProjectionSettingsReader reader(node, uvSet);
    kyUVCylindricalProjectionSettings settings;
    settings.setKeepAspectRatio(readKeepAspectRatio(reader, true));
    settings.setAspectRatio(readAspectRatio(reader, 1.0));
    settings.setProjectionCenter(readVector(reader, Center, osg::Vec3f(0.0F, 0.0F, 0.0F)));
    settings.setProjectionRotation(readVector(reader, Rotation, osg::Vec3f(0.0F, 0.0F, 0.0F)));
    settings.setProjectionScale(readVector(reader, Scale, osg::Vec3f(1.0F, 1.0F, 1.0F)));
    settings.setProjectionUAngle(static_cast<double>(reader.readFloat(UAngle, 180.0F)));
    settings.setCylindricRotation2D(static_cast<double>(reader.readFloat(Rotation2D, 0.0F)));
    return settings;
}

void kyUVCylindricalProjection::writeSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                              const kyUVCylindricalProjectionSettings& settings)
{
    kyUVProjectionSettingsWriter writer(node, uvSet);
    writeAspectRatio(writer, settings);
    writer.writeInt(SettingsKeys::Method, kyUVTypes::Cylindrical);
    writeVector(writer, Center, settings.getProjectionCenter());
    writeVector(writer, Scale, settings.getProjectionScale());
    writeVector(writer, Rotation, settings.getProjectionRotation());
    writer.writeFloat(UAngle, static_cast<float>(settings.getProjectionUAngle()));
    writer.writeFloat(Rotation2D, static_cast<float>(settings.getCylindricRotation2D()));
}
