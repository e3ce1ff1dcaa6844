#include "formats/obj/ObjRewrite.h"

#include "formats/obj/UVLines.h"
#include "formats/obj/VertexLines.h"

#include <algorithm>
#include <array>
#include <functional>

namespace uvtool
{
namespace
{

/// The polygons of the document that one face of the file has become: one, which may have lost
/// corners, the triangles of one that was split, or none.
struct FacePolygons
{
    std::uint32_t geometry = absentIndex;
    std::uint32_t firstPolygon = 0;
    std::uint32_t count = 0;
};

std::vector<FacePolygons> polygonsOfFaces(const Document& document)
{
    std::vector<FacePolygons> faces;
    for (std::size_t g = 0; g < document.geometries.size(); ++g) {
        const std::vector<std::uint32_t>& sources = document.geometries[g].sourceOfPolygon;
        for (std::size_t p = 0; p < sources.size(); ++p) {
            if (sources[p] >= faces.size())
                faces.resize(std::size_t{sources[p]} + 1);
            FacePolygons& face = faces[sources[p]];
            if (face.count == 0)
                face = {static_cast<std::uint32_t>(g), static_cast<std::uint32_t>(p), 0};
            ++face.count;
        }
    }
    return faces;
}

/// Calls `replace` for each word and puts its answer in the word's place.
void replaceWords(std::string_view text, std::string& out,
                  const std::function<void(std::string_view word, std::string& out)>& replace)
{
    std::string_view rest = text;
    const char* done = text.data();
    for (std::string_view word = takeWord(rest); !word.empty(); word = takeWord(rest)) {
        out.append(done, word.data());
        replace(word, out);
        done = word.data() + word.size();
    }
    out.append(done, text.data() + text.size());
}

std::size_t countWords(std::string_view text)
{
    std::size_t count = 0;
    while (!takeWord(text).empty())
        ++count;
    return count;
}

/// A statement that names vertices but is no face, and how many words stand before these.
struct CurveKind
{
    std::string_view keyword;
    unsigned int parameterCount;
};

constexpr std::array curveKinds{CurveKind{"p", 0}, CurveKind{"l", 0}, CurveKind{"curv", 2},
                                CurveKind{"surf", 4}};

/// Null for other statements.
const CurveKind* curveKindOf(const ObjStatement& statement)
{
    const auto* const found =
        std::find_if(curveKinds.begin(), curveKinds.end(),
                     [&](const CurveKind& kind) { return kind.keyword == statement.keyword; });
    return found == curveKinds.end() ? nullptr : found;
}

std::string_view verticesOf(const ObjStatement& statement, const CurveKind& kind)
{
    std::string_view rest = statement.rest;
    for (unsigned int i = 0; i < kind.parameterCount; ++i)
        takeWord(rest);
    return rest;
}

class Rewriter
{
public:
    Rewriter(const Document& document, const ObjPayload& payload)
        : document_(document), payload_(payload), faces_(polygonsOfFaces(document)),
          lineEnd_(payload.text.find("\r\n") == std::string::npos ? "\n" : "\r\n"),
          isStarted_(document.geometries.size(), 0), vertexLines_(document, payload),
          uvLines_(document, payload)
    {}

    std::string rewrite()
    {
        keepValuesOfCurves();
        numberLines();
        return emit();
    }

private:
    const ObjPayload::Numbers& numbersOf(std::size_t g) const
    {
        return payload_.geometries[document_.geometries[g].source];
    }

    void keepValuesOfCurves()
    {
        forStatements([this](const ObjStatement& statement) {
            const CurveKind* const kind = curveKindOf(statement);
            if (kind == nullptr)
                return;
            std::string_view rest = verticesOf(statement, *kind);
            for (std::string_view word = takeWord(rest); !word.empty(); word = takeWord(rest))
                uvLines_.keep(absoluteNumber(splitCorner(word).vt, vtRead_));
        });
    }

    void numberLines()
    {
        forStatements([this](const ObjStatement& statement) {
            if (statement.keyword == "vt")
                uvLines_.numberLine(vtRead_, statement);
            else if (statement.keyword == "v")
                vertexLines_.numberLine(statement);
            if (const std::size_t g = geometryStartingHere(statement); g != absentIndex) {
                isStarted_[g] = 1;
                vertexLines_.numberCopies(g);
                uvLines_.numberNew(g);
            }
        });
    }

    std::string emit()
    {
        std::string out;
        out.reserve(payload_.text.size() + payload_.text.size() / 4);
        const char* done = payload_.text.data();
        std::fill(isStarted_.begin(), isStarted_.end(), char{0});
        forStatements([&](const ObjStatement& statement) {
            out.append(done, statement.line.data());
            done = statement.line.data() + statement.line.size();
            if (statement.keyword == "vt")
                emitOldValue(statement, out, done);
            else if (statement.keyword == "f")
                emitFace(statement, out, done);
            else if (const CurveKind* const kind = curveKindOf(statement))
                emitCurve(statement, verticesOf(statement, *kind), out);
            else
                emitOther(statement, out);
        });
        out.append(done, payload_.text.data() + payload_.text.size());
        return out;
    }

    void emitOldValue(const ObjStatement& statement, std::string& out, const char*& done)
    {
        if (uvLines_.writeLine(vtRead_))
            out.append(statement.line);
        else
            done = behindLineEnd(done);
    }

    void emitOther(const ObjStatement& statement, std::string& out)
    {
        out.append(statement.line);
        if (statement.keyword == "v")
            vertexLines_.writeLine();
    }

    void emitFace(const ObjStatement& statement, std::string& out, const char*& done)
    {
        if (const std::size_t g = geometryStartingHere(statement); g != absentIndex)
            emitNewLines(g, out);
        const FacePolygons face = facesRead_ < faces_.size() ? faces_[facesRead_] : FacePolygons{};
        if (face.count == 0)
            done = behindLineEnd(done);
        else if (face.count == 1 && countWords(statement.rest) == cornerCountOf(face))
            emitPolygon(statement, face, out);
        else
            emitPolygons(face, out);
    }

    std::size_t cornerCountOf(const FacePolygons& face) const
    {
        const std::vector<std::uint32_t>& offsets =
            document_.geometries[face.geometry].polygonOffsets;
        return offsets[face.firstPolygon + 1] - offsets[face.firstPolygon];
    }

    void emitNewLines(std::size_t g, std::string& out)
    {
        isStarted_[g] = 1;
        vertexLines_.writeCopies(g, lineEnd_, out);
        uvLines_.writeNew(g, lineEnd_, out);
    }

    /// The face as it stands, with the `v` and `vt` numbers of its corners changed where they have
    /// to.
    void emitPolygon(const ObjStatement& statement, const FacePolygons& face, std::string& out)
    {
        const DocumentGeometry& geometry = document_.geometries[face.geometry];
        std::uint32_t corner = geometry.polygonOffsets[face.firstPolygon];
        out.append(statement.line.data(), statement.rest.data());
        replaceWords(statement.rest, out, [&](std::string_view word, std::string& to) {
            const ObjCornerText text = splitCorner(word);
            const std::string v = vertexLines_.wordOf(face.geometry, corner, text.v);
            appendCorner({v, text.vt, text.vn}, uvLines_.numberOf(face.geometry, corner), to);
            ++corner;
        });
        out.append(statement.rest.data() + statement.rest.size(),
                   statement.line.data() + statement.line.size());
    }

    void appendCorner(const ObjCornerText& text, std::uint32_t vt, std::string& out) const
    {
        out += text.v;
        if (vt == absentIndex && text.vn.empty())
            return;
        out += '/';
        if (vt != absentIndex)
            out += uvLines_.wordFor(vt, text.vt);
        if (!text.vn.empty()) {
            out += '/';
            out += text.vn;
        }
    }

    /// New faces in the place of one.
    void emitPolygons(const FacePolygons& face, std::string& out) const
    {
        const DocumentGeometry& geometry = document_.geometries[face.geometry];
        const ObjPayload::Numbers& numbers = numbersOf(face.geometry);
        for (std::uint32_t i = 0; i < face.count; ++i) {
            const std::uint32_t polygon = face.firstPolygon + i;
            out += i == 0 ? "f" : lineEnd_ + "f";
            for (std::uint32_t c = geometry.polygonOffsets[polygon];
                 c < geometry.polygonOffsets[polygon + 1]; ++c)
            {
                const auto wordOf = [](std::uint32_t number) {
                    return std::to_string(std::uint64_t{number} + 1);
                };
                std::string vn;
                if (geometry.normals.has(c))
                    vn = wordOf(numbers.vnOfNormal[geometry.normals.ofCorner[c]]);
                const std::string v = vertexLines_.wordOf(face.geometry, c, {});
                out += ' ';
                appendCorner({v, {}, vn}, uvLines_.numberOf(face.geometry, c), out);
            }
        }
    }

    void emitCurve(const ObjStatement& statement, std::string_view vertices, std::string& out) const
    {
        out.append(statement.line.data(), vertices.data());
        replaceWords(vertices, out, [this](std::string_view word, std::string& to) {
            const ObjCornerText text = splitCorner(word);
            const std::uint32_t vt = absoluteNumber(text.vt, vtRead_);
            const std::string v = vertexLines_.wordOf(text.v);
            appendCorner({v, text.vt, text.vn}, uvLines_.numberOf(vt), to);
        });
        out.append(vertices.data() + vertices.size(),
                   statement.line.data() + statement.line.size());
    }

    /// The geometry whose first face this statement is and that has new lines; else absentIndex.
    std::size_t geometryStartingHere(const ObjStatement& statement) const
    {
        if (statement.keyword != "f" || facesRead_ >= faces_.size())
            return absentIndex;
        const std::size_t g = faces_[facesRead_].geometry;
        if (g == absentIndex || isStarted_[g] != 0 ||
            (uvLines_.newCount(g) == 0 && vertexLines_.copyCount(g) == 0))
            return absentIndex;
        return g;
    }

    const char* behindLineEnd(const char* at) const
    {
        const char* const end = payload_.text.data() + payload_.text.size();
        if (at != end && *at == '\r')
            ++at;
        if (at != end && *at == '\n')
            ++at;
        return at;
    }

    /// Visits all statements; meanwhile vtRead_ and facesRead_ count the `vt` and `f` before.
    template <class Visit>
    void forStatements(const Visit& visit)
    {
        vtRead_ = 0;
        facesRead_ = 0;
        ObjStatements statements(payload_.text);
        ObjStatement statement;
        while (statements.next(statement)) {
            visit(statement);
            vtRead_ += statement.keyword == "vt" ? 1U : 0U;
            facesRead_ += statement.keyword == "f" ? 1U : 0U;
        }
    }

    const Document& document_;
    const ObjPayload& payload_;
    const std::vector<FacePolygons> faces_;
    const std::string lineEnd_;

    std::vector<char> isStarted_; ///< by geometry: its first face was met
    VertexLines vertexLines_;
    UVLines uvLines_;

    std::uint32_t vtRead_ = 0;
    std::uint32_t facesRead_ = 0;
};

} // namespace

std::string rewriteObj(const Document& document, const ObjPayload& payload)
{
    const bool changed = std::any_of(document.geometries.begin(), document.geometries.end(),
                                     [](const DocumentGeometry& geometry) {
                                         return geometry.changedSlots.test(0) ||
                                                !geometry.sourceOfNewPosition.empty() ||
                                                geometry.hasLostTriangles;
                                     });
    return changed ? Rewriter(document, payload).rewrite() : payload.text;
}

} // namespace uvtool
