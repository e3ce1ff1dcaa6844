#include "OpenSG/RefPtr.h"
#include "UVUtils/projection/kyUVCylindricalProjection.h"
#include "UVUtils/projection/kyUVPlanarProjection.h"
#include "UVUtils/projection/kyUVProjectionSettingsReader.h"
#include "UVUtils/projection/kyUVProjectionSettingsWriter.h"
#include "UVUtils/projection/kyUVTriplanarProjection.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <functional>
#include <sstream>

namespace
{

using kyUVTypes::UVSet;
using osg::Vec2f;
using osg::Vec3f;
using Strings = std::vector<std::string>;
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

void append(Strings& texts, double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    texts.emplace_back(text);
}
void append(Strings& texts, bool value)
{
    texts.emplace_back(value ? "true" : "false");
}
template <class T, unsigned N>
void append(Strings& texts, const osg::Vector<T, N>& value)
{
    for (unsigned i = 0; i < N; ++i)
        append(texts, double(value[i]));
}
template <class... Values>
Strings textsOf(const Values&... values)
{
    Strings texts;
    (append(texts, values), ...);
    return texts;
}

// Settings as they have to stand under the keys.

Strings textsOf(const kyUVPlanarProjectionSettings& s)
{
    const Vec3f scale = s.getProjectionScale();
    return textsOf(1.0, s.getKeepAspectRatio(), s.getAspectRatio(), s.getTextureWidth(),
                   s.getTextureHeight(), s.getTextureScale(), s.getTextureOffset(),
                   s.getProjectionCenter(), s.getProjectionRotation(), scale.x(), scale.y());
}
Strings textsOf(const kyUVCylindricalProjectionSettings& s)
{
    return textsOf(s.getKeepAspectRatio(), s.getAspectRatio(), 3.0, s.getProjectionCenter(),
                   s.getProjectionScale(), s.getProjectionRotation(), s.getProjectionUAngle(),
                   s.getCylindricRotation2D());
}
Strings textsOf(const kyUVTriplanarProjectionSettings& s)
{
    return textsOf(2.0, double(s.getMode()), s.getCenter(), s.getRotation3D(), s.getWidth(),
                   s.getHeight(), s.getRepeatU(), s.getRepeatV(), s.getOffsetU(), s.getOffsetV(),
                   s.getRotation2D());
}

/// The keys of a projection in the order in which it writes them, and its operations.
struct Subject
{
    const char* keys; ///< one that ends in XYZ stands for three
    std::function<bool(osg::NodePtr, UVSet)> hasSettings;
    std::function<Strings(osg::NodePtr, UVSet)> read;
    std::function<void(osg::NodePtr, osg::NodePtr, UVSet)> copy;
};

template <class Projection>
Subject subject(const char* keys)
{
    const auto read = &Projection::readSettings;
    return {keys, &Projection::hasSettings,
            [=](const osg::NodePtr& node, UVSet slot) { return textsOf(read(node, slot)); },
            [=](const osg::NodePtr& from, const osg::NodePtr& to, UVSet slot) {
                Projection::writeSettings(to, slot, read(from, slot));
            }};
}

const Subject subjects[] = {
    subject<Planar>("TMProjectionMethod TMKeepAspectRatio TMAspectRatio TMSizeX TMSizeY TMScaleX "
                    "TMScaleY TMOffsetX TMOffsetY TMProjectionCenterXYZ TMProjectionRotatePhi "
                    "TMProjectionRotateTheta TMProjectionRotateRho TMProjectionScaleX "
                    "TMProjectionScaleY"),
    subject<Cylindrical>("TMKeepAspectRatio TMAspectRatio TMProjectionMethod TMCylTXYZ TMCylSXYZ "
                         "TMCylRXYZ TMCylUA TMCylRZ2D"),
    subject<Triplanar>("TMProjectionMethod TMTriplanarMode TMTriplanarCenterXYZ "
                       "TMTriplanarRotate3DXYZ TMTriplanarSizeX TMTriplanarSizeY "
                       "TMTriplanarRepeatUXYZ TMTriplanarRepeatVXYZ TMTriplanarOffsetUXYZ "
                       "TMTriplanarOffsetVXYZ TMTriplanarRotate2DXYZ")};

Strings keysOf(const Subject& subject)
{
    Strings keys;
    std::istringstream words(subject.keys);
    for (std::string word; words >> word;)
        if (word.ends_with("XYZ"))
            for (const char axis : {'X', 'Y', 'Z'})
                keys.push_back(word.substr(0, word.size() - 3) + axis);
        else
            keys.push_back(word);
    return keys;
}

/// A number has up to six digits and a magnitude from 0.001 up, so that no clamp has a hold on it.
std::string anyTextLike(const std::string& key, const std::string& readDefault)
{
    if (key == "TMProjectionMethod")
        return readDefault;
    if (key == "TMKeepAspectRatio")
        return *rc::gen::element("true", "false");
    const double power = std::pow(10.0, *rc::gen::inRange(-3, 8));
    const int digits = *rc::gen::inRange(1, 1000000);
    return textsOf(key == "TMTriplanarMode" ? digits % 2 : digits * power).front();
}

RC_GTEST_PROP(ProjectionSettings, EveryKeyComesBackInTheOrderOfItsTable, ())
{
    for (const Subject& subject : subjects) {
        const auto slot = static_cast<UVSet>(*rc::gen::inRange(0, 8));
        const Strings defaults = subject.read(StoredNode({}).node, slot);
        Texts texts;
        Strings values;
        for (const std::string& key : keysOf(subject)) {
            values.push_back(anyTextLike(key, defaults[values.size()]));
            texts.emplace_back((slot == 1 ? "LM_" : "") + key, values.back());
        }
        const StoredNode from(texts);
        RC_ASSERT(subject.read(from.node, slot) == values);

        const StoredNode to({});
        Texts written;
        to.pair->registerChangedCallback(std::make_shared<osg::FieldContainer::ChangedCallback>(
            [&](unsigned, osg::FieldMask, unsigned) {
                for (const auto& [key, text] : to.pair->entries())
                    if (std::find(written.begin(), written.end(), std::pair(key, text)) ==
                        written.end())
                        written.emplace_back(key, text);
            }));
        subject.copy(from.node, to.node, slot);
        RC_ASSERT(written == texts);
        for (int other = 0; other < 8; ++other) {
            const bool isShared = (slot == 1) == (other == 1);
            RC_ASSERT(subject.hasSettings(to.node, UVSet(other)) == isShared);
            RC_ASSERT((subject.read(to.node, UVSet(other)) == values) == isShared);
        }
    }
}

RC_GTEST_PROP(ProjectionSettings, DamagedTextsHarmNothingButTheAspectRatio, ())
{
    for (const Subject& subject : subjects) {
        Texts texts{{"TMProjectionScaleZ", *rc::gen::arbitrary<std::string>()}};
        for (const std::string& key : keysOf(subject))
            if (key != "TMAspectRatio")
                texts.emplace_back(key, *rc::gen::arbitrary<std::string>());
        RC_ASSERT(subject.read(StoredNode(texts).node, UVSet(0)).size() == keysOf(subject).size());
        texts.emplace_back("TMAspectRatio", "1e999");
        if (&subject != &subjects[2])
            RC_ASSERT_THROWS_AS(subject.read(StoredNode(texts).node, UVSet(0)), std::out_of_range);
    }
}

TEST(ProjectionSettings, WhatIsMissingReadsAsTheDefaultsOfItsTable)
{
    const StoredNode stored({});
    for (const osg::NodePtr& node : {stored.node.get(), osg::NodePtr()}) {
        EXPECT_EQ(Triplanar::readMethod(node, UVSet(0)), kyUVTypes::NoProjection);
        EXPECT_EQ(subjects[0].read(node, UVSet(0)), textsOf(kyUVPlanarProjectionSettings()));
        EXPECT_EQ(subjects[1].read(node, UVSet(0)), textsOf(kyUVCylindricalProjectionSettings()));
        kyUVTriplanarProjectionSettings triplanar;
        if (node) {
            triplanar.setWidth(0.0F);
            triplanar.setHeight(0.0F);
            triplanar.setRepeatU(Vec3f());
            triplanar.setRepeatV(Vec3f());
        }
        EXPECT_EQ(subjects[2].read(node, UVSet(0)), textsOf(triplanar));
        for (const Subject& subject : subjects)
            EXPECT_FALSE(subject.hasSettings(node, UVSet(0)));
    }
    Planar::writeSettings(osg::NullFC, UVSet(0), {});
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
        EXPECT_EQ(Planar::readSettings(stored.node, UVSet(0)).getKeepAspectRatio(),
                  text == "TRUE" || text == "1" || text == "true");
        EXPECT_EQ(Cylindrical::readSettings(stored.node, UVSet(0)).getKeepAspectRatio(),
                  text == "true");
    }
}

TEST(ProjectionSettings, OldKeysAreReadAndTheOldScaleBehaviourGoes)
{
    const StoredNode stored({{"LM_TMScaleBehaviour", "1"}, {"TMProjectionScaleZ", "7"}});
    EXPECT_EQ(Planar::readSettings(stored.node, UVSet(0)).getProjectionScale().z(), 7.0F);
    for (const auto& [text, behaviour] : std::vector<std::pair<const char*, int>>{
             {"1", 1}, {"2 words", 2}, {"3", -1}, {"word", -1}, {"99999999999", -1}})
    {
        stored.pair->set("TMScaleBehaviour", text);
        EXPECT_EQ(Triplanar::readLegacyScaleBehavior(stored.pair), behaviour) << text;
    }
    const kyUVProjectionSettingsWriter writer(stored.node, UVSet(1));
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
    Planar::writeSettings(node, UVSet(1), {});
    EXPECT_EQ(told, std::vector{osg::Node::AttachmentsFieldMask});
    EXPECT_EQ(Triplanar::readMethod(node, UVSet(1)), kyUVTypes::Planar);
}

} // namespace
