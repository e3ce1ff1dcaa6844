#include "Unfold3D/parameterisation/LayoutMinimiser.h"

#include "Unfold3D/parameterisation/BorderCrossings.h"
#include "Unfold3D/parameterisation/BorderMotion.h"
#include "Unfold3D/parameterisation/Surroundings.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace unfold3d
{

namespace
{

/// Steps are taken with the exact curvature once one with the capped gained less than this share.
constexpr double lateGain = 0.1;
/// A step keeps this share of the way to the first flip or contact.
constexpr double obstacleMargin = 0.9;
/// Least gain, as a share of what the slope promises (Armijo).
constexpr double leastGain = 1e-4;
constexpr int maxShorter = 40;
/// When a whole step was fine, longer ones are tried.
constexpr double strideFactors[] = {1.5, 2.25};

/// A step shorter than this was blocked by some triangles, whose surroundings, so many edges wide,
/// are relaxed on their own then: when they are less than this share of all vertices that move.
constexpr double blockedStep = 0.8;
constexpr int ringsAroundBlock = 4;
constexpr double mostAround = 0.25;
/// Small parts take their steps as quickly as it takes to look at them.
constexpr int leastRelaxed = 500;
constexpr StopRule blockStop{.promisedShare = 1e-3, .promisedShareOfExcess = 1.0, .maxSteps = 12};

/// The pattern of the system covers contacts at this multiple of the barrier's reach, so that it
/// serves several steps.
constexpr double patternReach = 2.0;
/// A pattern with contacts keeps the order of elimination until the work grows by this factor.
constexpr double staleOrder = 1.4;
/// What closing a braked gap costs, as a share of what the step before promised. It falls by the
/// second factor with each step that isn't cut short.
constexpr double firstBrakeShare = 0.1;
constexpr double brakeDecay = 0.1;
/// Without its brakes a step may promise this much more.
constexpr double brakedPromise = 3.0;

/// Energy of an undistorted layout, and what rounding leaves of it.
constexpr double undistorted = 4.0;
constexpr double roundingExcess = 1e-10;

constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

LayoutMinimiser::LayoutMinimiser(const MovablePart& part, const RunControl& control,
                                 std::span<const int> eliminationOrder)
    : part_(part), control_(control), isFixed_(part.isFixed.begin(), part.isFixed.end()),
      system_(std::make_unique<StepSystem>(EliminationMesh(part, eliminationOrder, control))),
      freshOperations_(system_->mesh().symbolic.operations)
{}

std::vector<Vec2> LayoutMinimiser::columnsOf(std::span<const Vec2> uv) const
{
    std::vector<Vec2> nodes(uv.begin(), uv.end());
    nodes.resize(static_cast<std::size_t>(system_->mesh().nodeCount()));
    return system_->mesh().toColumns(nodes);
}

void LayoutMinimiser::rescale(std::vector<Vec2>& uv) const
{
    const double scale = measure(system_->mesh(), columnsOf(uv)).bestScale();
    for (Vec2& point : uv)
        point = scale * point;
}

double LayoutMinimiser::energy(std::span<const Vec2> uv) const
{
    return measure(system_->mesh(), columnsOf(uv)).energy();
}

double LayoutMinimiser::leastDeterminant(std::span<const Vec2> uv) const
{
    return unfold3d::leastDeterminant(system_->mesh(), columnsOf(uv));
}

bool LayoutMinimiser::isScaleFree() const
{
    return part_.isWhole() && !rules_.barrier && !rules_.push && !rules_.lines &&
           !rules_.energy.allowsFlips();
}

double LayoutMinimiser::rescaleColumns()
{
    const Distortion distortion = measure(system_->mesh(), uv_);
    const double scale = distortion.bestScale();
    for (Vec2& point : uv_)
        point = scale * point;
    return distortion.bestEnergy(rules_.energy.lengths);
}

/// Takes over a layout of the vertices, in a system that has a node for each line.
void LayoutMinimiser::enter(std::span<const Vec2> uv, const LayoutRules& rules)
{
    rules_ = rules;
    brakes_.clear();
    brakeShare_ = brakeWork_ = 0.0;
    springs_.clear();
    std::vector<Vec2> nodes(uv.begin(), uv.end());
    for (int l = 0; rules_.lines && l < rules_.lines->count(); ++l)
        nodes.push_back({rules_.lines->mean(l, uv), 0.0});
    if (rules_.lines != systemLines_ ||
        static_cast<int>(nodes.size()) != system_->mesh().nodeCount())
        rebuildSystem({nodes});
    uv_ = system_->mesh().toColumns(nodes);
    trial_.resize(uv_.size());
}

/// Gathers what acts beside the distortion, in a system whose pattern has room for it.
void LayoutMinimiser::collectSprings()
{
    springs_ = std::move(brakes_);
    brakes_.clear();
    if (rules_.barrier) {
        const std::vector<Vec2> border = borderOf(uv_);
        if (brakeWork_ > 0.0)
            for (const BorderGap& gap : narrowGaps(rules_.barrier->border(), border))
                springs_.push_back(gap.brake(rules_.barrier->border(), brakeWork_));
        rules_.barrier->addSprings(border, springs_);
    }
    if (rules_.push)
        rules_.push->addSprings(borderOf(rules_.push->border(), uv_), springs_);
    if (rules_.lines && rules_.pull > 0.0)
        rules_.lines->addSprings(layoutOf(uv_), rules_.pull, springs_);
    const auto isCovered = [&](const Spring& spring) { return system_->covers(spring); };
    if (!std::all_of(springs_.begin(), springs_.end(), isCovered)) {
        const std::vector<Vec2> nodes = system_->mesh().toNodes(uv_);
        rebuildSystem({nodes});
        uv_ = system_->mesh().toColumns(nodes);
    }
}

/// Analyses a pattern that has room for the springs of now and the contacts of the next steps.
void LayoutMinimiser::rebuildSystem(const NodeLayout& layout)
{
    std::vector<NodePair> pairs;
    if (rules_.barrier) {
        const Border& border = rules_.barrier->border();
        const std::vector<Vec2> positions = borderPositions(border, layout);
        rules_.barrier->addPairsWithin(positions, patternReach, pairs);
        for (const BorderGap& gap : narrowGaps(border, positions))
            gap.addPairs(border, pairs);
    }
    if (rules_.push)
        rules_.push->addPairs(pairs);
    for (const Spring& spring : springs_)
        for (std::size_t i = 1; i < static_cast<std::size_t>(spring.count); ++i)
            for (std::size_t j = 0; j < i; ++j)
                pairs.push_back({spring.nodes[j], spring.nodes[i]});
    if (rules_.lines)
        rules_.lines->addPairs(part_.corners, pairs);
    const auto nodeCount = static_cast<int>(layout.uv.size());
    const VertexGraph graph = vertexGraph(part_.corners, nodeCount, pairs);

    const bool hasOrder = systemLines_ == rules_.lines && system_->mesh().nodeCount() == nodeCount;
    std::vector<int> order = system_->mesh().symbolic.oldOfNew;
    system_.reset(); // two at a time would double the memory
    SymbolicCholesky analysis =
        hasOrder ? analyse(graph, std::move(order), control_) : analyse(graph, control_);
    const bool isStale = hasOrder && analysis.operations > staleOrder * freshOperations_;
    if (isStale)
        analysis = analyse(graph, control_);
    if (isStale || !hasOrder)
        freshOperations_ = analysis.operations;
    system_ = std::make_unique<StepSystem>(EliminationMesh(part_, std::move(analysis), control_));
    systemLines_ = rules_.lines;
    if (part_.isWhole())
        return;
    isFixed_.assign(part_.isFixed.begin(), part_.isFixed.end());
    for (int l = 0; rules_.lines && l < rules_.lines->count(); ++l)
        isFixed_.push_back(static_cast<char>(rules_.lines->isFixed(l)));
}

/// Returns how much the step's quadratic model promises to gain, doubled.
double LayoutMinimiser::computeDirection(Curvature kind)
{
    collectSprings();
    control_.checkpoint();
    system_->set(uv_, rules_.energy, kind);
    for (const Spring& spring : springs_)
        system_->add(spring);
    if (rules_.lines && rules_.pull == 0.0)
        system_->hold(*rules_.lines);
    if (!isFixed_.empty())
        system_->fix(isFixed_);
    control_.checkpoint();
    return system_->solve(control_);
}

/// As a multiple of the direction; infinite where flips don't matter.
double LayoutMinimiser::firstFlipAhead() const
{
    return rules_.energy.allowsFlips() ? infinity
                                       : firstFlip(system_->mesh(), uv_, system_->direction());
}

double LayoutMinimiser::firstObstacle() const
{
    const double flip = firstFlipAhead();
    if (!rules_.barrier)
        return flip;
    const double farthest = std::end(strideFactors)[-1] / obstacleMargin;
    return firstContact(rules_.barrier->border(), borderOf(uv_), borderOf(system_->direction()),
                        std::min(flip, farthest));
}

/// When contacts cut the step short, the next one brakes the pieces that were about to meet, and
/// all that are near each other; these for some further steps, ever less.
void LayoutMinimiser::brakeContacts(double obstacle, double promised)
{
    const bool isCutShort = rules_.barrier && obstacle < 1.0;
    brakeShare_ = isCutShort || rules_.push ? firstBrakeShare : brakeDecay * brakeShare_;
    brakeWork_ = brakeShare_ * promised;
    if (isCutShort)
        addBrakes(rules_.barrier->border(), borderOf(uv_), borderOf(system_->direction()),
                  std::min(1.0, firstFlipAhead()), brakeWork_, brakes_);
}

void LayoutMinimiser::moveTrial(double step)
{
    const std::span<const Vec2> direction = system_->direction();
    for (std::size_t i = 0; i < uv_.size(); ++i)
        trial_[i] = uv_[i] + step * direction[i];
}

bool LayoutMinimiser::isTrialLegal() const
{
    if (!rules_.barrier)
        return true;
    const std::vector<Vec2> border = borderOf(trial_);
    return rules_.barrier->isFairMove(borderOf(uv_), border) &&
           !doesBorderCross(rules_.barrier->border(), border);
}

double LayoutMinimiser::energyOf(std::span<const Vec2> uv) const
{
    const double lengths = rules_.energy.lengths;
    if (isScaleFree())
        return measure(system_->mesh(), uv).bestEnergy(lengths);
    double energy = rules_.energy.allowsFlips()
                        ? energyWithFlips(system_->mesh(), uv, rules_.energy)
                        : measure(system_->mesh(), uv).energy(lengths);
    if (rules_.barrier)
        energy += rules_.barrier->energy(borderOf(uv));
    if (rules_.push)
        energy += rules_.push->energy(borderOf(rules_.push->border(), uv));
    if (rules_.lines && rules_.pull > 0.0)
        energy += rules_.lines->energy(layoutOf(uv), rules_.pull);
    return energy;
}

double LayoutMinimiser::trialEnergy() const
{
    return isTrialLegal() ? energyOf(trial_) : infinity;
}

/// Lets the surroundings of the triangles that would flip first come to rest, with everything else
/// held: a few of them would keep the steps of the whole short (nonlinear elimination, Lanzkron,
/// Rose and Wilkes 1996). Returns the energy then.
double LayoutMinimiser::relaxWhatBlocks(double energy)
{
    if (rules_.barrier || rules_.push || rules_.lines || rules_.energy.allowsFlips() ||
        part_.mesh.vertexCount() < leastRelaxed)
        return energy;
    const EliminationMesh& mesh = system_->mesh();
    std::vector<int> centres;
    for (const int t :
         flippingTriangles(mesh, uv_, system_->direction(), 1.0 - std::min(stepTaken_, 0.5)))
        for (const int column : mesh.triangles[static_cast<std::size_t>(t)].corners)
            centres.push_back(mesh.symbolic.oldOfNew[static_cast<std::size_t>(column)]);
    const std::vector<char> isNear = verticesAround(part_, centres, ringsAroundBlock);
    const auto nearCount = static_cast<double>(std::count(isNear.begin(), isNear.end(), 1));
    const auto fixedCount = std::count(isFixed_.begin(), isFixed_.end(), 1);
    if (nearCount == 0.0 ||
        nearCount > mostAround * static_cast<double>(part_.mesh.vertexCount() - fixedCount))
        return energy;

    const Surroundings around = takeSurroundings(part_, isNear);
    std::vector<Vec2> uv;
    uv.reserve(around.vertices.size());
    for (const int v : around.vertices)
        uv.push_back(layoutOf(uv_).at(v));
    const MovablePart part(around.mesh, around.isFixed);
    LayoutMinimiser(part, control_)
        .minimise(uv, {.energy = rules_.energy}, blockStop,
                  [](const NodeLayout&, double) { return true; });
    trial_ = uv_;
    for (std::size_t i = 0; i < uv.size(); ++i)
        trial_[static_cast<std::size_t>(
            system_->columnOfNode()[static_cast<std::size_t>(around.vertices[i])])] = uv[i];
    const double relaxed = energyOf(trial_);
    if (!(relaxed < energy))
        return energy;
    control_.checkpoint();
    uv_.swap(trial_);
    return isScaleFree() ? rescaleColumns() : relaxed;
}

/// Moves along the direction; returns the energy then, or the old one when no length of step gains
/// anything.
double LayoutMinimiser::search(double energy, double promised)
{
    const double obstacle = firstObstacle();
    control_.checkpoint();
    brakeContacts(obstacle, promised);
    const double longest = obstacleMargin * obstacle;
    double step = std::min(1.0, longest);
    moveTrial(step);
    double best = trialEnergy();
    for (int i = 0; i < maxShorter && !(best <= energy - leastGain * step * promised); ++i) {
        control_.checkpoint();
        step *= 0.5;
        moveTrial(step);
        best = trialEnergy();
    }
    stepTaken_ = 0.0;
    if (!(best < energy))
        return energy;
    stepTaken_ = step;
    if (step == 1.0) {
        std::vector<Vec2> accepted;
        for (const double factor : strideFactors) {
            if (factor > longest)
                break;
            control_.checkpoint();
            accepted = trial_;
            moveTrial(factor);
            const double longer = trialEnergy();
            if (!(longer < best)) {
                trial_.swap(accepted);
                break;
            }
            best = longer;
        }
    }
    control_.checkpoint();
    uv_.swap(trial_);
    return isScaleFree() ? rescaleColumns() : best;
}

bool LayoutMinimiser::isDone(const StopRule& stop, double promised, double energy) const
{
    const double excess = std::max(energy - undistorted, roundingExcess);
    return promised < stop.promisedShare * energy &&
           promised < std::max(stop.promisedShareOfExcess * excess, roundingExcess);
}

LayoutMinimiser::Outcome LayoutMinimiser::minimise(std::vector<Vec2>& uv, const LayoutRules& rules,
                                                   const StopRule& stop, const Observer& observer)
{
    enter(uv, rules);
    Outcome outcome;
    double energy = isScaleFree() ? rescaleColumns() : energyOf(uv_);
    outcome.energyBefore = energy;
    Curvature kind = rules.firstCurvature;
    while (outcome.steps < stop.maxSteps) {
        if (rules_.push) {
            rules_.push->aim(borderOf(rules_.push->border(), uv_), brakeWork_);
            energy = energyOf(uv_);
        }
        const bool isBraked = !brakes_.empty();
        const double promised = computeDirection(kind);
        ++outcome.steps;
        const double before = energy;
        energy = search(before, promised);
        const double unbraked = isBraked ? brakedPromise * promised : promised;
        if (isDone(stop, 0.5 * unbraked, before)) {
            outcome.converged = true;
            break;
        }
        if (!observer(layoutOf(uv_), 0.5 * promised / before))
            break;
        const double gained = (before - energy) / before;
        if (gained <= 0.0 && kind == Curvature::Exact && !isBraked)
            break;
        if (gained < lateGain)
            kind = Curvature::Exact;
        if (stepTaken_ < blockedStep)
            energy = relaxWhatBlocks(energy);
    }
    outcome.energyAfter = energy;
    uv_ = system_->mesh().toNodes(uv_);
    uv.assign(uv_.begin(), uv_.begin() + part_.mesh.vertexCount());
    return outcome;
}

} // namespace unfold3d
