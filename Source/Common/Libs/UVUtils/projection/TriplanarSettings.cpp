#include "UVUtils/projection/StoredSettings.h"
#include "UVUtils/projection/kyUVProjectionSettingsReader.h"
#include "UVUtils/projection/kyUVProjectionSettingsWriter.h"
#include "UVUtils/projection/kyUVTriplanarProjection.h"

namespace
{

constexpr const char* Mode = "TMTriplanarMode";
constexpr SettingsKeys::Vec3Keys Center{"TMTriplanarCenterX", "TMTriplanarCenterY",
                                        "TMTriplanarCenterZ"};
constexpr SettingsKeys::Vec3Keys Rotation3D{"TMTriplanarRotate3DX", "TMTriplanarRotate3DY",
                                            "TMTriplanarRotate3DZ"};
constexpr SettingsKeys::Vec2Keys Size{"TMTriplanarSizeX", "TMTriplanarSizeY"};
constexpr SettingsKeys::Vec3Keys RepeatU{"TMTriplanarRepeatUX", "TMTriplanarRepeatUY",
                                         "TMTriplanarRepeatUZ"};
constexpr SettingsKeys::Vec3Keys RepeatV{"TMTriplanarRepeatVX", "TMTriplanarRepeatVY",
                                         "TMTriplanarRepeatVZ"};
constexpr SettingsKeys::Vec3Keys OffsetU{"TMTriplanarOffsetUX", "TMTriplanarOffsetUY",
                                         "TMTriplanarOffsetUZ"};
constexpr SettingsKeys::Vec3Keys OffsetV{"TMTriplanarOffsetVX", "TMTriplanarOffsetVY",
                                         "TMTriplanarOffsetVZ"};
constexpr SettingsKeys::Vec3Keys Rotation2D{"TMTriplanarRotate2DX", "TMTriplanarRotate2DY",
                                            "TMTriplanarRotate2DZ"};

} // namespace

bool kyUVTriplanarProjection::hasSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet)
{
    return areStored(node, uvSet, {OffsetU.x, OffsetU.y, OffsetU.z});
}

kyUVTriplanarProjectionSettings kyUVTriplanarProjection::readSettings(const osg::NodePtr& node,
                                                                      kyUVTypes::UVSet uvSet)
{
    using Settings = kyUVTriplanarProjectionSettings;

    Settings settings;
    if (!node)
        return settings;
    const kyUVProjectionSettingsReader reader(node, uvSet);
    const auto readOrZero = [&](const SettingsKeys::Vec3Keys& keys) {
        return readVector(reader, keys, osg::Vec3f(0.0F, 0.0F, 0.0F));
    };
    settings.setMode(static_cast<Settings::Mode>(reader.readInt(Mode, Settings::DominantAxis)));
    settings.setCenter(readOrZero(Center));
    settings.setRotation3D(readOrZero(Rotation3D));
    settings.setWidth(reader.readFloat(Size.x, 0.0F));
    settings.setHeight(reader.readFloat(Size.y, 0.0F));
    settings.setRepeatU(readOrZero(RepeatU));
    settings.setRepeatV(readOrZero(RepeatV));
    settings.setOffsetU(readOrZero(OffsetU));
    settings.setOffsetV(readOrZero(OffsetV));
    settings.setRotation2D(readOrZero(Rotation2D));
    return settings;
}

void kyUVTriplanarProjection::writeSettings(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                            const kyUVTriplanarProjectionSettings& settings)
{
    kyUVProjectionSettingsWriter writer(node, uvSet);
    writer.writeInt(SettingsKeys::Method, kyUVTypes::Triplanar);
    writer.writeInt(Mode, static_cast<float>(settings.getMode()));
    writeVector(writer, Center, settings.getCenter());
    writeVector(writer, Rotation3D, settings.getRotation3D());
    writeVector(writer, Size, osg::Vec2f(settings.getWidth(), settings.getHeight()));
    writeVector(writer, RepeatU, settings.getRepeatU());
    writeVector(writer, RepeatV, settings.getRepeatV());
    writeVector(writer, OffsetU, settings.getOffsetU());
    writeVector(writer, OffsetV, settings.getOffsetV());
    writeVector(writer, Rotation2D, settings.getRotation2D());
}
