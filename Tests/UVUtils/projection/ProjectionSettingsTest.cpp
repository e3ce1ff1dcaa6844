#include "OpenSG/RefPtr.h"
#include "UVUtils/projection/kyUVCylindricalProjection.h"
#include "UVUtils/projection/kyUVPlanarProjection.h"
#include "UVUtils/projection/kyUVProjectionSettingsReader.h"
#include "UVUtils/projection/kyUVProjectionSettingsWriter.h"
#include "UVUtils/projection/kyUVTriplanarProjection.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <set>
#include <sstream>

namespace
{

using kyUVTypes::UVSet;
using kyUVTypes::UVSet0;
using kyUVTypes::UVSet1;
using osg::Vec2f;
using osg::Vec3f;
using Texts = std::vector<std::pair<std::string, std::string>>;
using Planar = kyUVPlanarProjection;
using Cylindrical = kyUVCylindricalProjection;

/// Opens what is protected.
struct Triplanar : kyUVTriplanarProjection
{
    using kyUVTriplanarProjection::readLegacyScaleBehavior;
    using kyUVTriplanarProjection::readMethod;
    using kyUVTriplanarProjection::writeSettings;
};

/// A node with texts on it.
struct StoredNode
{
    explicit StoredNode(const Texts& texts)
    {
        node->addAttachment(pair);
        for (const auto& [key, text] : texts)
            pair->set(key, text);
    }

    osg::RefPtr<osg::Node> node{osg::Node::create()};
    osg::RefPtr<osg::ValuePair> pair{osg::ValuePair::create()};
};

template <class Value>
void write(std::ostream& out, const Value& value)
{
    if constexpr (requires { Value::Size; })
        for (unsigned i = 0; i < Value::Size; ++i)
            write(out, value[i]);
    else
        out << value << ' ';
}
/// The values one after the other, numbers to six digits.
template <class... Values>
std::string textsOf(const Values&... values)
{
    std::ostringstream out;
    out << std::boolalpha;
    (write(out, values), ...);
    return out.str();
}

// Settings as they have to stand under the keys.

std::string textsOf(const kyUVPlanarProjectionSettings& s)
{
    const Vec3f scale = s.getProjectionScale();
    return textsOf(1, s.getKeepAspectRatio(), s.getAspectRatio(), s.getTextureWidth(),
                   s.getTextureHeight(), s.getTextureScale(), s.getTextureOffset(),
                   s.getProjectionCenter(), s.getProjectionRotation(), scale.x(), scale.y());
}
std::string textsOf(const kyUVCylindricalProjectionSettings& s)
{
    return textsOf(s.getKeepAspectRatio(), s.getAspectRatio(), 3, s.getProjectionCenter(),
                   s.getProjectionScale(), s.getProjectionRotation(), s.getProjectionUAngle(),
                   s.getCylindricRotation2D());
}
std::string textsOf(const kyUVTriplanarProjectionSettings& s)
{
    return textsOf(2, s.getMode(), s.getCenter(), s.getRotation3D(), s.getWidth(), s.getHeight(),
                   s.getRepeatU(), s.getRepeatV(), s.getOffsetU(), s.getOffsetV(),
                   s.getRotation2D());
}

// The keys in the order in which they are written; one that ends in XYZ stands for three.
const char* const planarKeys =
    "TMProjectionMethod TMKeepAspectRatio TMAspectRatio TMSizeX TMSizeY TMScaleX TMScaleY "
    "TMOffsetX TMOffsetY TMProjectionCenterXYZ TMProjectionRotatePhi TMProjectionRotateTheta "
    "TMProjectionRotateRho TMProjectionScaleX TMProjectionScaleY";
const char* const cylindricalKeys = "TMKeepAspectRatio TMAspectRatio TMProjectionMethod TMCylTXYZ "
                                    "TMCylSXYZ TMCylRXYZ TMCylUA TMCylRZ2D";
const char* const triplanarKeys =
    "TMProjectionMethod TMTriplanarMode TMTriplanarCenterXYZ TMTriplanarRotate3DXYZ "
    "TMTriplanarSizeX TMTriplanarSizeY TMTriplanarRepeatUXYZ TMTriplanarRepeatVXYZ "
    "TMTriplanarOffsetUXYZ TMTriplanarOffsetVXYZ TMTriplanarRotate2DXYZ";

std::vector<std::string> keysIn(const char* names)
{
    std::vector<std::string> keys;
    std::istringstream words(names);
    for (std::string word; words >> word;)
        if (word.ends_with("XYZ"))
            for (const char axis : {'X', 'Y', 'Z'})
                keys.push_back(word.substr(0, word.size() - 3) + axis);
        else
            keys.push_back(word);
    return keys;
}

/// Numbers are of up to six digits, from 0.001 up, so that no clamp has a hold on them.
std::string anyTextFor(const std::string& key, const std::string& method)
{
    if (key == "TMProjectionMethod")
        return method;
    if (key == "TMKeepAspectRatio")
        return *rc::gen::element("true", "false");
    if (key == "TMTriplanarMode")
        return *rc::gen::element("0", "1");
    std::string text =
        textsOf(*rc::gen::inRange(1, 1000000) * std::pow(10.0, *rc::gen::inRange(-3, 8)));
    return text.substr(0, text.size() - 1);
}

template <class Projection>
void checkEveryKey(const char* keys, const std::string& method)
{
    const auto slot = static_cast<UVSet>(*rc::gen::inRange(0, 8));
    Texts texts;
    std::string values;
    for (const std::string& key : keysIn(keys)) {
        texts.emplace_back((slot == 1 ? "LM_" : "") + key, anyTextFor(key, method));
        values += texts.back().second + ' ';
    }
    const auto settings = Projection::readSettings(StoredNode(texts).node, slot);
    RC_ASSERT(textsOf(settings) == values);

    const StoredNode stored({});
    Texts written;
    stored.pair->registerChangedCallback(std::make_shared<osg::FieldContainer::ChangedCallback>(
        [&](unsigned, osg::FieldMask, unsigned) {
            for (const std::pair<std::string, std::string> entry : stored.pair->entries())
                if (std::find(written.begin(), written.end(), entry) == written.end())
                    written.push_back(entry);
        }));
    Projection::writeSettings(stored.node, slot, settings);
    RC_ASSERT(written == texts);
    for (int other = 0; other < 8; ++other) {
        const bool isShared = (slot == 1) == (other == 1);
        const auto read = Projection::readSettings(stored.node, UVSet(other));
        RC_ASSERT((textsOf(read) == values) == isShared);
        RC_ASSERT(Projection::hasSettings(stored.node, UVSet(other)) == isShared);
    }
}

/// By which keys a node has settings: it has none where any of them is missing.
template <class Projection>
std::set<std::string> vitalKeys(const char* keys)
{
    std::set<std::string> vital;
    for (const std::string& missing : keysIn(keys)) {
        Texts others;
        for (const std::string& key : keysIn(keys))
            if (key != missing)
                others.emplace_back(key, "");
        if (!Projection::hasSettings(StoredNode(others).node, UVSet0))
            vital.insert(missing);
    }
    return vital;
}

TEST(ProjectionSettings, ANodeHasThemByThreeKeys)
{
    using Keys = std::set<std::string>;
    EXPECT_EQ(vitalKeys<Planar>(planarKeys),
              (Keys{"TMProjectionRotatePhi", "TMProjectionCenterX", "TMProjectionScaleX"}));
    EXPECT_EQ(vitalKeys<Cylindrical>(cylindricalKeys), (Keys{"TMCylTX", "TMCylRX", "TMCylSX"}));
    EXPECT_EQ(vitalKeys<Triplanar>(triplanarKeys),
              (Keys{"TMTriplanarOffsetUX", "TMTriplanarOffsetUY", "TMTriplanarOffsetUZ"}));
}

RC_GTEST_PROP(ProjectionSettings, EveryKeyComesBackInTheOrderOfItsTable, ())
{
    checkEveryKey<Planar>(planarKeys, "1");
    checkEveryKey<Triplanar>(triplanarKeys, "2");
    checkEveryKey<Cylindrical>(cylindricalKeys, "3");
}

RC_GTEST_PROP(ProjectionSettings, DamagedTextsHarmNothingButTheAspectRatio, ())
{
    const StoredNode stored({{"TMProjectionScaleZ", *rc::gen::arbitrary<std::string>()}});
    for (const char* keys : {planarKeys, cylindricalKeys, triplanarKeys})
        for (const std::string& key : keysIn(keys))
            stored.pair->set(key, *rc::gen::arbitrary<std::string>());
    stored.pair->set("TMAspectRatio", "1e308 and more");
    Planar::readSettings(stored.node, UVSet0);
    Cylindrical::readSettings(stored.node, UVSet0);
    Triplanar::readSettings(stored.node, UVSet0);
    stored.pair->set("TMAspectRatio", "1e309");
    RC_ASSERT_THROWS_AS(Planar::readSettings(stored.node, UVSet0), std::out_of_range);
    RC_ASSERT_THROWS_AS(Cylindrical::readSettings(stored.node, UVSet0), std::out_of_range);
}

TEST(ProjectionSettings, WhatIsMissingReadsAsTheDefaultsOfItsTable)
{
    const StoredNode stored({});
    for (const osg::NodePtr& node : {stored.node.get(), osg::NodePtr()}) {
        EXPECT_EQ(Triplanar::readMethod(node, UVSet0), kyUVTypes::NoProjection);
        EXPECT_FALSE(Planar::hasSettings(node, UVSet0));
        EXPECT_EQ(textsOf(Planar::readSettings(node, UVSet0)),
                  textsOf(kyUVPlanarProjectionSettings()));
        EXPECT_EQ(textsOf(Cylindrical::readSettings(node, UVSet0)),
                  textsOf(kyUVCylindricalProjectionSettings()));
    }
    EXPECT_EQ(textsOf(Triplanar::readSettings(osg::NullFC, UVSet0)),
              textsOf(kyUVTriplanarProjectionSettings()));
    EXPECT_EQ(textsOf(Triplanar::readSettings(stored.node, UVSet0)),
              "2 0 0 0 0 0 0 0 0 0 1e-06 1e-06 1e-06 1e-06 1e-06 1e-06 0 0 0 0 0 0 0 0 0 ");
    Planar::writeSettings(osg::NullFC, UVSet0, {});
}

TEST(ProjectionSettings, FactorsKeepTheirSignsAndADistanceFromZero)
{
    kyUVPlanarProjectionSettings planar;
    planar.setProjectionScale(Vec3f(-0.0F, 2.0F, -0.0000001F));
    EXPECT_EQ(planar.getProjectionScale(), Vec3f(-1e-6F, 2.0F, -1e-6F));
    kyUVCylindricalProjectionSettings cylindrical;
    cylindrical.setProjectionUAngle(-0.0);
    EXPECT_EQ(cylindrical.getProjectionUAngle(), -9.999999974752427e-7);
    for (const auto& [text, scale] :
         std::vector<std::pair<const char*, float>>{{"0", 0.0001F},
                                                    {"-0.00001", -0.0001F},
                                                    {"-0", -0.0001F},
                                                    {"nan", 1.0F},
                                                    {"-inf", 1.0F},
                                                    {"1e300", 1.0F},
                                                    {"word", 0.0001F},
                                                    {"-2.5", -2.5F}})
    {
        const StoredNode stored(Texts{{"TMScaleX", text}});
        EXPECT_EQ(Planar::readSettings(stored.node, UVSet(3)).getTextureScale(), Vec2f(scale, 1.0F))
            << text;
    }
}

TEST(ProjectionSettings, ThePlaneReadsMoreTextsAsTrueThanTheCylinder)
{
    for (const std::string text : {"TRUE", "1", "true", "False", "0", ""}) {
        const StoredNode stored(Texts{{"TMKeepAspectRatio", text}});
        EXPECT_EQ(Planar::readSettings(stored.node, UVSet0).getKeepAspectRatio(),
                  text == "TRUE" || text == "1" || text == "true");
        EXPECT_EQ(Cylindrical::readSettings(stored.node, UVSet0).getKeepAspectRatio(),
                  text == "true");
    }
}

TEST(ProjectionSettings, OldKeysAreReadAndTheOldScaleBehaviourGoes)
{
    const StoredNode stored({{"LM_TMScaleBehaviour", "1"}, {"TMProjectionScaleZ", "7"}});
    EXPECT_EQ(Planar::readSettings(stored.node, UVSet0).getProjectionScale().z(), 7.0F);
    for (const auto& [text, behaviour] : std::vector<std::pair<const char*, int>>{
             {"1", 1}, {"2 words", 2}, {"3", -1}, {"word", -1}, {"99999999999", -1}})
    {
        stored.pair->set("TMScaleBehaviour", text);
        EXPECT_EQ(Triplanar::readLegacyScaleBehavior(stored.pair), behaviour) << text;
    }
    const kyUVProjectionSettingsWriter writer(stored.node, UVSet1);
    EXPECT_EQ(stored.pair->entries().size(), 2U);
    EXPECT_EQ(Triplanar::readLegacyScaleBehavior(stored.pair), -1);
}

TEST(ProjectionSettings, TheFirstWriterHangsThePairOnTheNodeAndSaysSo)
{
    const osg::RefPtr<osg::Node> node(osg::Node::create());
    std::vector<osg::FieldMask> told;
    node->registerChangedCallback(std::make_shared<osg::FieldContainer::ChangedCallback>(
        [&](unsigned, osg::FieldMask mask, unsigned) { told.push_back(mask); }));
    Planar::writeSettings(node, UVSet(2), {});
    Planar::writeSettings(node, UVSet1, {});
    EXPECT_EQ(told, std::vector{osg::Node::AttachmentsFieldMask});
    EXPECT_EQ(Triplanar::readMethod(node, UVSet1), kyUVTypes::Planar);
}

} // namespace
