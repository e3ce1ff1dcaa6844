#pragma once

#include "Unfold3D/seams/JoinPatches.h"
#include "Unfold3D/seams/PatchLayout.h"
#include "Unfold3D/seams/SeamMesh.h"
#include "Unfold3D/seams/Stretches.h"

#include <array>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace unfold3d
{

/// A piece that is to be sewn to a larger one.
struct JoinArm
{
    int small;
    int large;
    std::vector<int> edges;
    std::int64_t order; ///< lower first
};

/// Tells which neighbours to try to sew next, and along which stretch of their common border.
/// Remembers what failed.
class JoinCandidates
{
public:
    /// All are kept by reference and may change between calls.
    ///
    /// isSeam   [edge]
    /// pieceOf  [triangle]  -1 in none
    JoinCandidates(const SeamMesh& mesh, const JoinRules& rules,
                   const std::vector<PatchLayout>& pieces, std::span<const char> isSeam,
                   std::span<const int> pieceOf);

    /// The best of all stretches that are worth a trial, such that no piece is sewn to one that is
    /// sewn to another; best first. Costs a sort of the seams and a pass over all pieces.
    std::vector<JoinArm> choose();

    /// Two pieces don't fit along this stretch.
    void giveUp(const JoinArm& arm);
    /// A piece has become larger, and may fit now what it didn't.
    void renew(int piece) { generation_[static_cast<std::size_t>(piece)] = nextGeneration_++; }
    /// Of a small piece as it is, and a large one whatever it has become.
    std::uint64_t keyOf(const JoinArm& arm) const;

private:
    struct SeamEdge
    {
        std::uint64_t pair; ///< of pieces, the lower one in the higher half
        int edge;
    };
    /// What became of two pieces so far.
    struct Failure
    {
        std::size_t tries = 0;
        std::vector<int> edges; ///< of the last one
    };

    void sortSeams();
    void measurePerimeters();
    void considerPair(const std::vector<int>& edges, std::vector<JoinArm>& arms);
    Stretch nextStretch(const JoinArm& arm, const std::vector<int>& edges);
    std::array<int, 2> bySize(int a, int b) const;
    bool isWorthTrial(const JoinArm& arm) const;
    std::size_t triesOf(const JoinArm& arm) const;

    const SeamMesh& mesh_;
    const JoinRules& rules_;
    const std::vector<PatchLayout>& pieces_;
    std::span<const char> isSeam_;
    std::span<const int> pieceOf_;
    StretchFinder stretches_;
    std::vector<SeamEdge> seams_;    ///< that may still go
    std::vector<double> perimeters_; ///< [piece]
    std::vector<int> generation_;    ///< [piece] another number after each join
    int nextGeneration_;
    std::unordered_map<std::uint64_t, Failure> failures_; ///< by keyOf
};

} // namespace unfold3d
