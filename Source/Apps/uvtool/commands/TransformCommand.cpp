#include "commands/Commands.h"

#include "commands/EditWork.h"

#include "UVUtils/model/kyUVUtils.h"

#include <cmath>
#include <numbers>

namespace uvtool
{
namespace
{

struct SineCosine
{
    float sine;
    float cosine;
};

/// Exact at multiples of 90 degrees, so that a layout that is turned by these keeps its digits.
SineCosine sineCosineOf(double degrees)
{
    const double turn = std::remainder(degrees, 360.0);
    const double quarters = std::round(turn / 90.0);
    const double rest = (turn - 90.0 * quarters) * std::numbers::pi / 180.0;
    const auto sine = static_cast<float>(std::sin(rest));
    const auto cosine = static_cast<float>(std::cos(rest));
    switch (static_cast<int>(quarters)) {
    case 0:
        return {sine, cosine};
    case 1:
        return {cosine, -sine};
    case -1:
        return {-cosine, sine};
    default:
        return {-sine, -cosine};
    }
}

osg::Vec2f centerOf(const UVBox& box)
{
    return osg::Vec2f((box.lo[0] + box.hi[0]) / 2, (box.lo[1] + box.hi[1]) / 2);
}

EditWork::Operation makeTransform(const Options& options, const EditWork& work)
{
    const TransformOptions& transform = options.transform;
    const osg::Vec2f center = transform.about
                                  ? osg::Vec2f((*transform.about)[0], (*transform.about)[1])
                                  : centerOf(work.bounds());
    const auto set = static_cast<kyUVTypes::UVSet>(options.common.slot);
    return [&transform, center, set](const EditWork::Subject& subject) {
        const osg::GeometryPtr core = subject.scene.core();
        const osg::NodePtr node = subject.scene.node;
        const unsigned int* const ids = subject.vertices.data();
        const auto count = static_cast<unsigned int>(subject.vertices.size());
        if (transform.scale != Vec2f{1.0F, 1.0F})
            kyUVUtils::scaleUV(core, node, set, ids, count, center, transform.scale[0],
                               transform.scale[1]);
        if (const auto [sine, cosine] = sineCosineOf(transform.degrees);
            sine != 0.0F || cosine != 1.0F)
            kyUVUtils::rotateUV(core, node, set, ids, count, center, sine, cosine);
        if (transform.move != Vec2f{0.0F, 0.0F})
            kyUVUtils::translateUV(core, node, set, ids, count, transform.move[0],
                                   transform.move[1]);
        return kyUVTypes::Success;
    };
}

} // namespace

ExitStatus runTransform(const Options& options, Console& console)
{
    return runEdit("transform", options, console,
                   [&options](const EditWork& work) { return makeTransform(options, work); });
}

} // namespace uvtool
