#include "projection/Projection.h"

#include "cli/ExitStatus.h"
#include "cli/ProjectArguments.h"
#include "document/FileError.h"
#include "projection/ProjectionSupport.h"
#include "projection/SettingsCheck.h"
#include "projection/SettingsFit.h"

#include "UVUtils/projection/kyUVCylindricalProjection.h"
#include "UVUtils/projection/kyUVPlanarProjection.h"
#include "UVUtils/projection/kyUVTriplanarProjection.h"

#include <algorithm>
#include <cmath>
#include <exception>

namespace uvtool
{
namespace
{

/// Settings are stored without a projection as well, so that the texts can be looked at.
struct StoringTriplanarProjection : kyUVTriplanarProjection
{
    using kyUVTriplanarProjection::writeSettings;
};

kyUVTypes::UVSet setOf(const Options& options)
{
    return static_cast<kyUVTypes::UVSet>(options.common.slot);
}

/// The texts of some settings.
template <class Method, class Settings>
SettingsTexts storedTexts(const Settings& settings, kyUVTypes::UVSet slot)
{
    const osg::RefPtr<osg::Node> node(osg::Node::create());
    Method::writeSettings(node, slot, settings);
    return textsOf(node);
}

/// The settings that texts stand for. They have been found readable.
template <class Method>
auto settingsOf(const SettingsTexts& texts, kyUVTypes::UVSet slot)
{
    const osg::RefPtr<osg::Node> node(osg::Node::create());
    putOnNode(texts, node);
    return Method::readSettings(node, slot);
}

template <class Method>
auto readSettingsOf(const ProjectOptions& options, const SettingsTexts& texts,
                    kyUVTypes::UVSet slot)
{
    using Settings = decltype(Method::readSettings(osg::NodePtr(), slot));
    const osg::RefPtr<osg::Node> node(osg::Node::create());
    putOnNode(texts, node);
    if (!Method::hasSettings(node, slot))
        throw FileError(FileError::Read, options.settingsFile,
                        std::string("holds no settings of a ") + nameOf(options.kind) +
                            " projection for slot " + std::to_string(slot));
    throwUnlessReadable(texts, storedTexts<Method>(Settings(), slot), options.settingsFile);
    return settingsOf<Method>(texts, slot);
}

template <class Method>
auto fittingSettings(const std::vector<osg::NodePtr>& nodes, const ProjectOptions& options)
{
    auto settings = Method::getDefaultSettings(nodes, options.image.width, options.image.height);
    if (turn(options, settings))
        fitTurned(nodes, options.image, settings);
    else if (isEdgeOn(nodes, settings))
        turnToLargestSide(nodes, options, settings);
    return settings;
}

template <class Settings>
void takeGiven(const ProjectOptions& options, Settings& settings)
{
    turn(options, settings);
    for (const SettingOption<Settings>& option : optionsOf(settings)) {
        const auto given = options.given.find(option.name);
        if (given != options.given.end())
            option.set(settings, given->second);
    }
}

void takeGiven(const ProjectOptions& options, kyUVTriplanarProjectionSettings& settings)
{
    takeGiven<kyUVTriplanarProjectionSettings>(options, settings);
    if (options.mode)
        settings.setMode(*options.mode);
}

std::string modeOf(const kyUVBaseProjectionSettings&)
{
    return {};
}
std::string modeOf(const kyUVTriplanarProjectionSettings& settings)
{
    return settings.getMode() == kyUVTriplanarProjectionSettings::PropagatedAxis ? "propagated"
                                                                                 : "dominant";
}

/// The boxes of triplanar projections are looked at from near, see scaleForTriplanar.
kyUVTriplanarProjectionSettings scaled(const kyUVTriplanarProjectionSettings& settings,
                                       float factor)
{
    kyUVTriplanarProjectionSettings larger = settings;
    larger.setCenter(settings.getCenter() * factor);
    larger.setWidth(settings.getWidth() * factor);
    larger.setHeight(settings.getHeight() * factor);
    larger.setOffsetU(settings.getOffsetU() * factor);
    larger.setOffsetV(settings.getOffsetV() * factor);
    return larger;
}

/// The library has no normal for triangles of less than 1e-6 in twice their area, which a scanned
/// figure in metres is full of. A power of two changes no digit of a UV.
float scaleForTriplanar(const std::vector<osg::NodePtr>& nodes)
{
    constexpr int wantedExponent = 12; // for coordinates of some thousands
    constexpr int mostExponent = 60;
    osg::Vec3f center;
    osg::Pnt3f min;
    osg::Pnt3f max;
    kyUVTextureProjection::calculateBoundingBox(nodes, center, min, max);
    float size = 0;
    for (unsigned i = 0; i < 3; ++i)
        size = std::max({size, std::abs(min[i]), std::abs(max[i])});
    const int exponent = size > 0 ? wantedExponent - std::ilogb(size) : 0;
    return std::ldexp(1.0F, std::clamp(exponent, 0, mostExponent));
}

template <class Method, class Settings>
void applyTo(const ProjectionScene& scene, kyUVTypes::UVSet slot, const Settings& settings)
{
    Method::apply(scene.nodes, slot, settings);
}

/// In a scene that is scaled up, whose settings then give way to those of the scene as it is.
template <>
void applyTo<StoringTriplanarProjection>(const ProjectionScene& scene, kyUVTypes::UVSet slot,
                                         const kyUVTriplanarProjectionSettings& settings)
{
    const float factor = scaleForTriplanar(scene.nodes);
    scene.setScale(factor);
    StoringTriplanarProjection::apply(scene.nodes, slot, scaled(settings, factor));
    scene.setScale(1);
    for (const osg::NodePtr& node : scene.nodes)
        StoringTriplanarProjection::writeSettings(node, slot, settings);
}

template <class Method>
Projection projectWith(const ProjectionScene& scene, const Options& options)
{
    const ProjectOptions& project = options.project;
    const kyUVTypes::UVSet slot = setOf(options);
    SettingsTexts texts;
    if (!project.settingsFile.empty())
        texts = readSettingsTexts(project.settingsFile);
    auto settings = project.settingsFile.empty() ? fittingSettings<Method>(scene.nodes, project)
                                                 : readSettingsOf<Method>(project, texts, slot);
    takeGiven(project, settings);
    if (!project.savedFile.empty())
        settings = settingsOf<Method>(storedTexts<Method>(settings, slot), slot);

    Projection projection;
    projection.report = {nameOf(project.kind), project.isZUp, namedSettings(settings),
                         modeOf(settings)};
    const std::string why = whyUnusable(scene.nodes, settings, project);
    if (!why.empty())
        throw CommandError(Failed, options.common.input.string() + ": " + why);
    for (const osg::NodePtr& node : scene.nodes)
        putOnNode(texts, node);
    applyTo<Method>(scene, slot, settings);
    projection.texts = textsOf(scene.nodes.front());
    return projection;
}

} // namespace

Projection projectScene(const ProjectionScene& scene, const Options& options)
{
    const ProjectionSupport support;
    const UpAxisScope up(options.project.isZUp);
    switch (options.project.kind) {
    case ProjectOptions::Planar:
        return projectWith<kyUVPlanarProjection>(scene, options);
    case ProjectOptions::Cylindrical:
        return projectWith<kyUVCylindricalProjection>(scene, options);
    case ProjectOptions::Triplanar:
        return projectWith<StoringTriplanarProjection>(scene, options);
    }
    return {};
}

} // namespace uvtool
