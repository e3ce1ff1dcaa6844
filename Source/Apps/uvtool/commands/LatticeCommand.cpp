#include "commands/Commands.h"

#include "commands/EditWork.h"
#include "document/OutputFile.h"
#include "document/PointFile.h"
#include "report/EditText.h"

#include "UVUtils/model/kyUVUtils.h"

#include <utility>

namespace uvtool
{
namespace
{

using ControlPoints = std::vector<osg::Vector<float, 2>>;

/// A deformer of the library while it is in use.
class Deformer
{
public:
    Deformer(unsigned int session, const EditWork::Subject& subject, kyUVTypes::UVSet set)
        : deformer_(kyUVUtils::getLatticeDeformer(
              session, subject.scene.core(), subject.scene.node, set, subject.vertices.data(),
              static_cast<unsigned int>(subject.vertices.size())))
    {}
    ~Deformer() { kyUVUtils::finishLatticeDeformer(deformer_); }
    Deformer(const Deformer&) = delete;
    Deformer& operator=(const Deformer&) = delete;

    void* get() const { return deformer_; }

private:
    void* deformer_;
};

UVBox rectangleOf(const Options& options, const EditWork& work)
{
    const UVBox box = options.lattice.box.value_or(work.bounds());
    if (box.lo[0] < box.hi[0] && box.lo[1] < box.hi[1])
        return box;
    throw CommandError(Failed, options.common.input.string() +
                                   ": the box around the UVs has no area; give one with --box");
}

/// Where control points leave all in place: row by row from below, u fastest.
std::vector<Vec2f> evenPoints(const LatticeOptions& lattice, const UVBox& box)
{
    const auto at = [&box](std::size_t axis, unsigned int i, unsigned int res) {
        const double t = static_cast<double>(i) / (res - 1);
        return static_cast<float>((1 - t) * box.lo[axis] + t * box.hi[axis]);
    };
    std::vector<Vec2f> points;
    for (unsigned int j = 0; j < lattice.resV; ++j)
        for (unsigned int i = 0; i < lattice.resU; ++i)
            points.push_back({at(0, i, lattice.resU), at(1, j, lattice.resV)});
    return points;
}

ControlPoints readControlPoints(const LatticeOptions& lattice)
{
    ControlPoints points;
    for (const Vec2f& point :
         readPointFile(lattice.points, std::size_t{lattice.resU} * lattice.resV))
        points.emplace_back(point[0], point[1]);
    return points;
}

unsigned int startSession(const LatticeOptions& lattice, const UVBox& box)
{
    unsigned int session = 0;
    if (!kyUVUtils::startLatticeSession(lattice.resU, lattice.resV,
                                        osg::Vec2f(box.lo[0], box.lo[1]),
                                        osg::Vec2f(box.hi[0], box.hi[1]), session))
        throw CommandError(Failed, "there can't be a lattice over " + textOfBounds(box));
    return session;
}

EditWork::Operation makeBending(const Options& options, const EditWork& work)
{
    const auto set = static_cast<kyUVTypes::UVSet>(options.common.slot);
    const auto amount = static_cast<float>(options.lattice.amount);
    return [set, amount, points = readControlPoints(options.lattice),
            session = startSession(options.lattice, rectangleOf(options, work))](
               const EditWork::Subject& subject) {
        const Deformer deformer(session, subject, set);
        const bool isDone = kyUVUtils::applyLatticeDeform(deformer.get(), set, amount, points);
        return isDone ? kyUVTypes::Success : kyUVTypes::Failure;
    };
}

ExitStatus savePoints(const Options& options, Console& console)
{
    Task task("lattice", options, console);
    UVBox box;
    const auto save = [&] {
        task.read();
        task.probeOutputs();
        EditWork work(task);
        task.stage("look", 0.9, [&] { work.choose(); });
        box = rectangleOf(options, work);
        OutputFile file(options.lattice.saved);
        file.write(textOfPoints(evenPoints(options.lattice, box)));
        file.commit();
    };
    const auto tell = [&] {
        console.note(options.lattice.saved.string() + ": control points over " + textOfBounds(box) +
                     " written");
    };
    task.run(save, tell);
    return Done;
}

} // namespace

ExitStatus runLattice(const Options& options, Console& console)
{
    if (!options.lattice.saved.empty())
        return savePoints(options, console);
    return runEdit("lattice", options, console,
                   [&options](const EditWork& work) { return makeBending(options, work); });
}

} // namespace uvtool
