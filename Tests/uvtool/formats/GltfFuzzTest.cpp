#include "uvtool/SlotValuesFor.h"
#include "uvtool/TempFolder.h"
#include "uvtool/formats/GltfSample.h"

#include "document/FileError.h"
#include "formats/gltf/GltfFormat.h"

#include <gtest/gtest.h>

#include <random>

// Files with random damage: each is either read, changed and written so that it can be read again,
// or refused with one line. Memory errors and overflows are for the sanitizers to find.

namespace
{

using namespace uvtool;
using Json = GltfSample::Json;

class Damage
{
public:
    explicit Damage(unsigned seed) : random_(seed) {}

    std::size_t below(std::size_t end)
    {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
    }

    std::string damagedBytes(std::string bytes)
    {
        for (std::size_t n = 1 + below(4); n > 0; --n)
            bytes[below(bytes.size())] = static_cast<char>(below(256));
        if (below(4) == 0)
            bytes.resize(below(bytes.size()));
        return bytes;
    }

    /// Changes one member somewhere in the JSON: its value, its kind, or takes it away.
    Json damagedJson(Json json)
    {
        std::vector<Json::json_pointer> places;
        collect(json, Json::json_pointer(), places);
        const Json::json_pointer place = places[below(places.size())];
        Json& owner = json[place.parent_pointer()];
        if (below(6) == 0 && owner.is_object())
            owner.erase(place.back());
        else
            json[place] = value();
        return json;
    }

private:
    static void collect(const Json& json, const Json::json_pointer& at,
                        std::vector<Json::json_pointer>& places)
    {
        if (!at.empty())
            places.push_back(at);
        if (json.is_object()) {
            for (const auto& [key, member] : json.items())
                collect(member, at / key, places);
        } else if (json.is_array()) {
            for (std::size_t i = 0; i < json.size(); ++i)
                collect(json[i], at / i, places);
        }
    }

    Json value()
    {
        static const Json values = Json::parse(R"([
            0, 1, 2, 3, 7, 8, 9, 12, 100, 255, -1, 4294967295, 18446744073709551615, 1e300, 0.5,
            null, true, "text", "../x.bin", "data:;base64,", 5121, 5123, 5126, "VEC2", "VEC4",
            "MAT3", [], {}, [0, 1, 2], {"bufferView": 3, "POSITION": 2}])");
        return values[below(values.size())];
    }

    std::mt19937 random_;
};

/// True when the file could be read.
bool survives(const TempFolder& folder, const std::string& bytes)
{
    Document document;
    try {
        document = readGltf(folder.write("in.glb", bytes));
    } catch (const FileError& error) {
        EXPECT_EQ(error.kind(), FileError::Read);
        EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos) << error.what();
        return false;
    }
    for (DocumentGeometry& geometry : document.geometries) {
        const SlotValues uvs = ownValueForEachCorner(geometry);
        writeSlot(geometry, 0, uvs);
    }
    try {
        writeGltf(document, folder / "out.glb");
        const Document again = readGltf(folder / "out.glb");
        EXPECT_EQ(again.geometries.size(), document.geometries.size());
        for (std::size_t g = 0; g < again.geometries.size(); ++g) {
            EXPECT_EQ(again.geometries[g].triangles.size(),
                      document.geometries[g].triangles.size());
            EXPECT_EQ(again.geometries[g].uvs[0].at(2), (Vec2f{2, 0.5F}));
        }
    } catch (const FileError& error) {
        ADD_FAILURE() << error.what();
    }
    return true;
}

TEST(GltfFuzz, DamagedFilesAreRefusedOrWrittenSoundly)
{
    const TempFolder folder;
    const GltfSample good = fullSample();
    ASSERT_TRUE(survives(folder, good.glb()));
    int readable[] = {0, 0};
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(seed);
        readable[0] += survives(folder, Damage(seed).damagedBytes(good.glb())) ? 1 : 0;
        const Json damaged = Damage(seed).damagedJson(good.finished());
        readable[1] += survives(folder, GltfSample::glb(damaged.dump(), good.buffer)) ? 1 : 0;
    }
    for (const int count : readable) {
        EXPECT_GT(count, 13);
        EXPECT_LT(count, 360);
    }
}

} // namespace
