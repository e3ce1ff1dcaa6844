#pragma once

#include "OpenSG/Color.h"
#include "OpenSG/Material.h"
#include "OpenSG/RefPtr.h"
#include "OpenSG/StateChunk.h"

#include <vector>

namespace osg
{

/// A material of one colour, with further aspects in chunks. Setters send no notice.
class SimpleMaterial : public ConcreteContainer<SimpleMaterial, Material>
{
public:
    /// The place of a chunk that takes the first one that is free for its class.
    static constexpr int AutoSlot = -2;

    static constexpr unsigned DiffuseFieldNumber = Material::NextFieldNumber;
    static constexpr unsigned TransparencyFieldNumber = DiffuseFieldNumber + 1;
    static constexpr unsigned LitFieldNumber = DiffuseFieldNumber + 2;
    static constexpr unsigned ChunksFieldNumber = DiffuseFieldNumber + 3;
    static constexpr unsigned SlotsFieldNumber = DiffuseFieldNumber + 4;
    static constexpr unsigned NextFieldNumber = DiffuseFieldNumber + 5;
    static constexpr FieldMask DiffuseFieldMask = FieldMask::bit(DiffuseFieldNumber);
    static constexpr FieldMask TransparencyFieldMask = FieldMask::bit(TransparencyFieldNumber);
    static constexpr FieldMask LitFieldMask = FieldMask::bit(LitFieldNumber);
    static constexpr FieldMask ChunksFieldMask = FieldMask::bit(ChunksFieldNumber);
    static constexpr FieldMask SlotsFieldMask = FieldMask::bit(SlotsFieldNumber);

    static FieldContainerType& getClassType();

    /// The colour of the surface; white at the start.
    [[nodiscard]] const Color3f& getDiffuse() const { return _diffuse; }
    void setDiffuse(const Color3f& diffuse) { _diffuse = diffuse; }

    /// 0 lets nothing through, as at the start, 1 everything.
    [[nodiscard]] float getTransparency() const { return _transparency; }
    void setTransparency(float transparency) { _transparency = transparency; }

    /// Whether light changes the colour; true at the start.
    [[nodiscard]] bool getLit() const { return _lit; }
    void setLit(bool lit) { _lit = lit; }

    /// Appends a chunk and counts a reference. Does nothing for null.
    ///
    /// slot  which of several chunks of its class it is, from 0 upward, or AutoSlot
    void addChunk(const StateChunkPtr& chunk, int slot = AutoSlot);
    [[nodiscard]] unsigned getNChunks() const { return static_cast<unsigned>(_chunks.size()); }
    /// In the order of being added; NullFC beyond the end.
    [[nodiscard]] StateChunkPtr getChunk(unsigned i) const;
    /// As it was given; AutoSlot beyond the end.
    [[nodiscard]] int getChunkSlot(unsigned i) const;

private:
    friend ConcreteContainer<SimpleMaterial, Material>;

    SimpleMaterial() = default;
    /// The copy shares the chunks.
    SimpleMaterial(const SimpleMaterial&) = default;
    ~SimpleMaterial() override = default;

    Color3f _diffuse{1, 1, 1};
    float _transparency = 0;
    bool _lit = true;
    std::vector<RefPtr<StateChunk>> _chunks;
    std::vector<int> _slots; ///< one for each chunk
};

using SimpleMaterialPtr = Ptr<SimpleMaterial>;

} // namespace osg
