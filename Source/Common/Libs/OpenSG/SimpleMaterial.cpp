#include "OpenSG/SimpleMaterial.h"

namespace osg
{

FieldContainerType& SimpleMaterial::getClassType()
{
    static auto& type = *new FieldContainerType(
        "SimpleMaterial", &Material::getClassType(), &SimpleMaterial::createContainer,
        {valueField<&SimpleMaterial::_diffuse>("diffuse", "SFColor3f", DiffuseFieldMask),
         valueField<&SimpleMaterial::_transparency>("transparency", "SFReal32",
                                                    TransparencyFieldMask),
         valueField<&SimpleMaterial::_lit>("lit", "SFBool", LitFieldMask),
         containerField<&SimpleMaterial::_chunks>("chunks", "MFStateChunkPtr", ChunksFieldMask),
         valueField<&SimpleMaterial::_slots>("slots", "MFInt32", SlotsFieldMask)});
    return type;
}

void SimpleMaterial::addChunk(const StateChunkPtr& chunk, int slot)
{
    if (chunk == NullFC)
        return;
    _chunks.emplace_back(chunk);
    _slots.push_back(slot);
}

StateChunkPtr SimpleMaterial::getChunk(unsigned i) const
{
    return i < _chunks.size() ? _chunks[i].get() : StateChunkPtr();
}

int SimpleMaterial::getChunkSlot(unsigned i) const
{
    return i < _slots.size() ? _slots[i] : AutoSlot;
}

} // namespace osg
