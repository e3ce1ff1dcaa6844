#pragma once

#include "document/Document.h"
#include "layout/UVBox.h"

#include "UVUtils/projection/kyUVTriplanarProjectionSettings.h"
#include "UVUtils/repair/kyTransferGeoProperties.h"
#include "UVUtils/solver/OptimizeSettings.h"
#include "UVUtils/solver/PackSettings.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace uvtool
{

/// What every command knows.
struct CommonOptions
{
    std::filesystem::path input;
    std::size_t slot = 0;
    std::optional<std::size_t> geometry; ///< one of the file's; all without
    bool shell = false;                  ///< those of the file are surfaces of a single one
    std::filesystem::path picture;       ///< of the layout; empty for none
    std::filesystem::path view;          ///< picture of the mesh; empty for none
    bool json = false;
    bool quiet = false;
    bool verbose = false;
};

/// Which islands are laid out together.
enum Atlas : std::int32_t
{
    SharedAtlas, ///< those of all geometries of the file: nothing in it overlaps
    AtlasEach    ///< those of each geometry by themselves
};

struct PackOptions
{
    Atlas atlas = SharedAtlas;
    int resolution = 1024;             ///< texels along the box
    double gap = 2.0;                  ///< between islands, in texels
    std::optional<double> margin;      ///< to the box, in texels; half the gap without
    kyUnfold3D::PackSettings settings; ///< the rest; its paddings follow from the lengths above

    double marginTexels() const { return margin.value_or(gap / 2); }
};

/// Where seams come from that open a mesh.
enum SeamChoice : std::int32_t
{
    NoSeams,
    OrganicSeams,
    ManufacturedSeams,
    BakingSeams,
    AutoSeams ///< organic or manufactured ones, by the kind of the surface
};

/// How the library shall search for seams; its own values where nothing is given.
struct SeamSearchOptions
{
    /// Without, AutoSeams for a geometry that has no UVs, else NoSeams.
    std::optional<SeamChoice> choice;
    std::optional<double> angle;         ///< manufactured, baking: in degrees
    std::optional<double> amount;        ///< organic: 0 to 1
    bool pipes = false;                  ///< organic
    std::optional<double> minPatchArea;  ///< manufactured: as a part of the whole, 0 to 1
    std::optional<int> minPatchPolygons; ///< baking
};

struct UnfoldOptions
{
    std::optional<int> iterations; ///< the library's default without
    bool allowCrossings = false;
    double room = 0.0; ///< as a share of the side of a square of an island's area
    bool pack = true;
};

/// What the commands that make and close seams have in common.
struct SeamOptions
{
    std::optional<std::filesystem::path> edges; ///< a file of vertex pairs
    bool undoCheck = false;                     ///< undo, redo and compare
};

struct CutOptions
{
    std::optional<double> angle; ///< cut the edges that bend by more degrees
};

/// Without edges and seeds all islands are sewn.
struct SewOptions
{
    std::vector<unsigned int> seeds; ///< a vertex of each island to sew
    bool otherIslandOnly = false;
    bool matchUVs = false;
};

/// What is relaxed, and how; one of the selections at most. Without any all is.
struct RelaxOptions
{
    std::vector<unsigned int> islands; ///< a vertex of each island
    std::vector<unsigned int> vertices;
    std::optional<std::filesystem::path> vertexFile;
    kyUnfold3D::OptimizeSettings settings;
};

/// Files of edges that are to lie along an axis of the UV plane.
struct StraightOptions
{
    std::optional<std::filesystem::path> horizontal;
    std::optional<std::filesystem::path> vertical;

    bool isGiven() const { return horizontal || vertical; }
    /// The option by which they were given, for messages.
    const char* name() const { return horizontal ? "--horizontal" : "--vertical"; }
};

/// In pixels; 0, 0 for none.
struct ImageSize
{
    unsigned int width = 0;
    unsigned int height = 0;
};

/// What an image is thrown from. Settings that aren't given follow from a file of settings, or else
/// fit the meshes.
struct ProjectOptions
{
    enum Kind : std::int32_t
    {
        Planar,
        Cylindrical,
        Triplanar
    };
    /// Of the meshes, as the camera sees them.
    enum Side : std::int32_t
    {
        Front,
        Back,
        Left,
        Right,
        Top,
        Bottom
    };
    enum Axis : std::int32_t
    {
        AxisX,
        AxisY,
        AxisZ
    };

    Kind kind = Planar;
    ImageSize image;
    bool isZUp = false;                               ///< for the camera
    std::filesystem::path settingsFile;               ///< empty for none
    std::filesystem::path savedFile;                  ///< of settings to write; empty for none
    std::map<std::string, std::vector<double>> given; ///< by the names of SettingOptions.h
    std::optional<Side> from;                         ///< planar: in place of a rotation
    std::optional<Axis> axis;                         ///< cylindrical: the same
    std::optional<kyUVTriplanarProjectionSettings::Mode> mode;
};

/// What the commands that move UVs without new seams have in common.
struct EditOptions
{
    std::vector<unsigned int> islands; ///< a vertex of each island to edit; all without
};

/// Scales, then turns, then moves.
struct TransformOptions
{
    Vec2f scale{1.0F, 1.0F}; ///< neither is 0
    double degrees = 0.0;    ///< from u to v
    Vec2f move{0.0F, 0.0F};
    std::optional<Vec2f> about; ///< what scaling and turning leave in place; the centre without
};

/// The patch of the scene that the unit square of UVs stands for.
struct WorldSizeOptions
{
    double width = 0.0;
    double height = 0.0;
};

/// Control points over a rectangle.
struct LatticeOptions
{
    unsigned int resU = 0;
    unsigned int resV = 0;
    std::optional<UVBox> box;     ///< the rectangle; the bounds of the UVs without
    std::filesystem::path points; ///< a file of them; empty for none
    std::filesystem::path saved;  ///< a file to start from; empty for none
    double amount = 1.0;          ///< of the way to go, 0 to 1
};

/// A path along edges: the shortest through some vertices, or on from an edge. One of the two.
struct PathOptions
{
    std::vector<unsigned int> vertices;
    bool alongBorders = false;

    std::vector<unsigned int> edge; ///< its two vertices
    double surfaceAngle = 40.0;     ///< of the next edge to the one before, in degrees
    double edgeAngle = 60.0;
    bool bordersOnly = false;
    bool stopAtBorders = false;

    const std::vector<unsigned int>& ids() const { return edge.empty() ? vertices : edge; }
    /// The option by which they were given, for messages.
    const char* name() const { return edge.empty() ? "--vertices" : "--edge"; }
};

/// How the place on a source is found where a vertex lies.
using TransferMethod = kyTransferGeoProperties::SampleMethod;

/// Where UVs are carried over from, and how. The input is what gets them.
struct TransferOptions
{
    std::filesystem::path source;
    std::optional<std::size_t> geometry; ///< of the source; all without
    TransferMethod method = kyTransferGeoProperties::ClosestBVH;
    bool isByPlace = false;         ///< whatever the names of geometries
    std::vector<std::size_t> slots; ///< ascending, not empty once the options are read
};

struct IslandsOptions
{
    bool list = false; ///< tell the seeds as well
};

/// A command line that was understood.
struct Options
{
    enum Command : std::int32_t
    {
        Info,
        Islands,
        Unfold,
        Pack,
        Cut,
        Sew,
        Optimize,
        Constrain,
        Seams,
        Repair,
        Path,
        Project,
        Transfer,
        Transform,
        WorldSize,
        Lattice
    };

    Command command = Info;
    CommonOptions common;
    std::filesystem::path output;      ///< of the commands that write a mesh; empty for none
    std::filesystem::path edgesOutput; ///< a file of edges; empty for none
    IslandsOptions islands;
    PathOptions path;
    UnfoldOptions unfold;
    SeamSearchOptions search;
    PackOptions pack;
    SeamOptions seams;
    CutOptions cut;
    SewOptions sew;
    RelaxOptions relax;
    StraightOptions straight;
    ProjectOptions project;
    TransferOptions transfer;
    EditOptions edit;
    TransformOptions transform;
    WorldSizeOptions worldSize;
    LatticeOptions lattice;

    bool writesMesh() const
    {
        return command != Info && command != Islands && command != Path &&
               ((command != Seams && command != Lattice) || !output.empty());
    }
};

/// Reads a command line without the program's name. Empty when it only asked for help or the
/// version, which `answer` then holds. A command line that can't be understood is a CommandError of
/// status WrongUsage.
std::optional<Options> parseOptions(std::span<const std::string> arguments, std::string& answer);

} // namespace uvtool
