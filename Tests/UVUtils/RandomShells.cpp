#include "UVUtils/RandomShells.h"

#include "OpenSG/GeoProperty.h"
#include "UVUtils/model/ActiveSurfaces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <vector>

namespace
{

/// A place on the grid that surfaces are cut from, in one UV chart. `sheet` tells copies of the
/// surface apart that lie in one place but share no vertex.
struct Corner
{
    unsigned column = 0;
    unsigned row = 0;
    unsigned chart = 0;
    unsigned sheet = 0;
    unsigned height = 0; ///< above the surface, for sheets that stand on it
    auto operator<=>(const Corner&) const = default;
};

struct Triangle
{
    std::array<Corner, 3> corners;
    unsigned surface = 0;
};

/// A line through the grid: which of its sides a place is on.
struct Cut
{
    int a, b, c;
    bool separates(unsigned column, unsigned row) const
    {
        return a * static_cast<int>(column) + b * static_cast<int>(row) < c;
    }
};

enum Shape : unsigned
{
    Flat,
    Bent,
    Ring,
    ShapeCount
};

class Maker
{
public:
    Maker(std::uint32_t seed, kyUVTypes::UVSet slot, const ShellTraits& traits)
        : random_(seed), traits_(traits), slot_(static_cast<unsigned>(slot)),
          columns_(random_.between(1, 6)), rows_(random_.between(1, 5)),
          shape_(static_cast<Shape>(random_.below(ShapeCount))),
          scale_(random_.oneIn(3) ? 0.125F : 1.0F)
    {
        for (Cut* cut : {&surfaceCuts_[0], &surfaceCuts_[1], &seams_[0], &seams_[1]})
            *cut = randomCut();
    }

    osg::RefPtr<osg::Node> shell()
    {
        surfaceCount_ = 4;
        makeTriangles();
        std::vector<osg::GeometryPtr> surfaces;
        for (unsigned surface = 0; surface < surfaceCount_; ++surface)
            surfaces.push_back(makeSurface(surface));
        osg::RefPtr<osg::Node> node(shellOf(surfaces));
        if (traits_.outsiders)
            addOutsiders(*node);
        return node;
    }

    osg::RefPtr<osg::Node> plain()
    {
        makeTriangles();
        return osg::RefPtr<osg::Node>(nodeOf(makeSurface(0)));
    }

private:
    Cut randomCut()
    {
        const auto within = [this](int range) {
            return static_cast<int>(random_.below(2 * static_cast<unsigned>(range) + 1)) - range;
        };
        return {within(3), within(3), within(8)};
    }

    unsigned sideOf(const std::array<Cut, 2>& cuts, unsigned column, unsigned row) const
    {
        return (cuts[0].separates(column, row) ? 1U : 0U) +
               (cuts[1].separates(column, row) ? 2U : 0U);
    }

    void makeTriangles()
    {
        for (unsigned row = 0; row < rows_; ++row)
            for (unsigned column = 0; column < columns_; ++column)
                addCell(column, row);
        if (!traits_.extraSheets)
            return;
        if (random_.oneIn(3))
            addFins();
        if (random_.oneIn(4))
            addDoubledCell();
        if (random_.oneIn(3))
            addPointContact();
    }

    void addCell(unsigned column, unsigned row)
    {
        const unsigned chart = sideOf(seams_, column, row);
        const unsigned surface = random_.oneIn(9) // ragged cuts, holes and islands
                                     ? anySurface()
                                     : sideOf(surfaceCuts_, column, row) % surfaceCount_;
        const auto at = [&](unsigned dc, unsigned dr) {
            return Corner{wrap(column + dc), row + dr, chart, 0, 0};
        };
        if (random_.oneIn(12))
            return;                             // a hole
        const bool isRising = random_.oneIn(2); // the diagonal
        triangles_.push_back({{at(0, 0), at(1, 0), isRising ? at(1, 1) : at(0, 1)}, surface});
        triangles_.push_back({{isRising ? at(0, 0) : at(1, 0), at(1, 1), at(0, 1)}, surface});
        if (traits_.degenerate && random_.oneIn(20))
            triangles_.push_back({{at(0, 0), at(0, 0), at(1, 1)}, surface});
    }

    unsigned wrap(unsigned column) const { return shape_ == Ring ? column % columns_ : column; }

    unsigned anySurface() { return random_.below(surfaceCount_); }

    /// A third and maybe a fourth sheet on the edge between two cells.
    void addFins()
    {
        const unsigned column = random_.below(columns_);
        const unsigned row = random_.between(0, rows_);
        const unsigned chart = sideOf(seams_, column, row);
        const Corner a{column, row, chart, 0, 0};
        const Corner b{wrap(column + 1), row, chart, 0, 0};
        const Corner top{column, row, chart, 0, 1};
        triangles_.push_back({{a, b, top}, anySurface()});
        if (random_.oneIn(2))
            triangles_.push_back({{b, a, {column, row, chart, 0, 3}}, anySurface()});
    }

    /// A second triangle in the place of one that is there, with or without vertices in common.
    void addDoubledCell()
    {
        if (triangles_.empty())
            return;
        Triangle copy = triangles_[random_.below(static_cast<unsigned>(triangles_.size()))];
        copy.surface = anySurface();
        for (Corner& corner : copy.corners)
            corner.sheet = random_.oneIn(2) ? 1 : 0;
        triangles_.push_back(copy);
    }

    void addPointContact()
    {
        const Corner tip{0, random_.between(0, rows_), sideOf(seams_, 0, 0), 0, 0};
        const Corner left{0, tip.row, tip.chart, 0, 2};
        const Corner right{wrap(1), tip.row, tip.chart, 0, 2};
        triangles_.push_back({{tip, left, right}, anySurface()});
    }

    osg::Pnt3f positionOf(const Corner& corner)
    {
        const float x = 0.25F * static_cast<float>(corner.column);
        const float y = 0.25F * static_cast<float>(corner.row);
        const float z = 0.25F * static_cast<float>(corner.height);
        if (shape_ == Ring) {
            const float angle =
                6.2831853F * static_cast<float>(corner.column) / static_cast<float>(columns_);
            return osg::Pnt3f(scale_ * (1.0F + z) * std::cos(angle),
                              scale_ * (1.0F + z) * std::sin(angle), scale_ * y);
        }
        const float bend = shape_ == Bent ? x * x + 0.5F * y * x : 0.0F;
        return osg::Pnt3f(scale_ * x, scale_ * y, scale_ * (z + bend));
    }

    osg::Vec2f uvOf(const Corner& corner) const
    {
        const float apart = static_cast<float>(corner.chart);
        return osg::Vec2f(0.1F * static_cast<float>(corner.column) + 0.7F * apart,
                          0.1F * static_cast<float>(corner.row) + 0.03F * apart +
                              0.05F * static_cast<float>(corner.height));
    }

    /// Moves a number by none, a half, one or two tolerances.
    float blur(float value)
    {
        if (!traits_.nearlyEqual || !random_.oneIn(24))
            return value;
        constexpr float epsilon = std::numeric_limits<float>::epsilon();
        const std::array<float, 5> steps{-epsilon, -epsilon / 2, epsilon / 2, epsilon, 2 * epsilon};
        return value + steps[random_.below(5)];
    }

    float spoil(float value)
    {
        if (!traits_.badNumbers || !random_.oneIn(16))
            return blur(value);
        constexpr float infinity = std::numeric_limits<float>::infinity();
        constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
        return std::array<float, 3>{notANumber, infinity, -infinity}[random_.below(3)];
    }

    osg::GeometryPtr makeSurface(unsigned surface)
    {
        std::map<Corner, unsigned> vertexOf;
        std::vector<osg::Pnt3f> positions;
        UVs uvs;
        Ids indices;
        const auto addVertex = [&](const Corner& corner) {
            const osg::Pnt3f p = positionOf(corner);
            const osg::Vec2f uv = uvOf(corner);
            positions.emplace_back(spoil(p[0]), spoil(p[1]), spoil(p[2]));
            uvs.emplace_back(spoil(uv[0]), spoil(uv[1]));
            return static_cast<unsigned>(positions.size() - 1);
        };
        for (const Triangle& triangle : triangles_) {
            if (triangle.surface != surface)
                continue;
            for (const Corner& corner : triangle.corners) {
                const bool split = random_.oneIn(40); // a vertex of its own, for no reason
                auto entry = vertexOf.find(corner);
                if (entry == vertexOf.end() || split)
                    entry = vertexOf.insert_or_assign(corner, addVertex(corner)).first;
                indices.push_back(entry->second);
            }
        }
        if (traits_.degenerate && random_.oneIn(4))
            addVertex({columns_, rows_, 0, 0, 0});
        return makeGeometry(positions, uvs, indices);
    }

    osg::GeometryPtr makeGeometry(const std::vector<osg::Pnt3f>& positions, const UVs& uvs,
                                  const Ids& indices)
    {
        const osg::GeometryPtr geometry = geometryOf(positions, indices);
        if (random_.oneIn(3)) {
            const auto narrow = osg::GeoIndicesUI16::create();
            narrow->setValues(indices);
            geometry->setIndices(narrow);
        }
        const auto normals = osg::GeoNormals3f::create();
        normals->resize(static_cast<unsigned>(positions.size()));
        geometry->setNormals(normals);
        if (!random_.oneIn(8))
            geometry->setTexSlot(slot_, tiny::texCoords(uvs));
        UVs others(positions.size());
        for (osg::Vec2f& uv : others)
            uv = osg::Vec2f(static_cast<float>(random_.below(100)),
                            static_cast<float>(random_.below(100)));
        geometry->setTexSlot((slot_ + 1) % 8, tiny::texCoords(others));
        return geometry;
    }

    void addOutsiders(osg::Node& node)
    {
        if (random_.oneIn(3))
            node.addChild(osg::Node::create());
        if (random_.oneIn(3))
            node.addChild(nodeOf(brokenQuad()));
        if (random_.oneIn(3)) {
            node.addChild(nodeOf(quad()));
            node.getChild(node.getNChildren() - 1)->setTravMask(0);
        }
        if (random_.oneIn(2)) // not always behind all others
            node.addChild(node.getChild(0));
    }

    Random random_;
    ShellTraits traits_;
    unsigned slot_;
    unsigned columns_, rows_;
    Shape shape_;
    float scale_;
    std::array<Cut, 2> surfaceCuts_{};
    std::array<Cut, 2> seams_{};
    unsigned surfaceCount_ = 1;
    std::vector<Triangle> triangles_;
};

/// Is no edge, wherever it lies, of more than two triangles, and no triangle without area?
bool isManifold(const osg::NodePtr& shell)
{
    using Place = std::array<float, 3>;
    std::map<std::pair<Place, Place>, int> useOfEdge;
    for (const ActiveSurface& surface : activeSurfaces(shell)) {
        const Ids ids = surface.geometry->getIndices()->getValues();
        const auto placeOf = [&](std::size_t i) -> Place {
            const osg::Pnt3f p = surface.geometry->getPositions()->getValue(ids[i]);
            return {p[0], p[1], p[2]};
        };
        for (std::size_t i = 0; i < ids.size(); ++i) {
            const auto edge = std::minmax({placeOf(i), placeOf(i % 3 == 2 ? i - 2 : i + 1)});
            if (edge.first == edge.second || ++useOfEdge[edge] > 2)
                return false;
        }
    }
    return true;
}

} // namespace

osg::RefPtr<osg::Node> randomShell(std::uint32_t seed, kyUVTypes::UVSet slot,
                                   const ShellTraits& traits)
{
    return Maker(seed, slot, traits).shell();
}

osg::RefPtr<osg::Node> randomPlain(std::uint32_t seed, kyUVTypes::UVSet slot,
                                   const ShellTraits& traits)
{
    return Maker(seed, slot, traits).plain();
}

osg::RefPtr<osg::Node> randomManifoldShell(std::uint32_t seed)
{
    ShellTraits traits;
    traits.nearlyEqual = traits.extraSheets = false;
    auto shell = randomShell(seed, kyUVTypes::UVSet0, traits);
    while (!isManifold(shell))
        shell = randomShell(++seed, kyUVTypes::UVSet0, traits);
    return shell;
}
