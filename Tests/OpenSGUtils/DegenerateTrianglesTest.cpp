#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/TinyGeometry.h"
#include "OpenSGUtils/RemoveDegPolysGraphOp.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <set>

using namespace osg;
using tiny::Ids;

namespace
{

/// Vertices 0 to 5 of which 3 lies on a line with 0 and 1, and 4 where 2 lies; 6 is none. 5 is so
/// near to 0 that only short edges tell the difference.
const std::vector<Pnt3f> points{Pnt3f(0, 0, 0), Pnt3f(1, 2, 3), Pnt3f(1, 0, 0),
                                Pnt3f(3, 6, 9), Pnt3f(1, 0, 0), Pnt3f(0, 0, 1e-30F)};

bool isDegenerate(const std::set<unsigned>& corners)
{
    return corners.size() < 3 || corners == std::set{0U, 1U, 3U} ||
           corners == std::set{1U, 3U, 5U} ||
           (corners.contains(2) && corners.contains(4) && !corners.contains(6));
}

RC_GTEST_PROP(DegenerateTriangles, GoFromListsOfTrianglesAndNothingElseDoes, ())
{
    const unsigned stride = *rc::gen::inRange(1U, 3U);
    const auto geometry = RefPtr<Geometry>(Geometry::create());
    geometry->setPositions(tiny::positions(points));
    if (stride == 2)
        geometry->setIndexMapping({Geometry::MapTexCoords, Geometry::MapPosition});
    Ids indices, types, lengths, keptIndices, keptLengths;
    unsigned removed = 0;
    for (int primitive = *rc::gen::inRange(1, 4); primitive > 0; --primitive) {
        types.push_back(*rc::gen::element(4U, 4U, 5U));
        lengths.push_back(*rc::gen::inRange(0U, 12U));
        keptLengths.push_back(lengths.back());
        for (unsigned i = 0; i < lengths.back(); i += 3) {
            Ids corners;
            for (unsigned k = i; k < std::min(i + 3, lengths.back()); ++k)
                corners.insert(corners.end(), stride, *rc::gen::inRange(0U, 7U));
            indices.insert(indices.end(), corners.begin(), corners.end());
            if (types.back() == 4 && corners.size() == 3 * stride &&
                isDegenerate(std::set(corners.begin(), corners.end())))
            {
                ++removed;
                keptLengths.back() -= 3;
            } else {
                keptIndices.insert(keptIndices.end(), corners.begin(), corners.end());
            }
        }
    }
    geometry->setIndices(tiny::indices({}));
    if (*rc::gen::arbitrary<bool>())
        geometry->setIndices(GeoIndicesUI16::create());
    geometry->getIndices()->setValues(indices);
    geometry->setTypes(GeoPTypesUI8::create());
    geometry->getTypes()->setValues(types);
    const RefPtr<GeoPLengths> shared{GeoPLengthsPtr(GeoPLengthsUI32::create())};
    shared->setValues(lengths);
    geometry->setLengths(shared);
    const RefPtr<Node> node(Node::create());
    node->setCore(geometry);
    tiny::NoticeJournal journal;
    journal.watch(geometry);

    RC_ASSERT(RemoveDegPolysGraphOp::hasDegenerateTriangles(geometry) == (removed > 0));
    RemoveDegPolysGraphOp op("RemoveDegPolys");
    op.traverse(node);
    op.traverse(node);
    RC_ASSERT(op.getRemovedPolysCount() == removed);
    RC_ASSERT(geometry->getIndices()->getValues() == keptIndices);
    RC_ASSERT(geometry->getLengths()->getValues() == keptLengths);
    RC_ASSERT(shared->getValues() == lengths); // it belongs to others too
    RC_ASSERT(journal.notices.size() == (removed > 0 ? 1U : 0U));
}

TEST(DegenerateTriangles, GoWithoutListsThatNameVertices)
{
    const RefPtr<Geometry> geometry = tiny::quad();
    geometry->getPositions()->setValue(Pnt3f(std::numeric_limits<float>::quiet_NaN(), 0, 0), 3);
    geometry->getIndices()->setValues(Ids{0, 1, 1, 0, 2, 3});
    geometry->setTypes(GeoPTypesUI8::create()); // which says nothing, so these are triangles
    GeoTmpIndexEditInterface(geometry, 4).assign(Ids{1, 3});
    const RefPtr<Node> node(Node::create());
    node->setCore(geometry);
    // As a mesh does that watches the triangles.
    geometry->registerChangedCallback(std::make_shared<FieldContainer::ChangedCallback>(
        [&](unsigned, FieldMask, unsigned) { GeoTmpIndexEditInterface::setNullforAll(geometry); }));
    RemoveDegPolysGraphOp().traverse(node);
    EXPECT_EQ(geometry->getIndices()->getValues(), (Ids{0, 2, 3})) << "a place unknown has no area";
    const auto list = GeoTmpIndexEditInterface(geometry, 4).values();
    EXPECT_EQ(Ids(list.begin(), list.end()), (Ids{1, 3}));
    EXPECT_FALSE(RemoveDegPolysGraphOp::hasDegenerateTriangles(NullFC));
}

} // namespace
