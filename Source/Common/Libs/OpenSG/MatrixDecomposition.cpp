#include "OpenSG/MatrixDecomposition.h"

#include <array>
#include <cmath>

namespace osg
{

namespace
{

using Vec3d = Vector<double, 3>;

/// A column that sticks out of the space of those before it by less than this share of its length
/// counts as lying in it. A few roundings of a float.
constexpr double SmallestShareOutside = 1e-6;

/// Three axes, of which some may not be known yet; those that are have length 1 and stand at right
/// angles.
struct Frame
{
    std::array<Vec3d, 3> axes;
    std::array<bool, 3> known{};

    void set(unsigned i, const Vec3d& axis)
    {
        axes[i] = axis;
        known[i] = true;
    }
    [[nodiscard]] const Vec3d& after(unsigned i) const { return axes[(i + 1) % 3]; }
    [[nodiscard]] const Vec3d& before(unsigned i) const { return axes[(i + 2) % 3]; }
    [[nodiscard]] Vec3d crossOfOthers(unsigned i) const { return after(i).cross(before(i)); }
};

bool isFinite(const std::array<Vec3d, 3>& columns)
{
    for (const Vec3d& column : columns)
        for (unsigned i = 0; i < 3; ++i)
            if (!std::isfinite(column[i]))
                return false;
    return true;
}

/// The modified Gram-Schmidt process; columns that depend on earlier ones stay unknown.
Frame orthonormalise(const std::array<Vec3d, 3>& columns)
{
    Frame frame;
    for (unsigned i = 0; i < 3; ++i) {
        Vec3d rest = columns[i];
        for (unsigned j = 0; j < i; ++j)
            if (frame.known[j])
                rest -= frame.axes[j] * frame.axes[j].dot(rest);
        const double length = rest.length();
        if (length > SmallestShareOutside * columns[i].length())
            frame.set(i, rest * (1 / length));
    }
    return frame;
}

/// A second axis where only number i is known: of the coordinate axes the one that leans away from
/// it most.
void setSecond(Frame& frame, unsigned i)
{
    const Vec3d& first = frame.axes[i];
    unsigned best = (i + 1) % 3;
    for (const unsigned candidate : {(i + 2) % 3, i})
        if (std::abs(first[candidate]) < std::abs(first[best]))
            best = candidate;
    Vec3d second;
    second[best] = 1;
    second -= first * first[best];
    frame.set((i + 1) % 3, second * (1 / second.length()));
}

void completeRightHanded(Frame& frame)
{
    const auto count = [&frame] { return frame.known[0] + frame.known[1] + frame.known[2]; };
    if (count() == 0)
        frame.set(0, Vec3d(1, 0, 0));
    for (unsigned i = 0; i < 3 && count() == 1; ++i)
        if (frame.known[i])
            setSecond(frame, i);
    for (unsigned i = 0; i < 3; ++i)
        if (!frame.known[i])
            frame.set(i, frame.crossOfOthers(i));
    if (frame.crossOfOthers(2).dot(frame.axes[2]) < 0)
        frame.axes[2] = -frame.axes[2];
}

} // namespace

TransformParts decompose(const TransformationMatrix<float>& matrix)
{
    TransformParts parts;
    parts.translation = matrix.getColumn(3);
    const std::array<Vec3d, 3> columns{Vec3d(matrix.getColumn(0)), Vec3d(matrix.getColumn(1)),
                                       Vec3d(matrix.getColumn(2))};
    if (!isFinite(columns))
        return parts;
    Frame frame = orthonormalise(columns);
    const std::array<bool, 3> hasScale = frame.known;
    completeRightHanded(frame);
    for (unsigned i = 0; i < 3; ++i)
        parts.scale[i] = hasScale[i] ? static_cast<float>(frame.axes[i].dot(columns[i])) : 0.0F;
    parts.rotation =
        Quaternion(QuaternionBase<double>::fromAxes(frame.axes[0], frame.axes[1], frame.axes[2]));
    return parts;
}

} // namespace osg
