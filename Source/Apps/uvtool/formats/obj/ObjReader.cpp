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
        : _path(path), _text(text)
    {}

    ObjFile read()
    {
        ObjStatements statements(_text);
        ObjStatement statement;
        while (statements.next(statement))
            take(statement);
        checkRanges();
        return std::move(_file);
    }

private:
    void take(const ObjStatement& statement)
    {
        _here = static_cast<std::size_t>(statement.keyword.data() - _text.data());
        if (statement.keyword == "v")
            takePosition(statement.rest);
        else if (statement.keyword == "vt")
            takeUV(statement.rest);
        else if (statement.keyword == "vn")
            takeNormal(statement.rest);
        else if (statement.keyword == "f")
            takeFace(statement.rest);
        else if (statement.keyword == "o")
            _file.objects.push_back({nameIn(statement.rest), faceCount()});
        else if (statement.keyword == "usemtl")
            _material = materialNumber(nameIn(statement.rest));
    }

    void takePosition(std::string_view rest)
    {
        const std::size_t count = takeNumbers(rest, "vertex");
        if (count < 3)
            fail("a vertex with " + std::to_string(count) + " coordinates; it needs 3");
        _file.positions.push_back({_numbers[0], _numbers[1], _numbers[2]});
        if (count < 6)
            return;
        // Red, green and blue end the line; a weight may stand before them.
        const std::size_t red = count == 7 ? 4 : 3;
        _file.colors.resize(_file.positions.size());
        _file.coloredBefore.resize(_file.positions.size());
        _file.coloredBefore.back() = 1;
        _file.colors.back() = {asFloat(red), asFloat(red + 1), asFloat(red + 2), 1.0F};
    }

    void takeUV(std::string_view rest)
    {
        const std::size_t count = takeNumbers(rest, "texture coordinate");
        if (count < 1)
            fail("a texture coordinate without numbers");
        _file.uvs.push_back({asFloat(0), count > 1 ? asFloat(1) : 0.0F});
    }

    void takeNormal(std::string_view rest)
    {
        if (takeNumbers(rest, "normal") < 3)
            fail("a normal with less than 3 coordinates");
        _file.normals.push_back({asFloat(0), asFloat(1), asFloat(2)});
    }

    void takeFace(std::string_view rest)
    {
        const std::size_t first = _file.corners.size();
        for (std::string_view word = takeWord(rest); !word.empty(); word = takeWord(rest)) {
            const ObjCornerText text = splitCorner(word);
            _file.corners.push_back({number(text.v, _file.positions.size(), "vertex"),
                                     number(text.vt, _file.uvs.size(), "texture coordinate"),
                                     number(text.vn, _file.normals.size(), "normal")});
            if (_file.corners.back().v == absentIndex)
                fail("a face corner without a vertex number: \"" + std::string(word) + "\"");
        }
        const std::size_t count = _file.corners.size() - first;
        if (count < 3)
            fail("a face with " + std::to_string(count) +
                 " corners; it needs 3 (is the file complete?)");
        _file.faceOffsets.push_back(static_cast<std::uint32_t>(_file.corners.size()));
        _file.faceAt.push_back(_here);
        _file.faceMaterial.push_back(_material);
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
            if (count < _numbers.size())
                _numbers[count] = value;
            ++count;
        }
        return std::min(count, _numbers.size());
    }

    float asFloat(std::size_t k) const { return static_cast<float>(_numbers[k]); }

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
        for (std::size_t face = 0; face < _file.faceAt.size(); ++face) {
            _here = _file.faceAt[face];
            for (std::uint32_t c = _file.faceOffsets[face]; c < _file.faceOffsets[face + 1]; ++c) {
                const ObjFile::Corner& corner = _file.corners[c];
                checkRange(corner.v, _file.positions.size(), "vertex");
                checkRange(corner.vt, _file.uvs.size(), "texture coordinate");
                checkRange(corner.vn, _file.normals.size(), "normal");
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
            1 + std::count(_text.begin(), _text.begin() + static_cast<std::ptrdiff_t>(_here), '\n');
        throw FileError(FileError::Read, _path, "line " + std::to_string(line) + ": " + what);
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
        const auto next = static_cast<std::int32_t>(_file.materials.size());
        const auto entry = _materialNumbers.try_emplace(name, next);
        if (entry.second)
            _file.materials.push_back(std::move(name));
        return entry.first->second;
    }

    std::uint32_t faceCount() const { return static_cast<std::uint32_t>(_file.faceAt.size()); }

    const std::filesystem::path& _path;
    std::string_view _text;
    std::size_t _here = 0;
    ObjFile _file;
    std::array<double, 7> _numbers{};
    std::int32_t _material = -1;
    std::map<std::string, std::int32_t> _materialNumbers;
};

/// Renumbers the values that one geometry uses, in order of first use.
class LocalNumbers
{
public:
    explicit LocalNumbers(std::size_t count) : _local(count, absentIndex) {}

    /// Forgets the geometry before; only what it touched.
    void startGeometry(std::vector<std::uint32_t>& used)
    {
        if (_used != nullptr) {
            for (const std::uint32_t number : *_used)
                _local[number] = absentIndex;
        }
        _used = &used;
    }

    std::uint32_t of(std::uint32_t number)
    {
        if (number == absentIndex)
            return absentIndex;
        if (_local[number] == absentIndex) {
            _local[number] = static_cast<std::uint32_t>(_used->size());
            _used->push_back(number);
        }
        return _local[number];
    }

private:
    std::vector<std::uint32_t> _local;
    std::vector<std::uint32_t>* _used = nullptr;
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
        : _file(file), _positions(file.positions.size()), _uvs(file.uvs.size()),
          _normals(file.normals.size())
    {}

    /// `numbers` has to stay where it is until the next geometry is built.
    DocumentGeometry build(std::uint32_t firstFace, std::uint32_t endFace,
                           ObjPayload::Numbers& numbers)
    {
        _positions.startGeometry(numbers.vOfPosition);
        _uvs.startGeometry(numbers.vtOfValue);
        _normals.startGeometry(numbers.vnOfNormal);

        DocumentGeometry geometry;
        for (std::uint32_t face = firstFace; face < endFace; ++face)
            addFace(geometry, face);
        gather(geometry.positions, _file.positions, numbers.vOfPosition);
        gather(geometry.uvs[0], _file.uvs, numbers.vtOfValue);
        gather(geometry.normals, _file.normals, numbers.vnOfNormal);
        gatherColors(geometry, _file, numbers.vOfPosition);
        triangulatePolygons(geometry);
        return geometry;
    }

private:
    void addFace(DocumentGeometry& geometry, std::uint32_t face)
    {
        for (std::uint32_t c = _file.faceOffsets[face]; c < _file.faceOffsets[face + 1]; ++c) {
            geometry.positions.ofCorner.push_back(_positions.of(_file.corners[c].v));
            geometry.uvs[0].ofCorner.push_back(_uvs.of(_file.corners[c].vt));
            geometry.normals.ofCorner.push_back(_normals.of(_file.corners[c].vn));
        }
        geometry.polygonOffsets.push_back(
            static_cast<std::uint32_t>(geometry.positions.ofCorner.size()));
        geometry.sourceOfPolygon.push_back(face);
        geometry.materialOfPolygon.push_back(_file.faceMaterial[face]);
    }

    const ObjFile& _file;
    LocalNumbers _positions;
    LocalNumbers _uvs;
    LocalNumbers _normals;
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
