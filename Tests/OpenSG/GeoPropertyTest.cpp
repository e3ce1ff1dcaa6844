#include "OpenSG/GeoProperty.h"
#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/RefPtr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

using namespace osg;

namespace
{

TEST(GeoProperty, BeyondTheEndReadsZeroAndWritesNothing)
{
    const RefPtr<GeoIndicesUI32> indices(GeoIndicesUI32::create());
    indices->addValue(8);
    indices->setValue(9, 1);
    EXPECT_EQ(indices->getValue(1), 0U);
    EXPECT_EQ(indices->getSize(), 1U);
}

TEST(GeoProperty, AnyKindOfTexCoordsReadsAsTwoFloats)
{
    const RefPtr<GeoTexCoords1f> one(GeoTexCoords1f::create());
    const RefPtr<GeoTexCoords4f> four(GeoTexCoords4f::create());
    for (const GeoTexCoordsPtr& texCoords : {GeoTexCoordsPtr(one), GeoTexCoordsPtr(four)})
        texCoords->addValue(Vec2f(3, 4));
    EXPECT_EQ(GeoTexCoordsPtr(one)->getValue(0), Vec2f(3, 0));
    EXPECT_EQ(GeoTexCoordsPtr(four)->getValue(0), Vec2f(3, 4));

    four->values()[0] = Vec4f(1, 2, 3, 4);
    four->setValue(Vec2f(8, 9), 0);
    EXPECT_EQ(four->values()[0], Vec4f(8, 9, 3, 4)) << "what has no place in the value stays";
}

TEST(GeoProperty, ColorsWithoutOpacityReadAsOpaque)
{
    const RefPtr<GeoColors3f> colors(GeoColors3f::create());
    colors->addValue(Color4f(0.25F, 0.5F, 0.75F, 0.1F));
    EXPECT_EQ(colors->getValue(0), Color4f(0.25F, 0.5F, 0.75F, 1));
    EXPECT_EQ(colors->values()[0], Color3f(0.25F, 0.5F, 0.75F));
}

TEST(GeoProperty, NumbersTooLargeForTheKindSaturate)
{
    const RefPtr<GeoIndicesUI16> indices(GeoIndicesUI16::create());
    indices->setValues(std::vector{70000U, 65535U, 3U});
    EXPECT_EQ(indices->getValues(), (std::vector{65535U, 65535U, 3U}));
}

TEST(GeoProperty, GatherTakesRepeatsAndZerosForSourcesBeyondTheEnd)
{
    const RefPtr<GeoTexCoords3f> texCoords(GeoTexCoords3f::create());
    texCoords->takeValues({Vec3f(1, 1, 1), Vec3f(2, 2, 2)});
    const unsigned sources[] = {1, 0, 1, 7};
    GeoPropertyPtr(texCoords)->gather(sources);
    EXPECT_EQ(std::vector(texCoords->values().begin(), texCoords->values().end()),
              (std::vector{Vec3f(2, 2, 2), Vec3f(1, 1, 1), Vec3f(2, 2, 2), Vec3f()}));
}

} // namespace
