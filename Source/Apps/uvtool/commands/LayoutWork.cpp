#include "commands/LayoutWork.h"

#include "cli/ExitStatus.h"
#include "commands/LineWork.h"
#include "document/Format.h"
#include "mesh/CornerVertices.h"
#include "mesh/EdgeGroups.h"
#include "solver/PackParts.h"
#include "solver/RoundingRepair.h"
#include "solver/WriteBack.h"

#include <algorithm>

namespace uvtool
{
namespace
{

/// Distances are measured in floats, whose rounding a packing at the very limit cannot see.
constexpr double distanceTolerance = 1e-7;

void throwUnlessSuccess(const SolverAnswer& answer, const std::string& what)
{
    if (answer.outcome == Cancelled)
        throw CommandError(Interrupted, "cancelled; nothing was written");
    if (answer.outcome == Failure)
        throw CommandError(Failed, what + ": " + answer.error());
}

/// Takes the UVs of a part to values that the file can hold.
///
/// held  sides whose ends stay on their lines
void round(Part& part, const HeldSides& held, bool vIsTurned)
{
    if (vIsTurned)
        roundForTurnedV(part.uvs);
    std::vector<char> isFixed(part.mesh.vertexCount(), 0);
    for (const std::vector<std::uint32_t>* const sides : {&held.horizontal, &held.vertical})
        for (const std::uint32_t side : *sides)
            isFixed[part.mesh.triangles[side]] = isFixed[part.mesh.triangles[endCorner(side)]] = 1;
    repairRounding(part.mesh.triangles, part.turns, vIsTurned, part.uvs, isFixed);
}

} // namespace

void LayoutWork::start(UVNeed need)
{
    const std::size_t slot = task_.options.common.slot;
    if (task_.options.common.shell)
        subjects_.emplace_back(task_.document, task_.chosen, slot);
    else
        for (const std::size_t number : task_.chosen)
            subjects_.emplace_back(task_.document, number);
    for (const LayoutSubject& subject : subjects_) {
        task_.throwIfCancelled();
        surveys_.push_back(surveyGeometry(subject.geometry(), slot, need));
        task_.report.geometries.push_back(subject.describe(surveys_.back()));
    }
}

void LayoutWork::openAlongSeams()
{
    std::size_t all = 0;
    for (const Survey& survey : surveys_)
        all += survey.mesh.triangleCount();
    for (std::size_t i = 0; i < surveys_.size(); ++i) {
        task_.throwIfCancelled();
        if (surveys_[i].mesh.triangleCount() == 0)
            continue;
        task_.beginPartOfStage(static_cast<double>(surveys_[i].mesh.triangleCount()) /
                               static_cast<double>(all));
        openAlongSeams(i);
    }
}

void LayoutWork::openAlongSeams(std::size_t part)
{
    const DocumentGeometry& subject = geometry(part);
    const SeamSearchOptions& options = task_.options.search;
    const std::size_t slot = task_.options.common.slot;
    const bool isMapped = subject.uvs[slot].exists();
    if (options.choice.value_or(isMapped ? NoSeams : AutoSeams) == NoSeams)
        return;
    surveys_[part] = surveyForSeams(subject, slot);
    SeamProposal seams = proposeSeams(subject, surveys_[part], options, task_.console);
    if (seams.answer.outcome == Success)
        seams.answer = cutMesh(subject, seams.sides, task_.console, surveys_[part]);
    noteSeams(seams, part);
}

void LayoutWork::noteSeams(SeamProposal& seams, std::size_t part)
{
    if (seams.answer.outcome == Cancelled)
        throw CommandError(Interrupted, "cancelled; nothing was written");
    if (seams.answer.outcome == Failure) {
        entry(part).warnings.push_back("no seams could be found: " + seams.answer.error());
        return;
    }
    seams.found.islands = surveys_[part].islands.count();
    entry(part).foundSeams = seams.found;
    entry(part).closedIslands = islandsThat(surveys_[part], surveys_[part].islands.isClosed);
}

void LayoutWork::makeParts()
{
    for (std::size_t i = 0; i < surveys_.size(); ++i)
        parts.push_back(makePart(geometry(i), subjects_[i].number(), surveys_[i]));
}

bool LayoutWork::isEmpty() const
{
    return std::all_of(parts.begin(), parts.end(), [](const Part& part) { return part.isEmpty(); });
}

void LayoutWork::pack()
{
    const PackOptions& options = task_.options.pack;
    std::vector<Part*> together;
    const auto packThem = [&](const std::string& failure) {
        kyUnfold3D::PackCover cover;
        throwUnlessSuccess(packParts(together, options, task_.console, cover), failure);
        task_.report.packings.push_back({cover.covered, cover.mostCovered});
        together.clear();
    };
    for (Part& part : parts) {
        if (part.isEmpty())
            continue;
        together.push_back(&part);
        if (options.atlas == SharedAtlas)
            continue;
        task_.beginPartOfStage(1.0 / static_cast<double>(parts.size()));
        packThem("geometry " + std::to_string(part.geometry) + " can't be packed");
    }
    if (!together.empty())
        packThem("the islands can't be packed");
}

void LayoutWork::putIntoDocument(LayoutDemands demands, bool isPacked)
{
    const PackOptions& options = task_.options.pack;
    if (isPacked) {
        boxes_ = boxesOf(options.settings);
        demands.gap = std::max(0.0, options.gap * texelSize(options) - distanceTolerance);
        demands.margin =
            std::max(0.0, options.marginTexels() * texelSize(options) - distanceTolerance);
        task_.report.texelsPerUnit = 1.0 / texelSize(options);
    }
    const bool vIsTurned = traitsOfFormat(task_.options.output).vRunsDownward;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        noteKeptIslands(i);
        if (parts[i].isEmpty())
            continue;
        round(parts[i], heldOf(parts[i]), vIsTurned);
        const std::size_t slot = task_.options.common.slot;
        const CornerVertices before = verticesFor(geometry(i), slot, surveys_[i].need);
        entry(i).splitPolygons = subjects_[i].write(valuesOf(parts[i], before, geometry(i)), slot);
    }
    check(demands);
}

void LayoutWork::writeFiles(double share)
{
    task_.stage("write", share, [this] { writeDocument(task_.document, task_.options.output); });
    task_.draw(layout_, boxes_);
}

/// Islands that were neither closed nor given new UVs.
void LayoutWork::noteKeptIslands(std::size_t part)
{
    const Survey& survey = surveys_[part];
    const std::vector<char> isLeftOut = trianglesLeftOut(part);
    std::vector<char> isKept(survey.islands.count(), 0);
    std::size_t islandsDone = survey.islands.count();
    for (std::size_t t = 0; t < survey.mesh.triangleCount(); ++t) {
        char& kept = isKept[static_cast<std::size_t>(survey.islands.ofTriangle[t])];
        if (kept == 0 && isLeftOut[survey.mesh.sourceTriangle[t]] != 0) {
            --islandsDone;
            kept = survey.isClosed(t) ? 2 : 1;
        }
    }
    std::replace(isKept.begin(), isKept.end(), char{2}, char{0});
    entry(part).islandsDone = islandsDone;
    entry(part).keptIslands = islandsThat(survey, isKept);
}

/// [triangle of the geometry] 1 for those that the part is without.
std::vector<char> LayoutWork::trianglesLeftOut(std::size_t part) const
{
    std::vector<char> isLeftOut(geometry(part).triangleCount(), 1);
    for (const std::uint32_t triangle : parts[part].mesh.sourceTriangle)
        isLeftOut[triangle] = 0;
    return isLeftOut;
}

void LayoutWork::check(LayoutDemands demands)
{
    const bool isShared = task_.options.pack.atlas == SharedAtlas || parts.size() == 1;
    const std::size_t slot = task_.options.common.slot;
    std::string lacks;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const Survey survey = surveyGeometry(geometry(i), slot, WithUVs);
        DocumentLayout own;
        subjects_[i].addTo(own, slot, survey, trianglesLeftOut(i));
        entry(i).distortion = measureDistortion(own, scenePositions(task_.document, own));
        layout_.add(own);
        if (!held.isEmpty())
            noteLines(findLines(layout_, sidesAmong(survey.mesh.sourceTriangle, held)),
                      std::vector<char>(survey.islands.count(), 1), entry(i));
        if (parts.size() == 1)
            continue;
        const CheckReport found = checkDocumentLayout(own, boxes_);
        if (!isShared && lacks.empty())
            lacks = shortcomings(found, demands);
        entry(i).check = found;
    }
    if (isShared) {
        const CheckReport found = checkDocumentLayout(layout_, boxes_);
        if (parts.size() == 1)
            entry(0).check = found;
        lacks = shortcomings(found, demands);
        task_.report.check = found;
    }
    if (!lacks.empty())
        throw CommandError(Unsound,
                           "the result failed its check, nothing was written: it has " + lacks);
}

} // namespace uvtool
