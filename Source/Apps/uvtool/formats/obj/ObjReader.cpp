#include "formats/obj/ObjFormat.h"

#include "document/FileError.h"
#include "document/NumberText.h"
#include "document/OutputFile.h"
#include "document/Triangulate.h"
#include "formats/obj/ObjText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <map>

// The file is read in two steps: the statements into flat arrays with the file's own numbers, then
// one geometry after another out of these. An index may point forward, so that ranges can only be
// checked in between.

namespace uvtool
{
namespace
{

/// Everything the statements say, with numbers counted from 0 over the file.
struct ObjFile
{
    struct Corner
    {
        std::uint32_t v = absentIndex;
        std::uint32_t vt = absentIndex;
        std::uint32_t vn = absentIndex;
    };

    struct Object
    {
        std::string name;
        std::uint32_t firstFace = 0;
    };

    std::vector<Vec3d> positions;
    std::vector<Vec4f> colors; ///< filled up to the last position that has one
    std::vector<std::uint32_t>
        coloredBefore; ///< [positions] or shorter: 1 where a colour was given
    std::vector<Vec2f> uvs;
    std::vector<Vec3f> normals;

    std::vector<Corner> corners;
    std::vector<std::uint32_t> faceOffsets{0};
    std::vector<std::size_t> faceAt; ///< where in the text the face stands, for messages
    std::vector<std::int32_t> faceMaterial;
    std::vector<Object> objects;
    std::vector<std::string> materials;
};

/// Reads the statements and refuses what can't be right, naming the line.
class StatementReader
{
public:
    StatementReader(const std::filesystem::path& path, std::string_view text)
        : path_(path), text_(text)
    {}

    ObjFile read()
    {
        refuseBinary();
        ObjStatements statements(text_);
        ObjStatement statement;
        while (statements.next(statement))
            take(statement);
        checkRanges();
        return std::move(file_);
    }

private:
    /// No text holds a zero byte, and what a binary file holds by chance gives no good message.
    void refuseBinary() const
    {
        if (text_.find('\0') != std::string_view::npos)
            throw FileError(FileError::Read, path_,
                            "is no OBJ file: not a text (is it a binary file under the name of "
                            "one?)");
    }

    void take(const ObjStatement& statement)
    {
        here_ = static_cast<std::size_t>(statement.keyword.data() - text_.data());
        if (statement.keyword == "v")
            takePosition(statement.rest);
        else if (statement.keyword == "vt")
            takeUV(statement.rest);
        else if (statement.keyword == "vn")
            takeNormal(statement.rest);
        else if (statement.keyword == "f")
            takeFace(statement.rest);
        else if (statement.keyword == "o")
            file_.objects.push_back({nameIn(statement.rest), faceCount()});
        else if (statement.keyword == "usemtl")
            material_ = materialNumber(nameIn(statement.rest));
    }

    void takePosition(std::string_view rest)
    {
        const std::size_t count = takeNumbers(rest, "vertex");
        if (count < 3)
            fail("a vertex with " + std::to_string(count) + " coordinates; it needs 3");
        file_.positions.push_back({numbers_[0], numbers_[1], numbers_[2]});
        if (count < 6)
            return;
        // Red, green and blue end the line; a weight may stand before them.
        const std::size_t red = count == 7 ? 4 : 3;
        file_.colors.resize(file_.positions.size());
        file_.coloredBefore.resize(file_.positions.size());
        file_.coloredBefore.back() = 1;
        file_.colors.back() = {asFloat(red), asFloat(red + 1), asFloat(red + 2), 1.0F};
    }

    void takeUV(std::string_view rest)
    {
        const std::size_t count = takeNumbers(rest, "texture coordinate");
        if (count < 1)
            fail("a texture coordinate without numbers");
        file_.uvs.push_back({asFloat(0), count > 1 ? asFloat(1) : 0.0F});
    }

    void takeNormal(std::string_view rest)
    {
        if (takeNumbers(rest, "normal") < 3)
            fail("a normal with less than 3 coordinates");
        file_.normals.push_back({asFloat(0), asFloat(1), asFloat(2)});
    }

    void takeFace(std::string_view rest)
    {
        const std::size_t first = file_.corners.size();
        for (std::string_view word = takeWord(rest); !word.empty(); word = takeWord(rest)) {
            const ObjCornerText text = splitCorner(word);
            file_.corners.push_back({number(text.v, file_.positions.size(), "vertex"),
                                     number(text.vt, file_.uvs.size(), "texture coordinate"),
                                     number(text.vn, file_.normals.size(), "normal")});
            if (file_.corners.back().v == absentIndex)
                fail("a face corner without a vertex number: \"" + std::string(word) + "\"");
        }
        const std::size_t count = file_.corners.size() - first;
        if (count < 3)
            fail("a face with " + std::to_string(count) +
                 " corners; it needs 3 (is the file complete?)");
        file_.faceOffsets.push_back(static_cast<std::uint32_t>(file_.corners.size()));
        file_.faceAt.push_back(here_);
        file_.faceMaterial.push_back(material_);
    }

    /// Reads all numbers of a statement; how many there were.
    std::size_t takeNumbers(std::string_view rest, const char* what)
    {
        std::size_t count = 0;
        for (std::string_view word = takeWord(rest); !word.empty(); word = takeWord(rest)) {
            double value = 0;
            if (!readNumber(word, value))
                fail("a " + std::string(what) + " with \"" + std::string(word) +
                     "\", which is no finite number");
            if (count < numbers_.size())
                numbers_[count] = value;
            ++count;
        }
        return std::min(count, numbers_.size());
    }

    float asFloat(std::size_t k) const { return static_cast<float>(numbers_[k]); }

    /// A number of a face corner, counted from 0. Negative ones count back from the last value
    /// read.
    std::uint32_t number(std::string_view text, std::size_t readSoFar, const char* what)
    {
        if (text.empty())
            return absentIndex;
        std::int64_t value = 0;
        const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
        if (result.ptr != text.data() + text.size() || result.ec == std::errc::invalid_argument)
            fail("a face with \"" + std::string(text) + "\" where a number of a " + what +
                 " should stand");
        if (value < 0)
            value += static_cast<std::int64_t>(readSoFar) + 1;
        if (result.ec != std::errc{} || value < 1 || value >= absentIndex)
            failRange(text, what);
        return static_cast<std::uint32_t>(value - 1);
    }

    void checkRanges()
    {
        for (std::size_t face = 0; face < file_.faceAt.size(); ++face) {
            here_ = file_.faceAt[face];
            for (std::uint32_t c = file_.faceOffsets[face]; c < file_.faceOffsets[face + 1]; ++c) {
                const ObjFile::Corner& corner = file_.corners[c];
                checkRange(corner.v, file_.positions.size(), "vertex");
                checkRange(corner.vt, file_.uvs.size(), "texture coordinate");
                checkRange(corner.vn, file_.normals.size(), "normal");
            }
        }
    }

    void checkRange(std::uint32_t number, std::size_t count, const char* what)
    {
        if (number != absentIndex && number >= count)
            failRange(std::to_string(std::uint64_t{number} + 1), what);
    }

    [[noreturn]] void failRange(std::string_view number, const char* what) const
    {
        fail("a face with " + std::string(what) + " " + std::string(number) +
             ", which is not in the file");
    }

    [[noreturn]] void fail(const std::string& what) const
    {
        const auto line =
            1 + std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(here_), '\n');
        throw FileError(FileError::Read, path_, "line " + std::to_string(line) + ": " + what);
    }

    static std::string nameIn(std::string_view rest)
    {
        const std::size_t first = rest.find_first_not_of(" \t");
        if (first == std::string_view::npos)
            return {};
        return std::string(rest.substr(first, rest.find_last_not_of(" \t") + 1 - first));
    }

    std::int32_t materialNumber(std::string name)
    {
        const auto next = static_cast<std::int32_t>(file_.materials.size());
        const auto entry = materialNumbers_.try_emplace(name, next);
        if (entry.second)
            file_.materials.push_back(std::move(name));
        return entry.first->second;
    }

    std::uint32_t faceCount() const { return static_cast<std::uint32_t>(file_.faceAt.size()); }

    const std::filesystem::path& path_;
    std::string_view text_;
    std::size_t here_ = 0;
    ObjFile file_;
    std::array<double, 7> numbers_{};
    std::int32_t material_ = -1;
    std::map<std::string, std::int32_t> materialNumbers_;
};

/// Renumbers the values that one geometry uses, in order of first use.
class LocalNumbers
{
public:
    explicit LocalNumbers(std::size_t count) : local_(count, absentIndex) {}

    /// Forgets the geometry before; only what it touched.
    void startGeometry(std::vector<std::uint32_t>& used)
    {
        if (used_ != nullptr) {
            for (const std::uint32_t number : *used_)
                local_[number] = absentIndex;
        }
        used_ = &used;
    }

    std::uint32_t of(std::uint32_t number)
    {
        if (number == absentIndex)
            return absentIndex;
        if (local_[number] == absentIndex) {
            local_[number] = static_cast<std::uint32_t>(used_->size());
            used_->push_back(number);
        }
        return local_[number];
    }

private:
    std::vector<std::uint32_t> local_;
    std::vector<std::uint32_t>* used_ = nullptr;
};

template <class T>
void gather(CornerAttribute<T>& attribute, const std::vector<T>& all,
            const std::vector<std::uint32_t>& used)
{
    attribute.values.reserve(used.size());
    for (const std::uint32_t number : used)
        attribute.values.push_back(all[number]);
    if (used.empty())
        attribute.ofCorner.clear();
}

/// Colours stand in the vertex lines, so they go by the numbers of the positions.
void gatherColors(DocumentGeometry& geometry, const ObjFile& file,
                  const std::vector<std::uint32_t>& vOfPosition)
{
    const auto hasColor = [&file](std::uint32_t v) {
        return v < file.coloredBefore.size() && file.coloredBefore[v] != 0;
    };
    std::vector<std::uint32_t> colorOfPosition(vOfPosition.size(), absentIndex);
    for (std::size_t p = 0; p < vOfPosition.size(); ++p) {
        if (!hasColor(vOfPosition[p]))
            continue;
        colorOfPosition[p] = static_cast<std::uint32_t>(geometry.colors.values.size());
        geometry.colors.values.push_back(file.colors[vOfPosition[p]]);
    }
    if (geometry.colors.values.empty())
        return;
    for (const std::uint32_t position : geometry.positions.ofCorner)
        geometry.colors.ofCorner.push_back(colorOfPosition[position]);
}

/// Makes geometries out of the flat arrays.
class GeometryBuilder
{
public:
    explicit GeometryBuilder(const ObjFile& file)
        : file_(file), positions_(file.positions.size()), uvs_(file.uvs.size()),
          normals_(file.normals.size())
    {}

    /// `numbers` has to stay where it is until the next geometry is built.
    DocumentGeometry build(std::uint32_t firstFace, std::uint32_t endFace,
                           ObjPayload::Numbers& numbers)
    {
        positions_.startGeometry(numbers.vOfPosition);
        uvs_.startGeometry(numbers.vtOfValue);
        normals_.startGeometry(numbers.vnOfNormal);

        DocumentGeometry geometry;
        for (std::uint32_t face = firstFace; face < endFace; ++face)
            addFace(geometry, face);
        gather(geometry.positions, file_.positions, numbers.vOfPosition);
        gather(geometry.uvs[0], file_.uvs, numbers.vtOfValue);
        gather(geometry.normals, file_.normals, numbers.vnOfNormal);
        gatherColors(geometry, file_, numbers.vOfPosition);
        triangulatePolygons(geometry);
        return geometry;
    }

private:
    void addFace(DocumentGeometry& geometry, std::uint32_t face)
    {
        for (std::uint32_t c = file_.faceOffsets[face]; c < file_.faceOffsets[face + 1]; ++c) {
            geometry.positions.ofCorner.push_back(positions_.of(file_.corners[c].v));
            geometry.uvs[0].ofCorner.push_back(uvs_.of(file_.corners[c].vt));
            geometry.normals.ofCorner.push_back(normals_.of(file_.corners[c].vn));
        }
        geometry.polygonOffsets.push_back(
            static_cast<std::uint32_t>(geometry.positions.ofCorner.size()));
        geometry.sourceOfPolygon.push_back(face);
        geometry.materialOfPolygon.push_back(file_.faceMaterial[face]);
    }

    const ObjFile& file_;
    LocalNumbers positions_;
    LocalNumbers uvs_;
    LocalNumbers normals_;
};

/// The faces before the first `o`, if any, are an object too, named after the file.
std::vector<ObjFile::Object> objectsWithFaces(const ObjFile& file, const std::string& fileName)
{
    std::vector<ObjFile::Object> all{{fileName, 0}};
    all.insert(all.end(), file.objects.begin(), file.objects.end());

    const auto faceCount = static_cast<std::uint32_t>(file.faceAt.size());
    std::vector<ObjFile::Object> filled;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::uint32_t end = i + 1 < all.size() ? all[i + 1].firstFace : faceCount;
        if (end > all[i].firstFace)
            filled.push_back(all[i]);
    }
    return filled;
}

} // namespace

Document readObj(const std::filesystem::path& path)
{
    auto payload = std::make_shared<ObjPayload>();
    payload->text = readWholeFile(path);

    const ObjFile file = StatementReader(path, payload->text).read();
    if (file.faceAt.empty())
        throw FileError(FileError::Read, path, "holds no faces (is it an OBJ file, and complete?)");
    payload->vtCount = static_cast<std::uint32_t>(file.uvs.size());

    Document document;
    for (const std::string& name : file.materials)
        document.materials.push_back({name, {}});

    const std::vector<ObjFile::Object> objects = objectsWithFaces(file, path.stem().string());
    payload->geometries.resize(objects.size());
    GeometryBuilder builder(file);
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const auto end = i + 1 < objects.size() ? objects[i + 1].firstFace
                                                : static_cast<std::uint32_t>(file.faceAt.size());
        DocumentGeometry geometry =
            builder.build(objects[i].firstFace, end, payload->geometries[i]);
        geometry.name = objects[i].name;
        geometry.source = i;
        document.geometries.push_back(std::move(geometry));
    }
    document.payload = std::move(payload);
    return document;
}

} // namespace uvtool
